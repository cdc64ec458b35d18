#include <cstddef>
#include <cstdint>
#include <string>

#include "common/pattern.h"
#include "common/text_utils.h"
#include "lint/identifiers.h"
#include "lint/steps.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

struct DeclarationPatterns {
  Pattern kDeclLinePattern{R"(^\s*(input|output|inout|wire|reg|logic)\b\s+(.+))", CaseMode::kIgnoreCase};
  Pattern kDeclTypePattern{R"(^(wire|reg|logic)\s+)", CaseMode::kIgnoreCase};
  Pattern kDeclSignPattern{R"(^(signed|unsigned)\s+)", CaseMode::kIgnoreCase};
  Pattern kDeclRangePattern{R"(^(\[[^\]]*\])\s*)"};
  Pattern kDeclKeywordStartPattern{R"(^(input|output|inout|wire|reg|logic)\b)", CaseMode::kIgnoreCase};
};

const DeclarationPatterns& CompiledPatterns() {
  static const DeclarationPatterns patterns;
  return patterns;
}

constexpr std::string_view kTrimmed = " \t\r";

std::string_view TrimLeftOf(std::string_view s, std::string_view chars) {
  const std::size_t start = s.find_first_not_of(chars);
  return start == std::string_view::npos ? std::string_view() : s.substr(start);
}

std::string_view TrimOf(std::string_view s, std::string_view chars) {
  return TrimRightOf(TrimLeftOf(s, chars), chars);
}

bool HasTerminator(std::string_view s) {
  return s.find_first_of(";)") != std::string_view::npos;
}

// The lines of the text split at each LF, each without its trailing CRs,
// read in order; the last read can be taken back.
class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : text_(text) {}

  bool Next(std::string_view* line) {
    if (done_) return false;
    const std::size_t end = text_.find('\n', next_);
    const std::size_t stop = end == std::string_view::npos ? text_.size() : end;
    *line = TrimRightOf(text_.substr(next_, stop - next_), "\r");
    previous_ = next_;
    next_ = stop + 1;
    done_ = end == std::string_view::npos;
    ++count_;
    return true;
  }

  void Unread() {
    next_ = previous_;
    done_ = false;
    --count_;
  }

  // The zero-based number of the line read last.
  std::size_t Number() const { return count_ - 1; }

 private:
  std::string_view text_;
  std::size_t next_ = 0;
  std::size_t previous_ = 0;
  std::size_t count_ = 0;
  bool done_ = false;
};

// Whether the whole text is a simple identifier ("^[a-zA-Z_]\w*$").
bool IsSimpleIdentifier(std::string_view s) {
  if (s.empty() || (s[0] >= '0' && s[0] <= '9') || !IsWordByte(s[0])) return false;
  for (char c : s) {
    if (!IsWordByte(c)) return false;
  }
  return true;
}

// The text without its bracket groups ("[" up to the next "]"), such as
// unpacked dimensions.
std::string RemoveBracketGroups(std::string_view s) {
  std::string kept;
  std::size_t pos = 0;
  for (;;) {
    const std::size_t open = s.find('[', pos);
    const std::size_t close = open == std::string_view::npos ? open : s.find(']', open + 1);
    if (close == std::string_view::npos) {
      kept.append(s.substr(pos));
      return kept;
    }
    kept.append(s.substr(pos, open - pos));
    pos = close + 1;
  }
}

// Whether the first byte after leading white space can begin one of the
// declaration keywords; the line pattern is only tried where it can.
bool MayStartDeclaration(std::string_view line) {
  std::size_t i = 0;
  while (i < line.size() && IsSpaceByte(line[i])) ++i;
  if (i == line.size()) return false;
  switch (FoldAscii(line[i])) {
    case 'i': case 'o': case 'w': case 'r': case 'l': return true;
    default: return false;
  }
}

SignalKind KindOf(std::string_view keyword, std::string_view type) {
  if (keyword == "input") return SignalKind::kInput;
  if (keyword == "output") return SignalKind::kOutput;
  if (keyword == "inout") return SignalKind::kInout;
  // Without a direction, a type word decides over the keyword.
  if (type == "reg") return SignalKind::kReg;
  if (type == "logic") return SignalKind::kLogic;
  if (keyword == "reg") return SignalKind::kReg;
  if (keyword == "logic") return SignalKind::kLogic;
  return SignalKind::kWire;
}

}  // namespace

std::vector<SignalDecl> ExtractDeclarations(std::string_view text) {
  std::vector<SignalDecl> signals;
  const DeclarationPatterns& patterns = CompiledPatterns();
  LineCursor lines(text);
  std::string_view line;
  Match match;
  while (lines.Next(&line)) {
    if (!MayStartDeclaration(line) || !patterns.kDeclLinePattern.Search(line, &match)) continue;
    const std::string keyword = ToLowerAscii(match.Group(1));
    std::string_view rest = TrimRightOf(match.Group(2), " \r\t");
    const auto declLine = static_cast<std::uint32_t>(lines.Number());

    std::string type;
    if (patterns.kDeclTypePattern.Search(rest, &match)) {
      type = ToLowerAscii(match.Group(1));
      rest = TrimLeftOf(rest.substr(match.End()), kTrimmed);
    }
    if (patterns.kDeclSignPattern.Search(rest, &match)) rest = rest.substr(match.End());
    std::string range;
    if (patterns.kDeclRangePattern.Search(rest, &match)) {
      range = match.Str(1);
      rest = rest.substr(match.End());
    }

    // A declaration without ";" or ")" continues on the following lines
    // until one of them starts a new declaration.
    std::string names(rest);
    bool closed = HasTerminator(names);
    std::string_view following;
    while (!closed && lines.Next(&following)) {
      const std::string_view next = TrimOf(following, kTrimmed);
      if (patterns.kDeclKeywordStartPattern.Search(next)) {
        lines.Unread();
        break;
      }
      names += ' ';
      names += next;
      closed = HasTerminator(next);
    }
    const std::string_view list = TrimRightOf(names, ";), \t\r");

    const SignalKind kind = KindOf(keyword, type);
    const bool isReg = keyword == "reg" || type == "reg";
    const bool isLogic = keyword == "logic" || type == "logic";
    std::size_t pieceStart = 0;
    for (;;) {
      const std::size_t comma = list.find(',', pieceStart);
      std::string_view piece =
          list.substr(pieceStart, comma == std::string_view::npos ? list.size() - pieceStart : comma - pieceStart);
      piece = piece.substr(0, piece.find('='));
      const std::string withoutBrackets = RemoveBracketGroups(piece);
      const std::string_view name = TrimOf(withoutBrackets, kTrimmed);
      if (IsSimpleIdentifier(name)) {
        signals.push_back(SignalDecl{std::string(name), range, declLine, kind, isReg, isLogic});
      }
      if (comma == std::string_view::npos) break;
      pieceStart = comma + 1;
    }
  }
  return signals;
}

}  // namespace quill
