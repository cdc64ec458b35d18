#include <array>

#include "engine.h"
#include "lsp/documents.h"
#include "lsp/features.h"

namespace quill::lsp {
namespace {

// Token types of the legend, indexed by the highlighter's class codes 1 to
// 10. Flow commands share "function" with tool commands and carry the
// "defaultLibrary" modifier to tell them apart.
constexpr std::array<const char*, 9> kTokenTypes = {"comment",    "string", "keyword",  "property", "enumMember",
                                                    "number",     "variable", "operator", "function"};
constexpr std::array<int, 11> kTypeOfClass = {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 8};
constexpr int kFlowCommandClass = 10;

}  // namespace

nlohmann::json SemanticTokensLegend() {
  return {{"tokenTypes", kTokenTypes}, {"tokenModifiers", {"defaultLibrary"}}};
}

nlohmann::json SemanticTokens(std::string_view text, std::optional<LineRange> range) {
  std::vector<std::uint32_t> data;
  std::optional<std::vector<unsigned char>> classes = cli::ClassifySource(text);
  if (!classes || classes->size() != text.size()) return {{"data", data}};
  const LineIndex lines(text);
  std::uint32_t previousLine = 0, previousStart = 0;
  std::size_t lineStart = 0;
  for (std::size_t line = 0; line < lines.LineCount(); ++line) {
    std::string_view content = lines.Line(line);
    const bool inRange = !range || (line >= range->first && line <= range->last);
    std::uint32_t column = 0;
    for (std::size_t i = 0; inRange && i < content.size();) {
      const unsigned char cls = (*classes)[lineStart + i];
      std::size_t end = i + 1;
      while (end < content.size() && (*classes)[lineStart + end] == cls) ++end;
      const std::uint32_t length = Utf16Length(content.substr(i, end - i));
      if (cls < kTypeOfClass.size() && kTypeOfClass[cls] >= 0) {
        const auto lineNo = static_cast<std::uint32_t>(line);
        const std::uint32_t start = column;
        data.push_back(lineNo - previousLine);
        data.push_back(lineNo == previousLine ? start - previousStart : start);
        data.push_back(length);
        data.push_back(static_cast<std::uint32_t>(kTypeOfClass[cls]));
        data.push_back(cls == kFlowCommandClass ? 1u : 0u);
        previousLine = lineNo;
        previousStart = start;
      }
      column += length;
      i = end;
    }
    lineStart += content.size();
    // Skip the line end (CR LF or LF) that Line() leaves out.
    while (lineStart < text.size() && text[lineStart] != '\n') ++lineStart;
    ++lineStart;
  }
  return {{"data", data}};
}

}  // namespace quill::lsp
