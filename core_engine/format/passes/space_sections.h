#ifndef QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_
#define QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

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

// What the spacing reads of one line: its label (LineLabel), and for a line
// of no kind whether it separates sections already (empty or all blank, or
// starting after white space with "//" or "/*").
struct LineKind {
  std::string_view label;
  bool separates = false;
};

LineKind ReadLineKind(std::string_view line);

// Separates sections of different kinds by one empty line, unless an empty,
// blank or comment line already stands between them. Only inserts lines.
std::string SpaceSections(std::string_view text);

// A spaced text with the kinds of its lines, for spacing it again after some
// of its lines were rewritten.
struct SpacedText {
  std::string text;
  std::vector<LineKind> kinds;  // one per line of `text`
  // The rows of the input before which an empty line went in, ascending.
  std::vector<std::int32_t> emptyLinesBefore;
};

SpacedText SpaceSectionsKeepingKinds(std::string_view text);

// SpaceSections(text), where `kinds` are those of the lines of a text that
// `text` differs from only in the rows `changed` marks: only those rows are
// read again.
std::string SpaceSectionsAgain(std::string_view text, const std::vector<LineKind>& kinds,
                               const std::vector<bool>& changed);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_SPACE_SECTIONS_H_
