// Pieces shared by the checks: the order of findings of checks that group
// by name, and the lookup of a signal's first declaration.
#ifndef QUILL_LINT_CHECKS_CHECK_HELPERS_H_
#define QUILL_LINT_CHECKS_CHECK_HELPERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
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

// For each name (letter case ignored), the index in `signals` of its first
// declaration.
using FirstDeclarations = std::unordered_map<std::string, std::size_t, NameHash, NameEqual>;
FirstDeclarations IndexFirstDeclarations(const std::vector<SignalDecl>& signals);

// The first declaration of `name` (letter case ignored), or null.
const SignalDecl* FindDeclaration(const ModuleModel& model, const FirstDeclarations& index, std::string_view name);

// A finding of `check` with the severity the check table gives it.
Diagnostic MakeDiagnostic(CheckId check, std::uint32_t line, std::string message);

}  // namespace quill

#endif  // QUILL_LINT_CHECKS_CHECK_HELPERS_H_
