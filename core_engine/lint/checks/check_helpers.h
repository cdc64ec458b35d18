// Pieces shared by the checks: the order of findings of checks that group
// by name, and the lookup of a signal's first declaration.
#ifndef QUILL_LINT_CHECKS_CHECK_HELPERS_H_
#define QUILL_LINT_CHECKS_CHECK_HELPERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/name_set.h"
#include "lint/diagnostic.h"
#include "lint/module_model.h"

namespace quill {

// The findings of one name, in the order the check gives them.
struct NameFindings {
  std::string name;
  std::vector<Diagnostic> findings;
};

// Concatenates the groups that hold findings, names in ascending order of the
// line of their first finding and then by name in byte order.
std::vector<Diagnostic> OrderByFirstFinding(std::vector<NameFindings> groups);

template <typename Value>
struct NameOfViewEntry {
  std::string_view operator()(const std::pair<std::string_view, Value>& entry) const noexcept { return entry.first; }
};

// A map from name (letter case ignored) to a value, in insertion order; an
// entry keeps the spelling of its first insertion. The keys are views, so
// the names must outlive the map: the checks key it by the model's strings.
template <typename Value>
class NameViewMap : public FoldedNameTable<std::pair<std::string_view, Value>, NameOfViewEntry<Value>> {
 public:
  // The value of `name`, a new Value{} when the name is new.
  Value& operator[](std::string_view name) {
    const std::size_t index = this->FindOrAdd(name, [name] { return std::make_pair(name, Value{}); }).first;
    return this->entries_[index].second;
  }

  // Adds (name, value) unless the name is there; the existing value stays.
  void emplace(std::string_view name, const Value& value) {
    this->FindOrAdd(name, [name, &value] { return std::make_pair(name, value); });
  }
};

// For each name (letter case ignored), the index in `signals` of its first
// declaration.
using FirstDeclarations = NameViewMap<std::size_t>;
FirstDeclarations IndexFirstDeclarations(const std::vector<SignalDecl>& signals);

// The first declaration of `name` (letter case ignored), or null.
const SignalDecl* FindDeclaration(const ModuleModel& model, const FirstDeclarations& index, std::string_view name);

// A finding of `check` with the severity the check table gives it.
Diagnostic MakeDiagnostic(CheckId check, std::uint32_t line, std::string message);

}  // namespace quill

#endif  // QUILL_LINT_CHECKS_CHECK_HELPERS_H_
