// The tool's formatting of one text, shared by `quill format` and the
// language server: line ends, format-off regions, formatting until stable
// and the content guard, in that order.
#ifndef QUILL_CLI_FORMAT_PIPELINE_H_
#define QUILL_CLI_FORMAT_PIPELINE_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "converge.h"

namespace quill::cli {

enum class FormatOutcome {
  kFormatted,     // `text` holds the result
  kEngineFailed,  // the engine could not format the text
  kUnsettled,     // the result still changed after kMaxFormatRounds rounds
  kRegionBroken,  // a format-off region could not be kept (see `brokenRegions`)
};

struct PipelineResult {
  FormatOutcome outcome = FormatOutcome::kFormatted;
  std::string text;  // the formatted text, in the input's line ending
  // One-based lines of the input whose text `text` lost (the content guard);
  // the caller decides whether to use `text` anyway.
  std::vector<uint32_t> lostLines;
  // One-based line spans of the format-off regions that could not be kept.
  // With `ignoreBrokenRegions` these are reported while `text` is the
  // formatted text without any region kept.
  std::vector<std::pair<uint32_t, uint32_t>> brokenRegions;
  int rounds = 0;
};

struct PipelineOptions {
  bool ignoreBrokenRegions = false;  // --force: format regions that cannot be kept
};

// Formats `text` as the tool writes it:
// 1. a text whose lines all end in CR LF is formatted as LF text and the
//    result converted back; any other text is formatted as it is;
// 2. each round formats the whole text with `step` and puts the format-off
//    regions back;
// 3. rounds repeat until one changes nothing (at most kMaxFormatRounds), so
//    the result formats to itself;
// 4. the content guard compares the input with the final result.
PipelineResult FormatForTool(std::string_view text, const PipelineOptions& options);
PipelineResult FormatForTool(std::string_view text, const PipelineOptions& options, const FormatStep& engine);

}  // namespace quill::cli

#endif  // QUILL_CLI_FORMAT_PIPELINE_H_
