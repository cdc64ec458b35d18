#include "common/text_utils.h"

#include <algorithm>

#include "common/byte_search.h"

namespace quill {
char LeadingByteLower(std::string_view s) {
  for (char c : s) {
    if (IsSpaceByte(c)) continue;
    return FoldAscii(c);
  }
  return '\0';
}

std::string TrimLeft(std::string_view s) {
  std::size_t first = 0;
  while (first < s.size() && IsBlankByte(s[first])) ++first;
  return std::string(s.substr(first));
}

std::string Trim(std::string_view s) {
  return std::string(TrimmedView(s));
}

// A plain loop: find_last_not_of would look each byte up in `chars` with a
// library call.
std::string_view TrimRightOf(std::string_view s, std::string_view chars) {
  std::size_t end = s.size();
  // A loop over the few bytes of `chars` costs less than a search call per byte.
  while (end > 0 && std::any_of(chars.begin(), chars.end(), [c = s[end - 1]](char x) { return x == c; })) --end;
  return end == 0 ? std::string_view() : s.substr(0, end);
}

namespace {

std::size_t CountLines(std::string_view text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

}  // namespace

// Counting every line first would read the text twice; a sample gives the
// line length of nearly every source file, and a text whose lines get
// shorter later grows the list by doubling.
std::size_t EstimateLineCount(std::string_view text) {
  constexpr std::size_t kSampleBytes = 64 * 1024;
  if (text.size() <= kSampleBytes) return CountLineFeeds(text) + 1;
  const std::size_t sampleLines = CountLineFeeds(text.substr(0, kSampleBytes)) + 1;
  const std::size_t estimate = (text.size() / kSampleBytes + 1) * sampleLines;
  return estimate + estimate / 8;
}

LineViews SplitLineViews(std::string_view text) {
  LineViews lines;
  lines.reserve(EstimateLineCount(text));
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) lines.push_back(line);
  return lines;
}

TextLines SplitLines(std::string_view text) {
  TextLines lines;
  lines.reserve(CountLines(text));
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) lines.emplace_back(line);
  return lines;
}

LineViews ViewsOf(const TextLines& lines) {
  return LineViews(lines.begin(), lines.end());
}

namespace {

template <typename Lines>
std::string JoinAll(const Lines& lines, std::string_view separator) {
  std::size_t size = 0;
  for (std::string_view line : lines) size += line.size() + separator.size();
  std::string text;
  text.reserve(size);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i > 0) text.append(separator);
    text.append(lines[i]);
  }
  return text;
}

}  // namespace

std::string JoinLines(const TextLines& lines, std::string_view separator) {
  return JoinAll(lines, separator);
}

std::string JoinLines(const LineViews& lines, std::string_view separator) {
  return JoinAll(lines, separator);
}

std::string RewriteLines(std::string_view text, const std::vector<LineReplacement>& replacements,
                         std::size_t expectedSize) {
  if (text.find('\r') == std::string_view::npos) {
    std::string result;
    result.reserve(expectedSize);
    std::size_t copied = 0;
    for (const LineReplacement& replacement : replacements) {
      const auto begin = static_cast<std::size_t>(replacement.line.data() - text.data());
      result.append(text.substr(copied, begin - copied));
      result.append(replacement.text);
      copied = begin + replacement.line.size();
    }
    result.append(text.substr(copied));
    return result;
  }
  LineJoiner output(expectedSize);
  auto next = replacements.begin();
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) {
    if (next != replacements.end() && next->line.data() == line.data()) {
      output.Add(next->text);
      ++next;
    } else {
      output.Add(line);
    }
  }
  return output.Take();
}

// A plain scan gives the same matches as "/\*[\s\S]*?\*/": each comment ends
// at the first "*/" that starts two or more bytes after its "/*", and once
// one "/*" finds no end, no later one can.
std::string ReplaceEachMatch(std::string_view text, const std::function<std::string(std::string_view)>& replace) {
  std::string result;
  std::size_t copied = 0;
  std::size_t pos = 0;
  while (true) {
    std::size_t open = text.find("/*", pos);
    if (open == std::string_view::npos) break;
    std::size_t close = text.find("*/", open + 2);
    if (close == std::string_view::npos) break;
    std::size_t end = close + 2;
    if (copied == 0) result.reserve(RoomToGrow(text.size()));
    result.append(text.substr(copied, open - copied));
    result.append(replace(text.substr(open, end - open)));
    copied = pos = end;
  }
  if (copied == 0) return std::string(text);
  result.append(text.substr(copied));
  return result;
}

std::string RemoveLineComments(std::string_view text) {
  std::size_t open = text.find("//");
  if (open == std::string_view::npos) return std::string(text);
  std::string result;
  result.reserve(text.size());
  std::size_t copied = 0;
  while (open != std::string_view::npos) {
    result.append(text.substr(copied, open - copied));
    std::size_t lf = text.find('\n', open);
    copied = lf == std::string_view::npos ? text.size() : lf;
    open = text.find("//", copied);
  }
  result.append(text.substr(copied));
  return result;
}

std::int32_t CountMatches(std::string_view s, const Pattern& pattern) {
  return pattern.Count(s);
}

}  // namespace quill
