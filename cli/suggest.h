// Suggestions for misspelt words on the command line.
#ifndef QUILL_CLI_SUGGEST_H_
#define QUILL_CLI_SUGGEST_H_

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// The number of single-byte insertions, deletions and substitutions that
// turn `a` into `b` (Levenshtein distance).
std::size_t EditDistance(std::string_view a, std::string_view b);

// The candidate `word` most likely stands for: the nearest one within an
// edit distance of 2 (and less than the word's length, so that "x" suggests
// nothing), else the only candidate that starts with a word of 2 or more
// bytes; "" when none fits. Ties go to the earlier candidate.
std::string ClosestName(std::string_view word, const std::vector<std::string>& candidates);

}  // namespace quill::cli

#endif  // QUILL_CLI_SUGGEST_H_
