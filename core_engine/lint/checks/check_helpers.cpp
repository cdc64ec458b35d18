#include "lint/checks/check_helpers.h"

#include <algorithm>
#include <iterator>

namespace quill {

std::vector<Diagnostic> OrderByFirstFinding(std::vector<NameFindings> groups) {
  groups.erase(
      std::remove_if(groups.begin(), groups.end(), [](const NameFindings& group) { return group.findings.empty(); }),
      groups.end());
  std::sort(groups.begin(), groups.end(), [](const NameFindings& a, const NameFindings& b) {
    if (a.findings.front().line != b.findings.front().line) return a.findings.front().line < b.findings.front().line;
    return a.name < b.name;
  });
  std::vector<Diagnostic> ordered;
  for (NameFindings& group : groups) {
    std::move(group.findings.begin(), group.findings.end(), std::back_inserter(ordered));
  }
  return ordered;
}

FirstDeclarations IndexFirstDeclarations(const std::vector<SignalDecl>& signals) {
  FirstDeclarations index;
  for (std::size_t i = 0; i < signals.size(); ++i) index.emplace(signals[i].name, i);
  return index;
}

const SignalDecl* FindDeclaration(const ModuleModel& model, const FirstDeclarations& index, std::string_view name) {
  auto found = index.find(name);
  return found == index.end() ? nullptr : &model.signals[found->second];
}

Diagnostic MakeDiagnostic(CheckId check, std::uint32_t line, std::string message) {
  Diagnostic diagnostic;
  diagnostic.severity = LookUpCheck(check).severity;
  diagnostic.line = static_cast<std::int32_t>(line);
  diagnostic.check = check;
  diagnostic.message = std::move(message);
  return diagnostic;
}

}  // namespace quill
