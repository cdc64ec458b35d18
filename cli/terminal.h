// What the tool's streams are connected to.
#ifndef QUILL_CLI_TERMINAL_H_
#define QUILL_CLI_TERMINAL_H_

#include <cstdio>

namespace quill::cli {

enum class ColorMode { kAuto, kAlways, kNever };

// kAuto colours when the stream is a terminal, TERM is not "dumb" and
// NO_COLOR is unset or empty.
bool UseColor(ColorMode mode, std::FILE* stream);

// True when stderr is a terminal that can redraw a line.
bool CanShowProgress();

}  // namespace quill::cli

#endif  // QUILL_CLI_TERMINAL_H_
