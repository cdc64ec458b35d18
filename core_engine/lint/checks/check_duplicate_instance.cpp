#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckDuplicateInstance(const ModuleModel&) { return {}; }

}  // namespace quill
