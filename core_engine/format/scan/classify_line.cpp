#include "format/scan/classify_line.h"

#include <initializer_list>

#include "common/text_utils.h"
#include "format/scan/instance_heads.h"

namespace quill {
namespace {

// Every rule of the classifier tests how a line begins: a pattern anchored
// as "^word\b" matches exactly when the line's leading run of word bytes is
// that word. So the rules are read off that run instead of running one
// pattern after the other.

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  for (std::string_view candidate : words) {
    if (word == candidate) return true;
  }
  return false;
}

}  // namespace

std::string_view LineLabel(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsBlankByte(line[first])) ++first;
  const std::string_view t = line.substr(first);
  if (t.empty() || t.starts_with("//") || t.starts_with("/*")) return "";
  std::size_t wordEnd = 0;
  while (wordEnd < t.size() && IsWordByte(t[wordEnd])) ++wordEnd;
  const std::string_view word = t.substr(0, wordEnd);
  // Lines that have no kind although a later rule would give them one;
  // these words count only in lower case.
  if (IsOneOf(word, {"module", "endmodule"})) return "";
  if (IsOneOf(word, {"begin", "end", "endcase", "endgenerate", "endif", "else"})) return "";
  if (IsOneOf(word, {"if", "case", "casez", "casex", "for", "forever", "while", "repeat"})) return "";
  if (t == ");" || t.front() == '.') return "";
  // Declaration and block words, ignoring case, tried in this order.
  if (IsOneOfIgnoringCase(word, {"input", "output", "inout"})) return "PORT";
  if (IsOneOfIgnoringCase(word, {"wire", "reg", "logic"})) return "SIGNAL";
  if (IsOneOfIgnoringCase(word, {"parameter", "localparam"})) return "PARAM";
  if (IsOneOfIgnoringCase(word, {"integer", "genvar"})) return "INTEGER";
  if (IsOneOfIgnoringCase(word, {"assign"})) return "ASSIGN";
  if (IsOneOfIgnoringCase(word, {"always", "always_ff", "always_comb", "always_latch"})) return "ALWAYS";
  if (IsOneOfIgnoringCase(word, {"initial"})) return "INITIAL";
  if (IsOneOfIgnoringCase(word, {"generate"})) return "GENERATE";
  if (IsOneOfIgnoringCase(word, {"function", "task"})) return "FUNCTION";
  // A module instance, with or without a parameter list.
  if (HasInstanceHead(t) || HasParamInstanceHead(t)) return "INST";
  return "";
}

std::string ClassifyLine(std::string_view line) {
  return std::string(LineLabel(line));
}

}  // namespace quill
