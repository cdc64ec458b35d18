// Finding where always and generate blocks end, and indenting their bodies,
// each in one read of the lines in order.
//
// A block ends where a running count (begin/end, generate/endgenerate)
// returns to its value before the block's start line. Blocks that wait for a
// count are kept by the value they wait for, and a count only needs looking
// up on a line that changes it, so each line costs constant time however many
// blocks nest or overlap; nothing as long as the text is kept.
#ifndef QUILL_FORMAT_SCAN_BLOCK_SPANS_H_
#define QUILL_FORMAT_SCAN_BLOCK_SPANS_H_

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "common/text_utils.h"
#include "format/scan/block_line_facts.h"

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

// A block with what indenting its body needs.
struct Block {
  BlockSpan span;
  // "begin" on the start line, or the first significant line after it is
  // "begin" alone.
  bool hasBegin = false;
  // The begin/end and case/endcase counts before the start line.
  std::int64_t beginDepthAtStart = 0;
  std::int64_t caseDepthAtStart = 0;
};

// Reads lines in order and finds where each block that starts on one of
// them ends.
class BlockEndFinder {
 public:
  // `firstLine` is the number of the first line to be read.
  explicit BlockEndFinder(int firstLine = 0) : line_(firstLine) {}

  // Reads the next line; `start` tells which block starts on it.
  void Add(const BlockLineFacts& facts, BlockKind start);

  // The blocks by start line, once all lines are read; a block that never
  // ends ends on the last line.
  std::vector<Block> Finish();

 private:
  using Waiting = std::unordered_map<std::int64_t, std::vector<std::size_t>>;
  static constexpr int kOpen = -1;

  // Ends on the current line every block waiting for `value`.
  void EndBlocksWaitingFor(Waiting* waiting, std::int64_t value);

  int line_;
  std::int64_t beginDepth_ = 0;
  std::int64_t caseDepth_ = 0;
  std::int64_t generateDepth_ = 0;
  std::vector<Block> blocks_;
  // Always blocks before their first "begin"; they end before the next
  // statement start.
  std::vector<std::size_t> beforeBegin_;
  // Blocks whose start line has no "begin": the next significant line
  // decides whether they have one.
  std::vector<std::size_t> beforeStatement_;
  // Blocks waiting for the begin/end or generate count to return, by value.
  Waiting beginReturn_;
  Waiting generateReturn_;
};

// The indentation of block body lines, read in order. Each line keeps the
// indentation of the block with the greatest start that holds it, since the
// blocks are applied in order of their start and each rewrites all of its
// lines from their trimmed text alone.
class BodyIndenter {
 public:
  // `blocks` by ascending start; `firstLine` is the number of the first line
  // to be read.
  explicit BodyIndenter(std::vector<Block> blocks, int firstLine = 0);

  // The number of four-space steps for the next line, or -1 when it keeps
  // its text as it is (outside every block, or blank).
  std::int64_t Next(const BlockLineFacts& facts);

 private:
  std::vector<Block> blocks_;
  std::size_t nextBlock_ = 0;
  std::vector<std::size_t> open_;
  int line_;
  std::int64_t beginDepth_ = 0;
  std::int64_t caseDepth_ = 0;
  // The last non-blank line read, for the step after an "if (...)" header
  // or a bare case label.
  int previousLine_ = -1;
  bool previousEndsIfHeader_ = false;
  bool previousIsBareLabel_ = false;
  std::int64_t caseDepthAfterPrevious_ = 0;
};

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_BLOCK_SPANS_H_
