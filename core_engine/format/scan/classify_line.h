#ifndef QUILL_FORMAT_SCAN_CLASSIFY_LINE_H_
#define QUILL_FORMAT_SCAN_CLASSIFY_LINE_H_

#include <string>
#include <string_view>

namespace quill {

// The kind of a line for section spacing: "PORT", "SIGNAL", "PARAM",
// "INTEGER", "ASSIGN", "ALWAYS", "INITIAL", "GENERATE", "FUNCTION", "INST", or
// "" for a line of no kind. Structural words (module, begin, if, ...) are
// recognised in lower case only, while declaration words ignore case.
std::string ClassifyLine(std::string_view line);

// The same label as a view of a constant, for callers that classify many
// lines.
std::string_view LineLabel(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_CLASSIFY_LINE_H_
