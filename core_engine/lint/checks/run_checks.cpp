#include "lint/checks/run_checks.h"

#include "lint/checks/checks.h"

namespace quill {
namespace {

using CheckFunction = std::vector<Diagnostic> (*)(const ModuleModel&);

struct CheckEntry {
  const char* name;
  CheckFunction run;
};

// The fixed order in which findings are reported.
constexpr CheckEntry kChecks[] = {
    {"latch", CheckLatch},
    {"multi-driver", CheckMultiDriver},
    {"width-mismatch", CheckWidthMismatch},
    {"blocking-assign", CheckBlockingAssign},
    {"dupli-define", CheckDuplicateDefine},
    {"repeated-assig", CheckRepeatedAssign},
    {"used-bef-declare", CheckUsedBeforeDeclare},
    {"comb-loop", CheckCombLoop},
    {"dupli-inst", CheckDuplicateInstance},
    {"reg-assign", CheckRegAssign},
    {"wire-always", CheckWireAlways},
};

}  // namespace

std::vector<Diagnostic> RunChecks(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  for (const CheckEntry& check : kChecks) {
    std::vector<Diagnostic> found = check.run(model);
    findings.insert(findings.end(), std::make_move_iterator(found.begin()), std::make_move_iterator(found.end()));
  }
  return findings;
}

}  // namespace quill
