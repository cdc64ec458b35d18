#include <unordered_map>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckDuplicateInstance(const ModuleModel& model) {
  // Grouped by exact spelling.
  std::unordered_map<std::string, std::vector<std::uint32_t>> instanceLines;
  for (const InstanceRecord& instance : model.instances) instanceLines[instance.name].push_back(instance.line);

  std::vector<NameFindings> groups;
  for (const auto& [name, lines] : instanceLines) {
    if (lines.size() < 2) continue;
    std::string listed;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i > 0) listed.append(", ");
      listed.append(std::to_string(std::uint64_t{lines[i]} + 1));
    }
    NameFindings group{name, {}};
    group.findings.push_back(MakeDiagnostic(
        CheckId::kDuplicateInstance, lines[1],
        "instance '" + name + "' instantiated " + std::to_string(lines.size()) + " times (lines: " + listed + ")"));
    groups.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(groups));
}

}  // namespace quill
