#ifndef QUILL_FORMAT_ALIGNMENT_UTILS_H_
#define QUILL_FORMAT_ALIGNMENT_UTILS_H_

#include <cstddef>
#include <string>
#include <string_view>

#include "common/text_utils.h"

namespace quill {

// `s` widened with trailing spaces to `width`; never cut.
std::string PadRight(std::string_view s, std::size_t width);

// Whether every line from `first` to `last` (inclusive) is blank or a "//"
// comment line; true for an empty range and past the end of the lines.
bool IsSkippableGap(const TextLines& lines, std::size_t first, std::size_t last);

}  // namespace quill

#endif  // QUILL_FORMAT_ALIGNMENT_UTILS_H_
