#include "suppressions.h"

#include <algorithm>
#include <limits>

#include "lint/check_table.h"

namespace quill::cli {
namespace {

constexpr int64_t kEndOfFile = std::numeric_limits<int64_t>::max();

bool IsSpace(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsSpace(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsSpace(s.back())) s.remove_suffix(1);
  return s;
}

// The words of a check list: separated by commas and blanks.
std::vector<std::string_view> SplitChecks(std::string_view list) {
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < list.size()) {
    while (i < list.size() && (IsSpace(list[i]) || list[i] == ',')) ++i;
    const std::size_t start = i;
    while (i < list.size() && !IsSpace(list[i]) && list[i] != ',') ++i;
    if (i > start) words.push_back(list.substr(start, i - start));
  }
  return words;
}

int64_t CountNewlines(std::string_view text) {
  return static_cast<int64_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

std::string_view SuppressionKindName(SuppressionKind kind) {
  switch (kind) {
    case SuppressionKind::kNextLine:
      return "disable-next-line";
    case SuppressionKind::kLine:
      return "disable-line";
    case SuppressionKind::kRegion:
      return "disable";
    case SuppressionKind::kFile:
      return "disable-file";
  }
  return "disable";
}

Suppressions::Suppressions(std::string_view text, const std::vector<Comment>& comments) {
  int64_t line = 0;
  std::size_t counted = 0;
  for (const Comment& comment : comments) {
    // Only comments that mention the marker are parsed further; lines are
    // counted up to those alone.
    if (comment.body.find(kSuppressionMarker) == std::string_view::npos) continue;
    line += CountNewlines(text.substr(counted, comment.begin - counted));
    counted = comment.begin;
    ReadComment(comment.body, line, line + CountNewlines(text.substr(comment.begin, comment.end - comment.begin)));
  }
}

void Suppressions::ReadComment(std::string_view body, int64_t firstLine, int64_t lastLine) {
  body = Trim(body);
  if (!body.starts_with(kSuppressionMarker)) return;
  body = Trim(body.substr(kSuppressionMarker.size()));
  if (const std::size_t reason = body.find(" --"); reason != std::string_view::npos) body = body.substr(0, reason);
  std::size_t wordEnd = 0;
  while (wordEnd < body.size() && !IsSpace(body[wordEnd])) ++wordEnd;
  const std::string_view directive = body.substr(0, wordEnd);
  const std::vector<std::string_view> checks = SplitChecks(body.substr(wordEnd));

  auto problem = [&](std::string message) { problems_.push_back(SuppressionProblem{firstLine, std::move(message)}); };
  SuppressionKind kind;
  int64_t first = firstLine, last = firstLine;
  if (directive == "disable-next-line") {
    kind = SuppressionKind::kNextLine;
    first = last = lastLine + 1;
  } else if (directive == "disable-line") {
    kind = SuppressionKind::kLine;
  } else if (directive == "disable") {
    kind = SuppressionKind::kRegion;
    last = kEndOfFile;
  } else if (directive == "disable-file") {
    kind = SuppressionKind::kFile;
    first = 0;
    last = kEndOfFile;
  } else if (directive == "enable") {
    kind = SuppressionKind::kRegion;
  } else {
    problem("unknown suppression directive '" + std::string(directive) +
            "' (disable-next-line, disable-line, disable, enable or disable-file)");
    return;
  }
  if (checks.empty()) {
    problem("suppression comment '" + std::string(directive) + "' names no check");
    return;
  }
  for (std::string_view check : checks) {
    if (check != "all" && FindCheck(check) == nullptr) {
      problem("unknown check '" + std::string(check) + "' in suppression comment");
      continue;
    }
    if (directive == "enable") {
      // Closes the open regions of this check ("all" closes every one).
      bool closed = false;
      for (auto it = openRegions_.begin(); it != openRegions_.end();) {
        Suppression& region = entries_[*it];
        if (check == "all" || region.check == check) {
          region.lastLine = firstLine;
          it = openRegions_.erase(it);
          closed = true;
        } else {
          ++it;
        }
      }
      if (!closed) problem("'enable " + std::string(check) + "' without an open 'disable " + std::string(check) + "'");
      continue;
    }
    if (kind == SuppressionKind::kRegion) openRegions_.push_back(entries_.size());
    entries_.push_back(Suppression{kind, std::string(check), firstLine, first, last, false});
  }
}

bool Suppressions::Covers(int64_t line, std::string_view check) {
  bool covered = false;
  for (Suppression& entry : entries_) {
    if (line >= entry.firstLine && line <= entry.lastLine && (entry.check == "all" || entry.check == check)) {
      entry.used = true;
      covered = true;
    }
  }
  return covered;
}

}  // namespace quill::cli
