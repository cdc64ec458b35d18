// Whole-text byte searches that look at eight bytes at a time. The linter
// walks the text for parentheses and line feeds several times; most bytes are
// neither, so a word without one is passed over at once.
#ifndef QUILL_COMMON_BYTE_SEARCH_H_
#define QUILL_COMMON_BYTE_SEARCH_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace quill {

namespace byte_search_detail {

inline constexpr std::uint64_t kOnes = 0x0101010101010101ull;
inline constexpr std::uint64_t kHighs = 0x8080808080808080ull;
inline constexpr std::uint64_t kLows = 0x7F7F7F7F7F7F7F7Full;

inline std::uint64_t LoadWord(const char* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// 0x80 in exactly the bytes of `word` that are zero, nothing elsewhere.
inline std::uint64_t ZeroBytes(std::uint64_t word) {
  return ~(((word & kLows) + kLows) | word | kLows);
}

}  // namespace byte_search_detail

// The position of the first byte at or after `from` that is `a` or `b`, or
// npos.
inline std::size_t FindEitherByte(std::string_view text, std::size_t from, char a, char b) {
  using namespace byte_search_detail;
  const std::uint64_t spreadA = static_cast<unsigned char>(a) * kOnes;
  const std::uint64_t spreadB = static_cast<unsigned char>(b) * kOnes;
  std::size_t i = from;
  for (; i + 8 <= text.size(); i += 8) {
    const std::uint64_t word = LoadWord(text.data() + i);
    if ((ZeroBytes(word ^ spreadA) | ZeroBytes(word ^ spreadB)) != 0) break;
  }
  for (; i < text.size(); ++i) {
    if (text[i] == a || text[i] == b) return i;
  }
  return std::string_view::npos;
}

// The position of the first "(" or ")" at or after `from`, or npos.
inline std::size_t FindParenthesis(std::string_view text, std::size_t from) {
  return FindEitherByte(text, from, '(', ')');
}

// The number of LF bytes in `text`.
inline std::size_t CountLineFeeds(std::string_view text) {
  using namespace byte_search_detail;
  std::size_t count = 0;
  std::size_t i = 0;
  for (; i + 8 <= text.size(); i += 8) {
    // One bit per LF byte, summed by a multiply into the top byte (at most 8,
    // so no byte overflows); no popcount instruction is assumed.
    const std::uint64_t lineFeeds = ZeroBytes(LoadWord(text.data() + i) ^ ('\n' * kOnes)) >> 7;
    count += static_cast<std::size_t>((lineFeeds * kOnes) >> 56);
  }
  for (; i < text.size(); ++i) {
    if (text[i] == '\n') ++count;
  }
  return count;
}

}  // namespace quill

#endif  // QUILL_COMMON_BYTE_SEARCH_H_
