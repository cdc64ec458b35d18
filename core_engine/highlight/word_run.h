// Where a run of word bytes (letters, digits, "_") ends, eight bytes at a
// time. Words in constraint files are mostly 5 to 15 bytes long; a byte loop
// pays a branch per byte and a mispredicted exit per word, a block test finds
// the end of most words with one.
#ifndef QUILL_HIGHLIGHT_WORD_RUN_H_
#define QUILL_HIGHLIGHT_WORD_RUN_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "common/byte_search.h"
#include "highlight/byte_kind.h"

namespace quill {

namespace word_run_detail {

using byte_search_detail::kHighs;
using byte_search_detail::kLows;
using byte_search_detail::kOnes;

// 0x80 in each byte of `low7` (top bits clear) that lies in [lo, hi]. Each
// sum stays below 0x100, so no byte carries into the next.
constexpr std::uint64_t BytesInRange(std::uint64_t low7, unsigned char lo, unsigned char hi) {
  const std::uint64_t fromLo = low7 + (0x80u - lo) * kOnes;
  const std::uint64_t pastHi = low7 + (0x7Fu - hi) * kOnes;
  return fromLo & ~pastHi & kHighs;
}

// 0x80 in each byte of `block` that is not a letter, digit or "_".
constexpr std::uint64_t NonWordBytes(std::uint64_t block) {
  const std::uint64_t low7 = block & kLows;
  const std::uint64_t letters = BytesInRange(low7 | 0x20 * kOnes, 'a', 'z');
  const std::uint64_t digits = BytesInRange(low7, '0', '9');
  const std::uint64_t underscores = BytesInRange(low7, '_', '_');
  // Bytes of 128 and above are never word bytes, whatever their low bits.
  return ~((letters | digits | underscores) & ~block) & kHighs;
}

}  // namespace word_run_detail

// The first position at or after `from` whose byte is not a word byte, or
// `length`.
inline std::size_t EndOfWordRun(const unsigned char* text, std::size_t length, std::size_t from) {
  using namespace word_run_detail;
  std::size_t i = from;
  for (; length - i >= 8; i += 8) {
    std::uint64_t block = 0;
    std::memcpy(&block, text + i, sizeof block);
    const std::uint64_t stops = NonWordBytes(block);
    if (stops != 0) return i + byte_search_detail::FirstMarkedByte(stops);
  }
  while (i < length && kWordBytes[text[i]]) ++i;
  return i;
}

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_WORD_RUN_H_
