// The real-world sample files beside the repository, for tests that run the
// engine on real text. Every walk of the corpus folder goes through here; an
// absent folder gives no files, and the tests that need them skip.
#ifndef QUILL_TESTS_SUPPORT_CORPUS_FILES_H_
#define QUILL_TESTS_SUPPORT_CORPUS_FILES_H_

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

struct CorpusSource {
  std::string path;
  std::string text;
};

// Every regular file under the corpus folder whose extension (letter case
// kept) is one of `extensions`, in the order of the folder walk.
inline std::vector<CorpusSource> CorpusSources(std::initializer_list<std::string_view> extensions) {
  std::vector<CorpusSource> sources;
  const std::filesystem::path root(QUILL_CORPUS_DIR);
  std::error_code error;
  if (!std::filesystem::is_directory(root, error)) return sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root, error)) {
    const std::string extension = entry.path().extension().string();
    if (!entry.is_regular_file() || std::find(extensions.begin(), extensions.end(), extension) == extensions.end()) {
      continue;
    }
    std::ifstream in(entry.path(), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    sources.push_back({entry.path().string(), content.str()});
  }
  return sources;
}

// The Verilog and SystemVerilog sources and headers of the corpus.
inline std::vector<CorpusSource> VerilogCorpusSources() {
  return CorpusSources({".v", ".sv", ".vh", ".svh"});
}

}  // namespace quill

#endif  // QUILL_TESTS_SUPPORT_CORPUS_FILES_H_
