// What an always block assigns, read from its tokens. Both questions are
// answered on the safe side for the lint filters: a block "may drive" a
// signal whenever the text leaves any doubt, and its defaults "cover" its
// branches only when every branch target is plainly assigned first.
#ifndef QUILL_CLI_PRECISION_PROCEDURAL_DRIVES_H_
#define QUILL_CLI_PRECISION_PROCEDURAL_DRIVES_H_

#include <string_view>
#include <vector>

#include "precision/generate_scopes.h"

namespace quill::cli {

// True unless the block surely only reads `name` (letter case ignored unless
// `exactCase`): the
// name followed by an assignment operator ("=", "+=", ..., "++"), by "<="
// outside parentheses, inside a "{...}" that is assigned, or passed to a
// task or function call, counts as a possible drive.
bool MayDrive(const std::vector<Token>& tokens, const ProceduralBlock& block, std::string_view name,
              bool exactCase = false);

// True when the block is "begin ... end" whose top-level statements assign,
// before each if or case (and before any other compound statement), every
// signal that statement assigns: whole signals, by plain "name = ..." or
// "name <= ..." statements. Any construct it cannot read (a task call, a
// loop, a nested declaration block) makes it false.
bool DefaultsCoverBranches(const std::vector<Token>& tokens, const ProceduralBlock& block);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_PROCEDURAL_DRIVES_H_
