// Runs of bytes of one kind, for the tool's own scans of Verilog text: a
// table of 256 flags says which bytes belong, and a run is passed four bytes
// at a time, as the scans spend most of their time in long runs (words,
// blanks, the bytes between two that matter).
#ifndef QUILL_CLI_BYTE_RUNS_H_
#define QUILL_CLI_BYTE_RUNS_H_

#include <array>
#include <cstddef>
#include <string_view>

namespace quill::cli {

using ByteSet = std::array<bool, 256>;

inline bool InSet(const ByteSet& set, char c) {
  return set[static_cast<unsigned char>(c)];
}

// InSet as a number, so that four of them combine without branches.
inline unsigned FlagOf(const ByteSet& set, char c) {
  return set[static_cast<unsigned char>(c)] ? 1u : 0u;
}

// The first byte in [p, end) that is not in `set`, or end.
inline const char* SkipRun(const char* p, const char* const end, const ByteSet& set) {
  while (end - p >= 4 && (FlagOf(set, p[0]) & FlagOf(set, p[1]) & FlagOf(set, p[2]) & FlagOf(set, p[3])) != 0) p += 4;
  while (p != end && InSet(set, *p)) ++p;
  return p;
}

// The first byte in [p, end) that is in `set`, or end.
inline const char* FindInSet(const char* p, const char* const end, const ByteSet& set) {
  while (end - p >= 4 && (FlagOf(set, p[0]) | FlagOf(set, p[1]) | FlagOf(set, p[2]) | FlagOf(set, p[3])) == 0) p += 4;
  while (p != end && !InSet(set, *p)) ++p;
  return p;
}

// The offset past the run of bytes in `set` that starts at `from`.
inline std::size_t SkipBytesIn(std::string_view text, std::size_t from, const ByteSet& set) {
  return static_cast<std::size_t>(SkipRun(text.data() + from, text.data() + text.size(), set) - text.data());
}

// The offset of the first byte in `set` at or after `from`, or the size.
inline std::size_t FindByteIn(std::string_view text, std::size_t from, const ByteSet& set) {
  return static_cast<std::size_t>(FindInSet(text.data() + from, text.data() + text.size(), set) - text.data());
}

}  // namespace quill::cli

#endif  // QUILL_CLI_BYTE_RUNS_H_
