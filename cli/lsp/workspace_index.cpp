#include "lsp/workspace_index.h"

#include <filesystem>
#include <fstream>
#include <sstream>

#include "lint_output.h"

namespace quill::lsp {
namespace {

// Larger files are generated netlists, not sources to navigate.
constexpr std::uintmax_t kMaxIndexedBytes = 32u << 20;

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

IndexedFile::IndexedFile(std::string uriIn, std::string textIn)
    : uri(std::move(uriIn)),
      text(std::move(textIn)),
      tokens(structure::TokenizeVerilog(text)),
      structure(structure::ScanStructure(text, tokens)),
      lines(text) {}

void WorkspaceIndex::SetDisk(FilePtr file) {
  std::lock_guard lock(mutex_);
  disk_[file->uri] = std::move(file);
}

void WorkspaceIndex::RemoveDisk(const std::string& uri) {
  std::lock_guard lock(mutex_);
  disk_.erase(uri);
}

void WorkspaceIndex::SetOpen(FilePtr file) {
  std::lock_guard lock(mutex_);
  open_[file->uri] = std::move(file);
}

void WorkspaceIndex::CloseOpen(const std::string& uri) {
  std::lock_guard lock(mutex_);
  open_.erase(uri);
}

FilePtr WorkspaceIndex::Find(const std::string& uri) const {
  std::lock_guard lock(mutex_);
  if (auto found = open_.find(uri); found != open_.end()) return found->second;
  if (auto found = disk_.find(uri); found != disk_.end()) return found->second;
  return nullptr;
}

std::vector<FilePtr> WorkspaceIndex::Files() const {
  std::lock_guard lock(mutex_);
  std::vector<FilePtr> files;
  files.reserve(disk_.size() + open_.size());
  for (const auto& [uri, file] : open_) files.push_back(file);
  for (const auto& [uri, file] : disk_) {
    if (open_.find(uri) == open_.end()) files.push_back(file);
  }
  return files;
}

std::size_t WorkspaceIndex::DiskFileCount() const {
  std::lock_guard lock(mutex_);
  return disk_.size();
}

bool IsVerilogPath(std::string_view path) {
  for (std::string_view extension : {".v", ".sv", ".vh", ".svh"}) {
    if (path.ends_with(extension)) return true;
  }
  return false;
}

std::optional<std::string> UriToPath(std::string_view uri) {
  if (!uri.starts_with("file://")) return std::nullopt;
  uri.remove_prefix(7);
  // file://host/path: only local files are read.
  if (!uri.starts_with("/")) return std::nullopt;
  std::string path;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    if (uri[i] == '%' && i + 2 < uri.size() && HexValue(uri[i + 1]) >= 0 && HexValue(uri[i + 2]) >= 0) {
      path.push_back(static_cast<char>(HexValue(uri[i + 1]) * 16 + HexValue(uri[i + 2])));
      i += 2;
    } else {
      path.push_back(uri[i]);
    }
  }
  return path;
}

std::string PathToFileUri(std::string_view absolutePath) { return cli::PathToUri(absolutePath); }

std::vector<std::string> ListVerilogFiles(const std::vector<std::string>& folders,
                                          const std::atomic<bool>& keepGoing) {
  namespace fs = std::filesystem;
  std::vector<std::string> files;
  for (const std::string& folder : folders) {
    std::error_code error;
    fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, error);
    for (; !error && it != fs::recursive_directory_iterator() && keepGoing; it.increment(error)) {
      const std::string name = it->path().filename().string();
      if (it->is_directory(error)) {
        if (name.starts_with(".") || name == "node_modules") it.disable_recursion_pending();
        continue;
      }
      if (it->is_regular_file(error) && IsVerilogPath(name)) files.push_back(it->path().string());
    }
  }
  return files;
}

std::optional<std::string> ReadFileText(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  if (error || size > kMaxIndexedBytes) return std::nullopt;
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::ostringstream content;
  content << in.rdbuf();
  return content.str();
}

}  // namespace quill::lsp
