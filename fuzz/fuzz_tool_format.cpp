// The tool's formatting as `quill format` and the language server run it:
// line ends, format-off regions, rounds until stable and the content guard,
// over the real engine. Asserts that a result reported as stable formats to
// itself, that a result the guard passes holds every non-blank byte of the
// input in order, that kept regions are in the result byte for byte, and
// that a CR LF input comes back with CR LF.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "format_off.h"
#include "format_pipeline.h"
#include "line_endings.h"

namespace {

using quill::cli::FormatOutcome;
using quill::cli::PipelineOptions;
using quill::cli::PipelineResult;

void Fail(const char* what) {
  std::fprintf(stderr, "tool formatting contract broken: %s\n", what);
  std::abort();
}

bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// The input's non-blank bytes form a subsequence of the output's.
bool KeepsAllText(std::string_view input, std::string_view output) {
  std::size_t j = 0;
  for (const char c : input) {
    if (IsBlank(c)) continue;
    while (j < output.size() && output[j] != c) ++j;
    if (j == output.size()) return false;
    ++j;
  }
  return true;
}

void CheckResult(std::string_view text, const PipelineResult& result, const PipelineOptions& options) {
  if (result.outcome != FormatOutcome::kFormatted) return;
  if (result.lostLines.empty() && !KeepsAllText(text, result.text)) Fail("the guard let text be lost");
  if (quill::cli::DetectLineEnding(text) == quill::cli::LineEnding::kCrLf &&
      result.text.find('\n') != std::string::npos &&
      quill::cli::DetectLineEnding(result.text) != quill::cli::LineEnding::kCrLf) {
    Fail("CR LF input came back with other line ends");
  }
  if (options.ignoreBrokenRegions) return;
  const PipelineResult again = quill::cli::FormatForTool(result.text, options);
  if (again.outcome != FormatOutcome::kFormatted || again.text != result.text) Fail("a stable result changed");
}

// Every format-off region of the input is in the result byte for byte (in
// LF form: a CR LF file's regions come back converted twice, unchanged).
void CheckRegionsKept(std::string_view text, std::string_view result) {
  const bool crlf = quill::cli::DetectLineEnding(text) == quill::cli::LineEnding::kCrLf;
  const std::string lf = crlf ? quill::cli::ToLf(text) : std::string(text);
  const std::string resultLf = crlf ? quill::cli::ToLf(result) : std::string(result);
  std::vector<std::size_t> lineStarts = {0};
  for (std::size_t at = lf.find('\n'); at != std::string::npos; at = lf.find('\n', at + 1)) lineStarts.push_back(at + 1);
  lineStarts.push_back(lf.size());
  for (const quill::cli::FormatOffRegion& region : quill::cli::FindFormatOffRegions(lf)) {
    const std::size_t from = lineStarts[region.first], to = lineStarts[region.last + 1];
    if (resultLf.find(std::string_view(lf).substr(from, to - from)) == std::string::npos) {
      Fail("a kept region is not in the result byte for byte");
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const PipelineResult result = quill::cli::FormatForTool(text, PipelineOptions{});
  CheckResult(text, result, PipelineOptions{});
  if (result.outcome == FormatOutcome::kRegionBroken) {
    if (result.brokenRegions.empty()) Fail("a broken region without its lines");
    CheckResult(text, quill::cli::FormatForTool(text, PipelineOptions{true}), PipelineOptions{true});
  }
  if (result.outcome == FormatOutcome::kFormatted) CheckRegionsKept(text, result.text);
  return 0;
}
