#include "common/pattern.h"

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace quill {
namespace {

// Default PCRE2 limits are sized for short subjects; a lazy scan over a few
// megabytes would trip them although the work is linear. The limits grow with
// the subject so that linear work always completes and only runaway
// backtracking is cut off.
constexpr std::uint64_t kBaseMatchLimit = 10'000'000;
constexpr std::uint64_t kMatchStepsPerByte = 100;
constexpr std::uint64_t kBaseHeapLimitKib = 20'000;
// A repeated group keeps one backtracking frame per repetition; allow a few
// hundred bytes of frames per subject byte.
constexpr std::uint64_t kSubjectBytesPerHeapKib = 4;
constexpr std::size_t kJitStackStart = 32 * 1024;
constexpr std::size_t kJitStackMax = 16 * 1024 * 1024;

std::uint32_t ClampToU32(std::uint64_t value) {
  return static_cast<std::uint32_t>(std::min<std::uint64_t>(value, std::numeric_limits<std::uint32_t>::max()));
}

// Per-thread match state: PCRE2 match data, a match context carrying the
// limits, and a JIT stack. Compiled patterns stay shared and read-only.
class Scratch {
 public:
  Scratch()
      : matchData_(pcre2_match_data_create(Match::kMaxGroups, nullptr)),
        context_(pcre2_match_context_create(nullptr)),
        jitStack_(pcre2_jit_stack_create(kJitStackStart, kJitStackMax, nullptr)) {
    if (matchData_ == nullptr || context_ == nullptr) throw std::bad_alloc();
    if (jitStack_ != nullptr) pcre2_jit_stack_assign(context_, nullptr, jitStack_);
  }
  ~Scratch() {
    pcre2_jit_stack_free(jitStack_);
    pcre2_match_context_free(context_);
    pcre2_match_data_free(matchData_);
  }
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  pcre2_match_data* matchData() const { return matchData_; }
  pcre2_match_context* ContextFor(std::size_t subjectLength) const {
    const std::uint64_t length = subjectLength;
    pcre2_set_match_limit(context_, ClampToU32(kBaseMatchLimit + kMatchStepsPerByte * length));
    pcre2_set_heap_limit(context_, ClampToU32(kBaseHeapLimitKib + length / kSubjectBytesPerHeapKib));
    return context_;
  }

 private:
  pcre2_match_data* matchData_;
  pcre2_match_context* context_;
  pcre2_jit_stack* jitStack_;
};

Scratch& ThreadScratch() {
  thread_local Scratch scratch;
  return scratch;
}

// "." matches neither LF nor CR. PCRE2 gets that from a CR-and-LF newline
// convention, but that convention also makes a failed attempt at a CR skip
// the LF after it, losing matches that start there. So the newline stays LF
// and every "." outside a character class is spelt out as a class.
std::string SpellOutDots(std::string_view source) {
  std::string spelled;
  bool inClass = false;
  for (std::size_t i = 0; i < source.size(); ++i) {
    const char c = source[i];
    if (c == '\\' && i + 1 < source.size()) {
      spelled.append(source.substr(i, 2));
      ++i;
    } else if (inClass) {
      spelled.push_back(c);
      if (c == ']') inClass = false;
    } else if (c == '[') {
      spelled.push_back(c);
      inClass = true;
    } else if (c == '.') {
      spelled.append("[^\\n\\r]");
    } else {
      spelled.push_back(c);
    }
  }
  return spelled;
}

pcre2_code* CompileOrThrow(std::string_view pattern, std::uint32_t options, bool useJit) {
  pcre2_compile_context* context = pcre2_compile_context_create(nullptr);
  if (context == nullptr) throw std::bad_alloc();
  pcre2_set_newline(context, PCRE2_NEWLINE_LF);
  const std::string source = SpellOutDots(pattern);
  int error = 0;
  PCRE2_SIZE errorOffset = 0;
  pcre2_code* code = pcre2_compile(reinterpret_cast<PCRE2_SPTR>(source.data()), source.size(), options, &error,
                                   &errorOffset, context);
  pcre2_compile_context_free(context);
  if (code == nullptr) {
    PCRE2_UCHAR message[256];
    pcre2_get_error_message(error, message, sizeof message);
    throw std::logic_error("pattern '" + std::string(pattern) + "' does not compile: " +
                           reinterpret_cast<const char*>(message));
  }
  std::uint32_t captures = 0;
  pcre2_pattern_info(code, PCRE2_INFO_CAPTURECOUNT, &captures);
  if (captures >= Match::kMaxGroups) {
    pcre2_code_free(code);
    throw std::logic_error("pattern '" + std::string(pattern) + "' has too many groups");
  }
  // Without JIT the interpreter serves; a failed JIT compile is not an error.
  if (useJit) pcre2_jit_compile(code, PCRE2_JIT_COMPLETE);
  return code;
}

}  // namespace

struct Pattern::Code {
  Code(std::string_view source, std::uint32_t options, bool useJit)
      : search(CompileOrThrow(source, options, useJit)),
        full(CompileOrThrow(source, options | PCRE2_ANCHORED | PCRE2_ENDANCHORED, useJit)) {}
  ~Code() {
    pcre2_code_free(full);
    pcre2_code_free(search);
  }
  Code(const Code&) = delete;
  Code& operator=(const Code&) = delete;

  pcre2_code* search;
  pcre2_code* full;
};

Pattern::Pattern(std::string_view source) : Pattern(source, Options{}) {}

Pattern::Pattern(std::string_view source, CaseMode caseMode, LimitPolicy limitPolicy)
    : Pattern(source, Options{caseMode, limitPolicy, true}) {}

Pattern::Pattern(std::string_view source, Options options) : source_(source), options_(options) {
  // As in ECMAScript, "[]" matches nothing and "[^]" any byte.
  std::uint32_t flags = PCRE2_DOLLAR_ENDONLY | PCRE2_ALLOW_EMPTY_CLASS;
  if (options.caseMode == CaseMode::kIgnoreCase) flags |= PCRE2_CASELESS;
  code_ = std::make_unique<Code>(source, flags, options.useJit);
}

Pattern::~Pattern() = default;
Pattern::Pattern(Pattern&& other) noexcept = default;
Pattern& Pattern::operator=(Pattern&& other) noexcept = default;

bool Pattern::Run(std::string_view subject, std::size_t start, bool full, bool notEmptyAtStart,
                  Match* match) const {
  if (start > subject.size()) return false;
  Scratch& scratch = ThreadScratch();
  pcre2_code* code = full ? code_->full : code_->search;
  std::uint32_t options = notEmptyAtStart ? (PCRE2_NOTEMPTY_ATSTART | PCRE2_ANCHORED) : 0;
  // PCRE2 wants a non-null pointer even for an empty subject.
  const auto* bytes = reinterpret_cast<PCRE2_SPTR>(subject.data() != nullptr ? subject.data() : "");
  int rc = pcre2_match(code, bytes, subject.size(), start, options, scratch.matchData(),
                       scratch.ContextFor(subject.size()));
  if (rc == PCRE2_ERROR_JIT_STACKLIMIT) {
    rc = pcre2_match(code, bytes, subject.size(), start, options | PCRE2_NO_JIT, scratch.matchData(),
                     scratch.ContextFor(subject.size()));
  }
  if (rc == PCRE2_ERROR_NOMATCH) return false;
  if (rc < 0) {
    if (options_.limitPolicy == LimitPolicy::kNoMatch) return false;
    PCRE2_UCHAR message[256];
    pcre2_get_error_message(rc, message, sizeof message);
    throw PatternLimitError(std::string("regular expression limit: ") + reinterpret_cast<const char*>(message));
  }
  if (match != nullptr) {
    const PCRE2_SIZE* ovector = pcre2_get_ovector_pointer(scratch.matchData());
    const std::uint32_t pairs = pcre2_get_ovector_count(scratch.matchData());
    match->subject_ = subject;
    for (std::size_t group = 0; group < Match::kMaxGroups; ++group) {
      const bool set = group < pairs && group < static_cast<std::size_t>(rc) &&
                       ovector[2 * group] != PCRE2_UNSET;
      match->begin_[group] = set ? ovector[2 * group] : Match::kUnset;
      match->end_[group] = set ? ovector[2 * group + 1] : Match::kUnset;
    }
  }
  return true;
}

bool Pattern::Search(std::string_view subject, Match* match, std::size_t start) const {
  return Run(subject, start, false, false, match);
}

bool Pattern::FullMatch(std::string_view subject, Match* match) const {
  return Run(subject, 0, true, false, match);
}

bool Pattern::NextMatch(std::string_view subject, std::size_t* pos, bool* lastWasEmpty, Match* match) const {
  while (*pos <= subject.size()) {
    if (*lastWasEmpty) {
      // After an empty match, first try a non-empty match at the same spot.
      if (Run(subject, *pos, false, true, match)) {
        *lastWasEmpty = match->Length() == 0;
        *pos = match->End();
        return true;
      }
      *lastWasEmpty = false;
      ++*pos;
      continue;
    }
    if (!Run(subject, *pos, false, false, match)) return false;
    *lastWasEmpty = match->Length() == 0;
    *pos = match->End();
    return true;
  }
  return false;
}

int Pattern::Count(std::string_view subject) const {
  int count = 0;
  ForEachMatch(subject, [&count](const Match&) { ++count; });
  return count;
}

std::string Pattern::ReplaceAll(std::string_view subject, std::string_view replacement) const {
  std::string result;
  std::size_t copied = 0;
  ForEachMatch(subject, [&](const Match& m) {
    result.append(subject, copied, m.Begin() - copied);
    result.append(replacement);
    copied = m.End();
  });
  result.append(subject, copied, std::string_view::npos);
  return result;
}

}  // namespace quill
