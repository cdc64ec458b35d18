// Word and name containers that ignore ASCII letter case, as Verilog tools
// compare keywords and signal names. An entry keeps the spelling of its first insertion.
#ifndef QUILL_COMMON_NAME_SET_H_
#define QUILL_COMMON_NAME_SET_H_

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/char_class.h"

namespace quill {

// h = h * 131 + tolower(c) over the bytes taken as signed chars, in wrapping
// 64-bit arithmetic (bytes of 128 and above add their negative value).
struct NameHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view name) const noexcept {
    std::uint64_t hash = 0;
    for (char c : name) {
      const auto folded = static_cast<std::int64_t>(static_cast<signed char>(FoldAscii(c)));
      hash = hash * 131 + static_cast<std::uint64_t>(folded);
    }
    return static_cast<std::size_t>(hash);
  }
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const noexcept {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (FoldAscii(a[i]) != FoldAscii(b[i])) return false;
    }
    return true;
  }
};

// The hash of the name tables, eight bytes at a time. Every byte is taken
// with bit 0x20 set, which is all that ASCII case changes, so names that
// NameEqual holds equal hash alike; the few other bytes it merges only share
// a hash. Its value decides nothing but where a table probes.
inline std::uint64_t FoldedTableHash(std::string_view name) noexcept {
  constexpr std::uint64_t kCaseBits = 0x2020202020202020ull;
  constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ull;
  std::uint64_t hash = name.size();
  const char* bytes = name.data();
  std::size_t left = name.size();
  for (; left >= 8; left -= 8, bytes += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, 8);
    hash = (hash ^ (word | kCaseBits)) * kMultiplier;
    hash ^= hash >> 29;
  }
  if (left > 0) {
    std::uint64_t word = 0;
    if (name.size() >= 8) {
      // The last eight bytes, some of them hashed already: one fixed load.
      std::memcpy(&word, name.data() + name.size() - 8, 8);
    } else {
      for (std::size_t k = 0; k < left; ++k) word |= std::uint64_t{static_cast<unsigned char>(bytes[k])} << (8 * k);
    }
    hash = (hash ^ (word | kCaseBits)) * kMultiplier;
    hash ^= hash >> 29;
  }
  return hash;
}

// An open-addressing table of entries keyed by name, kept in insertion order.
// Lint calls look names up once per identifier of the text, so the table
// avoids a node per entry and a division per probe: slots hold an entry index
// and part of the hash, and the capacity is a power of two kept at least
// twice the entry count.
template <typename Entry, typename KeyOf>
class FoldedNameTable {
 public:
  using value_type = Entry;
  using const_iterator = typename std::vector<Entry>::const_iterator;

  std::size_t size() const noexcept { return entries_.size(); }
  bool empty() const noexcept { return entries_.empty(); }
  const_iterator begin() const noexcept { return entries_.begin(); }
  const_iterator end() const noexcept { return entries_.end(); }

  const_iterator find(std::string_view name) const {
    std::size_t index = IndexOf(name);
    return index == kAbsent ? entries_.end() : entries_.begin() + static_cast<std::ptrdiff_t>(index);
  }
  std::size_t count(std::string_view name) const { return IndexOf(name) == kAbsent ? 0 : 1; }

  // Room for `count` entries without a rehash or a move of the entries. A
  // table sized from its input skips the growth steps, each of which hashes
  // every name again and moves every entry.
  void reserve(std::size_t count) {
    entries_.reserve(count);
    std::size_t capacity = slots_.empty() ? 16 : slots_.size();
    while (capacity < count * 2) capacity *= 2;
    if (capacity > slots_.size()) Rehash(capacity);
  }

 protected:
  static constexpr std::size_t kAbsent = static_cast<std::size_t>(-1);

  std::size_t IndexOf(std::string_view name) const {
    if (slots_.empty()) return kAbsent;
    const std::uint64_t hash = FoldedTableHash(name);
    const std::uint32_t tag = static_cast<std::uint32_t>(hash);
    for (std::size_t s = Home(hash);; s = (s + 1) & (slots_.size() - 1)) {
      const Slot& slot = slots_[s];
      if (slot.index == 0) return kAbsent;
      if (slot.tag == tag && SameName(KeyOf{}(entries_[slot.index - 1]), name)) return slot.index - 1;
    }
  }

  // The index of the entry for `name`, made by `make` when there is none;
  // the flag tells whether it was made.
  template <typename Make>
  std::pair<std::size_t, bool> FindOrAdd(std::string_view name, Make&& make) {
    if ((entries_.size() + 1) * 2 > slots_.size()) Grow();
    const std::uint64_t hash = FoldedTableHash(name);
    const std::uint32_t tag = static_cast<std::uint32_t>(hash);
    for (std::size_t s = Home(hash);; s = (s + 1) & (slots_.size() - 1)) {
      Slot& slot = slots_[s];
      if (slot.index == 0) {
        entries_.push_back(make());
        slot.index = static_cast<std::uint32_t>(entries_.size());
        slot.tag = tag;
        return {entries_.size() - 1, true};
      }
      if (slot.tag == tag && SameName(KeyOf{}(entries_[slot.index - 1]), name)) return {slot.index - 1, false};
    }
  }

