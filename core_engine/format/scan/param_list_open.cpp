#include "format/scan/param_list_open.h"

#include "common/byte_search.h"
#include "common/char_class.h"

namespace quill {

// Each "#" followed by white space and "(" is tried: the white space right
// before it either reaches back to the line's start (the first form) or
// follows a word byte (the second, whose \s+ can only begin there).
bool OpensParamList(std::string_view line) {
  for (std::size_t hash = FindByte(line, 0, '#'); hash != std::string_view::npos; hash = FindByte(line, hash + 1, '#')) {
    std::size_t after = hash + 1;
    while (after < line.size() && IsSpaceByte(line[after])) ++after;
    if (after == line.size() || line[after] != '(') continue;
    std::size_t blanks = hash;
    while (blanks > 0 && IsSpaceByte(line[blanks - 1])) --blanks;
    if (blanks == 0) return true;
    if (blanks < hash && IsWordByte(line[blanks - 1])) return true;
  }
  return false;
}

}  // namespace quill
