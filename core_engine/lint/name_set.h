// Name containers that ignore ASCII letter case, as Verilog tools compare
// signal names here. An entry keeps the spelling of its first insertion.
#ifndef QUILL_LINT_NAME_SET_H_
#define QUILL_LINT_NAME_SET_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quill {

inline char FoldAscii(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

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

using NameSet = std::unordered_set<std::string, NameHash, NameEqual>;
using NameMap = std::unordered_map<std::string, std::int32_t, NameHash, NameEqual>;

// Lower-cases ASCII letters; other bytes stay.
std::string ToLowerAscii(std::string_view s);

}  // namespace quill

#endif  // QUILL_LINT_NAME_SET_H_
