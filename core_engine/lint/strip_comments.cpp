#include <cstddef>

#include "lint/steps.h"

namespace quill {

std::string StripComments(std::string_view text) {
  std::string prepared(text);
  const std::size_t length = text.size();
  // Only a "/" can start a comment.
  std::size_t i = text.find('/');
  while (i < length) {
    if (i + 1 < length && text[i] == '/' && text[i + 1] == '*') {
      // "/*/" does not close itself: the close is searched two bytes on. An
      // unterminated comment runs to the end of the text.
      const std::size_t close = text.find("*/", i + 2);
      const std::size_t end = close == std::string_view::npos ? length : close + 2;
      for (; i < end; ++i) {
        if (text[i] != '\n' && text[i] != '\r') prepared[i] = ' ';
      }
    } else if (i + 1 < length && text[i] == '/' && text[i + 1] == '/') {
      // A line comment blanks a CR before its LF too.
      for (; i < length && text[i] != '\n'; ++i) prepared[i] = ' ';
    } else {
      i = text.find('/', i + 1);
    }
  }
  return prepared;
}

}  // namespace quill
