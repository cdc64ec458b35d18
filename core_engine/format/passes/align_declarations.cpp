#include "format/passes/align_declarations.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <vector>

#include "common/byte_search.h"
#include "common/text_utils.h"
#include "format/scan/alignment_utils.h"

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
  Column type;
  Column name;
  Column signedness;
  Column range{false, 1};  // at least one wide
  Column array;
};

// Whether the line's first byte after white space can begin wire, reg or
// logic (any letter case): the one byte turns most lines down before the
// search for a comma and the scan.
bool MayStartWithNetType(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && IsSpaceByte(line[start])) ++start;
  if (start == line.size()) return false;
  const char first = FoldAscii(line[start]);
  return first == 'w' || first == 'r' || first == 'l';
}

// A one-name wire, reg or logic declaration; a line with a comma anywhere,
// comment included, is never one.
std::optional<DeclRecord> ReadDeclaration(std::string_view line) {
  if (!MayStartWithNetType(line) || FindByte(line, 0, ',') != std::string_view::npos) return std::nullopt;
  std::optional<NetDeclParts> parts = ScanNetDecl(line);
  if (!parts) return std::nullopt;
  DeclRecord record;
  record.type = parts->type;
  record.signedness = TrimmedView(parts->signedWord);
  record.range = parts->range;
  record.name = parts->name;
  record.array = parts->arrayDim;
  record.comment = parts->comment;
  return record;
}

void Widen(DeclColumns* columns, const DeclRecord& record) {
  columns->type.Widen(record.type);
  columns->name.Widen(record.name);
  columns->signedness.Widen(record.signedness);
  columns->range.Widen(record.range);
  columns->array.Widen(record.array);
}

std::string RebuildDeclaration(const DeclRecord& record, const DeclColumns& columns) {
  std::string line = PadRight(record.type, columns.type.width);
  auto addCell = [&line](std::string_view cell, std::size_t width) {
    line += ' ';
    line += PadRight(cell, width);
  };
  if (columns.signedness.present) addCell(record.signedness, std::max<std::size_t>(columns.signedness.width, 1));
  if (columns.range.present) addCell(record.range, columns.range.width);
  addCell(record.name, columns.name.width);
  if (columns.array.present) addCell(record.array, std::max<std::size_t>(columns.array.width, 1));
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
  std::vector<std::string_view> candidateLines;
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
    candidateLines.push_back(line);
  }
  if (columns.empty()) return std::string(text);

  // Second reading, of the candidates only: each is dissected again for its
  // rewrite, so no record outlives its line.
  const std::vector<CandidateGrouper::Candidate>& candidates = grouper.Candidates();
  std::vector<LineReplacement> rewrites;
  rewrites.reserve(candidates.size());
  for (std::size_t k = 0; k < candidates.size(); ++k) {
    const std::string_view candidate = candidateLines[k];
    rewrites.push_back({candidate, RebuildDeclaration(*ReadDeclaration(candidate), columns[candidates[k].group])});
  }
  return RewriteLines(text, rewrites, RoomToGrow(text.size()));
}

}  // namespace quill
