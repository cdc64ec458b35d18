#include "format/passes/space_sections.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>
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

// Adds the lines one by one; `separatorSinceLabel` tells whether a line of
// no kind that separates stands since the last line that had one.
class SectionBuilder {
 public:
  void Add(std::int32_t i, LineKind kind, std::size_t offset) {
    if (kind.label.empty()) {
      separatorSinceLabel_ = separatorSinceLabel_ || kind.separates;
      return;
    }
    std::vector<Section>& sections = list_.sections;
    if (!sections.empty() && sections.back().label == kind.label && !IsBlockLabel(kind.label)) {
      sections.back().last = i;
      ++sections.back().count;
    } else {
      sections.push_back(Section{kind.label, i, i, 1});
      list_.separatedFromPrevious.push_back(separatorSinceLabel_);
      list_.firstOffsets.push_back(offset);
    }
    separatorSinceLabel_ = false;
  }
  SectionList Take() { return std::move(list_); }

 private:
  SectionList list_;
  bool separatorSinceLabel_ = false;
};

bool NeedsEmptyLineBetween(const Section& previous, const Section& section, bool separated) {
  if (previous.label == section.label && !IsBlockLabel(section.label)) return false;
  if ((previous.count == 1 && IsDeclLabel(previous.label)) || (section.count == 1 && IsDeclLabel(section.label))) {
    return false;
  }
  return !separated;
}

// The first lines of the sections that get an empty line in front,
// ascending, and where those lines begin.
struct EmptyLines {
  std::vector<std::int32_t> before;
  std::vector<std::size_t> offsets;
};

EmptyLines FindEmptyLines(const SectionList& list) {
  EmptyLines empty;
  const std::vector<Section>& sections = list.sections;
  for (std::size_t s = 1; s < sections.size(); ++s) {
    if (NeedsEmptyLineBetween(sections[s - 1], sections[s], list.separatedFromPrevious[s])) {
      empty.before.push_back(sections[s].first);
      empty.offsets.push_back(list.firstOffsets[s]);
    }
  }
  return empty;
}

std::string InsertEmptyLines(std::string_view text, const EmptyLines& empty) {
  std::string spaced;
  spaced.reserve(text.size() + empty.before.size());
  if (text.find('\r') == std::string_view::npos) {
    // Without CRs the lines joined by LF are the text itself, so the empty
    // lines go in as LFs where their sections begin.
    std::size_t copied = 0;
    for (std::size_t offset : empty.offsets) {
      spaced.append(text.substr(copied, offset - copied));
      spaced.push_back('\n');
      copied = offset;
    }
    spaced.append(text.substr(copied));
    return spaced;
  }
  auto next = empty.before.begin();
  LineReader reader(text);
  std::string_view line;
  for (std::int32_t i = 0; reader.Next(&line); ++i) {
    if (i > 0) spaced.push_back('\n');
    if (next != empty.before.end() && *next == i) {
      spaced.push_back('\n');
      ++next;
    }
    spaced.append(line);
  }
  return spaced;
}

// The sections of a text whose line kinds `kindOf(row, line)` gives.
template <typename KindOf>
SectionList BuildSections(std::string_view text, KindOf kindOf) {
  SectionBuilder builder;
  LineReader reader(text);
  std::string_view line;
  for (std::int32_t i = 0; reader.Next(&line); ++i) {
    builder.Add(i, kindOf(static_cast<std::size_t>(i), line), static_cast<std::size_t>(line.data() - text.data()));
  }
  return builder.Take();
}

}  // namespace

LineKind ReadLineKind(std::string_view line) {
  LineKind kind{LineLabel(line), false};
  if (kind.label.empty()) kind.separates = IsSeparatorLine(line);
  return kind;
}

std::string SpaceSections(std::string_view text) {
  const SectionList list = BuildSections(text, [](std::size_t, std::string_view line) { return ReadLineKind(line); });
  if (list.sections.size() < 2) return std::string(text);
  return InsertEmptyLines(text, FindEmptyLines(list));
}

SpacedText SpaceSectionsKeepingKinds(std::string_view text) {
  std::vector<LineKind> kinds;
  kinds.reserve(EstimateLineCount(text));
  const SectionList list = BuildSections(text, [&kinds](std::size_t, std::string_view line) {
    kinds.push_back(ReadLineKind(line));
    return kinds.back();
  });
  if (list.sections.size() < 2) return {std::string(text), std::move(kinds), {}};
  EmptyLines empty = FindEmptyLines(list);
  // The spaced text's lines are the text's with an empty line, which
  // separates, before each row in `empty.before`.
  std::vector<LineKind> spacedKinds;
  spacedKinds.reserve(kinds.size() + empty.before.size());
  auto next = empty.before.begin();
  for (std::size_t row = 0; row < kinds.size(); ++row) {
    if (next != empty.before.end() && static_cast<std::size_t>(*next) == row) {
      spacedKinds.push_back(LineKind{"", true});
      ++next;
    }
    spacedKinds.push_back(kinds[row]);
  }
  return {InsertEmptyLines(text, empty), std::move(spacedKinds), std::move(empty.before)};
}

std::string SpaceSectionsAgain(std::string_view text, const std::vector<LineKind>& kinds,
                               const std::vector<bool>& changed) {
  const SectionList list = BuildSections(text, [&kinds, &changed](std::size_t row, std::string_view line) {
    const bool reread = row >= kinds.size() || (row < changed.size() && changed[row]);
    return reread ? ReadLineKind(line) : kinds[row];
  });
  if (list.sections.size() < 2) return std::string(text);
  return InsertEmptyLines(text, FindEmptyLines(list));
}

}  // namespace quill
