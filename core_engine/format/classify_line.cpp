#include "format/classify_line.h"

#include <initializer_list>

#include "common/text_utils.h"

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

std::size_t SkipWord(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsPatternWord(s[pos])) ++pos;
  return pos;
}

std::size_t SkipSpaces(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsPatternSpace(s[pos])) ++pos;
  return pos;
}

// "^\w+\s+\w+\s*\(" or "^\w+\s+#\s*\(", given the length of the leading
// word: each run is maximal in any match, so one walk decides.
bool IsInstanceHead(std::string_view t, std::size_t wordEnd) {
  if (wordEnd == 0) return false;
  const std::size_t second = SkipSpaces(t, wordEnd);
  if (second == wordEnd || second == t.size()) return false;
  std::size_t after = second + 1;
  if (t[second] != '#') {
    after = SkipWord(t, second);
    if (after == second) return false;
  }
  const std::size_t paren = SkipSpaces(t, after);
  return paren < t.size() && t[paren] == '(';
}

char FoldCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool EqualsIgnoringCase(std::string_view word, std::string_view lower) {
  if (word.size() != lower.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (FoldCase(word[i]) != lower[i]) return false;
  }
  return true;
}

// Whether `word` is one of `words` (lower case), ignoring ASCII letter case.
bool IsOneOfIgnoringCase(std::string_view word, std::initializer_list<std::string_view> words) {
  for (std::string_view candidate : words) {
    if (EqualsIgnoringCase(word, candidate)) return true;
  }
  return false;
}

}  // namespace

std::string_view LineLabel(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsBlank(line[first])) ++first;
  const std::string_view t = line.substr(first);
  if (t.empty() || t.starts_with("//") || t.starts_with("/*")) return "";
  const std::size_t wordEnd = SkipWord(t, 0);
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
  if (IsInstanceHead(t, wordEnd)) return "INST";
  return "";
}

std::string ClassifyLine(std::string_view line) {
  return std::string(LineLabel(line));
}

}  // namespace quill
