#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckUsedBeforeDeclare(const ModuleModel&) { return {}; }

}  // namespace quill
