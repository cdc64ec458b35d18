#include "format/scan/instance_heads.h"

#include <cstddef>

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

// The position after "\w+\s+" at the start of `t`, or 0 when it is not there.
std::size_t AfterTypeWord(std::string_view t) {
  const std::size_t wordEnd = SkipWord(t, 0);
  if (wordEnd == 0) return 0;
  const std::size_t next = SkipSpaces(t, wordEnd);
  return next == wordEnd ? 0 : next;
}

bool IsOpenParenthesisAfterSpaces(std::string_view t, std::size_t pos) {
  pos = SkipSpaces(t, pos);
  return pos < t.size() && t[pos] == '(';
}

}  // namespace

bool HasInstanceHead(std::string_view t) {
  const std::size_t name = AfterTypeWord(t);
  if (name == 0) return false;
  const std::size_t nameEnd = SkipWord(t, name);
  return nameEnd > name && IsOpenParenthesisAfterSpaces(t, nameEnd);
}

bool HasParamInstanceHead(std::string_view t) {
  const std::size_t hash = AfterTypeWord(t);
  return hash != 0 && hash < t.size() && t[hash] == '#' && IsOpenParenthesisAfterSpaces(t, hash + 1);
}

bool IsTypeAndName(std::string_view t) {
  const std::size_t name = AfterTypeWord(t);
  return name != 0 && name < t.size() && SkipWord(t, name) == t.size();
}

bool IsSingleWord(std::string_view t) {
  return !t.empty() && SkipWord(t, 0) == t.size();
}

}  // namespace quill
