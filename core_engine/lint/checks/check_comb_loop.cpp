#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckCombLoop(const ModuleModel&) { return {}; }

}  // namespace quill
