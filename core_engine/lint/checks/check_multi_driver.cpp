#include <algorithm>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

struct Drivers {
  std::vector<std::uint32_t> assignLines;
  std::vector<std::uint32_t> alwaysLines;
};

std::vector<std::uint32_t> DistinctAscending(std::vector<std::uint32_t> lines) {
  std::sort(lines.begin(), lines.end());
  lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
  return lines;
}

std::string JoinLineNumbers(const std::vector<std::uint32_t>& lines) {
  std::string joined;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) joined.append(", ");
    joined.append(std::to_string(lines[i]));
  }
  return joined;
}

}  // namespace

std::vector<Diagnostic> CheckMultiDriver(const ModuleModel& model) {
  // Continuous assignments go in first, so a name keeps the spelling of its
  // first continuous assignment when it has one.
  NameViewMap<Drivers> drivers;
  for (const ContAssign& assign : model.assigns) {
    for (const std::string& name : assign.lhsNames) drivers[name].assignLines.push_back(assign.line);
  }
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    for (const std::string& name : block.assignedSignals) drivers[name].alwaysLines.push_back(block.startLine);
  }

  std::vector<NameFindings> groups;
  for (const auto& [nameView, driver] : drivers) {
    // Most names have one driver: nothing to report, nothing to build.
    if (driver.alwaysLines.size() < 2 && (driver.assignLines.empty() || driver.alwaysLines.empty())) continue;
    const std::string name(nameView);
    const std::vector<std::uint32_t> always = DistinctAscending(driver.alwaysLines);
    NameFindings group{name, {}};
    if (always.size() >= 2) {
      group.findings.push_back(MakeDiagnostic(CheckId::kMultiDriver, always.front(),
                                              "signal '" + name + "' driven in " + std::to_string(always.size()) +
                                                  " always blocks (lines: " + JoinLineNumbers(always) + ")"));
    }
    if (!driver.assignLines.empty() && !always.empty()) {
      std::uint32_t first =
          std::min(*std::min_element(driver.assignLines.begin(), driver.assignLines.end()), always.front());
      group.findings.push_back(
          MakeDiagnostic(CheckId::kMultiDriver, first, "signal '" + name + "' driven by both assign and always"));
    }
    if (!group.findings.empty()) groups.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(groups));
}

}  // namespace quill
