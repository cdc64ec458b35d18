#include "format/scan/alignment_utils.h"

#include "common/byte_search.h"

namespace quill {

std::string PadRight(std::string_view s, std::size_t width) {
  std::string padded(s);
  if (padded.size() < width) padded.append(width - padded.size(), ' ');
  return padded;
}

bool IsSkippableLine(std::string_view line) {
  std::size_t start = 0;
  while (start < line.size() && IsBlankByte(line[start])) ++start;
  return start == line.size() || line.compare(start, 2, "//") == 0;
}

bool IsSkippableGap(const TextLines& lines, std::size_t first, std::size_t last) {
  for (std::size_t i = first; i <= last && i < lines.size(); ++i) {
    if (!IsSkippableLine(lines[i])) return false;
  }
  return true;
}

std::vector<std::vector<std::size_t>> GroupLines(const TextLines& lines, const std::vector<std::size_t>& candidates) {
  std::vector<std::vector<std::size_t>> groups;
  for (std::size_t candidate : candidates) {
    if (!groups.empty()) {
      const std::size_t previous = groups.back().back();
      if (candidate == previous + 1 || IsSkippableGap(lines, previous + 1, candidate - 1)) {
        groups.back().push_back(candidate);
        continue;
      }
    }
    groups.push_back({candidate});
  }
  return groups;
}

bool CandidateGrouper::AddCandidate(std::size_t line) {
  const bool opensGroup = candidates_.empty() || !gapIsSkippable_;
  if (opensGroup) ++groupCount_;
  candidates_.push_back(Candidate{line, groupCount_ - 1});
  gapIsSkippable_ = true;
  return opensGroup;
}

namespace {

constexpr std::size_t kNone = std::string_view::npos;

// The bytes "." of the patterns excludes.
bool IsLineBreak(char c) {
  return c == '\n' || c == '\r';
}

// Whether `word` (lower case) stands at `pos`, ignoring ASCII letter case.
bool HasWordAt(std::string_view s, std::size_t pos, std::string_view word) {
  if (pos > s.size() || s.size() - pos < word.size()) return false;
  for (std::size_t i = 0; i < word.size(); ++i) {
    if (FoldAscii(s[pos + i]) != word[i]) return false;
  }
  return true;
}

// The length of the first of `words` found at `pos`, or 0.
template <std::size_t N>
std::size_t KeywordAt(std::string_view s, std::size_t pos, const std::array<std::string_view, N>& words) {
  for (std::string_view word : words) {
    if (HasWordAt(s, pos, word)) return word.size();
  }
  return 0;
}

constexpr std::array<std::string_view, 3> kDirectionWords = {"input", "output", "inout"};
constexpr std::array<std::string_view, 3> kNetTypeWords = {"wire", "reg", "logic"};
constexpr std::array<std::string_view, 2> kParamWords = {"parameter", "localparam"};

// Position queries on one line, shared by the scanners.
class LineCursor {
 public:
  explicit LineCursor(std::string_view line) : s_(line) {}

  std::string_view Line() const { return s_; }
  std::size_t Size() const { return s_.size(); }
  char At(std::size_t pos) const { return pos < s_.size() ? s_[pos] : '\0'; }
  std::string_view Slice(std::size_t begin, std::size_t end) const { return s_.substr(begin, end - begin); }

  // First position at or after `pos` that is not \s.
  std::size_t SkipSpaces(std::size_t pos) const {
    while (pos < s_.size() && IsSpaceByte(s_[pos])) ++pos;
    return pos;
  }
  std::size_t SkipWord(std::size_t pos) const {
    while (pos < s_.size() && IsWordByte(s_[pos])) ++pos;
    return pos;
  }
  // "\[[^\]]*\]" at `pos`: the position after its "]", or kNone.
  std::size_t BracketEnd(std::size_t pos) const {
    if (At(pos) != '[') return kNone;
    std::size_t close = FindByte(s_, pos + 1, ']');
    return close == kNone ? kNone : close + 1;
  }
  // "\s*(//.*)?$" from `pos`: whether it matches, and the comment it takes.
  bool CommentOrEnd(std::size_t pos, std::string_view* comment) const {
    std::size_t q = SkipSpaces(pos);
    if (q == s_.size()) {
      *comment = {};
      return true;
    }
    if (s_.compare(q, 2, "//") != 0) return false;
    const std::size_t lastBreak = LastBreak();
    if (lastBreak != kNone && lastBreak >= q + 2) return false;
    *comment = s_.substr(q);
    return true;
  }

