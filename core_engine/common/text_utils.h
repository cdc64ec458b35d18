// Small text helpers shared by the services. "Blank" means exactly space,
// TAB, LF and CR; vertical tab, form feed and bytes of 128 and above are not.
#ifndef QUILL_COMMON_TEXT_UTILS_H_
#define QUILL_COMMON_TEXT_UTILS_H_

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/byte_search.h"
#include "common/char_class.h"
#include "common/pattern.h"

namespace quill {

// The first byte of `s` that is not \s, an ASCII letter in lower case, or
// '\0' when there is none. One byte decides that a pattern anchored as
// "^\s*word" cannot match, before the pattern runs.
char LeadingByteLower(std::string_view s);

// The run of \w bytes after the leading \s bytes of `s`. A pattern of the
// form "^\s*(word|word...)\b" matches only where this is one of its words.
// Inline, as the two below: the formatter asks them of nearly every line.
inline std::string_view LeadingPatternWord(std::string_view s) {
  std::size_t begin = 0;
  while (begin < s.size() && IsSpaceByte(s[begin])) ++begin;
  std::size_t end = begin;
  while (end < s.size() && IsWordByte(s[end])) ++end;
  return s.substr(begin, end - begin);
}

// Whether `word` is one of `words` (given in lower case), ignoring ASCII
// letter case.
inline bool IsOneOfIgnoringCase(std::string_view word, std::initializer_list<std::string_view> words) {
  for (std::string_view candidate : words) {
    if (word.size() != candidate.size()) continue;
    std::size_t i = 0;
    while (i < word.size() && FoldAscii(word[i]) == candidate[i]) ++i;
    if (i == word.size()) return true;
  }
  return false;
}

// A text as its lines, without line terminators.
using TextLines = std::vector<std::string>;

// The lines of a text as views into it (or into strings that outlive them).
using LineViews = std::vector<std::string_view>;

// The text from its first non-blank byte on; "" when all blank.
std::string TrimLeft(std::string_view s);

// The text without leading and trailing blanks; "" when all blank.
std::string Trim(std::string_view s);

// The bytes of Trim(s), as a view into `s`. Inline: the formatter trims
// nearly every line in several passes.
inline std::string_view TrimmedView(std::string_view s) {
  std::size_t first = 0;
  while (first < s.size() && IsBlankByte(s[first])) ++first;
  std::size_t last = s.size();
  while (last > first && IsBlankByte(s[last - 1])) --last;
  return s.substr(first, last - first);
}

// The text without trailing bytes from `chars`.
std::string_view TrimRightOf(std::string_view s, std::string_view chars);

// Cuts at every LF; each piece loses at most one CR at its end. A text with k
// LFs gives k + 1 lines.
TextLines SplitLines(std::string_view text);

// The lines with `separator` between neighbours; "" for no lines.
std::string JoinLines(const TextLines& lines, std::string_view separator);

// The lines of a text as SplitLines cuts them, one at a time, as views into
// the text: passes that read each line once need no list of copies.
class LineReader {
 public:
  explicit LineReader(std::string_view text) : text_(text) {}

  // Sets `line` to the next line; false after the last one. Inline: every
  // pass reads its text through here, line by line.
  bool Next(std::string_view* line) {
    if (done_) return false;
    const char* const begin = text_.data() + next_;
    const std::size_t lf = FindByte(text_, next_, '\n');
    std::size_t length = lf == std::string_view::npos ? text_.size() - next_ : lf - next_;
    done_ = lf == std::string_view::npos;
    next_ += length + 1;
    // A CR before the LF belongs to the line break.
    if (length > 0 && begin[length - 1] == '\r') --length;
    *line = std::string_view(begin, length);
    return true;
  }

