#ifndef QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_
#define QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_

#include <string>
#include <string_view>

namespace quill {

// Re-indents the bodies of always and generate blocks by nesting depth, from
// column 0, and puts assign and endgenerate lines at column 0. Blocks inside a
// generate block are indented with it and then again on their own; the
// second result stands. The text is always split and rejoined.
std::string LayoutBlocks(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_LAYOUT_BLOCKS_H_
