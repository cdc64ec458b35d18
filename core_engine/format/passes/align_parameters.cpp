#include "format/passes/align_parameters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/byte_search.h"
#include "common/pattern.h"
#include "common/text_utils.h"
#include "format/scan/alignment_utils.h"
#include "format/scan/param_list_open.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

constexpr std::string_view kIndent = "    ";
constexpr std::string_view kTrailingBlanks = " \t\n\r";

// One parameter item dissected into its cells, as views into the line.
struct ParamRecord {
  std::string_view keyword;
  std::string_view range;
  std::string_view name;
  std::string_view value;
  std::string_view separator;
  std::string_view comment;
  bool inList = false;
};

struct ParamColumns {
  Column keyword;
  Column range;
  Column name;
  Column value;
};

// Follows the "#(" lists from line to line: a line is inside a list when
// the list is still open after it. The line that opens a list is inside, the
// one whose parentheses close it is not; every parenthesis counts, comments
// and strings included.
class ParamListTracker {
 public:
  // Reads the next line; true when it stands inside an open list.
  bool Next(std::string_view line) {
    if (OpensParamList(line)) {
      inside_ = true;
      depth_ = 0;
    }
    // Outside a list the depth is never read before the next list resets it.
    if (!inside_) return false;
    for (char c : line) {
      if (c == '(') ++depth_;
      if (c == ')') --depth_;
    }
    const bool inList = depth_ > 0;
    inside_ = depth_ != 0;
    return inList;
  }

 private:
  bool inside_ = false;
  std::int64_t depth_ = 0;
};

// Lines that are never parameter items: a module-body statement.
bool IsBodyItem(std::string_view t) {
  return IsOneOfIgnoringCase(LeadingPatternWord(t),
                             {"module", "endmodule", "always", "always_ff", "always_comb", "initial", "assign"});
}

// A parameter item: a line of the parameter form whose name is no core
// keyword and that is not a comment or module-body statement. Whether a
// keyword-less item counts depends on the line above and is decided by the
// caller.
std::optional<ParamRecord> ReadParameter(std::string_view line) {
  // Every parameter item has a value that begins with "=".
  if (FindByte(line, 0, '=') == std::string_view::npos) return std::nullopt;
  const std::string_view t = TrimmedView(line);
  if (t.empty() || t.substr(0, 2) == "//") return std::nullopt;
  if (IsBodyItem(t)) return std::nullopt;
  std::optional<ParamDeclParts> parts = ScanParamDecl(line);
  if (!parts) return std::nullopt;
  ParamRecord record;
  record.value = TrimmedView(parts->value);
  if (record.value.empty() || record.value[0] != '=') return std::nullopt;
  if (Patterns().kCoreKeywords.count(parts->name) > 0) return std::nullopt;
  record.keyword = parts->keyword;
  record.range = parts->range;
  record.name = parts->name;
  record.separator = parts->separator;
  record.comment = parts->comment;
  return record;
}

// Whether the line's text after white space begins with "parameter" or
// "localparam" in any letter case, as the item's keyword must.
bool MayHaveParamKeyword(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && IsSpaceByte(line[start])) ++start;
  const std::string_view rest = line.substr(start);
  for (std::string_view keyword : {std::string_view("parameter"), std::string_view("localparam")}) {
    if (rest.size() < keyword.size()) continue;
    std::size_t i = 0;
    while (i < keyword.size() && FoldAscii(rest[i]) == keyword[i]) ++i;
    if (i == keyword.size()) return true;
  }
  return false;
}

void Widen(ParamColumns* columns, const ParamRecord& record) {
  columns->keyword.Widen(record.keyword);
  columns->range.Widen(record.range);
  columns->name.Widen(record.name);
  columns->value.Widen(record.value);
}

std::string RebuildParameter(const ParamRecord& record, const ParamColumns& columns) {
  std::string line(record.inList ? kIndent : std::string_view());
  bool firstCell = true;
  auto addCell = [&line, &firstCell](std::string_view cell, std::size_t width) {
    if (!firstCell) line += ' ';
    firstCell = false;
    line += PadRight(cell, width);
  };
  if (columns.keyword.present) addCell(record.keyword, columns.keyword.width);
  if (columns.range.present) addCell(record.range, std::max<std::size_t>(columns.range.width, 1));
  addCell(record.name, columns.name.width);
  addCell(record.value, columns.value.width);
  line += ' ';
  line += record.separator;
  if (!record.comment.empty()) {
    line += ' ';
    line += record.comment;
  }
  line.resize(TrimRightOf(line, kTrailingBlanks).size());
  return line;
}

}  // namespace

std::string AlignParameters(std::string_view text) {
  // First reading: the accepted items, their groups, whether each stands in
  // a "#(" list, and each group's widths. A keyword-less item counts only
  // directly under an accepted line.
  CandidateGrouper grouper;
  std::vector<bool> inList;
  std::vector<ParamColumns> columns;
  std::vector<std::string_view> candidateLines;
  ParamListTracker tracker;
  LineReader reader(text);
  std::string_view line;
  for (std::size_t i = 0; reader.Next(&line); ++i) {
    const bool lineInList = tracker.Next(line);
    const std::vector<CandidateGrouper::Candidate>& accepted = grouper.Candidates();
    // A line without the keyword counts only under an accepted one, so it is
    // read only there.
    const bool underAccepted = !accepted.empty() && accepted.back().line + 1 == i;
    std::optional<ParamRecord> record;
    if (underAccepted || MayHaveParamKeyword(line)) record = ReadParameter(line);
    if (!record || (record->keyword.empty() && (accepted.empty() || accepted.back().line + 1 != i))) {
      grouper.AddOther(line);
      continue;
    }
    if (grouper.AddCandidate(i)) columns.emplace_back();
    Widen(&columns.back(), *record);
    inList.push_back(lineInList);
    candidateLines.push_back(line);
  }
  if (columns.empty()) return std::string(text);

  // Second reading, of the items only: each is dissected again for its
  // rewrite, so no record outlives its line.
  const std::vector<CandidateGrouper::Candidate>& candidates = grouper.Candidates();
  std::vector<LineReplacement> rewrites;
  rewrites.reserve(candidates.size());
  for (std::size_t k = 0; k < candidates.size(); ++k) {
    ParamRecord record = *ReadParameter(candidateLines[k]);
    record.inList = inList[k];
    rewrites.push_back({candidateLines[k], RebuildParameter(record, columns[candidates[k].group])});
  }
  return RewriteLines(text, rewrites, RoomToGrow(text.size()));
}

}  // namespace quill
