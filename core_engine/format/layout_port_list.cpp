#include "format/layout_port_list.h"

namespace quill {

std::string LayoutPortList(std::string_view text) { return std::string(text); }

}  // namespace quill
