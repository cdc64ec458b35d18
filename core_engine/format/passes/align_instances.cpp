#include "format/passes/align_instances.h"

#include <algorithm>
#include <deque>

#include "common/pattern.h"
#include "format/scan/alignment_utils.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";
constexpr std::string_view kIndentStep = "    ";

bool IsBlankText(std::string_view s) {
  return TrimRightOf(s, kBlanks).empty();
}

// The port list as text lines: the open line after its "(", the lines in
// between whole, the close line before its ")". An open-line remainder that
// is blank or only a comment (already carried by the header) counts as an
// empty entry. Blank entries at both ends are dropped.
TextLines CollectEntries(const LineViews& lines, const InstanceSpan& span) {
  TextLines entries;
  std::string_view remainder = lines[span.openLine].substr(span.openColumn + 1);
  std::string_view remainderText = remainder.substr(std::min(remainder.size(), remainder.find_first_not_of(kBlanks)));
  entries.emplace_back(remainderText.empty() || remainderText.starts_with("//") ? std::string_view() : remainder);
  for (std::size_t i = span.openLine + 1; i <= span.closeLine; ++i) {
    std::string_view line = lines[i];
    entries.emplace_back(i == span.closeLine ? line.substr(0, span.closeColumn) : line);
  }

  std::size_t first = 0;
  std::size_t last = entries.size();
  while (first < last && IsBlankText(entries[first])) ++first;
  while (last > first && IsBlankText(entries[last - 1])) --last;
  if (first == 0 && last == entries.size()) return entries;
  return TextLines(std::make_move_iterator(entries.begin() + static_cast<std::ptrdiff_t>(first)),
                   std::make_move_iterator(entries.begin() + static_cast<std::ptrdiff_t>(last)));
}

struct ColumnWidths {
  std::size_t portWidth = 0;    // longest ".port"
  std::size_t signalWidth = 0;  // longest signal
};

ColumnWidths MeasureColumns(const std::vector<InstanceEdit>& edits) {
  ColumnWidths widths;
  for (const InstanceEdit& edit : edits) {
    for (const PortConnection& connection : edit.connections) {
      widths.portWidth = std::max(widths.portWidth, connection.port.size() + 1);
      widths.signalWidth = std::max(widths.signalWidth, connection.signal.size());
    }
  }
  return widths;
}

std::string RenderConnection(const PortConnection& connection, const std::string& inner, ColumnWidths widths) {
  std::string line = inner;
  line += PadRight("." + connection.port, widths.portWidth);
  line += " (";
  line += PadRight(connection.signal, widths.signalWidth);
  line += " )";
  line += connection.comma.empty() ? std::string(" ") : connection.comma;
  if (!connection.comment.empty()) {
    line += "   ";
    line += connection.comment;
  }
  line.resize(TrimRightOf(line, kBlanks).size());
  return line;
}

// The rebuilt instance, line by line from its start line on.
TextLines RenderInstance(const InstanceEdit& edit, ColumnWidths widths) {
  const std::string pad(edit.indent, ' ');
  const std::string inner = pad + std::string(kIndentStep);
  TextLines out;
  out.reserve(edit.paramLines.size() + edit.entries.size() + 3);
  out.push_back(pad + edit.header);
  for (const std::string& param : edit.paramLines) out.push_back(inner + param);
  if (!edit.nameLine.empty()) out.push_back(pad + edit.nameLine);

  auto connection = edit.connections.begin();
  for (std::size_t i = 0; i < edit.entries.size(); ++i) {
    if (connection != edit.connections.end() && connection->entryIndex == i) {
      out.push_back(RenderConnection(*connection, inner, widths));
      ++connection;
      continue;
    }
    std::string entry = Trim(edit.entries[i]);
    out.push_back(entry.empty() ? entry : inner + entry);
  }
  out.push_back(pad + ");" + (edit.closeComment.empty() ? "" : " " + edit.closeComment));
  return out;
}

// Writes the rebuilt instance over its own lines; lines it no longer needs
// become empty, and surplus lines overwrite those that follow, never past the
// end of the text. The rebuilt lines are kept in `storage`, which never moves
// a string it holds.
// `changed` marks each row written.
void WriteOver(LineViews* lines, TextLines rebuilt, const InstanceEdit& edit, std::deque<std::string>* storage,
               std::vector<bool>* changed) {
  std::size_t row = edit.startLine;
  for (std::string& line : rebuilt) {
    if (row >= lines->size()) break;
    storage->push_back(std::move(line));
    (*changed)[row] = true;
    (*lines)[row++] = storage->back();
  }
  for (; row <= edit.endLine && row < lines->size(); ++row) {
    (*changed)[row] = true;
    (*lines)[row] = std::string_view();
  }
}

}  // namespace

std::optional<InstanceEdit> CollectInstanceEdit(const LineViews& lines, InstanceSpan span) {
  InstanceEdit edit;
  edit.entries = CollectEntries(lines, span);
  Match match;
  for (std::size_t i = 0; i < edit.entries.size(); ++i) {
    if (!Patterns().kNamedConnectionPattern.Search(edit.entries[i], &match)) continue;
    edit.connections.push_back({i, match.Str(2), match.Str(3), match.Str(4), match.Str(5)});
  }
  if (edit.connections.empty()) return std::nullopt;

  edit.startLine = span.startLine;
  edit.endLine = span.endLine;
  edit.indent = span.indent;
  edit.header = std::move(span.header);
  edit.paramLines = std::move(span.paramLines);
  edit.nameLine = std::move(span.nameLine);
  const std::string_view lastLine = lines[span.endLine];
  std::size_t slashes = lastLine.find("//");
  if (slashes != std::string_view::npos) edit.closeComment = lastLine.substr(slashes);
  return edit;
}

std::string AlignInstances(std::string_view text) {
  return AlignInstancesMarkingChanges(text).text;
}

ChangedLines AlignInstancesMarkingChanges(std::string_view text) {
  // Every named connection starts with ".".
  if (text.find('.') == std::string_view::npos) return {std::string(text), {}};
  LineViews lines = SplitLineViews(text);
  const ParenthesisMatches parens(lines);
  std::vector<InstanceEdit> edits;
  std::size_t row = 0;
  while (row < lines.size()) {
    std::optional<InstanceSpan> span = FindInstance(lines, parens, row);
    if (!span) {
      ++row;
      continue;
    }
    const std::size_t endLine = span->endLine;
    if (std::optional<InstanceEdit> edit = CollectInstanceEdit(lines, std::move(*span))) {
      edits.push_back(std::move(*edit));
    }
    row = endLine + 1;
  }
  if (edits.empty()) return {std::string(text), {}};

  const ColumnWidths widths = MeasureColumns(edits);
  const LineViews original = lines;
  std::vector<bool> changed(lines.size());
  std::deque<std::string> rebuilt;
  for (const InstanceEdit& edit : edits) WriteOver(&lines, RenderInstance(edit, widths), edit, &rebuilt, &changed);
  // The text between rewritten rows is copied as it stands.
  LineRewriter output(text, RoomToGrow(text.size()));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (changed[i]) {
      output.Replace(original[i], lines[i]);
    } else {
      output.Keep(original[i]);
    }
  }
  return {output.Take(), std::move(changed)};
}

}  // namespace quill
