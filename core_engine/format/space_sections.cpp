#include "format/space_sections.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "common/text_utils.h"
#include "format/classify_line.h"

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

// \s of the patterns: blanks plus vertical tab and form feed.
bool IsPatternSpace(char c) {
  return IsBlank(c) || c == '\v' || c == '\f';
}

// Whether a line between two sections already separates them: empty or all
// blank, or starting (after white space) with "//" or "/*".
bool IsSeparatorLine(std::string_view line) {
  line = TrimRightOf(line, "\r");
  if (std::all_of(line.begin(), line.end(), IsBlank)) return true;
  std::size_t first = 0;
  while (first < line.size() && IsPatternSpace(line[first])) ++first;
  std::string_view rest = line.substr(first);
  return rest.substr(0, 2) == "//" || rest.substr(0, 2) == "/*";
}

std::vector<Section> BuildSections(const TextLines& lines) {
  std::vector<Section> sections;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::string label = ClassifyLine(lines[i]);
    if (label.empty()) continue;
    const auto index = static_cast<std::int32_t>(i);
    if (!sections.empty() && sections.back().label == label && !IsBlockLabel(label)) {
      sections.back().last = index;
      ++sections.back().count;
    } else {
      sections.push_back(Section{std::move(label), index, index, 1});
    }
  }
  return sections;
}

bool NeedsEmptyLineBetween(const TextLines& lines, const Section& previous, const Section& section) {
  if (previous.label == section.label && !IsBlockLabel(section.label)) return false;
  if ((previous.count == 1 && IsDeclLabel(previous.label)) || (section.count == 1 && IsDeclLabel(section.label))) {
    return false;
  }
  for (std::int32_t i = previous.last + 1; i < section.first; ++i) {
    if (IsSeparatorLine(lines[static_cast<std::size_t>(i)])) return false;
  }
  return true;
}

}  // namespace

std::string SpaceSections(std::string_view text) {
  const TextLines lines = SplitLines(text);
  const std::vector<Section> sections = BuildSections(lines);
  if (sections.size() < 2) return std::string(text);

  std::vector<bool> emptyLineBefore(lines.size(), false);
  std::size_t inserted = 0;
  for (std::size_t s = 1; s < sections.size(); ++s) {
    if (NeedsEmptyLineBetween(lines, sections[s - 1], sections[s])) {
      emptyLineBefore[static_cast<std::size_t>(sections[s].first)] = true;
      ++inserted;
    }
  }

  std::size_t size = inserted;
  for (const std::string& line : lines) size += line.size() + 1;
  std::string spaced;
  spaced.reserve(size);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) spaced.push_back('\n');
    if (emptyLineBefore[i]) spaced.push_back('\n');
    spaced.append(lines[i]);
  }
  return spaced;
}

}  // namespace quill
