#include "format/align_declarations.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "common/text_utils.h"
#include "format/alignment_utils.h"

namespace quill {
namespace {

constexpr std::string_view kTrailingBlanks = " \t\n\r";

// One declaration line dissected into its cells, as views into the line.
struct DeclRecord {
  std::string_view type;
  std::string_view signedness;
  std::string_view range;
  std::string_view name;
  std::string_view array;
  std::string_view comment;
};

struct DeclColumns {
  std::size_t typeWidth = 0;
  std::size_t nameWidth = 0;
  bool hasSigned = false;
  std::size_t signedWidth = 0;
  bool hasRange = false;
  std::size_t rangeWidth = 1;
  bool hasArray = false;
  std::size_t arrayWidth = 0;
};

// A one-name wire, reg or logic declaration; a line with a comma anywhere,
// comment included, is never one.
std::optional<DeclRecord> ReadDeclaration(std::string_view line) {
  if (line.find(',') != std::string_view::npos) return std::nullopt;
  std::optional<LineGroups> groups = ScanNetDecl(line);
  if (!groups) return std::nullopt;
  DeclRecord record;
  record.type = groups->group[1];
  record.signedness = TrimmedView(groups->group[2]);
  record.range = groups->group[3];
  record.name = groups->group[4];
  record.array = groups->group[5];
  record.comment = groups->group[6];
  return record;
}

void Widen(DeclColumns* columns, const DeclRecord& record) {
  columns->typeWidth = std::max(columns->typeWidth, record.type.size());
  columns->nameWidth = std::max(columns->nameWidth, record.name.size());
  columns->hasSigned = columns->hasSigned || !record.signedness.empty();
  columns->signedWidth = std::max(columns->signedWidth, record.signedness.size());
  columns->hasRange = columns->hasRange || !record.range.empty();
  columns->rangeWidth = std::max(columns->rangeWidth, record.range.size());
  columns->hasArray = columns->hasArray || !record.array.empty();
  columns->arrayWidth = std::max(columns->arrayWidth, record.array.size());
}

std::string RebuildDeclaration(const DeclRecord& record, const DeclColumns& columns) {
  std::string line = PadRight(record.type, columns.typeWidth);
  auto addCell = [&line](std::string_view cell, std::size_t width) {
    line += ' ';
    line += PadRight(cell, width);
  };
  if (columns.hasSigned) addCell(record.signedness, std::max<std::size_t>(columns.signedWidth, 1));
  if (columns.hasRange) addCell(record.range, columns.rangeWidth);
  addCell(record.name, columns.nameWidth);
  if (columns.hasArray) addCell(record.array, std::max<std::size_t>(columns.arrayWidth, 1));
  line += " ;";
  if (!record.comment.empty()) {
    line += ' ';
    line += record.comment;
  }
  line.resize(TrimRightOf(line, kTrailingBlanks).size());
  return line;
}

}  // namespace

std::string AlignDeclarations(std::string_view text) {
  // First reading: the candidates, their groups and each group's widths.
  CandidateGrouper grouper;
  std::vector<DeclColumns> columns;
  LineReader reader(text);
  std::string_view line;
  for (std::size_t i = 0; reader.Next(&line); ++i) {
    std::optional<DeclRecord> record = ReadDeclaration(line);
    if (!record) {
      grouper.AddOther(line);
      continue;
    }
    if (grouper.AddCandidate(i)) columns.emplace_back();
    Widen(&columns.back(), *record);
  }
  if (columns.empty()) return std::string(text);

  // Second reading: each candidate is dissected again for its rewrite, so no
  // record outlives its line.
  const std::vector<CandidateGrouper::Candidate>& candidates = grouper.Candidates();
  auto next = candidates.begin();
  LineJoiner output(text.size() + text.size() / 4);
  LineReader again(text);
  for (std::size_t i = 0; again.Next(&line); ++i) {
    if (next != candidates.end() && next->line == i) {
      output.Add(RebuildDeclaration(*ReadDeclaration(line), columns[next->group]));
      ++next;
    } else {
      output.Add(line);
    }
  }
  return output.Take();
}

}  // namespace quill
