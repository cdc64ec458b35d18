#include "format/scan/pattern_table.h"

namespace quill {
namespace {

constexpr CaseMode kCase = CaseMode::kSensitive;
constexpr CaseMode kIcase = CaseMode::kIgnoreCase;
// The formatter has no failure of its own: a match that runs into a resource
// limit counts as no match, and the line passes unchanged.
constexpr LimitPolicy kPolicy = LimitPolicy::kNoMatch;

}  // namespace

// Entries in construction order, one per line.
PatternTable::PatternTable()
    : kBeginPattern(R"(\bbegin\b)", kCase, kPolicy),
      kModulePattern(R"(^\s*module\b)", kIcase, kPolicy),
      kEndmodulePattern(R"(^\s*endmodule\b)", kIcase, kPolicy),
      kLineCommentStartPattern(R"(^\s*//)", kCase, kPolicy),
      kForeignSourcePattern(R"(^\s*(def |class |import |from \w+ import|#!.*python))", kIcase, kPolicy),
      kCoreKeywords{
          "parameter", "localparam", "input", "output", "inout", "wire", "reg", "logic", "module",
          "endmodule", "always", "assign", "begin", "end", "case", "if", "else",
      },
      kAlwaysPattern(R"(^\s*(always_ff|always_comb|always)\b)", kIcase, kPolicy),
      kGeneratePattern(R"(^\s*generate\b)", kIcase, kPolicy),
      kEndgeneratePattern(R"(^\s*endgenerate\b)", kIcase, kPolicy),
      kAssignPattern(R"(^\s*assign\b)", kIcase, kPolicy),
      kLabelPattern(R"(^\s*(\w+)\s*:\s*(.*))", kCase, kPolicy),
      kStatementStartPattern(R"(^\s*(always|initial|module|endmodule|assign|wire|reg|logic)\b)", kIcase, kPolicy),
      kNamedConnectionPattern(R"(^(\s*)\.(\w+)\s*\(\s*(.+?)\s*\)\s*(,?)\s*(//.*)?$)", kCase, kPolicy),
      kBlockKeywordPattern(R"(^\s*(module|function|task|if|else|case|casex|casez|for|while|forever|assign|always|always_ff|always_comb|initial|generate|endgenerate|specify|endspecify)\b)", kIcase, kPolicy),
      kDeclKeywords{
          "wire", "reg", "logic", "parameter", "localparam", "assign", "always", "always_ff", "always_comb", "initial",
          "generate", "genvar", "integer", "input", "output", "inout", "module", "endmodule", "function", "task",
      } {}

namespace {
const PatternTable kPatternTable;
}  // namespace

const PatternTable& Patterns() { return kPatternTable; }

bool StartsWithDeclKeyword(std::string_view line) {
  return Patterns().kDeclKeywords.count(line.substr(0, line.find_first_of(" \t"))) > 0;
}

}  // namespace quill
