// Byte classes and ASCII case folding, shared by the formatter and the
// linter. They follow the pattern engine's default tables, so a hand-written
// scanner agrees with the pattern it stands for: a word byte is [A-Za-z0-9_],
// white space is what \s accepts (space, TAB, LF, VT, FF, CR); bytes of 128
// and above are neither, and only ASCII letters have a case.
#ifndef QUILL_COMMON_CHAR_CLASS_H_
#define QUILL_COMMON_CHAR_CLASS_H_

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace quill {

inline constexpr std::array<bool, 256> kWordBytes = [] {
  std::array<bool, 256> word{};
  for (int c = 0; c < 256; ++c) {
    word[static_cast<std::size_t>(c)] =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  }
  return word;
}();

// \w of the patterns.
inline bool IsWordByte(char c) {
  return kWordBytes[static_cast<unsigned char>(c)];
}

// \s of the patterns.
inline bool IsSpaceByte(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Space, TAB, LF or CR: what is trimmed around a line's content.
inline bool IsBlankByte(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

inline bool IsDigitByte(char c) {
  return c >= '0' && c <= '9';
}

inline char FoldAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// `s` with ASCII letters lower-cased; other bytes stay.
inline std::string ToLowerAscii(std::string_view s) {
  std::string lower(s);
  for (char& c : lower) c = FoldAscii(c);
  return lower;
}

}  // namespace quill

#endif  // QUILL_COMMON_CHAR_CLASS_H_
