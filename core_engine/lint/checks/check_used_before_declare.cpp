#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {

std::vector<Diagnostic> CheckUsedBeforeDeclare(const ModuleModel& model) {
  const FirstDeclarations declarations = IndexFirstDeclarations(model.signals);
  std::vector<NameFindings> groups;
  for (const auto& [name, useLine] : model.firstUseLine) {
    const SignalDecl* declaration = FindDeclaration(model, declarations, name);
    if (declaration == nullptr) continue;
    const std::int64_t declared = declaration->line;
    if (useLine >= declared) continue;
    NameFindings group{name, {}};
    group.findings.push_back(MakeDiagnostic(CheckId::kUsedBeforeDeclare, static_cast<std::uint32_t>(useLine),
                                            "signal '" + name + "' used at line " +
                                                std::to_string(std::int64_t{useLine} + 1) +
                                                " before declaration at line " + std::to_string(declared + 1)));
    groups.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(groups));
}

}  // namespace quill
