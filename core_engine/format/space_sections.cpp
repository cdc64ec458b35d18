#include "format/space_sections.h"

namespace quill {

std::string SpaceSections(std::string_view text) { return std::string(text); }

}  // namespace quill
