// What the always and generate block layout reads of one line.
//
// Everything it looks at (counts of block words in the line's code, whether
// the line starts a statement, ends in an "if (...)" header, is a bare case
// label) depends only on the line's trimmed text, which re-indenting does
// not change.
#ifndef QUILL_FORMAT_SCAN_BLOCK_LINE_FACTS_H_
#define QUILL_FORMAT_SCAN_BLOCK_LINE_FACTS_H_

#include <cstdint>
#include <string_view>

namespace quill {

// Which block, if any, starts on a line: its leading word is always,
// always_ff or always_comb, or generate (any letter case).
enum class BlockKind { kNone, kAlways, kGenerate };

struct BlockLineFacts {
  bool isBlank = true;
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
  // Which block starts on the line (BlockStartingAt).
  BlockKind startsBlock = BlockKind::kNone;
  // The leading word is assign or endgenerate (any letter case): the line
  // goes to column 0.
  bool movesToColumnZero = false;
};

// Every fact is read off one pass over the line's leading word and one over
// its code; the leading word of the line, of its trimmed text and of its code
// are the same run of bytes.
BlockLineFacts ReadBlockLineFacts(std::string_view line);

BlockKind BlockStartingAt(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_BLOCK_LINE_FACTS_H_
