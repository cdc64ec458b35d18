#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckDuplicateDefine(const ModuleModel&) { return {}; }

}  // namespace quill
