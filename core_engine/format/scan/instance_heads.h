// The shapes of a module instance's first line, read by hand: each run of
// word bytes or white space in these shapes is maximal in any match, so one
// walk from the start decides them.
#ifndef QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_
#define QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_

#include <string_view>

namespace quill {

// Whether `t` begins with "^\w+\s+\w+\s*\(" (kInstanceHeadPattern).
bool HasInstanceHead(std::string_view t);

// Whether `t` begins with "^\w+\s+#\s*\(" (kParamInstanceHeadPattern).
bool HasParamInstanceHead(std::string_view t);

// Whether `t` is "^\w+\s+\w+$" (kTypeAndNamePattern) or "^\w+$"
// (kSingleWordPattern).
bool IsTypeAndName(std::string_view t);
bool IsSingleWord(std::string_view t);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_INSTANCE_HEADS_H_
