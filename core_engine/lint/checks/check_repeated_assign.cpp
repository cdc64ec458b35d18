#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckRepeatedAssign(const ModuleModel&) { return {}; }

}  // namespace quill
