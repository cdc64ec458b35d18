#include "format/scan/find_instance.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "common/pattern.h"
#include "format/scan/alignment_utils.h"
#include "format/scan/instance_heads.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::size_t LeadingBlanks(std::string_view s) {
  std::size_t count = 0;
  while (count < s.size() && IsBlankByte(s[count])) ++count;
  return count;
}

// The line without its trailing blanks; positions stay those of the line.
std::string_view TrimmedRight(std::string_view line) {
  return TrimRightOf(line, kBlanks);
}

// One space and the "//" comment that starts at or after `from` in `body`,
// or "" when there is none.
std::string CommentFrom(std::string_view body, std::size_t from) {
  if (from > body.size()) return "";
  std::size_t slashes = body.find("//", from);
  if (slashes == std::string_view::npos) return "";
  return " " + std::string(body.substr(slashes));
}


}  // namespace

// The word's length picks the few keywords it can be.
bool StartsWithBlockKeyword(std::string_view trimmed) {
  const std::string_view word = LeadingPatternWord(trimmed);
  switch (word.size()) {
    case 2: return IsOneOfIgnoringCase(word, {"if"});
    case 3: return IsOneOfIgnoringCase(word, {"for"});
    case 4: return IsOneOfIgnoringCase(word, {"task", "else", "case"});
    case 5: return IsOneOfIgnoringCase(word, {"casex", "casez", "while"});
    case 6: return IsOneOfIgnoringCase(word, {"module", "assign", "always"});
    case 7: return IsOneOfIgnoringCase(word, {"forever", "initial", "specify"});
    case 8: return IsOneOfIgnoringCase(word, {"function", "generate"});
    case 9: return IsOneOfIgnoringCase(word, {"always_ff"});
    case 10: return IsOneOfIgnoringCase(word, {"endspecify"});
    case 11: return IsOneOfIgnoringCase(word, {"always_comb", "endgenerate"});
    default: return false;
  }
}

