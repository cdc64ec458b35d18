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

// One declaration line of a group, dissected into its cells.
struct DeclRecord {
  std::string type;
  std::string signedness;
  std::string range;
  std::string name;
  std::string array;
  std::string comment;
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
std::optional<DeclRecord> ReadDeclaration(const std::string& line) {
  if (line.find(',') != std::string::npos) return std::nullopt;
  std::optional<LineGroups> groups = ScanNetDecl(line);
  if (!groups) return std::nullopt;
  DeclRecord record;
  record.type = groups->group[1];
  record.signedness = Trim(groups->group[2]);
  record.range = groups->group[3];
  record.name = groups->group[4];
  record.array = groups->group[5];
  record.comment = groups->group[6];
  return record;
}

DeclColumns MeasureGroup(const std::vector<DeclRecord>& records, std::size_t first, std::size_t count) {
  DeclColumns columns;
  for (std::size_t i = first; i < first + count; ++i) {
    const DeclRecord& record = records[i];
    columns.typeWidth = std::max(columns.typeWidth, record.type.size());
    columns.nameWidth = std::max(columns.nameWidth, record.name.size());
    columns.hasSigned = columns.hasSigned || !record.signedness.empty();
    columns.signedWidth = std::max(columns.signedWidth, record.signedness.size());
    columns.hasRange = columns.hasRange || !record.range.empty();
    columns.rangeWidth = std::max(columns.rangeWidth, record.range.size());
    columns.hasArray = columns.hasArray || !record.array.empty();
    columns.arrayWidth = std::max(columns.arrayWidth, record.array.size());
  }
  return columns;
}

std::string RebuildDeclaration(const DeclRecord& record, const DeclColumns& columns) {
  std::string line = PadRight(record.type, columns.typeWidth);
  auto addCell = [&line](const std::string& cell, std::size_t width) {
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
  TextLines lines = SplitLines(text);
  std::vector<std::size_t> candidates;
  std::vector<DeclRecord> records;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (std::optional<DeclRecord> record = ReadDeclaration(lines[i])) {
      candidates.push_back(i);
      records.push_back(std::move(*record));
    }
  }
  if (candidates.empty()) return std::string(text);

  // Groups cut the candidates in order, so their records follow one another.
  std::size_t first = 0;
  for (const std::vector<std::size_t>& group : GroupLines(lines, candidates)) {
    const DeclColumns columns = MeasureGroup(records, first, group.size());
    for (std::size_t k = 0; k < group.size(); ++k) lines[group[k]] = RebuildDeclaration(records[first + k], columns);
    first += group.size();
  }
  return JoinLines(lines, "\n");
}

}  // namespace quill
