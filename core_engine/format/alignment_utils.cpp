#include "format/alignment_utils.h"

namespace quill {

std::string PadRight(std::string_view s, std::size_t width) {
  std::string padded(s);
  if (padded.size() < width) padded.append(width - padded.size(), ' ');
  return padded;
}

bool IsSkippableGap(const TextLines& lines, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i <= last && i < lines.size(); ++i) {
    std::string t = Trim(lines[i]);
    if (!t.empty() && t.rfind("//", 0) != 0) return false;
  }
  return true;
}

}  // namespace quill
