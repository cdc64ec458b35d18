// Unified diff of two texts, line by line, as diff -u and patch know it.
#ifndef QUILL_CLI_DIFF_H_
#define QUILL_CLI_DIFF_H_

#include <string>
#include <string_view>

namespace quill::cli {

// "" when the texts are equal; otherwise "--- oldName", "+++ newName" and
// hunks with `context` unchanged lines around each change. A last line
// without LF is followed by "\ No newline at end of file".
std::string UnifiedDiff(std::string_view before, std::string_view after, std::string_view oldName,
                        std::string_view newName, std::size_t context = 3);

}  // namespace quill::cli

#endif  // QUILL_CLI_DIFF_H_