  std::vector<Entry> entries_;

 private:
  // NameEqual, answered by one byte comparison when the spellings agree, as
  // most repeated uses of a name do.
  static bool SameName(std::string_view key, std::string_view name) {
    return key.size() == name.size() && (key == name || NameEqual{}(key, name));
  }

  struct Slot {
    std::uint32_t index = 0;  // entry index + 1; 0 for an empty slot
    std::uint32_t tag = 0;    // the low half of the name's hash
  };

  // Multiplicative spreading: the home slot comes from the high bits of the
  // product, where every bit of the hash has had its effect.
  std::size_t Home(std::uint64_t hash) const {
    return static_cast<std::size_t>((hash * 0x9E3779B97F4A7C15ull) >> shift_);
  }

  void Grow() { Rehash(slots_.empty() ? 16 : slots_.size() * 2); }

  void Rehash(std::size_t capacity) {
    slots_.assign(capacity, Slot{});
    shift_ = 64;
    for (std::size_t c = capacity; c > 1; c >>= 1) --shift_;
    for (std::size_t i = 0; i < entries_.size(); ++i) {
      const std::uint64_t hash = FoldedTableHash(KeyOf{}(entries_[i]));
      std::size_t s = Home(hash);
      while (slots_[s].index != 0) s = (s + 1) & (capacity - 1);
      slots_[s].index = static_cast<std::uint32_t>(i + 1);
      slots_[s].tag = static_cast<std::uint32_t>(hash);
    }
  }

  std::vector<Slot> slots_;
  unsigned shift_ = 64;
};

struct NameOfString {
  std::string_view operator()(const std::string& name) const noexcept { return name; }
};

// A set of names; an entry keeps the spelling of its first insertion.
class NameSet : public FoldedNameTable<std::string, NameOfString> {
 public:
  NameSet() = default;
  NameSet(std::initializer_list<std::string_view> names) {
    for (std::string_view name : names) insert(name);
  }

  std::pair<const_iterator, bool> insert(std::string_view name) {
    auto [index, added] = FindOrAdd(name, [name] { return std::string(name); });
    return {begin() + static_cast<std::ptrdiff_t>(index), added};
  }
  std::pair<const_iterator, bool> emplace(std::string_view name) { return insert(name); }

  friend bool operator==(const NameSet& a, const NameSet& b) {
    if (a.size() != b.size()) return false;
    for (const std::string& name : a) {
      if (b.count(name) == 0) return false;
    }
    return true;
  }
};

struct NameOfPair {
  std::string_view operator()(const std::pair<std::string, std::int32_t>& entry) const noexcept {
    return entry.first;
  }
};

// A map from name to a signed 32-bit value.
class NameMap : public FoldedNameTable<std::pair<std::string, std::int32_t>, NameOfPair> {
 public:
  using iterator = std::vector<std::pair<std::string, std::int32_t>>::iterator;
  using FoldedNameTable::begin;
  using FoldedNameTable::end;
  using FoldedNameTable::find;

  NameMap() = default;
  NameMap(std::initializer_list<std::pair<std::string_view, std::int32_t>> entries) {
    for (const auto& [name, value] : entries) emplace(name, value);
  }

  iterator begin() noexcept { return entries_.begin(); }
  iterator end() noexcept { return entries_.end(); }
  iterator find(std::string_view name) {
    std::size_t index = IndexOf(name);
    return index == kAbsent ? entries_.end() : entries_.begin() + static_cast<std::ptrdiff_t>(index);
  }

  // Adds (name, value) unless the name is there; the existing value stays.
  std::pair<iterator, bool> emplace(std::string_view name, std::int32_t value) {
    auto [index, added] = FindOrAdd(name, [name, value] { return std::make_pair(std::string(name), value); });
    return {entries_.begin() + static_cast<std::ptrdiff_t>(index), added};
  }

  std::int32_t& operator[](std::string_view name) { return emplace(name, 0).first->second; }

  // The value of `name`, which must be present.
  const std::int32_t& at(std::string_view name) const {
    std::size_t index = IndexOf(name);
    if (index == kAbsent) throw std::out_of_range("NameMap::at");
    return entries_[index].second;
  }

  friend bool operator==(const NameMap& a, const NameMap& b) {
    if (a.size() != b.size()) return false;
    for (const auto& [name, value] : a) {
      auto found = b.find(name);
      if (found == b.end() || found->second != value) return false;
    }
    return true;
  }
};

}  // namespace quill

#endif  // QUILL_COMMON_NAME_SET_H_
