#include "format/scan/classify_line.h"

#include <initializer_list>
#include <span>

#include "common/text_utils.h"
#include "format/scan/instance_heads.h"

namespace quill {
namespace {

// Every rule of the classifier tests how a line begins: a pattern anchored
// as "^word\b" matches exactly when the line's leading run of word bytes is
// that word. So the rules are read off that run instead of running one
// pattern after the other, and the run's length picks the few words it can
// be.

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
  for (std::string_view candidate : words) {
    if (word == candidate) return true;
  }
  return false;
}

// Words that give a line no kind although a later rule would give it one;
// these count only in lower case.
bool IsKindlessWord(std::string_view word) {
  switch (word.size()) {
    case 2: return word == "if";
    case 3: return IsOneOf(word, {"end", "for"});
    case 4: return IsOneOf(word, {"else", "case"});
    case 5: return IsOneOf(word, {"begin", "endif", "casez", "casex", "while"});
    case 6: return IsOneOf(word, {"module", "repeat"});
    case 7: return IsOneOf(word, {"endcase", "forever"});
    case 9: return word == "endmodule";
    case 11: return word == "endgenerate";
    default: return false;
  }
}

bool EqualsFolded(std::string_view word, std::string_view lower) {
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (FoldAscii(word[i]) != lower[i]) return false;
  }
  return true;
}

struct KindWord {
  std::string_view lower;
  std::string_view label;
};

// The declaration and block words, ignoring case, by length. No two of them
// are equal ignoring case, so the order in which they are tried is free.
std::string_view KindOfWord(std::string_view word) {
  static constexpr KindWord k3[] = {{"reg", "SIGNAL"}};
  static constexpr KindWord k4[] = {{"wire", "SIGNAL"}, {"task", "FUNCTION"}};
  static constexpr KindWord k5[] = {{"input", "PORT"}, {"inout", "PORT"}, {"logic", "SIGNAL"}};
  static constexpr KindWord k6[] = {
      {"output", "PORT"}, {"assign", "ASSIGN"}, {"always", "ALWAYS"}, {"genvar", "INTEGER"}};
  static constexpr KindWord k7[] = {{"integer", "INTEGER"}, {"initial", "INITIAL"}};
  static constexpr KindWord k8[] = {{"function", "FUNCTION"}, {"generate", "GENERATE"}};
  static constexpr KindWord k9[] = {{"parameter", "PARAM"}, {"always_ff", "ALWAYS"}};
  static constexpr KindWord k10[] = {{"localparam", "PARAM"}};
  static constexpr KindWord k11[] = {{"always_comb", "ALWAYS"}};
  static constexpr KindWord k12[] = {{"always_latch", "ALWAYS"}};
  std::span<const KindWord> candidates;
  switch (word.size()) {
    case 3: candidates = k3; break;
    case 4: candidates = k4; break;
    case 5: candidates = k5; break;
    case 6: candidates = k6; break;
    case 7: candidates = k7; break;
    case 8: candidates = k8; break;
    case 9: candidates = k9; break;
    case 10: candidates = k10; break;
    case 11: candidates = k11; break;
    case 12: candidates = k12; break;
    default: return "";
  }
  for (const KindWord& candidate : candidates) {
    if (EqualsFolded(word, candidate.lower)) return candidate.label;
  }
  return "";
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
  if (IsKindlessWord(word)) return "";
  if (t == ");" || t.front() == '.') return "";
  const std::string_view kind = KindOfWord(word);
  if (!kind.empty()) return kind;
  // A module instance, with or without a parameter list.
  if (HasInstanceOrParamHeadAfter(t, wordEnd)) return "INST";
  return "";
}

std::string ClassifyLine(std::string_view line) {
  return std::string(LineLabel(line));
}

}  // namespace quill
