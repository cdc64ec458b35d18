#include "lint/steps.h"

namespace quill {

std::string StripComments(std::string_view text) { return std::string(text); }

}  // namespace quill
