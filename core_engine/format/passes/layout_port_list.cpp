#include "format/passes/layout_port_list.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "common/text_utils.h"
#include "format/scan/alignment_utils.h"

namespace quill {
namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kIndent = "    ";
constexpr std::string_view kTrailingBlanks = " \t\n\r";

// One line of the port list as views into it: the groups of a port
// declaration, or the raw line when it is something else (a comment, a blank
// line, a port written in another style).
struct PortEntry {
  std::string_view direction;
  std::string_view netType;
  std::string_view signedKw;
  std::string_view range;
  std::string_view name;
  std::string_view arrayDim;
  std::string_view comma;
  std::string_view comment;
  std::string_view rawLine;
};

struct PortColumns {
  Column direction;
  Column name;
  Column type;
  Column signedWord;
  Column range{false, 1};  // at least one wide
  Column array;
};

PortEntry MakePortEntry(std::string_view line) {
  PortEntry entry;
  std::optional<PortDeclParts> parts = ScanPortDecl(line);
  if (!parts) {
    entry.rawLine = line;
    return entry;
  }
  entry.direction = parts->direction;
  entry.netType = parts->netType;
  entry.signedKw = parts->signedWord;
  entry.range = parts->range;
  entry.name = parts->name;
  entry.arrayDim = parts->arrayDim;
  entry.comma = parts->comma;
  entry.comment = parts->comment;
  return entry;
}

bool IsPort(const PortEntry& entry) {
  return !entry.direction.empty();
}

void Widen(PortColumns* columns, const PortEntry& entry) {
  if (!IsPort(entry)) return;
  columns->direction.Widen(entry.direction);
  columns->name.Widen(entry.name);
  columns->type.Widen(entry.netType);
  columns->signedWord.Widen(entry.signedKw);
  columns->range.Widen(entry.range);
  columns->array.Widen(entry.arrayDim);
}

std::string RebuildEntry(const PortEntry& entry, const PortColumns& columns) {
  if (!IsPort(entry)) {
    const std::string rest = TrimLeft(entry.rawLine);
    return rest.empty() ? rest : std::string(kIndent) + rest;
  }
  std::string line(kIndent);
  line += PadRight(entry.direction, columns.direction.width);
  auto addCell = [&line](std::string_view cell, std::size_t width) {
    line += ' ';
    line += PadRight(cell, width);
  };
  if (columns.type.present) addCell(entry.netType, std::max<std::size_t>(columns.type.width, 1));
  if (columns.signedWord.present) addCell(entry.signedKw, std::max<std::size_t>(columns.signedWord.width, 1));
  if (columns.range.present) addCell(entry.range, std::max<std::size_t>(columns.range.width, 1));
  addCell(entry.name, columns.name.width);
  if (columns.array.present) addCell(entry.arrayDim, std::max<std::size_t>(columns.array.width, 1));
  line += ' ';
  line += entry.comma;
  if (!entry.comment.empty()) {
    line += ' ';
    line += entry.comment;
  }
  line.resize(TrimRightOf(line, kTrailingBlanks).size());
  return line;
}

// Position just after the ")" that balances the "(" at `open`, or kNone.
std::size_t SkipBalanced(std::string_view text, std::size_t open) {
  std::int64_t depth = 0;
  for (std::size_t i = open; i < text.size(); ++i) {
    if (text[i] == '(') {
      ++depth;
    } else if (text[i] == ')') {
      if (depth == 1) return i + 1;
      --depth;
    }
  }
  return kNone;
}

// The ")" that closes the port list opened at `open`: one that brings the
// count back to 0 and is followed, past spaces, by ";". kNone if none.
std::size_t FindPortListClose(std::string_view rest, std::size_t open) {
  std::int64_t depth = 0;
  for (std::size_t i = open; i < rest.size(); ++i) {
    if (rest[i] == '(') {
      ++depth;
    } else if (rest[i] == ')') {
      if (depth == 1) {
        std::size_t next = i + 1;
        while (next < rest.size() && rest[next] == ' ') ++next;
        if (next < rest.size() && rest[next] == ';') return i;
      }
      --depth;
    }
  }
  return kNone;
}

std::size_t CountLineFeeds(std::string_view text, std::size_t begin, std::size_t end) {
  return static_cast<std::size_t>(std::count(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                             text.begin() + static_cast<std::ptrdiff_t>(end), '\n'));
}

// The text as its lines join again with LF: SplitLines drops one CR before
// each LF.
std::string JoinedLines(std::string_view text) {
  std::string joined;
  joined.reserve(text.size());
  std::size_t copied = 0;
  for (std::size_t cr = text.find("\r\n"); cr != kNone; cr = text.find("\r\n", cr + 1)) {
    joined.append(text.substr(copied, cr - copied));
    copied = cr + 1;
  }
  joined.append(text.substr(copied));
  return joined;
}

// The line of the closing ")" loses the blanks in front of it: a match of
// "^\s*\)" becomes ")".
std::string_view CloseLineText(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsSpaceByte(line[first])) ++first;
  return first < line.size() && line[first] == ')' ? line.substr(first) : line;
}

}  // namespace

