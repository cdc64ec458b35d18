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

// The groups of one exact spelling each. The folded name table finds the
// first spelling met of a name; other spellings of it (differing in letter
// case, which few sources have) hang after it in a chain. Open addressing
// and no node per name: the table of a large text stays compact.
class ExactSignalGroups {
 public:
  explicit ExactSignalGroups(std::size_t expected) {
    firstOfName_.reserve(expected);
    groups_.reserve(expected);
  }

  void Add(const SignalDecl& signal) {
    const std::string_view name = signal.name;
    std::uint32_t& first = firstOfName_[name];
    if (first == 0) {
      groups_.push_back({name, SignalGroup{}, 0});
      first = static_cast<std::uint32_t>(groups_.size());
    }
    std::uint32_t at = first;
    while (groups_[at - 1].spelling != name) {
      std::uint32_t& next = groups_[at - 1].nextSpelling;
      if (next == 0) {
        groups_.push_back({name, SignalGroup{}, 0});
        // push_back may have moved the entry `next` refers to.
        groups_[at - 1].nextSpelling = static_cast<std::uint32_t>(groups_.size());
      }
      at = groups_[at - 1].nextSpelling;
    }
    groups_[at - 1].group.Add(signal);
  }

  struct Entry {
    std::string_view spelling;
    SignalGroup group;
    std::uint32_t nextSpelling;  // entry number + 1 of the next spelling; 0 for none
  };
  const std::vector<Entry>& Groups() const { return groups_; }

 private:
  NameViewMap<std::uint32_t> firstOfName_;  // entry number + 1 of the first spelling
  std::vector<Entry> groups_;
};

std::vector<Diagnostic> CheckSignals(const ModuleModel& model) {
  ExactSignalGroups groups(model.signals.size());
  for (const SignalDecl& signal : model.signals) groups.Add(signal);
  std::vector<NameFindings> named;
  for (const auto& [nameView, group, next] : groups.Groups()) {
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
