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

// A plain loop finds the word's end: find_first_of searches its set once per
// byte of the line.
bool StartsWithDeclKeyword(std::string_view line) {
  std::size_t end = 0;
  while (end < line.size() && line[end] != ' ' && line[end] != '\t') ++end;
  return Patterns().kDeclKeywords.count(line.substr(0, end)) > 0;
}

}  // namespace quill
