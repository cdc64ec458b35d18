#include "format/layout_blocks.h"

namespace quill {

std::string LayoutBlocks(std::string_view text) { return std::string(text); }

}  // namespace quill
