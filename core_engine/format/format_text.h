#ifndef QUILL_FORMAT_FORMAT_TEXT_H_
#define QUILL_FORMAT_FORMAT_TEXT_H_

#include <string>
#include <string_view>

namespace quill {

// Whether the text is foreign source (Python) that the formatter passes
// through unchanged.
bool IsForeignSource(std::string_view text);

// Formats a Verilog text that is known to be non-blank and not foreign
// source. The result ends with exactly one LF.
std::string FormatText(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_FORMAT_TEXT_H_
