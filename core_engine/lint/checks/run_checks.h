#ifndef QUILL_LINT_CHECKS_RUN_CHECKS_H_
#define QUILL_LINT_CHECKS_RUN_CHECKS_H_

#include <vector>

#include "lint/diagnostic.h"
#include "lint/module_model.h"

namespace quill {

// Runs the checks of the check table in its order and concatenates their
// findings, unsorted.
std::vector<Diagnostic> RunChecks(const ModuleModel& model);

}  // namespace quill

#endif  // QUILL_LINT_CHECKS_RUN_CHECKS_H_
