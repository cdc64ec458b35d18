#include <cstddef>
#include <string>

#include "common/byte_search.h"
#include "lint/identifiers.h"
#include "lint/line_counter.h"
#include "lint/steps.h"

namespace quill {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kAssignWord = "assign";

// Trimming here removes space, TAB and CR, never LF.
std::string TrimSpaceTabCr(std::string_view s) {
  const std::size_t start = s.find_first_not_of(" \t\r");
  if (start == kNone) return std::string();
  const std::size_t end = s.find_last_not_of(" \t\r");
  return std::string(s.substr(start, end - start + 1));
}

// The position of the assignment operator at or after `pos`: the first "="
// that is not part of "==", "<=", ">=" or "!=", or kNone.
std::size_t FindAssignmentOperator(std::string_view text, std::size_t pos) {
  std::size_t i = pos;
  while (i < text.size()) {
    if (text[i] != '=') {
      ++i;
      continue;
    }
    const char before = i > 0 ? text[i - 1] : '\0';
    if (before == '=' || before == '<' || before == '>' || before == '!') {
      ++i;
    } else if (i + 1 < text.size() && text[i + 1] == '=') {
      i += 2;
    } else {
      return i;
    }
  }
  return kNone;
}

}  // namespace

std::vector<std::string> LhsNames(std::string_view lhs) {
  std::vector<std::string> names;
  const std::string trimmed = TrimSpaceTabCr(lhs);
  const std::string_view t = trimmed;
  if (t.empty()) return names;
  if (t[0] != '{') {
    std::string word = LeadingWord(t);
    if (!word.empty()) names.push_back(std::move(word));
    return names;
  }
  // A concatenation: members are separated by the commas at brace depth 0;
  // the member closed by the outer "}" is split at every comma.
  int depth = 0;
  std::size_t memberStart = 1;
  for (std::size_t i = 1; i < t.size(); ++i) {
    const char c = t[i];
    if (c == '{') {
      ++depth;
    } else if (c == '}' && depth == 0) {
      const std::string_view member = t.substr(memberStart, i - memberStart);
      std::size_t pieceStart = 0;
      for (;;) {
        const std::size_t comma = member.find(',', pieceStart);
        names.push_back(LeadingWord(member.substr(pieceStart, comma == kNone ? kNone : comma - pieceStart)));
        if (comma == kNone) break;
        pieceStart = comma + 1;
      }
      return names;
    } else if (c == '}') {
      --depth;
    } else if (c == ',' && depth == 0) {
      names.push_back(LeadingWord(t.substr(memberStart, i - memberStart)));
      memberStart = i + 1;
    }
  }
  return names;
}

std::vector<ContAssign> ExtractContinuousAssigns(std::string_view text) {
  std::vector<ContAssign> assigns;
  const std::size_t n = text.size();
  LineCounter lines(text);
  std::size_t pos = 0;
  for (;;) {
    const std::size_t p = FindText(text, kAssignWord, pos);
    if (p == kNone) return assigns;
    pos = p + kAssignWord.size();
    // Part of a longer word ("deassign", "assignment", "assign_x", "assign(").
    if (p > 0 && IsWordByte(text[p - 1])) continue;
    if (pos < n && !IsSpaceByte(text[pos])) continue;
    while (pos < n && IsSpaceByte(text[pos])) ++pos;

    // Without an operator, or without a ";" after it, no later assignment
    // can be complete: the step ends.
    const std::size_t op = FindAssignmentOperator(text, pos);
    if (op == kNone) return assigns;
    const std::size_t semicolon = text.find(';', op + 1);
    if (semicolon == kNone) return assigns;

    ContAssign assign;
    assign.line = lines.LineAt(p);
    assign.lhs = TrimSpaceTabCr(text.substr(pos, op - pos));
    assign.rhs = TrimSpaceTabCr(text.substr(op + 1, semicolon - op - 1));
    assign.lhsNames = LhsNames(assign.lhs);
    if (!assign.lhsNames.empty()) assign.target = assign.lhsNames.front();
    assigns.push_back(std::move(assign));
    pos = semicolon + 1;
  }
}

}  // namespace quill
