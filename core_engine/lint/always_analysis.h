#ifndef QUILL_LINT_ALWAYS_ANALYSIS_H_
#define QUILL_LINT_ALWAYS_ANALYSIS_H_

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/name_set.h"
#include "lint/module_model.h"

namespace quill {

// Fills the assignment lists, counts and latch verdict of one always block
// from its body text, and records the body's identifier uses.
void AnalyzeAlwaysBody(std::string_view body, AlwaysBlock& block, std::uint32_t bodyStartLine, NameMap& firstUseLine);

// Records every assignment with operator `op` ("<=" or "=") found in `text`;
// the records' right-hand sides are pieces of `text` itself, shared.
void ScanAssignments(const std::shared_ptr<const std::string>& text, std::string_view op, std::uint32_t startLine,
                     NameMap& firstUseLine, AlwaysBlock& block);

// `text` without everything inside (and including) parentheses or brackets.
std::string StripParenthesized(std::string_view text);
std::string StripBracketed(std::string_view text);

}  // namespace quill

#endif  // QUILL_LINT_ALWAYS_ANALYSIS_H_
