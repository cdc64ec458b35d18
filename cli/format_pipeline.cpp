#include "format_pipeline.h"

#include "content_guard.h"
#include "engine.h"
#include "format_off.h"
#include "line_endings.h"

namespace quill::cli {
namespace {

// Converges `engine` over `text`, with the regions kept in every round when
// `keepRegions`; a broken region stops the rounds and is reported.
PipelineResult Converge(std::string_view text, bool keepRegions, const FormatStep& engine) {
  PipelineResult result;
  auto round = [&](std::string_view current) -> std::optional<std::string> {
    std::optional<std::string> formatted = engine(current);
    if (!formatted || !keepRegions) return formatted;
    KeptRegions kept = KeepFormatOffRegions(current, *formatted);
    if (!kept.broken.empty()) {
      result.brokenRegions = std::move(kept.broken);
      return std::nullopt;
    }
    return std::move(kept.text);
  };
  ConvergeResult converged = FormatUntilStable(text, round);
  result.rounds = converged.rounds;
  switch (converged.status) {
    case ConvergeStatus::kStable:
      result.text = std::move(converged.text);
      break;
    case ConvergeStatus::kUnsettled:
      result.outcome = FormatOutcome::kUnsettled;
      break;
    case ConvergeStatus::kStepFailed:
      result.outcome = result.brokenRegions.empty() ? FormatOutcome::kEngineFailed : FormatOutcome::kRegionBroken;
      break;
  }
  return result;
}

}  // namespace

PipelineResult FormatForTool(std::string_view text, const PipelineOptions& options) {
  return FormatForTool(text, options, FormatSource);
}

PipelineResult FormatForTool(std::string_view text, const PipelineOptions& options, const FormatStep& engine) {
  const LineEnding ending = DetectLineEnding(text);
  const std::string lfText = ending == LineEnding::kCrLf ? ToLf(text) : std::string(text);
  PipelineResult result = Converge(lfText, true, engine);
  if (result.outcome == FormatOutcome::kRegionBroken && options.ignoreBrokenRegions) {
    std::vector<std::pair<uint32_t, uint32_t>> broken = std::move(result.brokenRegions);
    result = Converge(lfText, false, engine);
    result.brokenRegions = std::move(broken);
  }
  if (result.outcome != FormatOutcome::kFormatted) return result;
  result.text = WithLineEnding(result.text, ending);
  if (result.text != text) result.lostLines = FindLostLines(text, result.text);
  return result;
}

}  // namespace quill::cli
