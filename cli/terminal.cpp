#include "terminal.h"

#include <unistd.h>

#include <cstdlib>
#include <cstring>

namespace quill::cli {
namespace {

bool IsCapableTerminal(std::FILE* stream) {
  if (isatty(fileno(stream)) == 0) return false;
  const char* term = std::getenv("TERM");
  return term == nullptr || std::strcmp(term, "dumb") != 0;
}

}  // namespace

bool UseColor(ColorMode mode, std::FILE* stream) {
  switch (mode) {
    case ColorMode::kAlways:
      return true;
    case ColorMode::kNever:
      return false;
    case ColorMode::kAuto:
      break;
  }
  const char* noColor = std::getenv("NO_COLOR");
  if (noColor != nullptr && noColor[0] != '\0') return false;
  return IsCapableTerminal(stream);
}

bool CanShowProgress() {
  return IsCapableTerminal(stderr);
}

}  // namespace quill::cli
