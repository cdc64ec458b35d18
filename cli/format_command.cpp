// quill format: print, check, diff or rewrite formatted Verilog files.
#include <cstdint>
#include <string>

#include "commands.h"
#include "content_guard.h"
#include "converge.h"
#include "diff.h"
#include "exit_codes.h"
#include "files.h"
#include "format_off.h"
#include "format_pipeline.h"
#include "parallel.h"

namespace quill::cli {
namespace {

// What became of one file, for the summary line.
enum class FileFate { kUnchanged, kChanged, kRefused, kFailed };

struct FormatResult {
  ItemOutput output;
  int exit = kExitClean;
  FileFate fate = FileFate::kUnchanged;
  bool printed = false;  // print mode: output.out holds the file's text
};

// What the file is spared, or what --force does instead, by mode.
std::string Consequence(const FormatOptions& options, bool forced) {
  switch (options.mode) {
    case FormatMode::kPrint:
      return forced ? " (printed because of --force)" : "; not printed (--force prints it)";
    case FormatMode::kInPlace:
      return forced ? " (written because of --force)" : "; file left unchanged (--force writes it)";
    case FormatMode::kCheck:
    case FormatMode::kDiff:
      break;
  }
  return "";
}

std::string GuardWarning(const std::string& name, const std::vector<uint32_t>& lost, const FormatOptions& options) {
  return WarningLine(name + ": formatting would lose text on " + DescribeLines(lost) +
                     Consequence(options, options.force));
}

std::string RegionWarning(const std::string& name, const std::vector<std::pair<uint32_t, uint32_t>>& spans,
                          const FormatOptions& options) {
  return WarningLine(name + ": formatting would move text across the format-off region on " + DescribeSpans(spans) +
                     Consequence(options, options.force));
}

FormatResult Failure(std::string message) {
  FormatResult result;
  result.output.err = ErrorLine(message);
  result.exit = kExitError;
  result.fate = FileFate::kFailed;
  return result;
}

FormatResult FormatOne(const InputFile& file, const FormatOptions& options) {
  ReadResult input = ReadInput(file);
  if (!input.error.empty()) return Failure(input.error);
  PipelineResult formatted = FormatForTool(input.text, PipelineOptions{options.force});
  switch (formatted.outcome) {
    case FormatOutcome::kFormatted:
      break;
    case FormatOutcome::kEngineFailed:
      return Failure(file.displayName + ": the formatter could not process this file");
    case FormatOutcome::kUnsettled:
      return Failure(file.displayName + ": formatting still changes the text after " +
                     std::to_string(kMaxFormatRounds) + " rounds; file left unchanged");
    case FormatOutcome::kRegionBroken: {
      FormatResult result;
      result.output.err = RegionWarning(file.displayName, formatted.brokenRegions, options);
      result.exit = kExitGuard;
      result.fate = FileFate::kRefused;
      return result;
    }
  }

  FormatResult result;
  if (!formatted.brokenRegions.empty()) {
    result.output.err = RegionWarning(file.displayName, formatted.brokenRegions, options);
  }
  const bool changed = formatted.text != input.text;
  const bool lost = !formatted.lostLines.empty();
  const bool guarded = lost && !options.force;
  if (lost) result.output.err += GuardWarning(file.displayName, formatted.lostLines, options);
  if (guarded) {
    result.exit = kExitGuard;
    result.fate = FileFate::kRefused;
  } else if (changed) {
    result.fate = FileFate::kChanged;
  }
  switch (options.mode) {
    case FormatMode::kPrint:
      if (!guarded) {
        result.output.out = std::move(formatted.text);
        result.printed = true;
      }
      break;
    case FormatMode::kCheck:
      if (changed) {
        result.output.out = file.displayName + "\n";
        result.exit = WorseExit(result.exit, kExitFindings);
      }
      break;
    case FormatMode::kDiff:
      if (changed) {
        result.output.out = UnifiedDiff(input.text, formatted.text, file.displayName, file.displayName);
        result.exit = WorseExit(result.exit, kExitFindings);
      }
      break;
    case FormatMode::kInPlace:
      if (changed && !guarded) {
        const std::string error = WriteOutput(file, formatted.text);
        if (!error.empty()) {
          result.output.err += ErrorLine(error);
          result.exit = kExitError;
          result.fate = FileFate::kFailed;
        }
      }
      break;
  }
  return result;
}

std::string CountOf(std::size_t n, const char* what) {
  return std::to_string(n) + " " + what;
}

// "3 files reformatted, 120 unchanged" (or "would be reformatted" for
// --check), then ", 1 refused" and ", 2 failed" when there are any.
std::string Summary(const std::vector<std::size_t>& fates, FormatMode mode) {
  const std::size_t changed = fates[static_cast<std::size_t>(FileFate::kChanged)];
  std::string line = CountOf(changed, changed == 1 ? "file" : "files");
  line += mode == FormatMode::kCheck ? " would be reformatted, " : " reformatted, ";
  line += CountOf(fates[static_cast<std::size_t>(FileFate::kUnchanged)], "unchanged");
  if (const std::size_t refused = fates[static_cast<std::size_t>(FileFate::kRefused)]; refused > 0) {
    line += ", " + CountOf(refused, "refused");
  }
  if (const std::size_t failed = fates[static_cast<std::size_t>(FileFate::kFailed)]; failed > 0) {
    line += ", " + CountOf(failed, "failed");
  }
  return line + "\n";
}

}  // namespace

int RunFormat(const FormatOptions& options) {
  ConfigFinder configs = MakeConfigFinder(options.input.configFile, options.input.isolated);
  const std::vector<InputFile> files = ExpandInputs(options.input.paths, kVerilogExtensions, options.input.stdinName,
                                                    WalkOptions{CommandKind::kFormat, &configs, !options.input.noIgnore});
  // Several files printed get a header each, as head(1) prints them.
  const bool headers = options.mode == FormatMode::kPrint && files.size() > 1;
  std::vector<FormatResult> results(files.size());
  std::vector<std::size_t> fates(4, 0);
  int exit = kExitClean;
  bool printedAny = false;
  RunInOrder(
      files.size(), RunOptions{options.input.jobs, CanShowProgress()},
      [&](std::size_t i) { results[i] = FormatOne(files[i], options); },
      [&](std::size_t i) {
        FormatResult& result = results[i];
        exit = WorseExit(exit, result.exit);
        ++fates[static_cast<std::size_t>(result.fate)];
        if (headers && result.printed) {
          result.output.out = (printedAny ? "\n==> " : "==> ") + files[i].displayName + " <==\n" + result.output.out;
          printedAny = true;
        }
        return std::move(result.output);
      });
  if (options.mode == FormatMode::kInPlace || options.mode == FormatMode::kCheck) {
    WriteBytes(stderr, Summary(fates, options.mode));
  }
  return exit;
}

}  // namespace quill::cli
