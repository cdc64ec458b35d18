// Whether a line opens a "#(" parameter list.
#ifndef QUILL_FORMAT_SCAN_PARAM_LIST_OPEN_H_
#define QUILL_FORMAT_SCAN_PARAM_LIST_OPEN_H_

#include <string_view>

namespace quill {

// Whether "^\s*#\s*\(" (a line that starts with "#(") or "\w+\s+#\s*\(" (a
// word, blanks and "#(" anywhere: "module fifo #(", "fifo #(") matches.
bool OpensParamList(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_PARAM_LIST_OPEN_H_
