#include "lint/checks/run_checks.h"

#include <array>
#include <cstddef>
#include <iterator>

#include "lint/checks/checks.h"

namespace quill {
namespace {

using CheckFunction = std::vector<Diagnostic> (*)(const ModuleModel&);

struct CheckEntry {
  CheckId id;
  CheckFunction run;
};

// Every check of the table beside its function, in the table's order, which
// is the order findings are reported in.
constexpr std::array<CheckEntry, kCheckTable.size()> kChecks = {{
    {CheckId::kLatch, CheckLatch},
    {CheckId::kMultiDriver, CheckMultiDriver},
    {CheckId::kWidthMismatch, CheckWidthMismatch},
    {CheckId::kBlockingAssign, CheckBlockingAssign},
    {CheckId::kDuplicateDefine, CheckDuplicateDefine},
    {CheckId::kRepeatedAssign, CheckRepeatedAssign},
    {CheckId::kUsedBeforeDeclare, CheckUsedBeforeDeclare},
    {CheckId::kCombLoop, CheckCombLoop},
    {CheckId::kDuplicateInstance, CheckDuplicateInstance},
    {CheckId::kRegAssign, CheckRegAssign},
    {CheckId::kWireAlways, CheckWireAlways},
}};

constexpr bool ChecksFollowTheTable() {
  for (std::size_t i = 0; i < kChecks.size(); ++i) {
    if (kChecks[i].id != kCheckTable[i].id) return false;
  }
  return true;
}
static_assert(ChecksFollowTheTable(), "kChecks pairs each check table entry with its function, in table order");

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
