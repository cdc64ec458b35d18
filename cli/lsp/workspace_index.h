// The Verilog files of the workspace with their structure: read from disk by
// a background scan and kept current by the server; an open document's text
// wins over the file on disk.
#ifndef QUILL_CLI_LSP_WORKSPACE_INDEX_H_
#define QUILL_CLI_LSP_WORKSPACE_INDEX_H_

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lsp/documents.h"
#include "structure/structure.h"
#include "structure/verilog_tokens.h"

namespace quill::lsp {

// One text and what was read from it; never changed once made.
struct IndexedFile {
  IndexedFile(std::string uriIn, std::string textIn);
  IndexedFile(const IndexedFile&) = delete;
  IndexedFile& operator=(const IndexedFile&) = delete;

  const std::string uri;
  const std::string text;
  const structure::TokenizedText tokens;
  const structure::FileStructure structure;
  const LineIndex lines;
};
using FilePtr = std::shared_ptr<const IndexedFile>;

// Safe to use from several threads.
class WorkspaceIndex {
 public:
  void SetDisk(FilePtr file);
  void RemoveDisk(const std::string& uri);
  void SetOpen(FilePtr file);
  void CloseOpen(const std::string& uri);
  // The open version when there is one.
  FilePtr Find(const std::string& uri) const;
  // Every file once, open versions first choice, in URI order.
  std::vector<FilePtr> Files() const;
  std::size_t DiskFileCount() const;

 private:
  mutable std::mutex mutex_;
  std::map<std::string, FilePtr> disk_;
  std::map<std::string, FilePtr> open_;
};

// .v .sv .vh .svh
bool IsVerilogPath(std::string_view path);
// The local path of a file:// URI (%-escapes decoded); nullopt for others.
std::optional<std::string> UriToPath(std::string_view uri);
std::string PathToFileUri(std::string_view absolutePath);
// The Verilog files under the folders, skipping hidden folders; stops early
// when `keepGoing` turns false.
std::vector<std::string> ListVerilogFiles(const std::vector<std::string>& folders,
                                          const std::atomic<bool>& keepGoing);
// The file's text, or nullopt when it cannot be read or exceeds the limit.
std::optional<std::string> ReadFileText(const std::string& path);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_WORKSPACE_INDEX_H_
