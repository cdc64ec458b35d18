#include <algorithm>
#include <unordered_map>
#include <vector>

#include "content_guard.h"
#include "converge.h"
#include "format_off.h"
#include "format_pipeline.h"
#include "lsp/documents.h"
#include "lsp/features.h"
#include "sequence_diff.h"

namespace quill::lsp {
namespace {

// The text cut after every LF; the last piece may lack one.
std::vector<std::string_view> LineUnits(std::string_view text) {
  std::vector<std::string_view> units;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t lf = text.find('\n', start);
    std::size_t end = lf == std::string_view::npos ? text.size() : lf + 1;
    units.push_back(text.substr(start, end - start));
    start = end;
  }
  return units;
}

struct Hunk {
  std::size_t oldFirst, oldEnd;  // replaced units [oldFirst, oldEnd)
  std::size_t newFirst, newEnd;  // inserted units
};

std::vector<Hunk> DiffUnits(const std::vector<std::string_view>& before, const std::vector<std::string_view>& after) {
  std::unordered_map<std::string_view, std::uint32_t> ids;
  auto idsOf = [&ids](const std::vector<std::string_view>& units) {
    std::vector<std::uint32_t> out;
    out.reserve(units.size());
    for (std::string_view unit : units) out.push_back(ids.emplace(unit, static_cast<std::uint32_t>(ids.size())).first->second);
    return out;
  };
  const std::vector<std::uint32_t> a = idsOf(before), b = idsOf(after);
  const cli::DiffMarks marks = cli::MarkDifferences(a, b);
  std::vector<Hunk> hunks;
  std::size_t i = 0, j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && !marks.deleted[i] && !marks.inserted[j]) {
      ++i, ++j;
      continue;
    }
    Hunk hunk{i, i, j, j};
    while (hunk.oldEnd < a.size() && marks.deleted[hunk.oldEnd]) ++hunk.oldEnd;
    while (hunk.newEnd < b.size() && marks.inserted[hunk.newEnd]) ++hunk.newEnd;
    i = hunk.oldEnd, j = hunk.newEnd;
    hunks.push_back(hunk);
  }
  return hunks;
}

nlohmann::json PositionJson(Position p) { return {{"line", p.line}, {"character", p.character}}; }

}  // namespace

FormattingResult FormattingEdits(std::string_view text, std::optional<LineRange> range) {
  FormattingResult result;
  cli::PipelineResult pipeline = cli::FormatForTool(text, cli::PipelineOptions{});
  switch (pipeline.outcome) {
    case cli::FormatOutcome::kFormatted:
      break;
    case cli::FormatOutcome::kEngineFailed:
      result.refusal = "quill could not format this text";
      return result;
    case cli::FormatOutcome::kUnsettled:
      result.refusal = "quill did not format: the result still changes after " +
                       std::to_string(cli::kMaxFormatRounds) + " rounds";
      return result;
    case cli::FormatOutcome::kRegionBroken:
      result.refusal = "quill did not format: the result would move text across the format-off region on " +
                       cli::DescribeSpans(pipeline.brokenRegions);
      return result;
  }
  const std::string* formatted = &pipeline.text;
  const std::vector<std::string_view> before = LineUnits(text), after = LineUnits(*formatted);
  std::vector<std::size_t> offsets(before.size() + 1, 0);
  for (std::size_t k = 0; k < before.size(); ++k) offsets[k + 1] = offsets[k] + before[k].size();
  const LineIndex lines(text);

  std::string applied;  // the text as the chosen edits leave it, for the guard
  std::size_t copied = 0;
  auto emit = [&](std::size_t oldFirst, std::size_t oldEnd, std::size_t newFirst, std::size_t newEnd) {
    std::string replacement;
    for (std::size_t k = newFirst; k < newEnd; ++k) replacement.append(after[k]);
    const std::size_t from = offsets[oldFirst], to = offsets[oldEnd];
    if (text.substr(from, to - from) == replacement) return;
    applied.append(text.substr(copied, from - copied));
    applied.append(replacement);
    copied = to;
    result.edits.push_back({{"range", {{"start", PositionJson(lines.PositionOf(from))},
                                       {"end", PositionJson(lines.PositionOf(to))}}},
                            {"newText", replacement}});
  };
  for (const Hunk& hunk : DiffUnits(before, after)) {
    if (!range) {
      emit(hunk.oldFirst, hunk.oldEnd, hunk.newFirst, hunk.newEnd);
      continue;
    }
    const std::size_t first = range->first, last = range->last;
    if (hunk.oldFirst == hunk.oldEnd) {
      // An insertion between two lines of the range.
      if (hunk.oldFirst > first && hunk.oldFirst <= last) emit(hunk.oldFirst, hunk.oldEnd, hunk.newFirst, hunk.newEnd);
      continue;
    }
    if (hunk.oldEnd - 1 < first || hunk.oldFirst > last) continue;
    if (hunk.oldFirst >= first && hunk.oldEnd - 1 <= last) {
      emit(hunk.oldFirst, hunk.oldEnd, hunk.newFirst, hunk.newEnd);
      continue;
    }
    // The change spills out of the range. Lines replaced one for one are
    // clipped to those inside it; any other change is left alone.
    if (hunk.oldEnd - hunk.oldFirst != hunk.newEnd - hunk.newFirst) continue;
    for (std::size_t k = std::max(hunk.oldFirst, first); k <= std::min(hunk.oldEnd - 1, last); ++k) {
      const std::size_t paired = hunk.newFirst + (k - hunk.oldFirst);
      emit(k, k + 1, paired, paired + 1);
    }
  }
  applied.append(text.substr(copied));
  std::vector<std::uint32_t> lost = cli::FindLostLines(text, applied);
  if (!lost.empty()) {
    result.edits = nlohmann::json::array();
    result.refusal = "quill did not format: the result would lose text on " + cli::DescribeLines(lost);
  }
  return result;
}

}  // namespace quill::lsp
