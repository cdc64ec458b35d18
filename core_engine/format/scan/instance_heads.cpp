#include "format/scan/instance_heads.h"

#include "common/text_utils.h"

namespace quill {
namespace {

std::size_t SkipWord(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsWordByte(s[pos])) ++pos;
  return pos;
}

std::size_t SkipSpaces(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsSpaceByte(s[pos])) ++pos;
  return pos;
}

// The end of the leading "\w+" and the position after the "\s+" behind it,
// or nothing when either is missing.
struct TypeWord {
  std::size_t wordEnd;
  std::size_t next;
};

std::optional<TypeWord> ReadTypeWord(std::string_view t) {
  const std::size_t wordEnd = SkipWord(t, 0);
  if (wordEnd == 0) return std::nullopt;
  const std::size_t next = SkipSpaces(t, wordEnd);
  if (next == wordEnd) return std::nullopt;
  return TypeWord{wordEnd, next};
}

// The position after "\s*\(" at `pos`, or nothing.
std::optional<std::size_t> AfterOpenParenthesis(std::string_view t, std::size_t pos) {
  pos = SkipSpaces(t, pos);
  if (pos >= t.size() || t[pos] != '(') return std::nullopt;
  return pos + 1;
}

}  // namespace

std::optional<InstanceHead> ReadInstanceHead(std::string_view t) {
  const std::optional<TypeWord> type = ReadTypeWord(t);
  if (!type) return std::nullopt;
  const std::size_t nameEnd = SkipWord(t, type->next);
  if (nameEnd == type->next) return std::nullopt;
  const std::optional<std::size_t> end = AfterOpenParenthesis(t, nameEnd);
  if (!end) return std::nullopt;
  return InstanceHead{t.substr(0, type->wordEnd), t.substr(type->next, nameEnd - type->next), *end};
}

std::optional<InstanceHead> ReadParamInstanceHead(std::string_view t) {
  const std::optional<TypeWord> type = ReadTypeWord(t);
  if (!type || type->next >= t.size() || t[type->next] != '#') return std::nullopt;
  const std::optional<std::size_t> end = AfterOpenParenthesis(t, type->next + 1);
  if (!end) return std::nullopt;
  return InstanceHead{t.substr(0, type->wordEnd), {}, *end};
}

std::optional<InstanceHead> ReadTypeAndName(std::string_view t) {
  const std::optional<TypeWord> type = ReadTypeWord(t);
  if (!type || type->next >= t.size() || SkipWord(t, type->next) != t.size()) return std::nullopt;
  return InstanceHead{t.substr(0, type->wordEnd), t.substr(type->next), t.size()};
}

std::optional<InstanceHead> ReadSingleWord(std::string_view t) {
  if (t.empty() || SkipWord(t, 0) != t.size()) return std::nullopt;
  return InstanceHead{t, {}, t.size()};
}

std::optional<InstanceHead> ReadCallHead(std::string_view t) {
  const std::size_t wordEnd = SkipWord(t, 0);
  if (wordEnd == 0) return std::nullopt;
  const std::optional<std::size_t> end = AfterOpenParenthesis(t, wordEnd);
  if (!end) return std::nullopt;
  return InstanceHead{t.substr(0, wordEnd), {}, *end};
}

// After the type word and its blanks, a "#" leaves only the parameterised
// head (a name cannot start with it), and anything else only the instance
// head.
bool HasInstanceOrParamHead(std::string_view t) {
  return HasInstanceOrParamHeadAfter(t, SkipWord(t, 0));
}

bool HasInstanceOrParamHeadAfter(std::string_view t, std::size_t wordEnd) {
  if (wordEnd == 0) return false;
  const std::size_t next = SkipSpaces(t, wordEnd);
  if (next == wordEnd) return false;
  if (next < t.size() && t[next] == '#') return AfterOpenParenthesis(t, next + 1).has_value();
  const std::size_t nameEnd = SkipWord(t, next);
  return nameEnd != next && AfterOpenParenthesis(t, nameEnd).has_value();
}

// A lone word is the single-word shape; every other shape needs blanks behind
// the type word, and a second word ends the text (type and name) or is
// followed by "(" (instance head).
bool HasAnyHeaderShape(std::string_view t) {
  const std::size_t wordEnd = SkipWord(t, 0);
  if (wordEnd == 0) return false;
  if (wordEnd == t.size()) return true;
  const std::size_t next = SkipSpaces(t, wordEnd);
  if (next == wordEnd || next == t.size()) return false;
  if (t[next] == '#') return AfterOpenParenthesis(t, next + 1).has_value();
  const std::size_t nameEnd = SkipWord(t, next);
  if (nameEnd == next) return false;
  return nameEnd == t.size() || AfterOpenParenthesis(t, nameEnd).has_value();
}

}  // namespace quill
