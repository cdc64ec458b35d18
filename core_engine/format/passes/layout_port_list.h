#ifndef QUILL_FORMAT_PASSES_LAYOUT_PORT_LIST_H_
#define QUILL_FORMAT_PASSES_LAYOUT_PORT_LIST_H_

#include <string>
#include <string_view>

namespace quill {

// Lays out the port list of the first module header in aligned columns.
std::string LayoutPortList(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_LAYOUT_PORT_LIST_H_
