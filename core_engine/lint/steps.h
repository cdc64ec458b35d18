#ifndef QUILL_LINT_STEPS_H_
#define QUILL_LINT_STEPS_H_

#include <string>
#include <string_view>
#include <vector>

#include "lint/module_model.h"

namespace quill {

// Text preparation: comments overwritten by spaces, every byte keeping its
// position and every line its number.
std::string StripComments(std::string_view text);

// Extraction steps, run by the driver in this order on the prepared text.
void ExtractDeclarations(std::string_view text, ModuleModel& model);
void ExtractParameters(std::string_view text, ModuleModel& model);
void ExtractContinuousAssigns(std::string_view text, ModuleModel& model);
void ExtractAlwaysBlocks(std::string_view text, ModuleModel& model);
void ExtractInstances(std::string_view text, ModuleModel& model);
void CollectUses(ModuleModel& model);

// identifierCounts: how often each identifier of the text that is neither a
// keyword nor a number occurs.
void CountIdentifiers(std::string_view text, ModuleModel& model);

// portNames: every non-keyword identifier between a direction keyword
// (input, output, inout, any case) and the next ";" or ")".
void CollectPortNames(std::string_view text, ModuleModel& model);

// The names written by a continuous assignment's left-hand side.
std::vector<std::string> LhsNames(std::string_view lhs);

}  // namespace quill

#endif  // QUILL_LINT_STEPS_H_
