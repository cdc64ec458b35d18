#include <string>
#include <string_view>
#include <vector>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

// Declarations of one spelling counted, and the line of the second, which
// the finding names: a module declares most names once, so no list of them
// is kept.
struct DeclarationCount {
  std::size_t count = 0;
  std::uint32_t secondLine = 0;

  void Add(std::uint32_t line) {
    if (++count == 2) secondLine = line;
  }
};

struct SignalGroup {
  DeclarationCount declarations;
  bool hasWire = false;
  bool hasInput = false;
  bool hasOther = false;

  void Add(const SignalDecl& signal) {
    declarations.Add(signal.line);
    hasWire = hasWire || signal.kind == SignalKind::kWire;
    hasInput = hasInput || signal.kind == SignalKind::kInput;
    hasOther = hasOther || (signal.kind != SignalKind::kWire && signal.kind != SignalKind::kInput);
  }
  // An input port redeclared as a wire, any number of times.
  bool IsInputRedeclaredAsWire() const { return hasWire && hasInput && !hasOther; }
};

// One group per exact spelling, in order of first appearance. The folded
// name table finds the first spelling met of a name; other spellings of it
// (differing in letter case, which few sources have) hang after it in a
// chain. Open addressing and no node per name: the table of a large text
// stays compact. The spellings are views: the names must outlive the groups.
template <typename Group>
class ExactSpellingGroups {
 public:
  struct Entry {
    std::string_view spelling;
    Group group;
    std::uint32_t nextSpelling;  // entry number + 1 of the next spelling; 0 for none
  };

  explicit ExactSpellingGroups(std::size_t expected) {
    firstOfName_.reserve(expected);
    entries_.reserve(expected);
  }

  // The group of `spelling`, new when it was not met before.
  Group& operator[](std::string_view spelling) {
    std::uint32_t& first = firstOfName_[spelling];
    if (first == 0) first = Append(spelling);
    std::uint32_t at = first;
    while (entries_[at - 1].spelling != spelling) {
      if (entries_[at - 1].nextSpelling == 0) {
        // Append may move the entries, so the chain is linked after it.
        const std::uint32_t added = Append(spelling);
        entries_[at - 1].nextSpelling = added;
      }
      at = entries_[at - 1].nextSpelling;
    }
    return entries_[at - 1].group;
  }

  const std::vector<Entry>& Entries() const { return entries_; }

 private:
  std::uint32_t Append(std::string_view spelling) {
    entries_.push_back({spelling, Group{}, 0});
    return static_cast<std::uint32_t>(entries_.size());
  }

  NameViewMap<std::uint32_t> firstOfName_;  // entry number + 1 of the first spelling
  std::vector<Entry> entries_;
};

NameFindings DefinedTimes(std::string_view kind, std::string_view spelling, const DeclarationCount& declarations) {
  const std::string name(spelling);
  NameFindings findings{name, {}};
  findings.findings.push_back(MakeDiagnostic(
      CheckId::kDuplicateDefine, declarations.secondLine,
      std::string(kind) + " '" + name + "' defined " + std::to_string(declarations.count) + " times"));
  return findings;
}

std::vector<Diagnostic> CheckSignals(const ModuleModel& model) {
  ExactSpellingGroups<SignalGroup> groups(model.signals.size());
  for (const SignalDecl& signal : model.signals) groups[signal.name].Add(signal);
  std::vector<NameFindings> named;
  for (const auto& [spelling, group, next] : groups.Entries()) {
    if (group.declarations.count < 2 || group.IsInputRedeclaredAsWire()) continue;
    named.push_back(DefinedTimes("signal", spelling, group.declarations));
  }
  return OrderByFirstFinding(std::move(named));
}

std::vector<Diagnostic> CheckParameters(const ModuleModel& model) {
  ExactSpellingGroups<DeclarationCount> groups(model.parameters.size());
  for (const ParamDecl& parameter : model.parameters) groups[parameter.name].Add(parameter.line);
  std::vector<NameFindings> named;
  for (const auto& [spelling, declarations, next] : groups.Entries()) {
    if (declarations.count < 2) continue;
    named.push_back(DefinedTimes("parameter", spelling, declarations));
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
