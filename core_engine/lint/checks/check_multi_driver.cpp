#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckMultiDriver(const ModuleModel&) { return {}; }

}  // namespace quill
