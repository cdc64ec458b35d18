#include <algorithm>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

// Most names have one driver, so the record holds the first always line
// itself and takes a list only for the later ones; of the continuous
// assignments only the earliest line is ever reported.
struct Drivers {
  bool hasAssign = false;
  std::uint32_t firstAssignLine = 0;  // the smallest, once hasAssign
  std::uint32_t alwaysCount = 0;
  std::uint32_t firstAlwaysLine = 0;
  std::vector<std::uint32_t> laterAlwaysLines;

  void AddAssign(std::uint32_t line) {
    firstAssignLine = hasAssign ? std::min(firstAssignLine, line) : line;
    hasAssign = true;
  }
  void AddAlways(std::uint32_t line) {
    if (alwaysCount++ == 0) {
      firstAlwaysLine = line;
    } else {
      laterAlwaysLines.push_back(line);
    }
  }
  std::vector<std::uint32_t> AlwaysLines() const {
    std::vector<std::uint32_t> lines;
    if (alwaysCount == 0) return lines;
    lines.reserve(alwaysCount);
    lines.push_back(firstAlwaysLine);
    lines.insert(lines.end(), laterAlwaysLines.begin(), laterAlwaysLines.end());
    return lines;
  }
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
    for (const std::string& name : assign.lhsNames) drivers[name].AddAssign(assign.line);
  }
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    for (const std::string& name : block.assignedSignals) drivers[name].AddAlways(block.startLine);
  }

  std::vector<NameFindings> groups;
  for (const auto& [nameView, driver] : drivers) {
    // Most names have one driver: nothing to report, nothing to build.
    if (driver.alwaysCount < 2 && (!driver.hasAssign || driver.alwaysCount == 0)) continue;
    const std::string name(nameView);
    const std::vector<std::uint32_t> always = DistinctAscending(driver.AlwaysLines());
    NameFindings group{name, {}};
    if (always.size() >= 2) {
      group.findings.push_back(MakeDiagnostic(CheckId::kMultiDriver, always.front(),
                                              "signal '" + name + "' driven in " + std::to_string(always.size()) +
                                                  " always blocks (lines: " + JoinLineNumbers(always) + ")"));
    }
    if (driver.hasAssign && !always.empty()) {
      const std::uint32_t first = std::min(driver.firstAssignLine, always.front());
      group.findings.push_back(
          MakeDiagnostic(CheckId::kMultiDriver, first, "signal '" + name + "' driven by both assign and always"));
    }
    if (!group.findings.empty()) groups.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(groups));
}

}  // namespace quill
