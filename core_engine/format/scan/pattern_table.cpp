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
      kForeignSourcePattern(R"(^\s*(def |class |import |from \w+ import|#!.*python))", kIcase, kPolicy),
      kCoreKeywords{
          "parameter", "localparam", "input", "output", "inout", "wire", "reg", "logic", "module",
          "endmodule", "always", "assign", "begin", "end", "case", "if", "else",
      },
      kLabelPattern(R"(^\s*(\w+)\s*:\s*(.*))", kCase, kPolicy),
      kNamedConnectionPattern(R"(^(\s*)\.(\w+)\s*\(\s*(.+?)\s*\)\s*(,?)\s*(//.*)?$)", kCase, kPolicy),
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
