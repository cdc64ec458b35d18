#ifndef QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_
#define QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace quill {

// Labels of lines that always start a section of their own.
inline constexpr std::array<std::string_view, 5> kBlockLabels = {"ALWAYS", "INITIAL", "GENERATE", "FUNCTION", "INST"};

// Labels of declarations; a lone line of one of these kinds is never set
// apart from its neighbours.
inline constexpr std::array<std::string_view, 3> kDeclLabels = {"SIGNAL", "PARAM", "INTEGER"};

// A run of lines of one kind: the lines from `first` to `last` whose label is
// `label` (lines of no kind in between do not end it); `count` of them joined.
struct Section {
  std::string_view label;
  std::int32_t first = 0;
  std::int32_t last = 0;
  std::int32_t count = 0;
};

// Separates sections of different kinds by one empty line, unless an empty,
// blank or comment line already stands between them. Only inserts lines.
std::string SpaceSections(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_
