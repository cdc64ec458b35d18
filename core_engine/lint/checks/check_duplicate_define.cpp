#include <unordered_map>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

// Names are grouped by exact spelling, each with its entries in list order.
template <typename Entry>
using ExactGroups = std::unordered_map<std::string, std::vector<Entry>>;

// An input port redeclared as a wire, any number of times.
bool IsInputRedeclaredAsWire(const std::vector<const SignalDecl*>& entries) {
  bool hasWire = false;
  bool hasInput = false;
  for (const SignalDecl* entry : entries) {
    if (entry->kind == SignalKind::kWire) {
      hasWire = true;
    } else if (entry->kind == SignalKind::kInput) {
      hasInput = true;
    } else {
      return false;
    }
  }
  return hasWire && hasInput;
}

std::vector<Diagnostic> CheckSignals(const ModuleModel& model) {
  ExactGroups<const SignalDecl*> groups;
  for (const SignalDecl& signal : model.signals) groups[signal.name].push_back(&signal);
  std::vector<NameFindings> named;
  for (const auto& [name, entries] : groups) {
    if (entries.size() < 2 || IsInputRedeclaredAsWire(entries)) continue;
    NameFindings group{name, {}};
    group.findings.push_back(
        MakeDiagnostic(CheckId::kDuplicateDefine, entries[1]->line,
                       "signal '" + name + "' defined " + std::to_string(entries.size()) + " times"));
    named.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(named));
}

std::vector<Diagnostic> CheckParameters(const ModuleModel& model) {
  ExactGroups<std::uint32_t> groups;
  for (const ParamDecl& parameter : model.parameters) groups[parameter.name].push_back(parameter.line);
  std::vector<NameFindings> named;
  for (const auto& [name, lines] : groups) {
    if (lines.size() < 2) continue;
    NameFindings group{name, {}};
    group.findings.push_back(
        MakeDiagnostic(CheckId::kDuplicateDefine, lines[1],
                       "parameter '" + name + "' defined " + std::to_string(lines.size()) + " times"));
    named.push_back(std::move(group));
  }
  return OrderByFirstFinding(std::move(named));
}

}  // namespace

std::vector<Diagnostic> CheckDuplicateDefine(const ModuleModel& model) {
  std::vector<Diagnostic> findings = CheckSignals(model);
  std::vector<Diagnostic> parameters = CheckParameters(model);
  findings.insert(findings.end(), std::make_move_iterator(parameters.begin()),
                  std::make_move_iterator(parameters.end()));
  return findings;
}

}  // namespace quill
