#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckRepeatedAssign(const ModuleModel& model) {
  NameViewMap<std::vector<std::uint32_t>> assignLines;
  for (const ContAssign& assign : model.assigns) {
    if (assign.lhs.find_first_of("{[") != std::string::npos) continue;
    for (const std::string& name : assign.lhsNames) assignLines[name].push_back(assign.line);
  }

  std::vector<NameFindings> groups;
  for (const auto& [nameView, lines] : assignLines) {
    if (lines.size() < 2) continue;
    const std::string name(nameView);
    NameFindings group{name, {}};
    group.findings.push_back(
        MakeDiagnostic(CheckId::kRepeatedAssign, lines.front(),
                       "signal '" + name + "' assigned " + std::to_string(lines.size()) + " times by assign"));
    groups.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(groups));
}

}  // namespace quill
