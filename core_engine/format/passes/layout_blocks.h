#ifndef QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_
#define QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_

#include <string>
#include <string_view>
#include <vector>

#include "format/scan/block_words.h"

namespace quill {

// Re-indents the bodies of always and generate blocks by nesting depth, from
// column 0, and puts assign and endgenerate lines at column 0. Blocks inside a
// generate block are indented with it and then again on their own; the
// second result stands. The text is always split and rejoined.
std::string LayoutBlocks(std::string_view text);

// A laid-out text with the block word counts of each line's code. The layout
// changes only where a line's text begins, so these are also the counts of
// the input's lines.
struct LaidOutText {
  std::string text;
  std::vector<BlockWordCounts> counts;  // one per line
};

LaidOutText LayoutBlocksKeepingCounts(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_
