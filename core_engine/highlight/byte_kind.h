// What a byte means where the scan expects the start of a token, and which
// bytes a word runs over, as 256-entry tables: one load per byte instead of a
// chain of range tests.
#ifndef QUILL_HIGHLIGHT_BYTE_KIND_H_
#define QUILL_HIGHLIGHT_BYTE_KIND_H_

#include <array>

#include "highlight/ascii_class.h"

namespace quill {

enum class ByteKind : unsigned char {
  // Stays plain and changes nothing: white space, punctuation, control bytes,
  // digits (a number ends where a word could start, as after any plain byte)
  // and bytes of 128 and above (UTF-8 lead and continuation bytes alike).
  kPlain,
  kHash,          // "#" opens a comment to the end of the line
  kQuote,         // '"' opens a string
  kOpenBrace,     // "{"
  kCloseBrace,    // "}"
  kOpenBracket,   // "[" may open "[get_ports"
  kCloseBracket,  // "]" ends the port after "[get_ports"
  kDash,          // "-" starts an option when a word-start byte follows
  kWordStart,     // a letter or "_"
};

constexpr std::array<ByteKind, 256> MakeByteKinds() {
  std::array<ByteKind, 256> kinds{};
  for (int b = 0; b < 256; ++b) {
    const auto c = static_cast<unsigned char>(b);
    ByteKind kind = IsWordStartByte(c) ? ByteKind::kWordStart : ByteKind::kPlain;
    switch (c) {
      case '#': kind = ByteKind::kHash; break;
      case '"': kind = ByteKind::kQuote; break;
      case '{': kind = ByteKind::kOpenBrace; break;
      case '}': kind = ByteKind::kCloseBrace; break;
      case '[': kind = ByteKind::kOpenBracket; break;
      case ']': kind = ByteKind::kCloseBracket; break;
      case '-': kind = ByteKind::kDash; break;
      default: break;
    }
    kinds[c] = kind;
  }
  return kinds;
}

constexpr std::array<bool, 256> MakeWordBytes() {
  std::array<bool, 256> wordBytes{};
  for (int b = 0; b < 256; ++b) wordBytes[static_cast<unsigned char>(b)] = IsWordByte(static_cast<unsigned char>(b));
  return wordBytes;
}

inline constexpr std::array<ByteKind, 256> kByteKinds = MakeByteKinds();
inline constexpr std::array<bool, 256> kWordBytes = MakeWordBytes();

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_BYTE_KIND_H_
