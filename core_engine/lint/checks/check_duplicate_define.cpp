#include <string_view>
#include <unordered_map>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

// Names are grouped by exact spelling, each with its entries in list order.
template <typename Entry>
using ExactGroups = std::unordered_map<std::string, std::vector<Entry>>;

// What the check needs of the declarations of one spelling: a module
// declares most names once, so no list of them is kept.
struct SignalGroup {
  std::size_t count = 0;
  std::uint32_t secondLine = 0;
  bool hasWire = false;
  bool hasInput = false;
  bool hasOther = false;

  void Add(const SignalDecl& signal) {
    if (++count == 2) secondLine = signal.line;
    hasWire = hasWire || signal.kind == SignalKind::kWire;
    hasInput = hasInput || signal.kind == SignalKind::kInput;
    hasOther = hasOther || (signal.kind != SignalKind::kWire && signal.kind != SignalKind::kInput);
  }
  // An input port redeclared as a wire, any number of times.
  bool IsInputRedeclaredAsWire() const { return hasWire && hasInput && !hasOther; }
};

std::vector<Diagnostic> CheckSignals(const ModuleModel& model) {
  std::unordered_map<std::string_view, SignalGroup> groups;
  groups.reserve(model.signals.size());
  for (const SignalDecl& signal : model.signals) groups[signal.name].Add(signal);
  std::vector<NameFindings> named;
  for (const auto& [nameView, group] : groups) {
    if (group.count < 2 || group.IsInputRedeclaredAsWire()) continue;
    const std::string name(nameView);
    NameFindings findings{name, {}};
    findings.findings.push_back(
        MakeDiagnostic(CheckId::kDuplicateDefine, group.secondLine,
                       "signal '" + name + "' defined " + std::to_string(group.count) + " times"));
    named.push_back(std::move(findings));
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
