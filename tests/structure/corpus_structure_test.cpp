#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>

#include "support/corpus_files.h"
#include "structure/structure.h"

namespace quill::structure {
namespace {

// `module` and `macromodule` words outside comments, strings and directive
// lines, counted without the scanner's tokenizer.
std::size_t CountModuleWords(std::string_view text) {
  std::size_t count = 0;
  auto word = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '$'; };
  for (std::size_t i = 0; i < text.size();) {
    if (text.compare(i, 2, "//") == 0) {
      while (i < text.size() && text[i] != '\n') ++i;
    } else if (text.compare(i, 2, "/*") == 0) {
      const std::size_t close = text.find("*/", i + 2);
      i = close == std::string_view::npos ? text.size() : close + 2;
    } else if (text[i] == '"') {
      ++i;
      while (i < text.size() && text[i] != '"' && text[i] != '\n') i += text[i] == '\\' ? std::size_t{2} : std::size_t{1};
      ++i;
    } else if (text.compare(i, 7, "`define") == 0) {
      while (i < text.size() && (text[i] != '\n' || text[i - 1] == '\\')) ++i;
    } else if (word(text[i]) || text[i] == '`' || text[i] == '\\') {
      const std::size_t start = i++;
      while (i < text.size() && word(text[i])) ++i;
      const std::string_view w = text.substr(start, i - start);
      if (w == "module" || w == "macromodule") ++count;
    } else {
      ++i;
    }
  }
  return count;
}

TEST(CorpusStructureTest, EveryModuleFoundAndEverySpanInside) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "corpus folder absent";
  std::size_t total = 0;
  for (const CorpusSource& source : sources) {
    const FileStructure s = ScanStructure(source.text);
    std::size_t modules = 0;
    auto inside = [&](const Span& span) {
      EXPECT_LE(span.begin, span.end) << source.path;
      EXPECT_LE(span.end, source.text.size()) << source.path;
    };
    for (const Module& m : s.modules) {
      modules += m.kind == "module" || m.kind == "macromodule";
      inside(m.span);
      for (const Port& p : m.ports) inside(p.nameSpan), inside(p.declaration);
      for (const Signal& x : m.signals) inside(x.nameSpan), inside(x.declaration);
      for (const Instance& x : m.instances) inside(x.span);
      for (const Block& x : m.blocks) inside(x.span);
      for (const Routine& x : m.routines) inside(x.span);
    }
    for (const Fold& f : s.folds) inside(f.span);
    EXPECT_EQ(modules, CountModuleWords(source.text)) << source.path;
    total += modules;
  }
  EXPECT_GT(total, 0u);
}

}  // namespace
}  // namespace quill::structure
