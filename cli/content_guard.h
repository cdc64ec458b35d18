// The content guard: formatting may move and re-space code, but every
// non-blank byte of the input must still be in the output, in order.
#ifndef QUILL_CLI_CONTENT_GUARD_H_
#define QUILL_CLI_CONTENT_GUARD_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// The one-based input lines holding text that the output lost, ascending and
// each once; empty when the input's non-blank bytes (all but space, TAB, LF
// and CR) form a subsequence of the output's.
std::vector<uint32_t> FindLostLines(std::string_view input, std::string_view output);

// "line 7" or "lines 3, 7, 12", listing at most `shown` numbers and then
// "and N more".
std::string DescribeLines(const std::vector<uint32_t>& lines, std::size_t shown = 10);

}  // namespace quill::cli

#endif  // QUILL_CLI_CONTENT_GUARD_H_
