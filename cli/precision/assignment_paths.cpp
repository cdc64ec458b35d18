#include "precision/assignment_paths.h"

#include <algorithm>
#include <string>

namespace quill::cli {
namespace {

bool Opens(const Token& token) {
  return token.Is("(") || token.Is("[") || token.Is("{");
}

bool Closes(const Token& token) {
  return token.Is(")") || token.Is("]") || token.Is("}");
}

bool IsDecimal(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool IsIdentifier(std::string_view text) {
  if (text.empty() || (text[0] >= '0' && text[0] <= '9')) return false;
  return std::all_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
  });
}

// An index read as a name plus a constant: "l" (l + 0), "l-1", "n+2".
struct NameOffset {
  std::string_view name;
  long long offset = 0;
};

std::optional<NameOffset> ReadNameOffset(std::string_view text) {
  const std::size_t sign = text.find_last_of("+-");
  if (sign == std::string_view::npos) {
    if (!IsIdentifier(text)) return std::nullopt;
    return NameOffset{text, 0};
  }
  const std::string_view name = text.substr(0, sign);
  const std::string_view digits = text.substr(sign + 1);
  // Nine digits cannot overflow.
  if (!IsIdentifier(name) || !IsDecimal(digits) || digits.size() > 9) return std::nullopt;
  const long long value = std::stoll(std::string(digits));
  return NameOffset{name, text[sign] == '-' ? -value : value};
}

bool SegmentsMayBeEqual(const PathSegment& a, const PathSegment& b, OffsetSelects offsets) {
  if (a.member != b.member) return true;
  if (a.member) return a.text == b.text;
  if (IsDecimal(a.text) && IsDecimal(b.text)) return a.text == b.text;
  if (offsets == OffsetSelects::kMayMeet) return true;
  const std::optional<NameOffset> left = ReadNameOffset(a.text);
  const std::optional<NameOffset> right = ReadNameOffset(b.text);
  if (left && right && left->name == right->name) return left->offset == right->offset;
  return true;
}

}  // namespace

Path ReadPath(const std::vector<Token>& tokens, std::size_t root, std::size_t end) {
  Path path;
  std::size_t t = root + 1;
  while (t < end) {
    if (tokens[t].Is(".") && t + 1 < end && tokens[t + 1].kind == Token::Kind::kWord) {
      path.segments.push_back({true, std::string(tokens[t + 1].text)});
      t += 2;
      continue;
    }
    if (!tokens[t].Is("[")) break;
    std::size_t depth = 0;
    std::size_t close = t;
    for (; close < end; ++close) {
      if (tokens[close].Is("[")) ++depth;
      if (tokens[close].Is("]") && --depth == 0) break;
    }
    if (close >= end) break;
    PathSegment select;
    for (std::size_t k = t + 1; k < close; ++k) select.text += tokens[k].text;
    path.segments.push_back(std::move(select));
    t = close + 1;
  }
  path.end = t;
  return path;
}

bool PathsMayOverlap(const std::vector<PathSegment>& a, const std::vector<PathSegment>& b, OffsetSelects offsets) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i) {
    if (!SegmentsMayBeEqual(a[i], b[i], offsets)) return false;
  }
  return true;
}

std::optional<StatementSplit> SplitAssignment(const std::vector<Token>& tokens, std::size_t first) {
  std::size_t depth = 0;
  std::optional<std::size_t> equals;
  for (std::size_t t = first; t < tokens.size(); ++t) {
    const Token& token = tokens[t];
    if (Opens(token)) ++depth;
    if (Closes(token) && depth > 0) --depth;
    if (depth > 0) continue;
    if (token.Is(";")) return equals ? std::optional<StatementSplit>({*equals, t}) : std::nullopt;
    if (token.Is("=") && !equals) equals = t;
  }
  return equals ? std::optional<StatementSplit>({*equals, tokens.size()}) : std::nullopt;
}

bool IsInInitializer(const std::vector<Token>& tokens, std::size_t first, std::size_t at) {
  std::size_t depth = 0;
  bool afterEquals = false;
  for (std::size_t t = first; t < at && t < tokens.size(); ++t) {
    const Token& token = tokens[t];
    if (Opens(token)) ++depth;
    if (Closes(token) && depth > 0) --depth;
    if (depth > 0) continue;
    if (token.Is("=")) afterEquals = true;
    if (token.Is(",") || token.Is(";")) afterEquals = false;
  }
  return afterEquals;
}

}  // namespace quill::cli
