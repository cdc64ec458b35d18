// Module instances, found line by line. A statement is a line that begins
// with a type word and an instance name followed by "(", optionally with a
// "#(...)" parameter override between them that may span lines. Lines that
// begin with module, port, net, assign, always, initial or end words start
// no instance; a type or name that is a keyword (gate primitives such as
// and, buf) gives no record. The connections run to the first ");", that
// ");" included, so its ")" can close a last connection whose own ")" is
// missing; the expressions of named connections count as uses.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "common/byte_search.h"
#include "common/pattern.h"
#include "lint/identifiers.h"
#include "lint/line_counter.h"
#include "lint/steps.h"

namespace quill {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

std::size_t SkipSpaces(std::string_view text, std::size_t pos) {
  while (pos < text.size() && IsSpaceByte(text[pos])) ++pos;
  return pos;
}

std::size_t SkipWord(std::string_view text, std::size_t pos) {
  while (pos < text.size() && IsWordByte(text[pos])) ++pos;
  return pos;
}

// "^\s*(module|input|output|inout|wire|reg|assign|always|initial|end|endmodule)\b".
bool StartsNoInstance(std::string_view line) {
  static constexpr std::array<std::string_view, 11> kWords = {"module", "input",  "output",  "inout", "wire",     "reg",
                                                              "assign", "always", "initial", "end",   "endmodule"};
  const std::size_t start = SkipSpaces(line, 0);
  const std::string_view word = line.substr(start, SkipWord(line, start) - start);
  for (std::string_view candidate : kWords) {
    if (word == candidate) return true;
  }
  return false;
}

// The number of leading blanks (space, TAB, CR, LF) of the line.
std::size_t LeadingBlanks(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && IsBlankByte(line[start])) ++start;
  return start;
}

// "^(\w+)\s+#\s*\(": the end of the type word and the position of the "(",
// or kNone for the "(".
std::pair<std::size_t, std::size_t> MatchOverrideHead(std::string_view line) {
  const std::size_t typeEnd = SkipWord(line, 0);
  if (typeEnd == 0) return {0, kNone};
  const std::size_t hash = SkipSpaces(line, typeEnd);
  if (hash == typeEnd || hash >= line.size() || line[hash] != '#') return {0, kNone};
  const std::size_t open = SkipSpaces(line, hash + 1);
  if (open >= line.size() || line[open] != '(') return {0, kNone};
  return {typeEnd, open};
}

struct Line {
  std::size_t start;
  std::size_t end;
};

std::vector<Line> SplitAtLineFeeds(std::string_view text) {
  std::vector<Line> lines;
  std::size_t start = 0;
  for (;;) {
    const std::size_t end = text.find('\n', start);
    lines.push_back({start, end == kNone ? text.size() : end});
    if (end == kNone) return lines;
    start = end + 1;
  }
}

// For each "(" position of `opens` (ascending), the position of the ")" that
// balances it, counting every parenthesis of the text, or kNone. One pass:
// the pending openings are nested, so only the innermost can close.
std::vector<std::size_t> BalancingParentheses(std::string_view text, const std::vector<std::size_t>& opens) {
  std::vector<std::size_t> closes(opens.size(), kNone);
  std::vector<std::pair<std::int64_t, std::size_t>> pending;  // depth before the "(", index in `opens`
  std::int64_t depth = 0;
  std::size_t next = 0;
  // Only parentheses change anything, so the walk goes from one to the next.
  for (std::size_t i = FindParenthesis(text, 0); i != kNone && (next < opens.size() || !pending.empty());
       i = FindParenthesis(text, i + 1)) {
    if (text[i] == '(') {
      if (next < opens.size() && opens[next] == i) pending.emplace_back(depth, next++);
      ++depth;
    } else if (text[i] == ')') {
      --depth;
      if (!pending.empty() && pending.back().first == depth) {
        closes[pending.back().second] = i;
        pending.pop_back();
      }
    }
  }
  return closes;
}

// Named-connection expressions: capture 1 of every match of
// "\.\w+\s*\(\s*([^)]+?)\s*\)" in `stretch`, by hand so that an unclosed
// "(" after each of many connections is not rescanned to the end.
class NamedConnections {
 public:
  explicit NamedConnections(std::string_view stretch) : text_(stretch) {}

  // The next expression as [begin, end) in the stretch; false when none is
  // left.
  bool Next(std::size_t* begin, std::size_t* end) {
    while (pos_ < text_.size()) {
      const std::size_t dot = text_.find('.', pos_);
      if (dot == kNone) break;
      pos_ = dot + 1;
      const std::size_t nameEnd = SkipWord(text_, dot + 1);
      if (nameEnd == dot + 1) continue;
      const std::size_t open = SkipSpaces(text_, nameEnd);
      if (open >= text_.size() || text_[open] != '(') continue;
      const std::size_t start = SkipSpaces(text_, open + 1);
      if (start >= text_.size()) continue;
      if (text_[start] == ')') {
        // Only blanks inside: the expression is the last of them.
        if (start == open + 1) continue;
        *begin = start - 1;
        *end = start;
        pos_ = start + 1;
        return true;
      }
      const std::size_t close = NextCloseParen(start);
      if (close == kNone) continue;
      std::size_t last = close;
      while (last > start && IsSpaceByte(text_[last - 1])) --last;
      *begin = start;
      *end = last;
      pos_ = close + 1;
      return true;
    }
    pos_ = text_.size();
    return false;
  }

