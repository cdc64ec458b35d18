#ifndef QUILL_LINT_LINT_TEXT_H_
#define QUILL_LINT_LINT_TEXT_H_

#include <string>
#include <string_view>

namespace quill {

// Lints one Verilog text and returns the JSON array of findings. Never
// throws: an internal failure becomes a "cpp-exception" finding.
std::string LintText(std::string_view text);

}  // namespace quill

#endif  // QUILL_LINT_LINT_TEXT_H_
