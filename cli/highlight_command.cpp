// quill highlight: show constraint and Tcl files in colour, or their class
// runs as JSON.
#include <optional>

#include "commands.h"
#include "engine.h"
#include "exit_codes.h"
#include "files.h"
#include "highlight_output.h"
#include "parallel.h"

namespace quill::cli {
namespace {

struct HighlightResult {
  ItemOutput output;
  int exit = kExitClean;
};

HighlightResult HighlightOne(const InputFile& file, const HighlightOptions& options, bool color) {
  HighlightResult result;
  ReadResult input = ReadInput(file);
  if (!input.error.empty()) {
    result.output.err = ErrorLine(input.error);
    result.exit = kExitError;
    return result;
  }
  std::optional<std::vector<unsigned char>> classes = ClassifySource(input.text);
  if (!classes) {
    result.output.err = ErrorLine(file.displayName + ": the highlighter could not process this file");
    result.exit = kExitError;
    return result;
  }
  if (options.format == HighlightFormat::kJson) {
    result.output.out = RenderJsonRuns(file.displayName, *classes);
  } else {
    result.output.out = color ? RenderAnsi(input.text, *classes) : std::move(input.text);
  }
  return result;
}

}  // namespace

int RunHighlight(const HighlightOptions& options) {
  ConfigFinder configs = MakeConfigFinder(options.input.configFile, options.input.isolated);
  const std::vector<InputFile> files =
      ExpandInputs(options.input.paths, kConstraintExtensions, options.input.stdinName,
                   WalkOptions{CommandKind::kHighlight, &configs, !options.input.noIgnore});
  const bool color = UseColor(options.color, stdout);
  // Several files shown as text get a header each, as head(1) prints them.
  const bool headers = options.format == HighlightFormat::kText && files.size() > 1;
  std::vector<HighlightResult> results(files.size());
  int exit = kExitClean;
  RunInOrder(
      files.size(), RunOptions{options.input.jobs, CanShowProgress()},
      [&](std::size_t i) { results[i] = HighlightOne(files[i], options, color); },
      [&](std::size_t i) {
        exit = WorseExit(exit, results[i].exit);
        ItemOutput output = std::move(results[i].output);
        if (headers && results[i].exit == kExitClean) {
          output.out = (i > 0 ? "\n==> " : "==> ") + files[i].displayName + " <==\n" + output.out;
        }
        return output;
      });
  return exit;
}

}  // namespace quill::cli
