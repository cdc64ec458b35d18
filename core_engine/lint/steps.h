// The linter's steps, run by LintText in the order declared here on the
// prepared text. Each returns what it finds; the steps that record where
// names are read add to one map of first uses, in this order, so that the
// spelling kept for a name is the one read first.
#ifndef QUILL_LINT_STEPS_H_
#define QUILL_LINT_STEPS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/name_set.h"
#include "lint/module_model.h"

namespace quill {

// Text preparation: comments overwritten by spaces, every byte keeping its
// position and every line its number.
std::string StripComments(std::string_view text);

std::vector<SignalDecl> ExtractDeclarations(std::string_view text);
std::vector<ParamDecl> ExtractParameters(std::string_view text);
std::vector<ContAssign> ExtractContinuousAssigns(std::string_view text);

// Bytes of block body the always-block analysis may scan or copy for a text
// of `textSize` bytes. Block bodies that never end make the analysed text
// grow with the square of the input; past this budget further blocks are
// left out. Real sources never come near it.
std::uint64_t AlwaysAnalysisBudget(std::size_t textSize);

// The always blocks, analysed while `budget` lasts; the names their bodies
// read go to `firstUseLine`.
std::vector<AlwaysBlock> ExtractAlwaysBlocks(std::string_view text, std::uint64_t budget, NameMap& firstUseLine);

// The module instances; the names their named connections read go to
// `firstUseLine`.
std::vector<InstanceRecord> ExtractInstances(std::string_view text, NameMap& firstUseLine);

// Records the names read by continuous assignments' right-hand sides and by
// always blocks' sensitivity lists.
void CollectUses(const std::vector<ContAssign>& assigns, const std::vector<AlwaysBlock>& alwaysBlocks,
                 NameMap& firstUseLine);

// The names written by a continuous assignment's left-hand side.
std::vector<std::string> LhsNames(std::string_view lhs);

}  // namespace quill

#endif  // QUILL_LINT_STEPS_H_
