#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckWidthMismatch(const ModuleModel&) { return {}; }

}  // namespace quill
