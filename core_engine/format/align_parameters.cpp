#include "format/align_parameters.h"

namespace quill {

std::string AlignParameters(std::string_view text) { return std::string(text); }

}  // namespace quill
