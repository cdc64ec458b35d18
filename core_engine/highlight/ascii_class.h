// Byte tests of the C library in the "C" locale, without its locale lookups:
// bytes of 128 and above are never letters, digits or white space.
#ifndef QUILL_HIGHLIGHT_ASCII_CLASS_H_
#define QUILL_HIGHLIGHT_ASCII_CLASS_H_

namespace quill {

constexpr bool IsAsciiUpper(unsigned char c) {
  return c >= 'A' && c <= 'Z';
}
constexpr bool IsAsciiLower(unsigned char c) {
  return c >= 'a' && c <= 'z';
}
constexpr bool IsAsciiAlpha(unsigned char c) {
  return IsAsciiUpper(c) || IsAsciiLower(c);
}
constexpr bool IsAsciiDigit(unsigned char c) {
  return c >= '0' && c <= '9';
}

// A letter, digit or "_": the bytes a word extends over.
constexpr bool IsWordByte(unsigned char c) {
  return IsAsciiAlpha(c) || IsAsciiDigit(c) || c == '_';
}

// A letter or "_": the bytes a word may start with.
constexpr bool IsWordStartByte(unsigned char c) {
  return IsAsciiAlpha(c) || c == '_';
}

constexpr unsigned char LowerAsciiByte(unsigned char c) {
  return IsAsciiUpper(c) ? static_cast<unsigned char>(c - 'A' + 'a') : c;
}

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_ASCII_CLASS_H_
