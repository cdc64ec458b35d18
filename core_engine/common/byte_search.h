// Whole-text byte searches that look at sixteen bytes at a time with SSE2
// (every x86-64 processor has it) and eight at a time elsewhere. The passes
// walk the text for line feeds and parentheses again and again; most bytes
// are neither, so a block without one is passed over at once.
#ifndef QUILL_COMMON_BYTE_SEARCH_H_
#define QUILL_COMMON_BYTE_SEARCH_H_

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

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

// The place, from 0, of the first byte of a loaded word that holds a 0x80
// marker (`marks` not 0): the lowest byte on a little-endian machine, the
// highest on a big-endian one.
inline std::size_t FirstMarkedByte(std::uint64_t marks) {
  const int bit = std::endian::native == std::endian::little ? std::countr_zero(marks) : std::countl_zero(marks);
  return static_cast<std::size_t>(bit / 8);
}

#if defined(__SSE2__)
inline constexpr std::size_t kBlockBytes = 16;

inline __m128i LoadBlock(const char* bytes) {
  __m128i block;
  std::memcpy(&block, bytes, sizeof block);
  return block;
}

// One bit per byte of the block that equals the byte `spread` holds sixteen
// times; bit k for the k-th byte.
inline unsigned MatchMask(__m128i block, __m128i spread) {
  return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(block, spread)));
}
#endif

}  // namespace byte_search_detail

// The position of the first byte at or after `from` that is `a` or `b`, or
// npos.
inline std::size_t FindEitherByte(std::string_view text, std::size_t from, char a, char b) {
  using namespace byte_search_detail;
  const std::uint64_t spreadA = static_cast<unsigned char>(a) * kOnes;
  const std::uint64_t spreadB = static_cast<unsigned char>(b) * kOnes;
  std::size_t i = from;
#if defined(__SSE2__)
  const __m128i blockA = _mm_set1_epi8(a);
  const __m128i blockB = _mm_set1_epi8(b);
  for (; i + kBlockBytes <= text.size(); i += kBlockBytes) {
    const __m128i block = LoadBlock(text.data() + i);
    const unsigned found = MatchMask(block, blockA) | MatchMask(block, blockB);
    if (found != 0) return i + static_cast<std::size_t>(std::countr_zero(found));
  }
#endif
  for (; i + 8 <= text.size(); i += 8) {
    const std::uint64_t word = LoadWord(text.data() + i);
    const std::uint64_t found = ZeroBytes(word ^ spreadA) | ZeroBytes(word ^ spreadB);
    if (found != 0) return i + FirstMarkedByte(found);
  }
  for (; i < text.size(); ++i) {
    if (text[i] == a || text[i] == b) return i;
  }
  return std::string_view::npos;
}

// The position of the first `c` at or after `from`, or npos. Inline and eight
// bytes at a time: on the short lines of source text this is cheaper than a
// library call per line.
inline std::size_t FindByte(std::string_view text, std::size_t from, char c) {
  using namespace byte_search_detail;
  const std::uint64_t spread = static_cast<unsigned char>(c) * kOnes;
  std::size_t i = from;
#if defined(__SSE2__)
  const __m128i spreadBlock = _mm_set1_epi8(c);
  for (; i + kBlockBytes <= text.size(); i += kBlockBytes) {
    const unsigned found = MatchMask(LoadBlock(text.data() + i), spreadBlock);
    if (found != 0) return i + static_cast<std::size_t>(std::countr_zero(found));
  }
#endif
  for (; i + 8 <= text.size(); i += 8) {
    const std::uint64_t found = ZeroBytes(LoadWord(text.data() + i) ^ spread);
    if (found != 0) return i + FirstMarkedByte(found);
  }
  for (; i < text.size(); ++i) {
    if (text[i] == c) return i;
  }
  return std::string_view::npos;
}

// The position of the first "(" or ")" at or after `from`, or npos.
inline std::size_t FindParenthesis(std::string_view text, std::size_t from) {
  return FindEitherByte(text, from, '(', ')');
}

// The position of the first occurrence of `needle` at or after `from`, or
// npos, as std::string_view::find gives it. Candidates are the places where
// both the first and the last byte of the needle stand, eight at a time, so
// a needle whose first byte is common is not tried at each of them.
inline std::size_t FindText(std::string_view text, std::string_view needle, std::size_t from) {
  using namespace byte_search_detail;
  if (needle.size() < 2) return text.find(needle, from);
  const std::size_t last = needle.size() - 1;
  const std::uint64_t spreadFirst = static_cast<unsigned char>(needle.front()) * kOnes;
  const std::uint64_t spreadLast = static_cast<unsigned char>(needle.back()) * kOnes;
  std::size_t i = from;
#if defined(__SSE2__)
  const __m128i blockFirst = _mm_set1_epi8(needle.front());
  const __m128i blockLast = _mm_set1_epi8(needle.back());
  for (; i <= text.size() && text.size() - i >= last + kBlockBytes; i += kBlockBytes) {
    unsigned found =
        MatchMask(LoadBlock(text.data() + i), blockFirst) & MatchMask(LoadBlock(text.data() + i + last), blockLast);
    while (found != 0) {
      const std::size_t candidate = i + static_cast<std::size_t>(std::countr_zero(found));
      if (text.compare(candidate, needle.size(), needle) == 0) return candidate;
      found &= found - 1;
    }
  }
#endif
  for (; i <= text.size() && text.size() - i >= last + 8; i += 8) {
    std::uint64_t found = ZeroBytes(LoadWord(text.data() + i) ^ spreadFirst) &
                          ZeroBytes(LoadWord(text.data() + i + last) ^ spreadLast);
    constexpr bool kLittle = std::endian::native == std::endian::little;
    while (found != 0) {
      const int bit = kLittle ? std::countr_zero(found) : std::countl_zero(found);
      const std::size_t candidate = i + static_cast<std::size_t>(bit / 8);
      if (text.compare(candidate, needle.size(), needle) == 0) return candidate;
      // Drop the candidate's marker and look at the next one.
      found &= ~(std::uint64_t{1} << (kLittle ? bit : 63 - bit));
    }
  }
  return text.find(needle, i);
}

// The number of LF bytes in `text`.
inline std::size_t CountLineFeeds(std::string_view text) {
  using namespace byte_search_detail;
  std::size_t count = 0;
  std::size_t i = 0;
#if defined(__SSE2__)
  // A 1 in each LF byte, summed per half block by a sum of absolute
  // differences from zero; no popcount instruction is assumed.
  const __m128i lineFeedBlock = _mm_set1_epi8('\n');
  const __m128i zero = _mm_setzero_si128();
  __m128i sums = zero;
  for (; i + kBlockBytes <= text.size(); i += kBlockBytes) {
    const __m128i ones = _mm_sub_epi8(zero, _mm_cmpeq_epi8(LoadBlock(text.data() + i), lineFeedBlock));
    sums = _mm_add_epi64(sums, _mm_sad_epu8(ones, zero));
  }
  count += static_cast<std::size_t>(_mm_cvtsi128_si64(sums)) +
           static_cast<std::size_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(sums, sums)));
#endif
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
