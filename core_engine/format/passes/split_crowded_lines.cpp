#include "format/passes/split_crowded_lines.h"

#include <algorithm>
#include <vector>

#include "common/pattern.h"
#include "common/text_utils.h"

namespace quill {
namespace {

struct CrowdedLinePatterns {
  Pattern comment{R"(//.*$)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern portKeyword{R"(\b(input|output|inout)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern connection{R"(\.\w+\s*\([^)]*\)\s*,?)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
};

const CrowdedLinePatterns& Crowded() {
  static const CrowdedLinePatterns patterns;
  return patterns;
}

constexpr std::string_view kPieceTrailer = "\r\n\t ";

bool StartsWithIgnoreCase(std::string_view s, std::string_view prefix) {
  if (s.size() < prefix.size()) return false;
  for (std::size_t i = 0; i < prefix.size(); ++i) {
    char c = s[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != prefix[i]) return false;
  }
  return true;
}

bool IsPortLine(std::string_view rest) {
  return StartsWithIgnoreCase(rest, "input") || StartsWithIgnoreCase(rest, "inout") ||
         StartsWithIgnoreCase(rest, "output");
}

// Whether `s` holds "ut" (any case) at two places at least: each of the
// port keywords holds it once, so a line with fewer holds fewer than two
// keywords and needs no pattern run.
bool HasTwoUts(std::string_view s) {
  int found = 0;
  for (std::size_t i = 0; i + 1 < s.size(); ++i) {
    if (FoldAscii(s[i]) == 'u' && FoldAscii(s[i + 1]) == 't' && ++found == 2) return true;
  }
  return false;
}

// Appends `line` as the `index`th of the lines in `out`, LF between
// neighbours.
void AddLine(std::size_t index, std::string_view line, std::string* out) {
  if (index > 0) out->push_back('\n');
  out->append(line);
}

// Sets `out` to one line per port keyword, or returns false when the line
// holds fewer than two.
bool SplitPortLine(std::string_view indent, std::string_view rest, std::string* out) {
  if (!HasTwoUts(rest)) return false;
  const CrowdedLinePatterns& p = Crowded();
  Match commentMatch;
  const bool hasComment = p.comment.Search(rest, &commentMatch);
  std::string_view code = hasComment ? rest.substr(0, commentMatch.Begin()) : rest;
  std::vector<std::size_t> starts;
  p.portKeyword.ForEachMatch(code, [&starts](const Match& m) { starts.push_back(m.Begin()); });
  if (starts.size() < 2) return false;
  for (std::size_t j = 0; j < starts.size(); ++j) {
    std::size_t end = j + 1 < starts.size() ? starts[j + 1] : rest.size();
    std::string line(indent);
    line.append(TrimRightOf(rest.substr(starts[j], end - starts[j]), kPieceTrailer));
    if (j == 0 && hasComment) {
      line.push_back(' ');
      line.append(commentMatch.Group());
    }
    AddLine(j, line, out);
  }
  return true;
}

// Sets `out` to one line per named connection, or returns false when the line
// holds fewer than two. Text outside the connections is dropped.
bool SplitConnectionLine(std::string_view indent, std::string_view rest, std::string* out) {
  // Each connection begins with its own ".".
  if (std::count(rest.begin(), rest.end(), '.') < 2) return false;
  const CrowdedLinePatterns& p = Crowded();
  std::vector<std::string_view> pieces;
  p.connection.ForEachMatch(rest, [&pieces](const Match& m) { pieces.push_back(m.Group()); });
  if (pieces.size() < 2) return false;
  Match commentMatch;
  const bool hasComment = p.comment.Search(rest, &commentMatch);
  for (std::size_t j = 0; j < pieces.size(); ++j) {
    std::string line(indent);
    line.append(TrimRightOf(pieces[j], kPieceTrailer));
    if (j == 0 && hasComment) {
      line.push_back(' ');
      line.append(commentMatch.Group());
    }
    AddLine(j, line, out);
  }
  return true;
}

}  // namespace

std::string SplitCrowdedLines(std::string_view text) {
  LineRewriter output(text, RoomToGrow(text.size()));
  const bool hasCr = text.find('\r') != std::string_view::npos;
  LineReader reader(text);
  std::string_view raw;
  while (reader.Next(&raw)) {
    const std::string_view line = hasCr ? TrimRightOf(raw, "\r") : raw;
    // The indent is the match of "^\s*".
    std::size_t indentEnd = 0;
    while (indentEnd < line.size() && IsSpaceByte(line[indentEnd])) ++indentEnd;
    const std::string_view indent = line.substr(0, indentEnd);
    const std::string_view rest = line.substr(indentEnd);
    bool split = false;
    std::string lines;
    if (IsPortLine(rest)) {
      split = SplitPortLine(indent, rest, &lines);
    } else if (!rest.empty() && rest.front() == '.') {
      split = SplitConnectionLine(indent, rest, &lines);
    }
    if (split) {
      output.Replace(raw, lines);
    } else {
      output.Keep(line);
    }
  }
  return output.Take();
}

}  // namespace quill
