#include "glob.h"

namespace quill::cli {
namespace {

std::vector<std::string_view> SplitPath(std::string_view path) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  while (start <= path.size()) {
    std::size_t slash = path.find('/', start);
    if (slash == std::string_view::npos) slash = path.size();
    if (slash > start) parts.push_back(path.substr(start, slash - start));
    start = slash + 1;
  }
  return parts;
}

// Length of the class starting at `pattern[i] == '['`, or 0 when unclosed.
std::size_t ClassLength(std::string_view pattern, std::size_t i) {
  std::size_t j = i + 1;
  if (j < pattern.size() && (pattern[j] == '!' || pattern[j] == '^')) ++j;
  if (j < pattern.size() && pattern[j] == ']') ++j;
  while (j < pattern.size() && pattern[j] != ']') {
    if (pattern[j] == '\\') ++j;
    ++j;
  }
  return j < pattern.size() ? j - i + 1 : 0;
}

bool ClassMatches(std::string_view set, char c) {
  bool negate = false;
  std::size_t i = 0;
  if (i < set.size() && (set[i] == '!' || set[i] == '^')) negate = true, ++i;
  bool found = false;
  bool first = true;
  while (i < set.size()) {
    char low = set[i];
    if (low == '\\' && i + 1 < set.size()) low = set[++i];
    else if (low == ']' && !first) break;
    first = false;
    ++i;
    char high = low;
    if (i + 1 < set.size() && set[i] == '-' && set[i + 1] != ']') {
      high = set[i + 1];
      if (high == '\\' && i + 2 < set.size()) high = set[++i + 1];
      i += 2;
    }
    if (c >= low && c <= high) found = true;
  }
  return found != negate;
}

// One pattern element at `p`: its length and whether it matches `c`.
bool ElementMatches(std::string_view pattern, std::size_t p, char c, std::size_t* length) {
  if (pattern[p] == '?') {
    *length = 1;
    return true;
  }
  if (pattern[p] == '[') {
    if (const std::size_t n = ClassLength(pattern, p); n > 0) {
      *length = n;
      return ClassMatches(pattern.substr(p + 1, n - 2), c);
    }
  }
  if (pattern[p] == '\\' && p + 1 < pattern.size()) {
    *length = 2;
    return pattern[p + 1] == c;
  }
  *length = 1;
  return pattern[p] == c;
}

}  // namespace

bool MatchSegment(std::string_view pattern, std::string_view name) {
  // Greedy matching with one backtrack point: the last '*' seen.
  std::size_t p = 0, n = 0;
  std::size_t starP = std::string_view::npos, starN = 0;
  while (n < name.size()) {
    std::size_t length = 0;
    if (p < pattern.size() && pattern[p] == '*') {
      starP = ++p;
      starN = n;
    } else if (p < pattern.size() && ElementMatches(pattern, p, name[n], &length)) {
      p += length;
      ++n;
    } else if (starP != std::string_view::npos) {
      p = starP;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && pattern[p] == '*') ++p;
  return p == pattern.size();
}

std::optional<Glob> Glob::Parse(std::string_view pattern, std::string* error) {
  Glob glob;
  glob.text_ = std::string(pattern);
  std::string_view body = pattern;
  if (body.ends_with('/')) {
    glob.folderOnly_ = true;
    body.remove_suffix(1);
  }
  const bool anchored = body.find('/') != std::string_view::npos;
  if (body.starts_with('/')) body.remove_prefix(1);
  for (std::size_t i = 0; i < body.size(); ++i) {
    if (body[i] == '\\') ++i;
    else if (body[i] == '[' && ClassLength(body, i) == 0) {
      *error = "pattern '" + glob.text_ + "' has an unclosed '['";
      return std::nullopt;
    }
  }
  if (!anchored) glob.segments_.emplace_back("**");
  for (std::string_view part : SplitPath(body)) glob.segments_.emplace_back(part);
  if (body.empty() || glob.segments_.empty()) {
    *error = "empty pattern";
    return std::nullopt;
  }
  return glob;
}

bool Glob::Matches(std::string_view path, bool isFolder) const {
  if (folderOnly_ && !isFolder) return false;
  const std::vector<std::string_view> parts = SplitPath(path);
  // Segment-level greedy matching; "**" plays the part of '*'.
  std::size_t s = 0, n = 0;
  std::size_t starS = std::string::npos, starN = 0;
  while (n < parts.size()) {
    if (s < segments_.size() && segments_[s] == "**") {
      starS = ++s;
      starN = n;
    } else if (s < segments_.size() && MatchSegment(segments_[s], parts[n])) {
      ++s;
      ++n;
    } else if (starS != std::string::npos) {
      s = starS;
      n = ++starN;
    } else {
      return false;
    }
  }
  while (s < segments_.size() && segments_[s] == "**") ++s;
  return s == segments_.size();
}

bool Glob::MatchesPathOrParent(std::string_view path, bool isFolder) const {
  if (Matches(path, isFolder)) return true;
  for (std::size_t slash = path.rfind('/'); slash != std::string_view::npos && slash > 0;
       slash = path.rfind('/', slash - 1)) {
    if (Matches(path.substr(0, slash), true)) return true;
  }
  return false;
}

}  // namespace quill::cli
