// Which elements of two sequences are not part of a common subsequence: a
// linear-space Myers difference with a cost cut-off that keeps huge inputs
// fast at the price of a slightly longer edit script.
#ifndef QUILL_CLI_SEQUENCE_DIFF_H_
#define QUILL_CLI_SEQUENCE_DIFF_H_

#include <cstdint>
#include <span>
#include <vector>

namespace quill::cli {

struct DiffMarks {
  std::vector<bool> deleted;   // per element of the old sequence
  std::vector<bool> inserted;  // per element of the new sequence
};

// Marks the elements outside a common subsequence of `before` and `after`.
// The unmarked elements of both, in order, are the same sequence; it is a
// longest one unless the cut-off stepped in.
DiffMarks MarkDifferences(std::span<const uint32_t> before, std::span<const uint32_t> after);

}  // namespace quill::cli

#endif  // QUILL_CLI_SEQUENCE_DIFF_H_
