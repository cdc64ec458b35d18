#ifndef QUILL_LINT_CHECKS_CHECKS_H_
#define QUILL_LINT_CHECKS_CHECKS_H_

#include <vector>

#include "lint/diagnostic.h"
#include "lint/module_model.h"

namespace quill {

std::vector<Diagnostic> CheckLatch(const ModuleModel& model);
std::vector<Diagnostic> CheckMultiDriver(const ModuleModel& model);
std::vector<Diagnostic> CheckWidthMismatch(const ModuleModel& model);
std::vector<Diagnostic> CheckBlockingAssign(const ModuleModel& model);
std::vector<Diagnostic> CheckDuplicateDefine(const ModuleModel& model);
std::vector<Diagnostic> CheckRepeatedAssign(const ModuleModel& model);
std::vector<Diagnostic> CheckUsedBeforeDeclare(const ModuleModel& model);
std::vector<Diagnostic> CheckCombLoop(const ModuleModel& model);
std::vector<Diagnostic> CheckDuplicateInstance(const ModuleModel& model);
std::vector<Diagnostic> CheckRegAssign(const ModuleModel& model);
std::vector<Diagnostic> CheckWireAlways(const ModuleModel& model);

}  // namespace quill

#endif  // QUILL_LINT_CHECKS_CHECKS_H_
