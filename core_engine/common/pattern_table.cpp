#include "common/pattern_table.h"

#include <cstdint>

namespace quill {
namespace {

constexpr CaseMode kCase = CaseMode::kSensitive;
constexpr CaseMode kIcase = CaseMode::kIgnoreCase;
// The formatter has no failure of its own: a match that runs into a resource
// limit counts as no match, and the line passes unchanged.
constexpr LimitPolicy kPolicy = LimitPolicy::kNoMatch;

}  // namespace

std::size_t Fnv1aHash::operator()(std::string_view word) const noexcept {
  std::uint64_t hash = 0xcbf29ce484222325ULL;
  for (char c : word) {
    hash ^= static_cast<unsigned char>(c);
    hash *= 0x100000001b3ULL;
  }
  return static_cast<std::size_t>(hash);
}

// Entries in construction order, one per line.
PatternTable::PatternTable()
    : kBeginPattern(R"(\bbegin\b)", kCase, kPolicy),
      kEndPattern(R"(\bend\b)", kCase, kPolicy),
      kCasePattern(R"(\bcase[zx]?\b)", kCase, kPolicy),
      kEndcasePattern(R"(\bendcase\b)", kCase, kPolicy),
      kModulePattern(R"(^\s*module\b)", kIcase, kPolicy),
      kEndmodulePattern(R"(^\s*endmodule\b)", kIcase, kPolicy),
      kLineCommentStartPattern(R"(^\s*//)", kCase, kPolicy),
      kForeignSourcePattern(R"(^\s*(def |class |import |from \w+ import|#!.*python))", kIcase, kPolicy),
      kPortDeclPattern(R"(^\s*(input|output|inout)\s*(wire|reg|logic)?\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*(,?)\s*(//.*)?$)", kIcase, kPolicy),
      kModuleHeaderPattern(R"(^\s*module\s+(.+?)\s*(?=[#(\n\r]|$))", kIcase, kPolicy),
      kNetDeclPattern(R"(^\s*(wire|reg|logic)\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*;\s*(//.*)?$)", kIcase, kPolicy),
      kParamDeclPattern(R"(^\s*(parameter|localparam)?\s*(\[[^\]]*\])?\s*(\w+)\s*(=\s*.+?)\s*([,;])?\s*(//.*)?$)", kIcase, kPolicy),
      kCoreKeywords{
          "parameter", "localparam", "input", "output", "inout", "wire", "reg", "logic", "module",
          "endmodule", "always", "assign", "begin", "end", "case", "if", "else",
      },
      kAlwaysPattern(R"(^\s*(always_ff|always_comb|always)\b)", kIcase, kPolicy),
      kGeneratePattern(R"(^\s*generate\b)", kIcase, kPolicy),
      kEndgeneratePattern(R"(^\s*endgenerate\b)", kIcase, kPolicy),
      kAssignPattern(R"(^\s*assign\b)", kIcase, kPolicy),
      kLabelPattern(R"(^\s*(\w+)\s*:\s*(.*))", kCase, kPolicy),
      kIfHeaderPattern(R"(\bif\b\s*\(.+?\)\s*$)", kCase, kPolicy),
      kStatementStartPattern(R"(^\s*(always|initial|module|endmodule|assign|wire|reg|logic)\b)", kIcase, kPolicy),
      kNamedConnectionPattern(R"(^(\s*)\.(\w+)\s*\(\s*(.+?)\s*\)\s*(,?)\s*(//.*)?$)", kCase, kPolicy),
      kBlockKeywordPattern(R"(^\s*(module|function|task|if|else|case|casex|casez|for|while|forever|assign|always|always_ff|always_comb|initial|generate|endgenerate|specify|endspecify)\b)", kIcase, kPolicy),
      kInstanceHeadPattern(R"(^(\w+)\s+(\w+)\s*\()", kCase, kPolicy),
      kParamInstanceHeadPattern(R"(^(\w+)\s+#\s*\()", kCase, kPolicy),
      kTypeAndNamePattern(R"(^(\w+)\s+(\w+)$)", kCase, kPolicy),
      kSingleWordPattern(R"(^(\w+)$)", kCase, kPolicy),
      kCallHeadPattern(R"(^(\w+)\s*\()", kCase, kPolicy),
      kBlockCommentPattern(R"(/\*[\s\S]*?\*/)", kCase, kPolicy),
      kDeclKeywords{
          "wire", "reg", "logic", "parameter", "localparam", "assign", "always", "always_ff", "always_comb", "initial",
          "generate", "genvar", "integer", "input", "output", "inout", "module", "endmodule", "function", "task",
      },
      kUnusedBlockCommentPattern(R"(/\*[\s\S]*?\*/)", kCase, kPolicy),
      kLineCommentPattern(R"(//[^\n]*)", kCase, kPolicy) {}

namespace {
const PatternTable kPatternTable;
}  // namespace

const PatternTable& Patterns() { return kPatternTable; }

}  // namespace quill
