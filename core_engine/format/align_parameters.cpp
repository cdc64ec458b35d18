#include "format/align_parameters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/pattern.h"
#include "common/pattern_table.h"
#include "common/text_utils.h"
#include "format/alignment_utils.h"

namespace quill {
namespace {

constexpr std::string_view kIndent = "    ";
constexpr std::string_view kTrailingBlanks = " \t\n\r";

struct ParamPatterns {
  // A line that starts with "#(".
  Pattern kParamListOpenPattern{R"(^\s*#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // A word, blanks and "#(" anywhere in the line: "module fifo #(", "fifo #(".
  Pattern kNamedParamListOpenPattern{R"(\w+\s+#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // Lines that are never parameter items.
  Pattern kBodyItemPattern{R"(^\s*(module\b|endmodule\b|always\b|always_ff\b|always_comb\b|initial\b|assign\b))",
                           CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
};

const ParamPatterns& LocalPatterns() {
  static const ParamPatterns patterns;
  return patterns;
}

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
  bool hasKeyword = false;
  std::size_t keywordWidth = 0;
  bool hasRange = false;
  std::size_t rangeWidth = 0;
  std::size_t nameWidth = 0;
  std::size_t valueWidth = 0;
};

// Marks the lines that stand inside an open "#(" list. The line that opens a
// list is marked, the one whose parentheses close it is not; every
// parenthesis counts, comments and strings included.
std::vector<bool> MarkParamListLines(const TextLines& lines) {
  const ParamPatterns& patterns = LocalPatterns();
  std::vector<bool> inParamList(lines.size(), false);
  bool inside = false;
  std::int64_t depth = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string& line = lines[i];
    if (patterns.kParamListOpenPattern.Search(line) || patterns.kNamedParamListOpenPattern.Search(line)) {
      inside = true;
      depth = 0;
    }
    for (char c : line) {
      if (c == '(') ++depth;
      if (c == ')') --depth;
    }
    if (inside) {
      inParamList[i] = depth > 0;
      inside = depth != 0;
    }
  }
  return inParamList;
}

std::string ToLower(std::string_view word) {
  std::string lower(word);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// A parameter item: a line of the parameter form whose name is no core
// keyword and that is not a comment or module-body statement. Whether a
// keyword-less item counts depends on the line above and is decided by the
// caller.
std::optional<ParamRecord> ReadParameter(std::string_view line) {
  const std::string_view t = TrimmedView(line);
  if (t.empty() || t.substr(0, 2) == "//") return std::nullopt;
  if (LocalPatterns().kBodyItemPattern.Search(t)) return std::nullopt;
  std::optional<LineGroups> groups = ScanParamDecl(line);
  if (!groups) return std::nullopt;
  ParamRecord record;
  record.value = TrimmedView(groups->group[4]);
  if (record.value.empty() || record.value[0] != '=') return std::nullopt;
  if (Patterns().kCoreKeywords.count(ToLower(groups->group[3])) > 0) return std::nullopt;
  record.keyword = groups->group[1];
  record.range = groups->group[2];
  record.name = groups->group[3];
  record.separator = groups->group[5];
  record.comment = groups->group[6];
  return record;
}

void Widen(ParamColumns* columns, const ParamRecord& record) {
  columns->hasKeyword = columns->hasKeyword || !record.keyword.empty();
  columns->keywordWidth = std::max(columns->keywordWidth, record.keyword.size());
  columns->hasRange = columns->hasRange || !record.range.empty();
  columns->rangeWidth = std::max(columns->rangeWidth, record.range.size());
  columns->nameWidth = std::max(columns->nameWidth, record.name.size());
  columns->valueWidth = std::max(columns->valueWidth, record.value.size());
}

std::string RebuildParameter(const ParamRecord& record, const ParamColumns& columns) {
  std::string line(record.inList ? kIndent : std::string_view());
  bool firstCell = true;
  auto addCell = [&line, &firstCell](std::string_view cell, std::size_t width) {
    if (!firstCell) line += ' ';
    firstCell = false;
    line += PadRight(cell, width);
  };
  if (columns.hasKeyword) addCell(record.keyword, columns.keywordWidth);
  if (columns.hasRange) addCell(record.range, std::max<std::size_t>(columns.rangeWidth, 1));
  addCell(record.name, columns.nameWidth);
  addCell(record.value, columns.valueWidth);
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
  TextLines lines = SplitLines(text);
  const std::vector<bool> inParamList = MarkParamListLines(lines);

  // A keyword-less item counts only directly under an accepted line.
  std::vector<std::size_t> candidates;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    std::optional<ParamRecord> record = ReadParameter(lines[i]);
    if (!record) continue;
    if (record->keyword.empty() && (candidates.empty() || candidates.back() + 1 != i)) continue;
    candidates.push_back(i);
  }
  if (candidates.empty()) return std::string(text);

  // Each line of a group is read again for its widths and for its rewrite,
  // so no record outlives its line.
  for (const std::vector<std::size_t>& group : GroupLines(lines, candidates)) {
    ParamColumns columns;
    for (std::size_t i : group) Widen(&columns, *ReadParameter(lines[i]));
    for (std::size_t i : group) {
      ParamRecord record = *ReadParameter(lines[i]);
      record.inList = inParamList[i];
      lines[i] = RebuildParameter(record, columns);
    }
  }
  return JoinLines(lines, "\n");
}

}  // namespace quill
