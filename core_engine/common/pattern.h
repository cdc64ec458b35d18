// A compiled regular expression with the matching rules the engine relies on.
//
// Patterns are written in the ECMAScript dialect and run on PCRE2 (8-bit),
// configured to behave the same on bytes:
//   - "^" matches only at the start of the subject and "$" only at its very
//     end (not before a final LF);
//   - "." matches any byte except LF and CR;
//   - \s is space, TAB, LF, VT, FF, CR; \w is [A-Za-z0-9_]; \b follows \w;
//     bytes of 128 and above are neither word nor space characters;
//   - case-insensitive patterns fold ASCII letters only.
//
// A Pattern is immutable after construction and may be shared by any number
// of threads; match state lives in the caller's Match and in per-thread
// scratch space. Resource limits (match, heap, JIT stack) never crash a call:
// a JIT stack overflow is retried without JIT, and a limit that still trips is
// reported according to the pattern's LimitPolicy.
#ifndef QUILL_COMMON_PATTERN_H_
#define QUILL_COMMON_PATTERN_H_

#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace quill {

// Raised when a match exceeds the engine's resource limits.
class PatternLimitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

enum class CaseMode { kSensitive, kIgnoreCase };

// What a search does when PCRE2 reports a resource limit it cannot get
// around: raise PatternLimitError, or report "no match".
enum class LimitPolicy { kThrow, kNoMatch };

// The result of one successful match: byte offsets into the subject that was
// searched. Group 0 is the whole match.
class Match {
 public:
  static constexpr int kMaxGroups = 16;

  bool Matched(int group) const { return begin_[Index(group)] != kUnset; }
  std::size_t Begin(int group = 0) const { return Matched(group) ? begin_[Index(group)] : 0; }
  std::size_t End(int group = 0) const { return Matched(group) ? end_[Index(group)] : 0; }
  std::size_t Length(int group = 0) const { return End(group) - Begin(group); }
  // The text of a group, or "" for a group that did not take part. The view
  // points into the subject, which must outlive it.
  std::string_view Group(int group = 0) const {
    return Matched(group) ? subject_.substr(Begin(group), Length(group)) : std::string_view();
  }
  std::string Str(int group = 0) const { return std::string(Group(group)); }

 private:
  friend class Pattern;
  static constexpr std::size_t kUnset = static_cast<std::size_t>(-1);
  static std::size_t Index(int group) {
    return group >= 0 && group < kMaxGroups ? static_cast<std::size_t>(group) : 0;
  }

  std::string_view subject_;
  std::array<std::size_t, kMaxGroups> begin_{};
  std::array<std::size_t, kMaxGroups> end_{};
};

class Pattern {
 public:
  struct Options {
    CaseMode caseMode = CaseMode::kSensitive;
    LimitPolicy limitPolicy = LimitPolicy::kThrow;
    bool useJit = true;
  };

  // Compiles `source`. A pattern that does not compile is a programming error
  // and raises std::logic_error.
  explicit Pattern(std::string_view source);
  Pattern(std::string_view source, Options options);
  Pattern(std::string_view source, CaseMode caseMode, LimitPolicy limitPolicy = LimitPolicy::kThrow);
  ~Pattern();
  Pattern(Pattern&& other) noexcept;
  Pattern& operator=(Pattern&& other) noexcept;
  Pattern(const Pattern&) = delete;
  Pattern& operator=(const Pattern&) = delete;

  // Finds the leftmost match that starts at or after `start`. Assertions look
  // at the bytes before `start` ("^" never matches there, "\b" sees them), as
  // when iterating matches over one subject.
  bool Search(std::string_view subject, Match* match = nullptr, std::size_t start = 0) const;
  bool Search(std::string_view subject, std::size_t start) const { return Search(subject, nullptr, start); }

  // Succeeds only with a match that spans the whole subject.
  bool FullMatch(std::string_view subject, Match* match = nullptr) const;

  // Calls visit(const Match&) for every non-overlapping match from left to
  // right. After an empty match the next attempt must be non-empty at the same
  // position, else the search moves one byte on. If visit returns bool, false
  // stops the walk.
  template <typename Visitor>
  void ForEachMatch(std::string_view subject, Visitor&& visit) const;

  // Number of matches ForEachMatch would visit.
  int Count(std::string_view subject) const;

  // The subject with every match replaced by `replacement` (taken literally).
  std::string ReplaceAll(std::string_view subject, std::string_view replacement) const;

  std::string_view source() const { return source_; }

 private:
  struct Code;
  bool Run(std::string_view subject, std::size_t start, bool full, bool notEmptyAtStart, Match* match) const;
  bool NextMatch(std::string_view subject, std::size_t* pos, bool* lastWasEmpty, Match* match) const;

  std::string source_;
  Options options_;
  std::unique_ptr<Code> code_;
};

template <typename Visitor>
void Pattern::ForEachMatch(std::string_view subject, Visitor&& visit) const {
  std::size_t pos = 0;
  bool lastWasEmpty = false;
  Match match;
  while (NextMatch(subject, &pos, &lastWasEmpty, &match)) {
    if constexpr (std::is_same_v<decltype(visit(match)), bool>) {
      if (!visit(match)) return;
    } else {
      visit(match);
    }
  }
}

}  // namespace quill

#endif  // QUILL_COMMON_PATTERN_H_
