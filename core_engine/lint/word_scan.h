// Word tests that the always-block analysis and the checks share, on the
// byte classes of common/char_class.h.
#ifndef QUILL_LINT_WORD_SCAN_H_
#define QUILL_LINT_WORD_SCAN_H_

#include <cstddef>
#include <string_view>

#include "common/byte_search.h"
#include "common/char_class.h"

namespace quill {

// Whether `text` holds `word` at `pos`, ASCII letters compared without case.
inline bool HasWordAtIgnoreCase(std::string_view text, std::size_t pos, std::string_view word) {
  if (pos > text.size() || text.size() - pos < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (FoldAscii(text[pos + i]) != FoldAscii(word[i])) return false;
  }
  return true;
}

inline bool EqualsIgnoreCase(std::string_view a, std::string_view b) {
  return a.size() == b.size() && HasWordAtIgnoreCase(a, 0, b);
}

// Whether \b holds at `pos`: the bytes on either side differ in being word
// bytes, the outside of the text counting as a non-word byte.
inline bool IsWordBoundary(std::string_view text, std::size_t pos) {
  bool before = pos > 0 && pos <= text.size() && IsWordByte(text[pos - 1]);
  bool after = pos < text.size() && IsWordByte(text[pos]);
  return before != after;
}

// Calls visit(begin, end) for every maximal run of word bytes, left to right.
// A run bounded by \b on both sides is exactly such a run, so this serves for
// patterns of the form "\bword\b".
template <typename Visitor>
void ForEachWordRun(std::string_view text, Visitor&& visit) {
  std::size_t i = 0;
  while (i < text.size()) {
    if (!IsWordByte(text[i])) {
      ++i;
      continue;
    }
    std::size_t begin = i;
    while (i < text.size() && IsWordByte(text[i])) ++i;
    visit(begin, i);
  }
}

// Calls visit(begin, end) for every maximal run of word bytes that holds the
// letter `a` or `b`, left to right: the runs of ForEachWordRun less those
// without either. A search for the keywords that all hold one of two rare
// letters so passes over most of the text eight bytes at a time.
template <typename Visitor>
void ForEachWordRunHolding(std::string_view text, char a, char b, Visitor&& visit) {
  std::size_t from = 0;
  for (;;) {
    const std::size_t hit = FindEitherByte(text, from, a, b);
    if (hit == std::string_view::npos) return;
    // No word byte lies between `from` and the previous run, so the walk
    // back stops at the start of the run that holds the hit.
    std::size_t begin = hit;
    while (begin > from && IsWordByte(text[begin - 1])) --begin;
    std::size_t end = hit;
    while (end < text.size() && IsWordByte(text[end])) ++end;
    visit(begin, end);
    from = end;
  }
}

}  // namespace quill

#endif  // QUILL_LINT_WORD_SCAN_H_
