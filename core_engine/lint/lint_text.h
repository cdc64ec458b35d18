#ifndef QUILL_LINT_LINT_TEXT_H_
#define QUILL_LINT_LINT_TEXT_H_

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "lint/diagnostic.h"
#include "lint/module_model.h"

namespace quill {

// The text the extraction steps work on: comments overwritten by spaces and
// every TAB turned into a space; positions and line numbers are kept.
std::string PrepareText(std::string_view source);

// The model of one source text: every step run in order on its prepared text.
// A text with neither a module header nor a declaration is not linted: no
// model, and the steps after those two are not run for it.
std::optional<ModuleModel> BuildModuleModel(std::string_view source);

// Lints one Verilog text and returns the JSON array of findings. An internal
// failure becomes a "cpp-exception" finding; only a failure to allocate the
// result itself escapes.
std::string LintText(std::string_view text);

// LintText with the checks given by the caller instead of RunChecks.
using CheckRunner = std::function<std::vector<Diagnostic>(const ModuleModel&)>;
std::string LintTextWith(std::string_view text, const CheckRunner& runChecks);

}  // namespace quill

#endif  // QUILL_LINT_LINT_TEXT_H_
