#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckRegAssign(const ModuleModel&) { return {}; }

}  // namespace quill
