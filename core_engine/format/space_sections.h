#ifndef QUILL_FORMAT_SPACE_SECTIONS_H_
#define QUILL_FORMAT_SPACE_SECTIONS_H_

#include <string>
#include <string_view>

namespace quill {

// Separates sections of different kinds by one empty line.
std::string SpaceSections(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_SPACE_SECTIONS_H_
