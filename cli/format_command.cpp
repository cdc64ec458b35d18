// quill format: print, check, diff or rewrite formatted Verilog files.
#include <cstdint>
#include <optional>

#include "commands.h"
#include "content_guard.h"
#include "diff.h"
#include "engine.h"
#include "exit_codes.h"
#include "files.h"
#include "parallel.h"

namespace quill::cli {
namespace {

struct FormatResult {
  ItemOutput output;
  int exit = kExitClean;
};

std::string GuardWarning(const std::string& name, const std::vector<uint32_t>& lost, const FormatOptions& options) {
  std::string message = name + ": formatting would lose text on " + DescribeLines(lost);
  switch (options.mode) {
    case FormatMode::kPrint:
      message += options.force ? " (printed because of --force)" : "; not printed (--force prints it)";
      break;
    case FormatMode::kInPlace:
      message += options.force ? " (written because of --force)" : "; file left unchanged (--force writes it)";
      break;
    case FormatMode::kCheck:
    case FormatMode::kDiff:
      break;
  }
  return WarningLine(message);
}

FormatResult FormatOne(const InputFile& file, const FormatOptions& options) {
  FormatResult result;
  ReadResult input = ReadInput(file);
  if (!input.error.empty()) {
    result.output.err = ErrorLine(input.error);
    result.exit = kExitError;
    return result;
  }
  std::optional<std::string> formatted = FormatSource(input.text);
  if (!formatted) {
    result.output.err = ErrorLine(file.displayName + ": the formatter could not process this file");
    result.exit = kExitError;
    return result;
  }
  const bool changed = *formatted != input.text;
  const std::vector<uint32_t> lost = changed ? FindLostLines(input.text, *formatted) : std::vector<uint32_t>();
  const bool guarded = !lost.empty() && !options.force;
  if (!lost.empty()) {
    result.output.err = GuardWarning(file.displayName, lost, options);
    if (guarded) result.exit = kExitGuard;
  }
  switch (options.mode) {
    case FormatMode::kPrint:
      if (!guarded) result.output.out = std::move(*formatted);
      break;
    case FormatMode::kCheck:
      if (changed) {
        result.output.out = file.displayName + "\n";
        result.exit = WorseExit(result.exit, kExitFindings);
      }
      break;
    case FormatMode::kDiff:
      if (changed) {
        result.output.out = UnifiedDiff(input.text, *formatted, file.displayName, file.displayName);
        result.exit = WorseExit(result.exit, kExitFindings);
      }
      break;
    case FormatMode::kInPlace:
      if (changed && !guarded) {
        const std::string error = WriteOutput(file, *formatted);
        if (!error.empty()) {
          result.output.err += ErrorLine(error);
          result.exit = kExitError;
        }
      }
      break;
  }
  return result;
}

}  // namespace

int RunFormat(const FormatOptions& options) {
  ConfigFinder configs = MakeConfigFinder(options.input.configFile, options.input.isolated);
  const std::vector<InputFile> files = ExpandInputs(options.input.paths, kVerilogExtensions, options.input.stdinName,
                                                    WalkOptions{CommandKind::kFormat, &configs, !options.input.noIgnore});
  std::vector<FormatResult> results(files.size());
  int exit = kExitClean;
  RunInOrder(
      files.size(), RunOptions{options.input.jobs, CanShowProgress()},
      [&](std::size_t i) { results[i] = FormatOne(files[i], options); },
      [&](std::size_t i) {
        exit = WorseExit(exit, results[i].exit);
        return std::move(results[i].output);
      });
  return exit;
}

}  // namespace quill::cli