 private:
  std::string_view text_;
  std::size_t next_ = 0;
  bool done_ = false;
};

// About how many lines `text` has, a little over rather than under: the LFs
// of its first 64 KiB, scaled to the whole. For sizing a list of lines
// before a pass cuts them.
std::size_t EstimateLineCount(std::string_view text);

// The lines of SplitLines as views into `text`.
LineViews SplitLineViews(std::string_view text);

// Views of the lines of a list.
LineViews ViewsOf(const TextLines& lines);

// The lines with `separator` between neighbours; "" for no lines.
std::string JoinLines(const LineViews& lines, std::string_view separator);

// The room to reserve for an output a little longer than its input, so that
// it is allocated once. Room that stays unused costs address space only: its
// pages are never touched.
constexpr std::size_t RoomToGrow(std::size_t size) { return size + size / 4 + 64; }

// Appends lines to a text, LF between neighbours: the text JoinLines(lines,
// "\n") makes, built line by line.
class LineJoiner {
 public:
  explicit LineJoiner(std::size_t expectedSize = 0) { text_.reserve(expectedSize); }

  void Add(std::string_view line) {
    if (!empty_) text_.push_back('\n');
    empty_ = false;
    text_.append(line);
  }
  std::string Take() { return std::move(text_); }

 private:
  std::string text_;
  bool empty_ = true;
};

// Builds a new text from a text's lines, read in order by a LineReader, each
// either kept or replaced: the text JoinLines would make of the resulting
// lines. Where the text holds no CR, its lines joined are the text itself, so
// kept lines cost nothing and the stretches between replaced lines are
// copied whole; otherwise the lines are joined one by one.
class LineRewriter {
 public:
  LineRewriter(std::string_view text, std::size_t expectedSize)
      : text_(text), joinEach_(text.find('\r') != std::string_view::npos) {
    out_.reserve(expectedSize);
  }

  // The reader's `line` stays. In a text with CRs, `line` may be any text,
  // as for LineJoiner::Add.
  void Keep(std::string_view line) {
    if (joinEach_) Join(line);
  }
  // The reader's `line` becomes `replacement` (which may hold LFs).
  void Replace(std::string_view line, std::string_view replacement) {
    if (joinEach_) {
      Join(replacement);
      return;
    }
    const auto begin = static_cast<std::size_t>(line.data() - text_.data());
    out_.append(text_.substr(copied_, begin - copied_));
    out_.append(replacement);
    copied_ = begin + line.size();
  }
  std::string Take() {
    if (!joinEach_) out_.append(text_.substr(copied_));
    return std::move(out_);
  }

 private:
  void Join(std::string_view line) {
    if (joined_) out_.push_back('\n');
    joined_ = true;
    out_.append(line);
  }

  std::string_view text_;
  bool joinEach_;
  std::string out_;
  std::size_t copied_ = 0;
  bool joined_ = false;
};

// A new text for one line of a text; `line` is the view of it that the line
// reader gave.
struct LineReplacement {
  std::string_view line;
  std::string text;
};

// The text's lines as the line reader gives them (a CR before each LF
// dropped), joined by LF, with each replaced line's new text in its place;
// the replacements come in line order. Where the text holds no CR, its lines
// joined are the text itself, so the stretches between replacements are
// copied whole instead of line by line.
std::string RewriteLines(std::string_view text, const std::vector<LineReplacement>& replacements,
                         std::size_t expectedSize);

// Replaces each block comment ("/*" up to the first following "*/") by what
// `replace` returns for it, left to right; other text is copied unchanged.
std::string ReplaceEachMatch(std::string_view text, const std::function<std::string(std::string_view)>& replace);

// The text with every line comment ("//" up to the next LF) removed: the
// same as replacing each match of "//[^\n]*" by nothing.
std::string RemoveLineComments(std::string_view text);

// Number of matches of `pattern` iterated over `s` from left to right.
std::int32_t CountMatches(std::string_view s, const Pattern& pattern);

}  // namespace quill

#endif  // QUILL_COMMON_TEXT_UTILS_H_
