// A set of words compared ignoring ASCII letter case, for the highlighter's
// keyword lookups. Open addressing over a small power-of-two table: a word is
// hashed once and the same hash probes every set, without copying the word.
#ifndef QUILL_HIGHLIGHT_WORD_SET_H_
#define QUILL_HIGHLIGHT_WORD_SET_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill {

class WordSet {
 public:
  // Hash of the lower-case form of `length` bytes at `word`.
  static std::uint32_t HashIgnoringCase(const unsigned char* word, std::size_t length);

  // Adds the lower-case form of `word`; a word already present is kept once.
  void Insert(std::string_view word);

  // Whether the set holds the word, in any letter case. `hash` is
  // HashIgnoringCase of the same bytes.
  bool Contains(const unsigned char* word, std::size_t length, std::uint32_t hash) const;

  std::size_t Size() const { return words_.size(); }

  // Length of the longest word held; 0 when empty.
  std::size_t MaxLength() const { return maxLength_; }

 private:
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t wordNumber = 0;  // index into words_ plus one; 0 marks a free slot
  };

  void Place(std::uint32_t hash, std::uint32_t wordNumber);
  void Grow();

  std::vector<std::string> words_;
  std::vector<Slot> slots_;
  std::size_t maxLength_ = 0;
};

// Inserts the first `count` entries of `array` into `set`, each lower-cased.
void BuildWordSet(WordSet& set, const std::string_view* array, std::size_t count);

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_WORD_SET_H_