namespace {

bool IsCommentOrBlankLine(std::string_view line) {
  std::string_view rest = line.substr(LeadingBlanks(line));
  return rest.empty() || rest.starts_with("//");
}

// Where the port list opens and how the header reads.
struct HeaderParts {
  TextPosition open;
  std::string header;
  std::size_t paramEnd = 0;  // parameter lines run from the line after the header up to here (exclusive)
  std::string nameLine;
};

// "type name (" on one line.
HeaderParts ReadPlainHeader(std::string_view line, std::size_t start, std::size_t indent, const InstanceHead& head) {
  std::size_t paren = indent + head.end - 1;
  HeaderParts parts{{start, paren}, std::string(head.type) + " " + std::string(head.name) + " (", 0, {}};
  parts.header += CommentFrom(TrimmedRight(line), paren + 1);
  return parts;
}

// "type #(" with the parameter block closed on the same line or a later one,
// followed by "name (".
std::optional<HeaderParts> ReadParamHeader(const LineViews& lines, const ParenthesisMatches& parens, std::size_t start,
                                           std::size_t indent, const InstanceHead& head) {
  const std::size_t hashParen = indent + head.end - 1;
  std::optional<TextPosition> blockClose = parens.FindClose({start, hashParen});
  if (!blockClose) return std::nullopt;

  std::string_view nameText = lines[blockClose->line];
  std::size_t restBegin = blockClose->column + 1;
  restBegin += LeadingBlanks(nameText.substr(restBegin));
  const std::optional<InstanceHead> call = ReadCallHead(nameText.substr(restBegin));
  if (!call) return std::nullopt;
  const std::size_t portParen = restBegin + call->end - 1;
  const std::string_view nameBody = TrimmedRight(nameText);

  HeaderParts parts;
  parts.open = {blockClose->line, portParen};
  if (blockClose->line == start) {
    // The header keeps its own text up to the port list's "(", with blank
    // runs collapsed; no blank is added where the text has none.
    std::string header = CollapseBlankRuns(nameText.substr(indent, portParen - indent));
    if (!header.empty() && header.back() == ' ') header.pop_back();
    parts.header = header + " (" + CommentFrom(nameBody, portParen + 1);
    return parts;
  }
  parts.header = std::string(head.type) + " #(" + CommentFrom(TrimmedRight(lines[start]), hashParen + 1);
  parts.paramEnd = blockClose->line;
  parts.nameLine = ") " + std::string(call->type) + " (" + CommentFrom(nameBody, portParen + 1);
  return parts;
}

// "type name" alone, the port list's "(" first on the next line that is
// neither blank nor a "//" line.
std::optional<HeaderParts> ReadSplitHeader(const LineViews& lines, std::size_t start, const InstanceHead& head) {
  std::size_t next = start + 1;
  while (next < lines.size() && IsCommentOrBlankLine(lines[next])) ++next;
  if (next == lines.size()) return std::nullopt;
  std::size_t paren = LeadingBlanks(lines[next]);
  if (lines[next][paren] != '(') return std::nullopt;
  return HeaderParts{{next, paren}, std::string(head.type) + " " + std::string(head.name) + " (", 0, {}};
}

// A lone type word, the next line reading "name (".
std::optional<HeaderParts> ReadTypeWordHeader(const LineViews& lines, std::size_t start, const InstanceHead& head) {
  if (start + 1 >= lines.size()) return std::nullopt;
  std::string_view next = lines[start + 1];
  std::size_t indent = LeadingBlanks(next);
  const std::optional<InstanceHead> call = ReadCallHead(next.substr(indent));
  if (!call) return std::nullopt;
  std::size_t paren = indent + call->end - 1;
  std::string header =
      std::string(head.type) + " " + std::string(call->type) + " (" + CommentFrom(TrimmedRight(next), paren + 1);
  return HeaderParts{{start + 1, paren}, std::move(header), 0, {}};
}

// The header forms, tried in order.
std::optional<HeaderParts> ReadHeader(const LineViews& lines, const ParenthesisMatches& parens, std::size_t start,
                                      std::size_t indent, std::string_view trimmed) {
  if (std::optional<InstanceHead> head = ReadInstanceHead(trimmed)) {
    return ReadPlainHeader(lines[start], start, indent, *head);
  }
  if (std::optional<InstanceHead> head = ReadParamInstanceHead(trimmed)) {
    return ReadParamHeader(lines, parens, start, indent, *head);
  }
  if (std::optional<InstanceHead> head = ReadTypeAndName(trimmed)) return ReadSplitHeader(lines, start, *head);
  if (std::optional<InstanceHead> head = ReadSingleWord(trimmed)) return ReadTypeWordHeader(lines, start, *head);
  return std::nullopt;
}

}  // namespace

namespace {

// 0x80 in each of the eight bytes at `pos` that is "(" or ")", read as a
// little-endian word. The two differ only in their lowest bit, so the bytes
// that are either become zero below; a byte is zero exactly when adding 0x7f
// to its low seven bits leaves its high bit clear and it had none set.
std::uint64_t ParenthesisBytes(std::string_view line, std::size_t pos) {
  constexpr std::uint64_t kLow = 0x7f7f7f7f7f7f7f7full;
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, line.data() + pos, sizeof bytes);
  const std::uint64_t x = (bytes ^ 0x2828282828282828ull) & 0xFEFEFEFEFEFEFEFEull;
  return ~(((x & kLow) + kLow) | x | kLow);
}

}  // namespace

