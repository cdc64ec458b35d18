#include "format/passes/space_sections.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "common/text_utils.h"
#include "format/scan/classify_line.h"

namespace quill {
namespace {

template <std::size_t N>
bool IsIn(std::string_view label, const std::array<std::string_view, N>& group) {
  return std::find(group.begin(), group.end(), label) != group.end();
}

bool IsBlockLabel(std::string_view label) {
  return IsIn(label, kBlockLabels);
}
bool IsDeclLabel(std::string_view label) {
  return IsIn(label, kDeclLabels);
}

// Whether a line between two sections already separates them: empty or all
// blank, or starting (after white space) with "//" or "/*". CRs at the end
// change neither test, so the line is read as it is.
bool IsSeparatorLine(std::string_view line) {
  if (std::all_of(line.begin(), line.end(), IsBlankByte)) return true;
  std::size_t first = 0;
  while (first < line.size() && IsSpaceByte(line[first])) ++first;
  std::string_view rest = line.substr(first);
  return rest.substr(0, 2) == "//" || rest.substr(0, 2) == "/*";
}

// The sections of a text, built while its lines are read once, and for each
// section whether a separator line stands between it and the section before.
// The lines between two neighbouring sections are exactly the lines of no
// kind since the last line that had one.
struct SectionList {
  std::vector<Section> sections;
  std::vector<bool> separatedFromPrevious;
  // Where each section's first line begins in the text.
  std::vector<std::size_t> firstOffsets;
};

SectionList BuildSections(std::string_view text) {
  SectionList list;
  bool separatorSinceLabel = false;
  LineReader reader(text);
  std::string_view line;
  for (std::int32_t i = 0; reader.Next(&line); ++i) {
    const std::string_view label = LineLabel(line);
    if (label.empty()) {
      separatorSinceLabel = separatorSinceLabel || IsSeparatorLine(line);
      continue;
    }
    std::vector<Section>& sections = list.sections;
    if (!sections.empty() && sections.back().label == label && !IsBlockLabel(label)) {
      sections.back().last = i;
      ++sections.back().count;
    } else {
      sections.push_back(Section{label, i, i, 1});
      list.separatedFromPrevious.push_back(separatorSinceLabel);
      list.firstOffsets.push_back(static_cast<std::size_t>(line.data() - text.data()));
    }
    separatorSinceLabel = false;
  }
  return list;
}

bool NeedsEmptyLineBetween(const Section& previous, const Section& section, bool separated) {
  if (previous.label == section.label && !IsBlockLabel(section.label)) return false;
  if ((previous.count == 1 && IsDeclLabel(previous.label)) || (section.count == 1 && IsDeclLabel(section.label))) {
    return false;
  }
  return !separated;
}

}  // namespace

std::string SpaceSections(std::string_view text) {
  const SectionList list = BuildSections(text);
  const std::vector<Section>& sections = list.sections;
  if (sections.size() < 2) return std::string(text);

  // First lines of the sections that get an empty line in front, ascending,
  // and where those lines begin.
  std::vector<std::int32_t> emptyLineBefore;
  std::vector<std::size_t> offsets;
  for (std::size_t s = 1; s < sections.size(); ++s) {
    if (NeedsEmptyLineBetween(sections[s - 1], sections[s], list.separatedFromPrevious[s])) {
      emptyLineBefore.push_back(sections[s].first);
      offsets.push_back(list.firstOffsets[s]);
    }
  }

  std::string spaced;
  spaced.reserve(text.size() + emptyLineBefore.size());
  if (text.find('\r') == std::string_view::npos) {
    // Without CRs the lines joined by LF are the text itself, so the empty
    // lines go in as LFs where their sections begin.
    std::size_t copied = 0;
    for (std::size_t offset : offsets) {
      spaced.append(text.substr(copied, offset - copied));
      spaced.push_back('\n');
      copied = offset;
    }
    spaced.append(text.substr(copied));
    return spaced;
  }
  auto next = emptyLineBefore.begin();
  LineReader reader(text);
  std::string_view line;
  for (std::int32_t i = 0; reader.Next(&line); ++i) {
    if (i > 0) spaced.push_back('\n');
    if (next != emptyLineBefore.end() && *next == i) {
      spaced.push_back('\n');
      ++next;
    }
    spaced.append(line);
  }
  return spaced;
}

}  // namespace quill
