// Parameter declarations are found by a hand-written matcher with the results
// of iterating
//   \b(parameter|localparam)\b(?:\s+(\[[^\]]*\]))?(?:\s+(signed|integer|real|realtime|time))?\s+(\w+)\s*=\s*([^;,]+)
// (case-insensitive) over the text. A backtracking engine can rescan the rest
// of the text for every keyword (an unclosed "[" after each); this matcher
// remembers the next "]" and the one position after a range known to fail,
// which keeps the whole step linear.
#include <array>
#include <cstddef>
#include <optional>
#include <string>

#include "common/byte_search.h"
#include "lint/identifiers.h"
#include "lint/line_counter.h"
#include "lint/steps.h"

namespace quill {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

struct ParameterMatch {
  std::size_t nameBegin = 0;
  std::size_t nameEnd = 0;
  std::size_t valueBegin = 0;
  std::size_t valueEnd = 0;
};

bool EqualsIgnoringCase(std::string_view text, std::size_t pos, std::string_view word) {
  return text.size() - pos >= word.size() && NameEqual{}(text.substr(pos, word.size()), word);
}

class ParameterMatcher {
 public:
  explicit ParameterMatcher(std::string_view text) : text_(text) {}

  // The match for the keyword that ends at `afterKeyword`, if any.
  std::optional<ParameterMatch> MatchAfterKeyword(std::size_t afterKeyword) {
    const std::size_t rangeStart = SkipSpaces(afterKeyword);
    if (rangeStart > afterKeyword && rangeStart < text_.size() && text_[rangeStart] == '[') {
      const std::size_t close = NextCloseBracket(rangeStart + 1);
      if (close != kNone && close + 1 != failedAfterRange_) {
        if (auto match = MatchTypeAndTail(close + 1)) return match;
        failedAfterRange_ = close + 1;
      }
    }
    return MatchTypeAndTail(afterKeyword);
  }

 private:
  std::size_t SkipSpaces(std::size_t pos) const {
    while (pos < text_.size() && IsSpaceByte(text_[pos])) ++pos;
    return pos;
  }

  // "(?:\s+(signed|integer|real|realtime|time))?" and the tail, the type
  // words tried in this order before going without one.
  std::optional<ParameterMatch> MatchTypeAndTail(std::size_t pos) const {
    static constexpr std::array<std::string_view, 5> kTypeWords = {"signed", "integer", "real", "realtime", "time"};
    const std::size_t typeStart = SkipSpaces(pos);
    if (typeStart > pos) {
      for (std::string_view type : kTypeWords) {
        if (!EqualsIgnoringCase(text_, typeStart, type)) continue;
        if (auto match = MatchTail(typeStart + type.size())) return match;
      }
    }
    return MatchTail(pos);
  }

  // "\s+(\w+)\s*=\s*([^;,]+)".
  std::optional<ParameterMatch> MatchTail(std::size_t pos) const {
    ParameterMatch match;
    match.nameBegin = SkipSpaces(pos);
    if (match.nameBegin == pos) return std::nullopt;
    match.nameEnd = match.nameBegin;
    while (match.nameEnd < text_.size() && IsWordByte(text_[match.nameEnd])) ++match.nameEnd;
    if (match.nameEnd == match.nameBegin) return std::nullopt;
    const std::size_t equals = SkipSpaces(match.nameEnd);
    if (equals >= text_.size() || text_[equals] != '=') return std::nullopt;
    const std::size_t valueStart = SkipSpaces(equals + 1);
    if (valueStart < text_.size() && text_[valueStart] != ';' && text_[valueStart] != ',') {
      match.valueBegin = valueStart;
      match.valueEnd = FindEitherByte(text_, valueStart, ';', ',');
      if (match.valueEnd == kNone) match.valueEnd = text_.size();
      return match;
    }
    // Only blanks before ";", "," or the end: the value is the last blank.
    if (valueStart == equals + 1) return std::nullopt;
    match.valueBegin = valueStart - 1;
    match.valueEnd = valueStart;
    return match;
  }

  // The first "]" at or after `from`; queries come with growing `from`.
  std::size_t NextCloseBracket(std::size_t from) {
    if (!closeKnown_ || from < closeFrom_ || (close_ != kNone && close_ < from)) {
      close_ = text_.find(']', from);
      closeFrom_ = from;
      closeKnown_ = true;
    }
    return close_;
  }

  std::string_view text_;
  bool closeKnown_ = false;
  std::size_t closeFrom_ = 0;
  std::size_t close_ = kNone;
  std::size_t failedAfterRange_ = kNone;
};

bool IsParameterKeyword(std::string_view word) {
  return NameEqual{}(word, "parameter") || NameEqual{}(word, "localparam");
}

std::string TrimValue(std::string_view value) {
  const std::size_t start = value.find_first_not_of(" \t\r");
  if (start == kNone) return std::string(value);
  const std::size_t end = value.find_last_not_of(" \t\r");
  return std::string(value.substr(start, end - start + 1));
}

}  // namespace

std::vector<ParamDecl> ExtractParameters(std::string_view text) {
  std::vector<ParamDecl> parameters;
  ParameterMatcher matcher(text);
  LineCounter lines(text);
  // Both keywords hold an "m", so only the word runs with one are read: the
  // search goes from "m" to "m", and a run is read from its start (or from
  // the resume position) to its end.
  std::size_t i = 0;
  for (;;) {
    const std::size_t hit = FindEitherByte(text, i, 'm', 'M');
    if (hit == kNone) break;
    std::size_t start = hit;
    while (start > i && IsWordByte(text[start - 1])) --start;
    i = hit;
    while (i < text.size() && IsWordByte(text[i])) ++i;
    // A word run that begins at the resume position may continue one that
    // started before it; "\b" then fails.
    if (start > 0 && IsWordByte(text[start - 1])) continue;
    if (!IsParameterKeyword(text.substr(start, i - start))) continue;
    const std::optional<ParameterMatch> match = matcher.MatchAfterKeyword(i);
    if (!match) continue;
    ParamDecl parameter;
    parameter.name = std::string(text.substr(match->nameBegin, match->nameEnd - match->nameBegin));
    parameter.value = TrimValue(text.substr(match->valueBegin, match->valueEnd - match->valueBegin));
    parameter.line = lines.LineAt(start);
    parameters.push_back(std::move(parameter));
    i = match->valueEnd;
  }
  return parameters;
}

}  // namespace quill