 private:
  // The last CR or LF of the line, looked for on first use only: most lines
  // are turned down before a comment is tried.
  std::size_t LastBreak() const {
    if (!lastBreakKnown_) {
      lastBreak_ = s_.find_last_of("\r\n");
      lastBreakKnown_ = true;
    }
    return lastBreak_;
  }

  std::string_view s_;
  mutable std::size_t lastBreak_ = kNone;
  mutable bool lastBreakKnown_ = false;
};

// The part that port and net declarations share, from the blanks after the
// keywords on:
//   \s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*
// followed by "(,?)\s*(//.*)?$" for a port or ";\s*(//.*)?$" for a net.
class DeclBodyScanner {
 public:
  enum class Ending { kOptionalComma, kSemicolon };
  struct Groups {
    std::string_view signedKw, range, name, arrayDim, comma, comment;
  };

  DeclBodyScanner(const LineCursor& cursor, Ending ending) : c_(cursor), ending_(ending) {}

  std::optional<Groups> Scan(std::size_t pos) const {
    const std::size_t k1 = c_.SkipSpaces(pos);
    if (HasWordAt(c_.Line(), k1, "signed") && IsSpaceByte(c_.At(k1 + 6))) {
      const std::size_t k2 = c_.SkipSpaces(k1 + 6);
      if (std::optional<Groups> groups = AfterSigned(k2)) {
        groups->signedKw = c_.Slice(k1, k2);
        return groups;
      }
    }
    return AfterSigned(k1);
  }

 private:
  struct Ends {
    std::string_view arrayDim, comma, comment;
  };

  std::optional<Groups> AfterSigned(std::size_t pos) const {
    Groups groups;
    std::size_t nameStart = pos;
    if (c_.At(pos) == '[') {
      const std::size_t end = c_.BracketEnd(pos);
      if (end == kNone) return std::nullopt;
      groups.range = c_.Slice(pos, end);
      nameStart = c_.SkipSpaces(end);
    }
    const std::size_t wordEnd = c_.SkipWord(nameStart);
    if (wordEnd == nameStart) return std::nullopt;
    std::size_t nameEnd = wordEnd;
    std::optional<Ends> ends = WithInitialiser(wordEnd, &nameEnd);
    if (!ends) {
      ends = Tail(wordEnd);
      nameEnd = wordEnd;
    }
    if (!ends) return std::nullopt;
    groups.name = c_.Slice(nameStart, nameEnd);
    groups.arrayDim = ends->arrayDim;
    groups.comma = ends->comma;
    groups.comment = ends->comment;
    return groups;
  }

  // "\s*=\s*\S+" after the name word, the "\S+" tried longest first.
  std::optional<Ends> WithInitialiser(std::size_t wordEnd, std::size_t* nameEnd) const {
    const std::size_t eq = c_.SkipSpaces(wordEnd);
    if (c_.At(eq) != '=' || eq >= c_.Size()) return std::nullopt;
    const std::size_t valueStart = c_.SkipSpaces(eq + 1);
    std::size_t valueEnd = valueStart;
    while (valueEnd < c_.Size() && !IsSpaceByte(c_.At(valueEnd))) ++valueEnd;
    if (valueEnd == valueStart) return std::nullopt;
    if (std::optional<Ends> ends = Tail(valueEnd)) {
      *nameEnd = valueEnd;
      return ends;
    }
    // Shorter values end on a non-space byte, so the tail starts right there.
    // An array dimension opening there closes at the first "]" after it; the
    // ending behind a given "]" is worked out once.
    std::size_t close = FindByte(c_.Line(), valueEnd, ']');
    std::size_t cachedClose = kNone;
    std::optional<Ends> cachedEnds;
    for (std::size_t end = valueEnd - 1; end > valueStart; --end) {
      std::optional<Ends> ends;
      if (c_.At(end) == '[') {
        if (close != kNone) {
          if (close != cachedClose) {
            cachedClose = close;
            cachedEnds = MatchEnding(c_.SkipSpaces(close + 1));
          }
          if (cachedEnds) {
            ends = cachedEnds;
            ends->arrayDim = c_.Slice(end, close + 1);
          }
        }
      } else {
        ends = MatchEnding(end);
      }
      if (ends) {
        *nameEnd = end;
        return ends;
      }
      if (c_.At(end) == ']') close = end;
    }
    return std::nullopt;
  }

