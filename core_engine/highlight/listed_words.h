// The listed words (constraint keywords, tool commands, flow commands, pin
// properties) in one open-addressing table that the compiler builds from the
// word lists. A lookup hashes the word's length and three of its bytes, reads
// one or a few slots and compares the candidate in full: no hashing of the
// whole word, no set per class, nothing built at run time.
#ifndef QUILL_HIGHLIGHT_LISTED_WORDS_H_
#define QUILL_HIGHLIGHT_LISTED_WORDS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

#include "highlight/ascii_class.h"
#include "highlight/token_class.h"
#include "highlight/word_lists.h"

namespace quill {

inline constexpr std::size_t kMaxListedLength = 24;  // "report_clock_interaction"

struct ListedWord {
  std::array<unsigned char, kMaxListedLength> lower{};  // lower-case bytes, zero after `length`
  std::size_t length = 0;
  TokenClass tokenClass = TokenClass::kPlain;
};

struct ListedWordTable {
  static constexpr std::size_t kSlotBits = 9;
  static constexpr std::size_t kSlotCount = std::size_t{1} << kSlotBits;
  static constexpr std::size_t kCapacity = 255;  // entry numbers fit a byte

  std::array<ListedWord, kCapacity> words{};
  std::size_t count = 0;
  std::array<unsigned char, kSlotCount> slots{};  // entry number plus one; 0 marks a free slot
  std::size_t longestProbe = 0;                   // most slots any listed word needs
};

// The home slot of the `length` (1 or more) bytes at `word`. "| 0x20" maps an
// upper-case letter to its lower case and every other byte to one fixed
// value, so a word and its listed lower-case form get the same slot.
constexpr std::size_t ListedSlotOf(const unsigned char* word, std::size_t length) {
  const std::uint32_t key = static_cast<std::uint32_t>(length) | (word[0] | 0x20u) << 8 |
                            (word[length / 2] | 0x20u) << 16 | (word[length - 1] | 0x20u) << 24;
  return (key * 0x85EBCA6Bu) >> (32 - ListedWordTable::kSlotBits);
}

// Lower-cases the ASCII letters among the eight bytes of `block` at once:
// per byte, with the top bit set aside, adding 0x3F carries into bit 7 from
// 'A' up and adding 0x25 from past 'Z'; bytes of 128 and above stay.
constexpr std::uint64_t LowerAsciiBlock(std::uint64_t block) {
  constexpr std::uint64_t kOnes = 0x0101010101010101u;
  const std::uint64_t low7 = block & (0x7F * kOnes);
  const std::uint64_t fromA = low7 + (0x80 - 'A') * kOnes;
  const std::uint64_t pastZ = low7 + (0x7F - 'Z') * kOnes;
  const std::uint64_t upper = fromA & ~pastZ & ~block & (0x80 * kOnes);
  return block | (upper >> 2);
}

template <typename Block>
bool BlocksMatch(const unsigned char* word, const unsigned char* lower, std::size_t at) {
  Block text{};
  Block listed{};
  std::memcpy(&text, word + at, sizeof text);
  std::memcpy(&listed, lower + at, sizeof listed);
  return static_cast<Block>(LowerAsciiBlock(text)) == listed;
}

// Whether the `entry.length` bytes at `word` are the entry's ignoring case.
// At run time the bytes are compared in blocks of 8, 4 or 2, the last block
// overlapping the one before it, so nothing past the word is read.
constexpr bool EqualsListedWord(const unsigned char* word, const ListedWord& entry) {
  const std::size_t length = entry.length;
  const unsigned char* lower = entry.lower.data();
  if (std::is_constant_evaluated() || length < 2) {
    for (std::size_t k = 0; k < length; ++k) {
      if (LowerAsciiByte(word[k]) != lower[k]) return false;
    }
    return true;
  }
  if (length < 4) return BlocksMatch<std::uint16_t>(word, lower, 0) && BlocksMatch<std::uint16_t>(word, lower, length - 2);
  if (length < 8) return BlocksMatch<std::uint32_t>(word, lower, 0) && BlocksMatch<std::uint32_t>(word, lower, length - 4);
  for (std::size_t at = 0; at + 8 < length; at += 8) {
    if (!BlocksMatch<std::uint64_t>(word, lower, at)) return false;
  }
  return BlocksMatch<std::uint64_t>(word, lower, length - 8);
}

// The entry holding the `length` bytes at `word` ignoring case, or null.
constexpr const ListedWord* FindListedWord(const ListedWordTable& table, const unsigned char* word,
                                           std::size_t length) {
  if (length == 0 || length > kMaxListedLength) return nullptr;
  constexpr std::size_t kMask = ListedWordTable::kSlotCount - 1;
  for (std::size_t slot = ListedSlotOf(word, length);; slot = (slot + 1) & kMask) {
    const std::size_t number = table.slots[slot];
    if (number == 0) return nullptr;
    const ListedWord& entry = table.words[number - 1];
    if (entry.length == length && EqualsListedWord(word, entry)) return &entry;
  }
}

// Adds the words of `list` with `tokenClass`; a word already added by an
// earlier list keeps that list's class. A word longer than kMaxListedLength
// stops compilation (the throw is not a constant expression).
template <std::size_t N>
constexpr void AddListedWords(ListedWordTable& table, const std::array<std::string_view, N>& list,
                              TokenClass tokenClass) {
  for (std::string_view text : list) {
    if (text.empty() || text.size() > kMaxListedLength || table.count == ListedWordTable::kCapacity) {
      throw "listed word does not fit the table";
    }
    ListedWord entry;
    entry.length = text.size();
    entry.tokenClass = tokenClass;
    for (std::size_t k = 0; k < text.size(); ++k) entry.lower[k] = LowerAsciiByte(static_cast<unsigned char>(text[k]));
    if (FindListedWord(table, entry.lower.data(), entry.length) != nullptr) continue;
    table.words[table.count++] = entry;
    std::size_t slot = ListedSlotOf(entry.lower.data(), entry.length);
    std::size_t probe = 1;
    for (; table.slots[slot] != 0; ++probe) slot = (slot + 1) & (ListedWordTable::kSlotCount - 1);
    table.slots[slot] = static_cast<unsigned char>(table.count);
    if (probe > table.longestProbe) table.longestProbe = probe;
  }
}

constexpr ListedWordTable BuildListedWordTable() {
  ListedWordTable table;
  AddListedWords(table, kConstraintKeywords, TokenClass::kKeyword);
  AddListedWords(table, kToolCommands, TokenClass::kToolCommand);
  AddListedWords(table, kFlowCommands, TokenClass::kFlowCommand);
  AddListedWords(table, kPinProperties, TokenClass::kProperty);
  return table;
}

inline constexpr ListedWordTable kListedWords = BuildListedWordTable();

// A table filled to a third keeps probes short; more words want more slots.
static_assert(kListedWords.count * 3 <= ListedWordTable::kSlotCount);

// The class of the first list, in the order keywords, tool commands, flow
// commands, pin properties, that holds the `length` bytes at `word` ignoring
// case; kPlain when none does.
inline TokenClass ClassifyListedWord(const unsigned char* word, std::size_t length) {
  const ListedWord* entry = FindListedWord(kListedWords, word, length);
  return entry != nullptr ? entry->tokenClass : TokenClass::kPlain;
}

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_LISTED_WORDS_H_
