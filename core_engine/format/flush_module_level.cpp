#include "format/flush_module_level.h"

namespace quill {

std::string FlushModuleLevel(std::string_view text) { return std::string(text); }

}  // namespace quill
