#include "line_endings.h"

#include <algorithm>

namespace quill::cli {

LineEnding DetectLineEnding(std::string_view text) {
  bool sawLf = false;
  for (std::size_t i = text.find('\n'); i != std::string_view::npos; i = text.find('\n', i + 1)) {
    if (i == 0 || text[i - 1] != '\r') return LineEnding::kLf;
    sawLf = true;
  }
  return sawLf ? LineEnding::kCrLf : LineEnding::kLf;
}

std::string ToLf(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out.push_back(text[i]);
  }
  return out;
}

std::string ToCrLf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')));
  for (const char c : text) {
    if (c == '\n') out.push_back('\r');
    out.push_back(c);
  }
  return out;
}

std::string WithLineEnding(std::string_view lfText, LineEnding ending) {
  return ending == LineEnding::kCrLf ? ToCrLf(lfText) : std::string(lfText);
}

}  // namespace quill::cli
