// quill lint: run the linter over Verilog files and report as text, JSON or
// SARIF.
#include <algorithm>
#include <optional>

#include "commands.h"
#include "engine.h"
#include "exit_codes.h"
#include "files.h"
#include "lint_output.h"
#include "parallel.h"

namespace quill::cli {
namespace {

struct LintResult {
  std::string report;  // the engine's array as it came
  std::vector<Finding> findings;
  std::string error;
};

LintResult LintOne(const InputFile& file) {
  LintResult result;
  ReadResult input = ReadInput(file);
  if (!input.error.empty()) {
    result.error = input.error;
    return result;
  }
  std::optional<std::string> report = LintSource(input.text);
  if (!report) {
    result.error = file.displayName + ": the linter could not process this file";
    return result;
  }
  std::optional<std::vector<Finding>> findings = ParseFindings(*report);
  if (!findings) {
    result.error = file.displayName + ": the linter returned a report that is not an array of findings";
    return result;
  }
  result.report = std::move(*report);
  result.findings = std::move(*findings);
  return result;
}

bool CountsForExit(const Finding& finding, Severity errorOn) {
  return errorOn == Severity::kWarning || IsErrorSeverity(finding.severity);
}

}  // namespace

int RunLint(const LintOptions& options) {
  const std::vector<InputFile> files = ExpandInputs(options.input.paths, kVerilogExtensions, options.input.stdinName);
  const bool color = options.format == LintFormat::kText && UseColor(options.color, stdout);
  std::vector<LintResult> results(files.size());
  std::vector<FileFindings> sarifFiles;
  std::size_t shown = 0, total = 0;
  int exit = kExitClean;

  RunInOrder(
      files.size(), RunOptions{options.input.jobs, CanShowProgress()},
      [&](std::size_t i) { results[i] = LintOne(files[i]); },
      [&](std::size_t i) {
        LintResult result = std::move(results[i]);
        ItemOutput output;
        if (!result.error.empty()) {
          exit = WorseExit(exit, kExitError);
          output.err = ErrorLine(result.error);
          return output;
        }
        const std::vector<Finding>& findings = result.findings;
        for (const Finding& finding : findings) {
          if (CountsForExit(finding, options.errorOn)) exit = WorseExit(exit, kExitFindings);
        }
        const std::size_t room = options.maxFindings - std::min(options.maxFindings, shown);
        const std::size_t count = std::min(room, findings.size());
        total += findings.size();
        shown += count;
        switch (options.format) {
          case LintFormat::kText:
            for (std::size_t k = 0; k < count; ++k) {
              output.out += FormatTextFinding(files[i].displayName, findings[k], color);
            }
            break;
          case LintFormat::kJson:
            output.out = (count == findings.size() ? result.report : FormatJsonArray(findings, count)) + "\n";
            break;
          case LintFormat::kSarif:
            sarifFiles.push_back(FileFindings{
                files[i].displayName,
                std::vector<Finding>(findings.begin(), findings.begin() + static_cast<std::ptrdiff_t>(count))});
            break;
        }
        return output;
      });

  if (options.format == LintFormat::kSarif) WriteBytes(stdout, FormatSarif(sarifFiles, EngineVersion()));
  if (total > shown) {
    std::fflush(stdout);
    WriteBytes(stderr, "quill: " + std::to_string(total - shown) + " more finding" + (total - shown == 1 ? "" : "s") +
                           " not shown (--max-findings " + std::to_string(options.maxFindings) + ")\n");
  }
  return exit;
}

}  // namespace quill::cli
