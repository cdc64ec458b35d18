#include "highlight/word_set.h"

#include "highlight/ascii_class.h"

namespace quill {

namespace {

constexpr std::size_t kInitialSlots = 16;

bool EqualsIgnoringCase(const unsigned char* word, std::string_view lowerWord) {
  for (std::size_t k = 0; k < lowerWord.size(); ++k) {
    if (LowerAsciiByte(word[k]) != static_cast<unsigned char>(lowerWord[k])) return false;
  }
  return true;
}

}  // namespace

std::uint32_t WordSet::HashIgnoringCase(const unsigned char* word, std::size_t length) {
  std::uint32_t hash = 2166136261u;
  for (std::size_t k = 0; k < length; ++k) {
    hash ^= LowerAsciiByte(word[k]);
    hash *= 16777619u;
  }
  // FNV-1a leaves its low bits weak; the table indexes by them.
  hash ^= hash >> 16;
  hash *= 0x7feb352du;
  hash ^= hash >> 15;
  return hash;
}

void WordSet::Insert(std::string_view word) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(word.data());
  const std::uint32_t hash = HashIgnoringCase(bytes, word.size());
  if (Contains(bytes, word.size(), hash)) return;
  std::string lower(word);
  for (char& c : lower) c = static_cast<char>(LowerAsciiByte(static_cast<unsigned char>(c)));
  words_.push_back(std::move(lower));
  if (word.size() > maxLength_) maxLength_ = word.size();
  if (words_.size() * 2 > slots_.size()) {
    Grow();
  } else {
    Place(hash, static_cast<std::uint32_t>(words_.size()));
  }
}

bool WordSet::Contains(const unsigned char* word, std::size_t length, std::uint32_t hash) const {
  if (slots_.empty()) return false;
  const std::size_t mask = slots_.size() - 1;
  for (std::size_t k = hash & mask;; k = (k + 1) & mask) {
    const Slot& slot = slots_[k];
    if (slot.wordNumber == 0) return false;
    if (slot.hash != hash) continue;
    const std::string& candidate = words_[slot.wordNumber - 1];
    if (candidate.size() == length && EqualsIgnoringCase(word, candidate)) return true;
  }
}

void WordSet::Place(std::uint32_t hash, std::uint32_t wordNumber) {
  const std::size_t mask = slots_.size() - 1;
  std::size_t k = hash & mask;
  while (slots_[k].wordNumber != 0) k = (k + 1) & mask;
  slots_[k] = Slot{hash, wordNumber};
}

void WordSet::Grow() {
  std::size_t size = slots_.empty() ? kInitialSlots : slots_.size();
  while (words_.size() * 2 > size) size *= 2;
  slots_.assign(size, Slot{});
  for (std::size_t n = 0; n < words_.size(); ++n) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(words_[n].data());
    Place(HashIgnoringCase(bytes, words_[n].size()), static_cast<std::uint32_t>(n + 1));
  }
}

void BuildWordSet(WordSet& set, const std::string_view* array, std::size_t count) {
  for (std::size_t n = 0; n < count; ++n) set.Insert(array[n]);
}

}  // namespace quill