 private:
  std::size_t NextCloseParen(std::size_t from) {
    if (!closeKnown_ || from < closeFrom_ || (close_ != kNone && close_ < from)) {
      close_ = text_.find(')', from);
      closeFrom_ = from;
      closeKnown_ = true;
    }
    return close_;
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  bool closeKnown_ = false;
  std::size_t closeFrom_ = 0;
  std::size_t close_ = kNone;
};

struct InstanceHead {
  std::string_view type;
  std::string_view name;
  std::size_t connections = 0;  // position in the text where the connections start
};

// What the finder reads of a line before it looks for an instance there.
struct LineHead {
  bool startsNoInstance = false;
  std::size_t offset = 0;   // leading blanks
  std::size_t typeEnd = 0;  // of an override head, as MatchOverrideHead
  std::size_t open = kNone;
};

class InstanceFinder {
 public:
  // Every line is read once here: the override heads of all lines are
  // needed first, and the same reading then serves Find.
  InstanceFinder(std::string_view text, const std::vector<Line>& lines) : text_(text), lines_(lines) {
    heads_.resize(lines.size());
    for (std::size_t k = 0; k < lines.size(); ++k) {
      const Line& line = lines[k];
      LineHead& lineHead = heads_[k];
      const std::string_view content = text.substr(line.start, line.end - line.start);
      lineHead.startsNoInstance = StartsNoInstance(content);
      if (lineHead.startsNoInstance) continue;
      lineHead.offset = LeadingBlanks(content);
      std::tie(lineHead.typeEnd, lineHead.open) = MatchOverrideHead(content.substr(lineHead.offset));
      if (lineHead.open != kNone) overrideOpens_.push_back(line.start + lineHead.offset + lineHead.open);
    }
    overrideCloses_ = BalancingParentheses(text, overrideOpens_);
  }

  // The instance head that starts on line `k`, if any.
  bool Find(std::size_t k, InstanceHead* head) {
    const Line& line = lines_[k];
    const LineHead& lineHead = heads_[k];
    if (lineHead.startsNoInstance) return false;
    const std::string_view content = text_.substr(line.start, line.end - line.start);
    const std::size_t offset = lineHead.offset;
    const std::string_view trimmed = content.substr(offset);
    const std::size_t typeEnd = lineHead.typeEnd;
    const std::size_t open = lineHead.open;
    if (open != kNone && FindAfterOverride(line.start + offset + open, head)) {
      head->type = trimmed.substr(0, typeEnd);
      return true;
    }
    // The pattern needs a word at the start and a "(" further on.
    if (SkipWord(trimmed, 0) == 0 || trimmed.find('(') == kNone) return false;
    static const Pattern kInstanceHeadPattern(R"(^(\w+)\s+(?:#\s*\(.*?\)\s+)?(\w+)\s*\(\s*(.*))");
    Match match;
    if (!kInstanceHeadPattern.Search(trimmed, &match)) return false;
    head->type = match.Group(1);
    head->name = match.Group(2);
    head->connections = line.start + offset + match.Begin(3);
    return true;
  }

 private:
  // After the ")" balancing the override's "(" at `open`: white space, the
  // instance name and "(".
  bool FindAfterOverride(std::size_t open, InstanceHead* head) {
    while (nextOverride_ < overrideOpens_.size() && overrideOpens_[nextOverride_] < open) ++nextOverride_;
    if (nextOverride_ == overrideOpens_.size() || overrideOpens_[nextOverride_] != open) return false;
    const std::size_t close = overrideCloses_[nextOverride_];
    if (close == kNone) return false;
    const std::size_t nameStart = SkipSpaces(text_, close + 1);
    const std::size_t nameEnd = SkipWord(text_, nameStart);
    if (nameEnd == nameStart) return false;
    const std::size_t paren = SkipSpaces(text_, nameEnd);
    if (paren >= text_.size() || text_[paren] != '(') return false;
    head->name = text_.substr(nameStart, nameEnd - nameStart);
    head->connections = paren + 1;
    return true;
  }

  std::string_view text_;
  const std::vector<Line>& lines_;
  std::vector<LineHead> heads_;
  std::vector<std::size_t> overrideOpens_;
  std::vector<std::size_t> overrideCloses_;
  std::size_t nextOverride_ = 0;
};

}  // namespace

std::vector<InstanceRecord> ExtractInstances(std::string_view text, NameMap& firstUseLine) {
  std::vector<InstanceRecord> instances;
  const std::vector<Line> lines = SplitAtLineFeeds(text);
  InstanceFinder finder(text, lines);
  LineCounter lineOf(text);
  std::size_t k = 0;
  while (k < lines.size()) {
    InstanceHead head;
    if (!finder.Find(k, &head) || IsKeyword(head.type) || IsKeyword(head.name)) {
      ++k;
      continue;
    }
    instances.push_back(InstanceRecord{std::string(head.name), static_cast<std::uint32_t>(k)});

    const std::size_t close = text.find(");", head.connections);
    const std::size_t stretchEnd = close == kNone ? text.size() : close + 2;
    const std::string_view stretch = text.substr(head.connections, stretchEnd - head.connections);
    NamedConnections connections(stretch);
    std::size_t begin = 0;
    std::size_t end = 0;
    while (connections.Next(&begin, &end)) {
      const auto line = static_cast<std::int32_t>(lineOf.LineAt(head.connections + begin));
      RecordUses(stretch.substr(begin, end - begin), line, firstUseLine);
    }
    if (close == kNone) return instances;
    k = static_cast<std::size_t>(lineOf.LineAt(close)) + 1;
  }
  return instances;
}

}  // namespace quill
