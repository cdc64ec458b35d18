#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckLatch(const ModuleModel&) { return {}; }

}  // namespace quill
