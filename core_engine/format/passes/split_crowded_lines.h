#ifndef QUILL_FORMAT_PASSES_SPLIT_CROWDED_LINES_H_
#define QUILL_FORMAT_PASSES_SPLIT_CROWDED_LINES_H_

#include <string>
#include <string_view>

namespace quill {

// Puts each port declaration of a line that holds several ("input a, output
// b") and each named connection of a line that holds several (".a(x), .b(y)")
// on a line of its own, and removes trailing CRs from every line. Returns the
// lines joined with LF.
std::string SplitCrowdedLines(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_SPLIT_CROWDED_LINES_H_
