#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckBlockingAssign(const ModuleModel&) { return {}; }

}  // namespace quill
