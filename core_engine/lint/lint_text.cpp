#include "lint/lint_text.h"

namespace quill {

std::string LintText(std::string_view) { return "[]"; }

}  // namespace quill