ParenthesisMatches::ParenthesisMatches(const LineViews& lines) {
  lineStarts_.reserve(lines.size());
  std::vector<std::size_t> pending;  // indices into opens_ still waiting for their ")"
  const auto take = [this, &pending](char c, std::size_t offset) {
    if (c == '(') {
      pending.push_back(opens_.size());
      opens_.push_back(offset);
      closes_.push_back(kNone);
    } else if (c == ')' && !pending.empty()) {
      closes_[pending.back()] = offset;
      pending.pop_back();
    }
  };
  std::size_t base = 0;
  for (std::string_view line : lines) {
    lineStarts_.push_back(base);
    std::size_t pos = 0;
    if constexpr (std::endian::native == std::endian::little) {
      // Eight bytes at a time; only their parentheses are visited.
      for (; line.size() - pos >= 8; pos += 8) {
        for (std::uint64_t found = ParenthesisBytes(line, pos); found != 0; found &= found - 1) {
          const std::size_t at = pos + static_cast<std::size_t>(std::countr_zero(found) / 8);
          take(line[at], base + at);
        }
      }
    }
    for (; pos < line.size(); ++pos) take(line[pos], base + pos);
    base += line.size() + 1;
  }
}

std::optional<TextPosition> ParenthesisMatches::FindClose(TextPosition open) const {
  if (open.line >= lineStarts_.size()) return std::nullopt;
  const std::size_t offset = lineStarts_[open.line] + open.column;
  auto found = std::lower_bound(opens_.begin(), opens_.end(), offset);
  if (found == opens_.end() || *found != offset) return std::nullopt;
  const std::size_t close = closes_[static_cast<std::size_t>(found - opens_.begin())];
  if (close == kNone) return std::nullopt;
  auto lineAfter = std::upper_bound(lineStarts_.begin(), lineStarts_.end(), close);
  const std::size_t line = static_cast<std::size_t>(lineAfter - lineStarts_.begin()) - 1;
  return TextPosition{line, close - lineStarts_[line]};
}

std::optional<InstanceSpan> FindInstance(const LineViews& lines, const ParenthesisMatches& parens, std::size_t start) {
  if (start >= lines.size()) return std::nullopt;
  const std::string_view line = lines[start];
  const std::string_view trimmed = TrimmedView(line);
  // Every header form begins with a word; no block keyword starts an
  // instance.
  if (trimmed.empty() || !IsWordByte(trimmed[0])) return std::nullopt;
  // The shapes of the header forms are cheap to test and rule out most
  // lines before the keyword test.
  if (!HasAnyHeaderShape(trimmed)) return std::nullopt;
  if (StartsWithBlockKeyword(trimmed)) return std::nullopt;
  const std::size_t indent = LeadingBlanks(line);
  std::optional<HeaderParts> parts = ReadHeader(lines, parens, start, indent, trimmed);
  if (!parts) return std::nullopt;
  std::optional<TextPosition> close = parens.FindClose(parts->open);
  if (!close) return std::nullopt;

  InstanceSpan span;
  span.startLine = start;
  span.openLine = parts->open.line;
  span.closeLine = close->line;
  span.endLine = close->line;
  span.indent = indent;
  span.header = std::move(parts->header);
  for (std::size_t i = start + 1; i < parts->paramEnd; ++i) span.paramLines.push_back(Trim(lines[i]));
  span.nameLine = std::move(parts->nameLine);
  span.openColumn = parts->open.column;
  span.closeColumn = close->column;
  return span;
}

// The bytes between blank runs are appended a run at a time.
std::string CollapseBlankRuns(std::string_view s) {
  std::string collapsed;
  collapsed.reserve(s.size());
  std::size_t pos = 0;
  while (pos < s.size()) {
    const std::size_t text = pos;
    while (pos < s.size() && !IsSpaceByte(s[pos])) ++pos;
    collapsed.append(s.substr(text, pos - text));
    if (pos == s.size()) break;
    while (pos < s.size() && IsSpaceByte(s[pos])) ++pos;
    collapsed.push_back(' ');
  }
  return collapsed;
}

std::optional<InstanceSpan> FindInstance(const TextLines& lines, std::size_t start) {
  const LineViews views = ViewsOf(lines);
  return FindInstance(views, ParenthesisMatches(views), start);
}

}  // namespace quill
