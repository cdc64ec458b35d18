// The Verilog sources of the sample corpus, for tests that run the linter's
// steps on real text. Empty when the corpus folder is absent.
#ifndef QUILL_TESTS_LINT_CORPUS_SOURCES_H_
#define QUILL_TESTS_LINT_CORPUS_SOURCES_H_

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace quill {

struct CorpusSource {
  std::string path;
  std::string text;
};

inline std::vector<CorpusSource> VerilogCorpusSources() {
  std::vector<CorpusSource> sources;
  const std::filesystem::path root(QUILL_CORPUS_DIR);
  std::error_code error;
  if (!std::filesystem::is_directory(root, error)) return sources;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(root, error)) {
    const std::string extension = entry.path().extension().string();
    if (!entry.is_regular_file() ||
        (extension != ".v" && extension != ".sv" && extension != ".vh" && extension != ".svh")) {
      continue;
    }
    std::ifstream in(entry.path(), std::ios::binary);
    std::ostringstream content;
    content << in.rdbuf();
    sources.push_back({entry.path().string(), content.str()});
  }
  return sources;
}

}  // namespace quill

#endif  // QUILL_TESTS_LINT_CORPUS_SOURCES_H_
