#ifndef QUILL_FORMAT_LAYOUT_BLOCKS_H_
#define QUILL_FORMAT_LAYOUT_BLOCKS_H_

#include <string>
#include <string_view>

namespace quill {

// Re-indents the bodies of always and generate blocks by nesting depth.
std::string LayoutBlocks(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_LAYOUT_BLOCKS_H_
