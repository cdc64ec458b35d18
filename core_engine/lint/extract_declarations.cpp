#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "common/byte_search.h"
#include "common/text_utils.h"
#include "lint/identifiers.h"
#include "lint/line_cursor.h"
#include "lint/steps.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

// The heads of a declaration are read by hand, each as its pattern (all
// ignoring case) would match it. A pattern's word alternatives are followed
// by \b or \s, so the word must be the whole word run; no part can give
// bytes back to a later one except where noted.

std::size_t WordRunEnd(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsWordByte(s[pos])) ++pos;
  return pos;
}

std::size_t SpaceRunEnd(std::string_view s, std::size_t pos) {
  while (pos < s.size() && IsSpaceByte(s[pos])) ++pos;
  return pos;
}

bool IsDeclarationKeyword(std::string_view word) {
  return IsOneOfIgnoringCase(word, {"input", "output", "inout", "wire", "reg", "logic"});
}

// "^\s*(input|output|inout|wire|reg|logic)\b\s+(.+)" on a line without LF,
// where "." takes any byte but CR and LF: the keyword and capture 2, or
// false. When only white space follows the keyword, \s+ gives bytes back
// from its end until ".+" can start on one that is not a CR.
bool MatchDeclarationLine(std::string_view line, std::string_view* keyword, std::string_view* rest) {
  const std::size_t wordStart = SpaceRunEnd(line, 0);
  const std::size_t wordEnd = WordRunEnd(line, wordStart);
  if (!IsDeclarationKeyword(line.substr(wordStart, wordEnd - wordStart))) return false;
  std::size_t restStart = SpaceRunEnd(line, wordEnd);
  if (restStart == wordEnd) return false;
  if (restStart == line.size()) {
    do {
      --restStart;
    } while (restStart > wordEnd && line[restStart] == '\r');
    if (restStart == wordEnd) return false;
  }
  const std::size_t carriageReturn = line.find('\r', restStart);
  *rest = line.substr(restStart, carriageReturn == std::string_view::npos ? line.size() - restStart
                                                                          : carriageReturn - restStart);
  *keyword = line.substr(wordStart, wordEnd - wordStart);
  return true;
}

// "^(words)\s+" for one of `words` (lower case): the word, with `rest` moved
// past the white space; or empty, `rest` unchanged.
std::string_view TakeLeadingWord(std::string_view& rest, std::initializer_list<std::string_view> words) {
  const std::size_t wordEnd = WordRunEnd(rest, 0);
  if (wordEnd == rest.size() || !IsSpaceByte(rest[wordEnd]) || !IsOneOfIgnoringCase(rest.substr(0, wordEnd), words)) {
    return {};
  }
  const std::string_view word = rest.substr(0, wordEnd);
  rest.remove_prefix(SpaceRunEnd(rest, wordEnd));
  return word;
}

// "^(\[[^\]]*\])\s*": the bracketed range, with `rest` moved past it and the
// white space after it; or empty, `rest` unchanged.
std::string_view TakeLeadingRange(std::string_view& rest) {
  if (rest.empty() || rest[0] != '[') return {};
  const std::size_t close = rest.find(']', 1);
  if (close == std::string_view::npos) return {};
  const std::string_view range = rest.substr(0, close + 1);
  rest.remove_prefix(SpaceRunEnd(rest, close + 1));
  return range;
}

// "^(input|output|inout|wire|reg|logic)\b".
bool StartsWithDeclarationKeyword(std::string_view s) {
  return IsDeclarationKeyword(s.substr(0, WordRunEnd(s, 0)));
}

constexpr std::string_view kTrimmed = " \t\r";

// As s.find_first_not_of(chars), with a loop over the few bytes of `chars`
// instead of a search call per byte.
std::string_view TrimLeftOf(std::string_view s, std::string_view chars) {
  std::size_t start = 0;
  while (start < s.size() && std::any_of(chars.begin(), chars.end(), [c = s[start]](char x) { return x == c; })) {
    ++start;
  }
  return start == s.size() ? std::string_view() : s.substr(start);
}

std::string_view TrimOf(std::string_view s, std::string_view chars) {
  return TrimRightOf(TrimLeftOf(s, chars), chars);
}

bool HasTerminator(std::string_view s) {
  return FindEitherByte(s, 0, ';', ')') != std::string_view::npos;
}


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
  LineCursor lines(text);
  std::string_view line;
  std::string_view keywordText;
  std::string_view rest;
  while (lines.Next(&line)) {
    if (!MatchDeclarationLine(line, &keywordText, &rest)) continue;
    const std::string keyword = ToLowerAscii(keywordText);
    rest = TrimRightOf(rest, " \r\t");
    const auto declLine = static_cast<std::uint32_t>(lines.Number());

    std::string type;
    const std::string_view typeWord = TakeLeadingWord(rest, {"wire", "reg", "logic"});
    if (!typeWord.empty()) {
      type = ToLowerAscii(typeWord);
      rest = TrimLeftOf(rest, kTrimmed);
    }
    TakeLeadingWord(rest, {"signed", "unsigned"});
    const std::string range(TakeLeadingRange(rest));

    // A declaration without ";" or ")" continues on the following lines
    // until one of them starts a new declaration.
    std::string names(rest);
    bool closed = HasTerminator(names);
    std::string_view following;
    while (!closed && lines.Next(&following)) {
      const std::string_view next = TrimOf(following, kTrimmed);
      if (StartsWithDeclarationKeyword(next)) {
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
