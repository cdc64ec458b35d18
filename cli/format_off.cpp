#include "format_off.h"

namespace quill::cli {
namespace {

// The text cut after every LF; the last line may lack one.
std::vector<std::string_view> SplitLines(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t lf = text.find('\n', start);
    const std::size_t end = lf == std::string_view::npos ? text.size() : lf + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

std::string_view Trim(std::string_view s) {
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  while (!s.empty() && IsBlank(s.back())) s.remove_suffix(1);
  return s;
}

// Consumes `word` at the front of `s`, then any blanks.
bool Take(std::string_view& s, std::string_view word) {
  if (s.substr(0, word.size()) != word) return false;
  s.remove_prefix(word.size());
  while (!s.empty() && IsBlank(s.front())) s.remove_prefix(1);
  return true;
}

enum class Marker { kNone, kOff, kOn };

// "// quill: format off", "/* quill: format on */" and the same with other
// spacing; the line holds nothing else.
Marker MarkerOf(std::string_view line) {
  std::string_view s = Trim(line);
  bool block = false;
  if (Take(s, "/*")) {
    block = true;
  } else if (!Take(s, "//")) {
    return Marker::kNone;
  }
  if (!Take(s, "quill:") || !Take(s, "format")) return Marker::kNone;
  Marker marker = Marker::kNone;
  if (Take(s, "off")) {
    marker = Marker::kOff;
  } else if (Take(s, "on")) {
    marker = Marker::kOn;
  }
  if (block && !Take(s, "*/")) return Marker::kNone;
  return s.empty() ? marker : Marker::kNone;
}

std::vector<FormatOffRegion> RegionsOf(const std::vector<std::string_view>& lines) {
  std::vector<FormatOffRegion> regions;
  bool inside = false;
  std::size_t first = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const Marker marker = MarkerOf(lines[i]);
    if (!inside && marker == Marker::kOff) {
      inside = true;
      first = i;
    } else if (inside && marker == Marker::kOn) {
      regions.push_back({first, i, true});
      inside = false;
    }
  }
  if (inside) regions.push_back({first, lines.size() - 1, false});
  return regions;
}

// The non-blank bytes of lines [first, end).
std::string NonBlankBytes(const std::vector<std::string_view>& lines, std::size_t first, std::size_t end) {
  std::string bytes;
  for (std::size_t i = first; i < end; ++i) {
    for (const char c : lines[i]) {
      if (!IsBlank(c)) bytes.push_back(c);
    }
  }
  return bytes;
}

// The lines strictly between the markers (for an unclosed region: after its
// marker to the end).
std::string InnerBytes(const std::vector<std::string_view>& lines, const FormatOffRegion& region) {
  return NonBlankBytes(lines, region.first + 1, region.closed ? region.last : region.last + 1);
}

std::pair<uint32_t, uint32_t> OneBasedSpan(std::size_t first, std::size_t last) {
  return {static_cast<uint32_t>(first + 1), static_cast<uint32_t>(last + 1)};
}

}  // namespace

std::vector<FormatOffRegion> FindFormatOffRegions(std::string_view text) {
  return RegionsOf(SplitLines(text));
}

KeptRegions KeepFormatOffRegions(std::string_view original, std::string_view formatted) {
  KeptRegions kept;
  const std::vector<std::string_view> before = SplitLines(original), after = SplitLines(formatted);
  const std::vector<FormatOffRegion> wanted = RegionsOf(before), found = RegionsOf(after);
  for (std::size_t k = 0; k < wanted.size(); ++k) {
    const FormatOffRegion& region = wanted[k];
    // A last line without LF can only be put back where nothing follows.
    const bool ends = before[region.last].back() == '\n';
    const bool same = k < found.size() && found[k].closed == region.closed &&
                      (ends || found[k].last + 1 == after.size()) &&
                      InnerBytes(after, found[k]) == InnerBytes(before, region);
    if (!same) kept.broken.push_back(OneBasedSpan(region.first, region.last));
  }
  if (!kept.broken.empty() || wanted.empty()) {
    if (kept.broken.empty()) kept.text = std::string(formatted);
    return kept;
  }
  if (found.size() != wanted.size()) {
    // The formatter made a marker out of other text; the regions after the
    // last wanted one would be misread, so none is trusted.
    kept.broken.push_back(OneBasedSpan(wanted.front().first, wanted.back().last));
    return kept;
  }
  std::size_t next = 0;  // the first line of `after` not yet copied
  for (std::size_t k = 0; k < wanted.size(); ++k) {
    for (; next < found[k].first; ++next) kept.text.append(after[next]);
    for (std::size_t i = wanted[k].first; i <= wanted[k].last; ++i) kept.text.append(before[i]);
    next = found[k].last + 1;
  }
  for (; next < after.size(); ++next) kept.text.append(after[next]);
  return kept;
}

std::string DescribeSpans(const std::vector<std::pair<uint32_t, uint32_t>>& spans) {
  std::string text;
  for (const auto& [first, last] : spans) {
    if (!text.empty()) text += ", ";
    text += first == last ? "line " + std::to_string(first)
                          : "lines " + std::to_string(first) + " to " + std::to_string(last);
  }
  return text;
}

}  // namespace quill::cli
