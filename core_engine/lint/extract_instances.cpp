// Module instances, found line by line. A statement is a line that begins
// with a type word and an instance name followed by "(", optionally with a
// "#(...)" parameter override between them that may span lines. Lines that
// begin with module, port, net, assign, always, initial or end words start
// no instance; a type or name that is a keyword (gate primitives such as
// and, buf) gives no record. The connections run to the first ");", that
// ");" included, so its ")" can close a last connection whose own ")" is
// missing; the expressions of named connections count as uses.
#include <cstddef>
#include <cstdint>
#include <string>
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
  const std::size_t start = SkipSpaces(line, 0);
  // No such word is longer than nine bytes: a longer run is not read whole.
  std::size_t end = start;
  while (end < line.size() && end - start < 10 && IsWordByte(line[end])) ++end;
  const std::string_view word = line.substr(start, end - start);
  switch (word.size()) {
    case 3:
      return word == "reg" || word == "end";
    case 4:
      return word == "wire";
    case 5:
      return word == "input" || word == "inout";
    case 6:
      return word == "module" || word == "output" || word == "assign" || word == "always";
    case 7:
      return word == "initial";
    case 9:
      return word == "endmodule";
    default:
      return false;
  }
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

// One line of the text: [start, end), the end at its LF or at the text's end.
struct Line {
  std::size_t start;
  std::size_t end;
};

Line LineFrom(std::string_view text, std::size_t start) {
  const std::size_t end = text.find('\n', start);
  return {start, end == kNone ? text.size() : end};
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

class InstanceFinder {
 public:
  // The override heads of all lines are needed first: every "(" they open is
  // balanced in one pass over the text. Only a line that holds a "#" can
  // begin with one, and only such lines are kept, so a large text costs no
  // record per line.
  explicit InstanceFinder(std::string_view text) : text_(text) {
    std::vector<std::size_t> opens;
    for (std::size_t hash = text.find('#'); hash != kNone;) {
      const std::size_t lineFeed = text.rfind('\n', hash);
      const Line line = LineFrom(text, lineFeed == kNone ? 0 : lineFeed + 1);
      const std::string_view content = text.substr(line.start, line.end - line.start);
      if (!StartsNoInstance(content)) {
        const std::size_t offset = LeadingBlanks(content);
        const auto [typeEnd, open] = MatchOverrideHead(content.substr(offset));
        if (open != kNone) {
          overrides_.push_back({line.start, typeEnd, line.start + offset + open, kNone});
          opens.push_back(line.start + offset + open);
        }
      }
      if (line.end == text.size()) break;
      hash = text.find('#', line.end + 1);
    }
    const std::vector<std::size_t> closes = BalancingParentheses(text, opens);
    for (std::size_t i = 0; i < overrides_.size(); ++i) overrides_[i].close = closes[i];
  }

  // The instance head that starts on `line`, if any. Lines are asked for in
  // increasing order.
  bool Find(const Line& line, InstanceHead* head) {
    const std::string_view content = text_.substr(line.start, line.end - line.start);
    if (StartsNoInstance(content)) return false;
    const std::size_t offset = LeadingBlanks(content);
    const std::string_view trimmed = content.substr(offset);
    while (nextOverride_ < overrides_.size() && overrides_[nextOverride_].lineStart < line.start) ++nextOverride_;
    if (nextOverride_ < overrides_.size() && overrides_[nextOverride_].lineStart == line.start &&
        FindAfterOverride(overrides_[nextOverride_], head)) {
      head->type = trimmed.substr(0, overrides_[nextOverride_].typeEnd);
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
  // A line that begins "type #(": the end of the type word (from the line's
  // first non-blank byte), the "(" and the ")" that balances it, or kNone.
  struct OverrideHead {
    std::size_t lineStart;
    std::size_t typeEnd;
    std::size_t open;
    std::size_t close;
  };

  // After the ")" balancing the override's "(": white space, the instance
  // name and "(".
  bool FindAfterOverride(const OverrideHead& override, InstanceHead* head) const {
    if (override.close == kNone) return false;
    const std::size_t nameStart = SkipSpaces(text_, override.close + 1);
    const std::size_t nameEnd = SkipWord(text_, nameStart);
    if (nameEnd == nameStart) return false;
    const std::size_t paren = SkipSpaces(text_, nameEnd);
    if (paren >= text_.size() || text_[paren] != '(') return false;
    head->name = text_.substr(nameStart, nameEnd - nameStart);
    head->connections = paren + 1;
    return true;
  }

  std::string_view text_;
  std::vector<OverrideHead> overrides_;
  std::size_t nextOverride_ = 0;
};

}  // namespace

std::vector<InstanceRecord> ExtractInstances(std::string_view text, NameMap& firstUseLine) {
  std::vector<InstanceRecord> instances;
  InstanceFinder finder(text);
  LineCounter lineOf(text);
  Line line = LineFrom(text, 0);
  std::uint32_t k = 0;  // the number of `line`
  for (;;) {
    InstanceHead head;
    if (!finder.Find(line, &head) || IsKeyword(head.type) || IsKeyword(head.name)) {
      if (line.end == text.size()) return instances;
      line = LineFrom(text, line.end + 1);
      ++k;
      continue;
    }
    instances.push_back(InstanceRecord{std::string(head.name), k});

    const std::size_t close = text.find(");", head.connections);
    const std::size_t stretchEnd = close == kNone ? text.size() : close + 2;
    const std::string_view stretch = text.substr(head.connections, stretchEnd - head.connections);
    NamedConnections connections(stretch);
    std::size_t begin = 0;
    std::size_t end = 0;
    while (connections.Next(&begin, &end)) {
      const auto useLine = static_cast<std::int32_t>(lineOf.LineAt(head.connections + begin));
      RecordUses(stretch.substr(begin, end - begin), useLine, firstUseLine);
    }
    if (close == kNone) return instances;
    // Go on with the line after the one that holds the ");".
    const std::size_t lineFeed = text.find('\n', close);
    if (lineFeed == kNone) return instances;
    k = lineOf.LineAt(close) + 1;
    line = LineFrom(text, lineFeed + 1);
  }
}

}  // namespace quill
