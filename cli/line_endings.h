// Line ends of a file as the tool keeps them: the engine works on LF text,
// and a file whose every line ends in CR LF gets CR LF back.
#ifndef QUILL_CLI_LINE_ENDINGS_H_
#define QUILL_CLI_LINE_ENDINGS_H_

#include <string>
#include <string_view>

namespace quill::cli {

enum class LineEnding { kLf, kCrLf };

// kCrLf when the text has at least one LF and a CR before every LF; kLf
// otherwise (no line end at all, only LF, or a mix, which becomes LF).
LineEnding DetectLineEnding(std::string_view text);

// The text with the CR of every CR LF removed; other CRs stay.
std::string ToLf(std::string_view text);

// The text with every LF turned into CR LF. ToLf(ToCrLf(t)) == t for every t.
std::string ToCrLf(std::string_view text);

// The text in the given line ending: itself for kLf, ToCrLf for kCrLf.
std::string WithLineEnding(std::string_view lfText, LineEnding ending);

}  // namespace quill::cli

#endif  // QUILL_CLI_LINE_ENDINGS_H_
