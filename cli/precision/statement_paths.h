// What every path through an always block assigns, read from its tokens for
// the latch and loop filters. Both answers are "true" only when the text
// proves them: a task call, a macro, a loop other than "for", a declaration or
// anything else not read here makes them false.
#ifndef QUILL_CLI_PRECISION_STATEMENT_PATHS_H_
#define QUILL_CLI_PRECISION_STATEMENT_PATHS_H_

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "precision/generate_scopes.h"

namespace quill::cli {

// True when each signal the block may assign is assigned whole on every path
// through it: an if with an else and a case with a default assign what all
// their branches assign, an if without else and a case without default
// nothing, a "for" loop its start ("i = 0") and nothing of its body, and a
// sequence what any of its statements assigns. Such a block infers no latch,
// wherever its defaults stand. A function called in an expression may assign
// the names passed to it: each must be covered too, or be an input
// (`isInput`), which nothing in the module may assign.
// A plain "case" without default on a selector whose width `declaredWidth`
// gives (or a select "name[3]", "name[3:2]"), whose labels are numbers
// covering every value, is complete too, and so is a case marked
// "(* full_case *)"; other attributes are passed over.
// A loop index (`isLoopIndex`: used only in loops that start by assigning
// it) needs no cover.
bool EveryPathAssigns(const std::vector<Token>& tokens, const ProceduralBlock& block,
                      const std::function<bool(std::string_view)>& isInput,
                      const std::function<std::optional<unsigned>(std::string_view)>& declaredWidth,
                      const std::function<bool(std::string_view)>& isLoopIndex);

// True when the block is "begin ... end" whose top-level statements assign
// `name` whole ("name = expr;", an expression that does not read it) before
// any statement that mentions it: every later read sees the block's own
// value, so the block holds no loop through `name`.
bool AssignsBeforeReading(const std::vector<Token>& tokens, const ProceduralBlock& block, std::string_view name);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_STATEMENT_PATHS_H_
