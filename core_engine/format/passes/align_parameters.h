#ifndef QUILL_FORMAT_PASSES_ALIGN_PARAMETERS_H_
#define QUILL_FORMAT_PASSES_ALIGN_PARAMETERS_H_

#include <string>
#include <string_view>

namespace quill {

// Aligns parameter and localparam items, inside and outside "#(" lists.
std::string AlignParameters(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_ALIGN_PARAMETERS_H_