std::string LayoutPortList(std::string_view text) {
  LineReader reader(text);
  std::string_view line;
  std::size_t headerLine = 0;
  std::size_t restStart = 0;
  std::size_t pos = kNone;
  for (; reader.Next(&line); ++headerLine) {
    if (std::optional<ModuleHeaderParts> header = ScanModuleHeader(line)) {
      pos = header->whole.size();
      break;
    }
    restStart += line.size() + 1;
  }
  if (pos == kNone) return std::string(text);

  // The rest of the lines joined with LF from the header line on; the header
  // match ends at the same offset in it as in the header line.
  const std::string joined = text.find("\r\n") == kNone ? std::string() : JoinedLines(text);
  const std::string_view rest = (joined.empty() ? text : std::string_view(joined)).substr(restStart);

  // A "#(" parameter list after the name is skipped when it balances.
  std::size_t next = pos;
  while (next < rest.size() && IsBlankByte(rest[next])) ++next;
  if (next < rest.size() && rest[next] == '#') {
    const std::size_t paramOpen = rest.find('(', next);
    if (paramOpen != kNone) {
      const std::size_t after = SkipBalanced(rest, paramOpen);
      if (after != kNone) pos = after;
    }
  }
  const std::size_t open = rest.find('(', pos);
  if (open == kNone) return std::string(text);
  const std::size_t close = FindPortListClose(rest, open);
  if (close == kNone) return std::string(text);

  const std::size_t firstPortLine = headerLine + CountLineFeeds(rest, 0, open) + 1;
  const std::size_t closeLine = firstPortLine - 1 + CountLineFeeds(rest, open, close);
  if (firstPortLine >= closeLine) return std::string(text);

  // The port lines are read twice, for the widths and for the rewrite, so no
  // entry outlives its line; the lines around them are copied unchanged.
  std::vector<std::string_view> portLines;
  std::string_view closeText;
  LineReader again(text);
  for (std::size_t i = 0; i <= closeLine && again.Next(&line); ++i) {
    if (i < firstPortLine) continue;
    if (i < closeLine) {
      portLines.push_back(line);
    } else {
      closeText = line;
    }
  }
  PortColumns columns;
  for (std::string_view port : portLines) Widen(&columns, MakePortEntry(port));
  std::vector<LineReplacement> rewrites;
  rewrites.reserve(portLines.size() + 1);
  for (std::string_view port : portLines) rewrites.push_back({port, RebuildEntry(MakePortEntry(port), columns)});
  // The ")" that closes the list lies on the close line, so the reading got there.
  rewrites.push_back({closeText, std::string(CloseLineText(closeText))});
  return RewriteLines(text, rewrites, RoomToGrow(text.size()));
}

}  // namespace quill
