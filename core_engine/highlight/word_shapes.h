// The shapes that make an unlisted word an I/O standard or a package pin.
#ifndef QUILL_HIGHLIGHT_WORD_SHAPES_H_
#define QUILL_HIGHLIGHT_WORD_SHAPES_H_

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "highlight/ascii_class.h"
#include "highlight/word_lists.h"

namespace quill {

static_assert(kIoStandardPrefixes.size() <= 32, "prefix numbers must fit the masks");

// For each byte, the I/O-standard prefixes (bit k for entry k) whose first
// letter it is in either case, so that a word tries only those few.
constexpr std::array<std::uint32_t, 256> MakeIoStandardPrefixMasks() {
  std::array<std::uint32_t, 256> masks{};
  for (std::size_t k = 0; k < kIoStandardPrefixes.size(); ++k) {
    const auto first = LowerAsciiByte(static_cast<unsigned char>(kIoStandardPrefixes[k][0]));
    const std::uint32_t bit = std::uint32_t{1} << k;
    masks[first] |= bit;
    if (IsAsciiLower(first)) masks[static_cast<unsigned char>(first - 'a' + 'A')] |= bit;
  }
  return masks;
}

inline constexpr std::array<std::uint32_t, 256> kIoStandardPrefixMasks = MakeIoStandardPrefixMasks();

inline bool StartsWithIgnoringCase(const unsigned char* at, std::string_view prefix) {
  for (std::size_t k = 0; k < prefix.size(); ++k) {
    if (LowerAsciiByte(at[k]) != LowerAsciiByte(static_cast<unsigned char>(prefix[k]))) return false;
  }
  return true;
}

// Whether the word is an I/O standard: its run of letters, digits and "_"
// (`runLength` bytes, the word without a bit select) must start with a listed
// prefix ignoring case and go on past it, and must be the whole word. Which
// prefix matches makes no difference to the answer.
inline bool IsIoStandard(const unsigned char* word, std::size_t runLength, std::size_t wordLength) {
  if (runLength == 0) return false;
  for (std::uint32_t mask = kIoStandardPrefixMasks[word[0]]; mask != 0; mask &= mask - 1) {
    const std::string_view prefix = kIoStandardPrefixes[static_cast<std::size_t>(std::countr_zero(mask))];
    if (runLength > prefix.size() && StartsWithIgnoringCase(word, prefix)) return runLength == wordLength;
  }
  return false;
}

// Whether the word from `start` to `end` has the shape of a package pin: an
// optional "PIN_", one to three upper-case letters, one to three digits, and
// then no further letter, digit or "_".
inline bool IsPinName(const unsigned char* text, std::size_t length, std::size_t start, std::size_t end) {
  constexpr std::string_view kPinPrefix = "PIN_";
  std::size_t k = start;
  if (length - start >= kPinPrefix.size() && std::memcmp(text + k, kPinPrefix.data(), kPinPrefix.size()) == 0) {
    k += kPinPrefix.size();
  }
  std::size_t letters = 0;
  while (k < length && letters <= 3 && IsAsciiUpper(text[k])) {
    ++k;
    ++letters;
  }
  if (letters == 0 || letters > 3) return false;
  std::size_t digits = 0;
  while (k < length && digits <= 3 && IsAsciiDigit(text[k])) {
    ++k;
    ++digits;
  }
  if (digits == 0 || digits > 3) return false;
  if (k < length && IsWordByte(text[k])) return false;
  return k == end;
}

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_WORD_SHAPES_H_
