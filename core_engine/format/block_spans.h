// Finding where always and generate blocks end, and indenting their bodies.
//
// Everything these steps look at in a line (counts of block words in its
// code, whether it starts a statement, ends in an "if (...)" header, is a bare
// case label) depends only on the line's trimmed text, which re-indenting
// does not change. `BlockLineIndex` reads those facts once per text and keeps
// prefix sums of the nesting counts, so that each block end and each body
// line costs O(log n) or O(1) however many blocks nest or overlap.
#ifndef QUILL_FORMAT_BLOCK_SPANS_H_
#define QUILL_FORMAT_BLOCK_SPANS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "common/text_utils.h"

namespace quill {

// First and last line number (inclusive) of one block.
struct BlockSpan {
  int first = 0;
  int last = 0;
};

// The last line of the always block that starts at line `start`: where the
// begin/end count returns to 0 once a "begin" was seen, or, without "begin",
// the line before the next statement start. The last line number when
// `start` is out of range or the block never ends.
int FindAlwaysEnd(const TextLines& lines, int start);

// The last line of the generate block that starts at line `start`: the first
// line after which the generate/endgenerate count is back to 0. The last
// line number when `start` is out of range or the block never ends.
int FindGenerateEnd(const TextLines& lines, int start);

// Re-indents lines `start` to `end` in place, four spaces per level of
// begin/end and case/endcase nesting counted from the start line, plus one
// level after a bare "if (...)" header or case label and one for a body
// without "begin". Blank lines are left as they are. Does nothing when
// `start` is out of range; `end` is limited to the last line.
void IndentBlockBody(TextLines* lines, int start, int end);

// Line facts and prefix sums of one text, for the functions above.
class BlockLineIndex {
 public:
  explicit BlockLineIndex(const LineViews& lines);

  int FindAlwaysEnd(int start) const;
  int FindGenerateEnd(int start) const;

  // The number of four-space steps that IndentBlockBody from `start` gives
  // line `line` (start <= line), or -1 for a blank line, which it leaves as
  // it is.
  std::int64_t BodyLevels(int start, int line) const;

  // Where the line's trimmed text lies within the line.
  std::size_t TextBegin(int line) const { return Facts(line).textBegin; }
  std::size_t TextLength(int line) const { return Facts(line).textLength; }

 private:
  struct LineFacts {
    std::size_t textBegin = 0;
    std::size_t textLength = 0;
    // Matches in the line's code (the trimmed text without "//" comments).
    std::int32_t begins = 0;
    std::int32_t ends = 0;
    std::int32_t cases = 0;
    std::int32_t endcases = 0;
    bool opensGenerate = false;
    bool closesGenerate = false;
    bool startsStatement = false;
    // "begin" anywhere in the line, comments included.
    bool mentionsBegin = false;
    // The trimmed text is exactly "begin".
    bool isLoneBegin = false;
    // Neither blank nor a "//" comment line.
    bool isSignificant = false;
    bool endsIfHeader = false;
    bool isBareLabel = false;
  };

  // Positions of a prefix-sum array grouped by value, to find where the
  // running count first returns to a given value.
  class ValuePositions {
   public:
    ValuePositions() = default;
    explicit ValuePositions(const std::vector<std::int64_t>& prefix);
    // The first position >= from whose prefix value is `value`, or -1.
    int Find(std::int64_t value, int from) const;

   private:
    std::vector<std::pair<std::int64_t, int>> sorted_;
  };

  static LineFacts ReadFacts(std::string_view line);

  const LineFacts& Facts(int line) const { return facts_[static_cast<std::size_t>(line)]; }
  static std::int64_t At(const std::vector<std::int64_t>& values, int i) { return values[static_cast<std::size_t>(i)]; }
  static int At(const std::vector<int>& values, int i) { return values[static_cast<std::size_t>(i)]; }

  int count_ = 0;
  std::vector<LineFacts> facts_;
  // Prefix sums over lines [0, i): begins - ends; opened - closed generates;
  // begins - ends + cases - endcases; cases - endcases.
  std::vector<std::int64_t> beginDepth_;
  std::vector<std::int64_t> generateDepth_;
  std::vector<std::int64_t> bodyDepth_;
  std::vector<std::int64_t> caseDepth_;
  // The first line >= i with a "begin" in its code / starting a statement /
  // significant; count_ when there is none.
  std::vector<int> nextBegin_;
  std::vector<int> nextStatement_;
  std::vector<int> nextSignificant_;
  // The last non-blank line < i, or -1.
  std::vector<int> previousNonBlank_;
  ValuePositions beginReturns_;
  ValuePositions generateReturns_;
};

}  // namespace quill

#endif  // QUILL_FORMAT_BLOCK_SPANS_H_
