// Rendering the classifier's per-byte classes: ANSI colours for a terminal,
// or JSON runs for programs.
#ifndef QUILL_CLI_HIGHLIGHT_OUTPUT_H_
#define QUILL_CLI_HIGHLIGHT_OUTPUT_H_

#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// The class's name in JSON output ("plain", "comment", ..., "flow-command");
// "unknown" for a code outside the engine's eleven.
std::string_view ClassName(unsigned char code);

// The text with one ANSI colour per class. Colours are closed before each
// line feed and opened again after it, so that every line stands alone.
std::string RenderAnsi(std::string_view text, const std::vector<unsigned char>& classes);

// {"file":PATH,"runs":[{"offset":O,"length":L,"class":NAME},...]} on one line:
// maximal runs of equal class covering the whole text, byte offsets.
std::string RenderJsonRuns(std::string_view path, const std::vector<unsigned char>& classes);

}  // namespace quill::cli

#endif  // QUILL_CLI_HIGHLIGHT_OUTPUT_H_