  // "\s*(\[[^\]]*\])?\s*" and the ending, from `pos`.
  std::optional<Ends> Tail(std::size_t pos) const {
    const std::size_t q = c_.SkipSpaces(pos);
    if (c_.At(q) != '[' || q >= c_.Size()) return MatchEnding(q);
    const std::size_t end = c_.BracketEnd(q);
    if (end == kNone) return std::nullopt;
    std::optional<Ends> ends = MatchEnding(c_.SkipSpaces(end));
    if (ends) ends->arrayDim = c_.Slice(q, end);
    return ends;
  }

  // The ending at `pos`, which is not a space.
  std::optional<Ends> MatchEnding(std::size_t pos) const {
    Ends ends;
    std::size_t after = pos;
    if (ending_ == Ending::kSemicolon) {
      if (c_.At(pos) != ';' || pos >= c_.Size()) return std::nullopt;
      after = pos + 1;
    } else if (c_.At(pos) == ',' && pos < c_.Size()) {
      ends.comma = c_.Slice(pos, pos + 1);
      after = pos + 1;
    }
    if (!c_.CommentOrEnd(after, &ends.comment)) return std::nullopt;
    return ends;
  }

  const LineCursor& c_;
  Ending ending_;
};

// "\s*([,;])?\s*(//.*)?$" from `pos`.
bool SeparatorTail(const LineCursor& c, std::size_t pos, std::string_view* separator, std::string_view* comment) {
  const std::size_t q = c.SkipSpaces(pos);
  if (q < c.Size() && (c.At(q) == ',' || c.At(q) == ';')) {
    *separator = c.Slice(q, q + 1);
    return c.CommentOrEnd(q + 1, comment);
  }
  *separator = {};
  return c.CommentOrEnd(q, comment);
}

// "=\s*.+?" at `eq` followed by the separator tail. Returns the end of the
// value, or kNone.
std::size_t ScanParamValue(const LineCursor& c, std::size_t eq, std::string_view* separator,
                           std::string_view* comment) {
  const std::size_t spacesStart = eq + 1;
  const std::size_t first = c.SkipSpaces(spacesStart);
  if (first < c.Size()) {
    // The lazy value grows one byte at a time; at each end the tail is tried.
    // Inside a run of spaces the tail sees the same bytes from every end, so
    // a failed run is crossed at once; the value cannot take a line break.
    std::size_t end = first + 1;
    while (true) {
      if (SeparatorTail(c, end, separator, comment)) return end;
      if (end == c.Size() || IsLineBreak(c.At(end))) return kNone;
      if (IsSpaceByte(c.At(end))) {
        std::size_t runEnd = end;
        while (runEnd < c.Size() && IsSpaceByte(c.At(runEnd))) {
          if (IsLineBreak(c.At(runEnd))) return kNone;
          ++runEnd;
        }
        if (runEnd == c.Size()) return kNone;
        end = runEnd + 1;
      } else {
        ++end;
      }
    }
  }
  // Only spaces follow "=": the value takes spaces back from "\s*", as few as
  // possible, but cannot start with a line break.
  for (std::size_t start = c.Size(); start > spacesStart; --start) {
    if (!IsLineBreak(c.At(start - 1))) {
      *separator = {};
      *comment = {};
      return start;
    }
  }
  return kNone;
}

// "\s*(\[[^\]]*\])?\s*(\w+)\s*(=\s*.+?)\s*([,;])?\s*(//.*)?$" from `pos`.
std::optional<ParamDeclParts> ScanParamRest(const LineCursor& c, std::size_t pos) {
  ParamDeclParts parts;
  std::size_t nameStart = c.SkipSpaces(pos);
  if (c.At(nameStart) == '[' && nameStart < c.Size()) {
    const std::size_t end = c.BracketEnd(nameStart);
    if (end == kNone) return std::nullopt;
    parts.range = c.Slice(nameStart, end);
    nameStart = c.SkipSpaces(end);
  }
  const std::size_t nameEnd = c.SkipWord(nameStart);
  if (nameEnd == nameStart) return std::nullopt;
  const std::size_t eq = c.SkipSpaces(nameEnd);
  if (eq >= c.Size() || c.At(eq) != '=') return std::nullopt;
  const std::size_t valueEnd = ScanParamValue(c, eq, &parts.separator, &parts.comment);
  if (valueEnd == kNone) return std::nullopt;
  parts.name = c.Slice(nameStart, nameEnd);
  parts.value = c.Slice(eq, valueEnd);
  return parts;
}

}  // namespace

std::optional<ModuleHeaderParts> ScanModuleHeader(std::string_view line) {
  const LineCursor c(line);
  const std::size_t n = c.Size();
  const std::size_t keyword = c.SkipSpaces(0);
  if (!HasWordAt(line, keyword, "module")) return std::nullopt;
  const std::size_t spacesStart = keyword + 6;
  const std::size_t nameStart = c.SkipSpaces(spacesStart);
  if (nameStart == spacesStart) return std::nullopt;
  if (nameStart == n) {
    // Only spaces follow: the name takes the last one that is no line break,
    // leaving at least one space behind "module".
    for (std::size_t start = n - 1; start > spacesStart; --start) {
      if (!IsLineBreak(line[start])) {
        return ModuleHeaderParts{line, c.Slice(start, start + 1)};
      }
    }
    return std::nullopt;
  }
  // The lazy name grows until the spaces after it are followed by "#", "(",
  // a line break or the end of the line.
  std::size_t end = nameStart + 1;
  std::size_t matchEnd = kNone;
  while (matchEnd == kNone) {
    if (end == n || line[end] == '#' || line[end] == '(') {
      matchEnd = end;
    } else if (IsSpaceByte(line[end])) {
      std::size_t runEnd = end;
      std::size_t lastBreak = kNone;
      for (; runEnd < n && IsSpaceByte(line[runEnd]); ++runEnd) {
        if (IsLineBreak(line[runEnd])) lastBreak = runEnd;
      }
      if (runEnd == n || line[runEnd] == '#' || line[runEnd] == '(') {
        matchEnd = runEnd;
      } else if (lastBreak != kNone) {
        matchEnd = lastBreak;
      } else {
        end = runEnd + 1;
      }
    } else {
      ++end;
    }
  }
  return ModuleHeaderParts{c.Slice(0, matchEnd), c.Slice(nameStart, end)};
}

std::optional<PortDeclParts> ScanPortDecl(std::string_view line) {
  const LineCursor c(line);
  const std::size_t dirStart = c.SkipSpaces(0);
  const std::size_t dirLength = KeywordAt(line, dirStart, kDirectionWords);
  if (dirLength == 0) return std::nullopt;
  const std::size_t dirEnd = dirStart + dirLength;
  const DeclBodyScanner body(c, DeclBodyScanner::Ending::kOptionalComma);
  const std::size_t typeStart = c.SkipSpaces(dirEnd);
  const std::size_t typeLength = KeywordAt(line, typeStart, kNetTypeWords);
  std::optional<DeclBodyScanner::Groups> found;
  if (typeLength > 0) found = body.Scan(typeStart + typeLength);
  const bool hasType = found.has_value();
  if (!found) found = body.Scan(dirEnd);
  if (!found) return std::nullopt;
  PortDeclParts parts;
  parts.whole = line;
  parts.direction = c.Slice(dirStart, dirEnd);
  if (hasType) parts.netType = c.Slice(typeStart, typeStart + typeLength);
  parts.signedWord = found->signedKw;
  parts.range = found->range;
  parts.name = found->name;
  parts.arrayDim = found->arrayDim;
  parts.comma = found->comma;
  parts.comment = found->comment;
  return parts;
}

std::optional<NetDeclParts> ScanNetDecl(std::string_view line) {
  const LineCursor c(line);
  const std::size_t typeStart = c.SkipSpaces(0);
  const std::size_t typeLength = KeywordAt(line, typeStart, kNetTypeWords);
  if (typeLength == 0) return std::nullopt;
  const DeclBodyScanner body(c, DeclBodyScanner::Ending::kSemicolon);
  std::optional<DeclBodyScanner::Groups> found = body.Scan(typeStart + typeLength);
  if (!found) return std::nullopt;
  NetDeclParts parts;
  parts.whole = line;
  parts.type = c.Slice(typeStart, typeStart + typeLength);
  parts.signedWord = found->signedKw;
  parts.range = found->range;
  parts.name = found->name;
  parts.arrayDim = found->arrayDim;
  parts.comment = found->comment;
  return parts;
}

std::optional<ParamDeclParts> ScanParamDecl(std::string_view line) {
  const LineCursor c(line);
  const std::size_t start = c.SkipSpaces(0);
  const std::size_t keywordLength = KeywordAt(line, start, kParamWords);
  std::optional<ParamDeclParts> parts;
  if (keywordLength > 0) {
    parts = ScanParamRest(c, start + keywordLength);
    if (parts) parts->keyword = c.Slice(start, start + keywordLength);
  }
  if (!parts) parts = ScanParamRest(c, start);
  if (parts) parts->whole = line;
  return parts;
}

}  // namespace quill
