#ifndef QUILL_FORMAT_PASSES_ALIGN_DECLARATIONS_H_
#define QUILL_FORMAT_PASSES_ALIGN_DECLARATIONS_H_

#include <string>
#include <string_view>

namespace quill {

// Aligns groups of one-name wire, reg and logic declarations into columns.
std::string AlignDeclarations(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_ALIGN_DECLARATIONS_H_
