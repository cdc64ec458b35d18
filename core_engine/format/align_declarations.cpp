#include "format/align_declarations.h"

namespace quill {

std::string AlignDeclarations(std::string_view text) { return std::string(text); }

}  // namespace quill
