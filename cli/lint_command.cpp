// quill lint: run the linter over Verilog files, module by module, filter
// the findings by suppression comments and quill.toml, and report them as
// text, GitHub annotations, JSON, the engine's raw arrays or SARIF.
#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <system_error>

#include "commands.h"
#include "config.h"
#include "engine.h"
#include "exit_codes.h"
#include "files.h"
#include "lint_file.h"
#include "lint_output.h"
#include "parallel.h"
#include "precision/finding_filters.h"

namespace quill::cli {
namespace {

namespace fs = std::filesystem;

struct LintResult {
  FileReport report;
  std::string error;
};

// The path whose settings apply: the file's own, or for standard input the
// name given with --stdin-name, else the working folder.
fs::path SettingsPath(const InputFile& file, const InputOptions& input) {
  if (!file.isStdin) return file.path;
  return input.stdinName == "<stdin>" ? fs::path() : fs::path(input.stdinName);
}

LintResult LintOne(const InputFile& file, const ConfigResult& config, const LintOptions& options) {
  LintResult result;
  if (!config.config) {
    result.error = config.error;
    return result;
  }
  ReadResult input = ReadInput(file);
  if (!input.error.empty()) {
    result.error = input.error;
    return result;
  }
  result.report = LintFile(input.text, SettingsPath(file, options.input), *config.config,
                           LintFileOptions{options.wholeFile, options.exact, options.defines, options.undefines,
                                           options.disabledFilters});
  if (!result.report.error.empty()) result.error = file.displayName + ": " + result.report.error;
  return result;
}

bool CountsForExit(const Finding& finding, Severity errorOn) {
  return errorOn == Severity::kWarning || IsErrorSeverity(finding.severity);
}

// "dropped by filters:" and one line per filter and check, in the filters'
// order, then the total.
std::string FormatFilterStatistics(const std::map<std::pair<LintFilter, std::string>, std::size_t>& counts) {
  std::string text = "findings dropped by filters:\n";
  std::size_t total = 0;
  for (const LintFilterInfo& filter : kLintFilters) {
    for (const auto& [key, count] : counts) {
      if (key.first != filter.id) continue;
      std::string row = "  " + std::string(filter.name);
      row.resize(std::max<std::size_t>(row.size() + 1, 26), ' ');
      row += key.second;
      row.resize(std::max<std::size_t>(row.size() + 1, 46), ' ');
      text += row + std::to_string(count) + "\n";
      total += count;
    }
  }
  return text + "  total " + std::to_string(total) + "\n";
}

std::string LocatedWarning(const std::string& name, int64_t line, const std::string& message) {
  return WarningLine(name + ":" + std::to_string(line + 1) + ": " + message);
}

}  // namespace

int RunLint(const LintOptions& options) {
  ConfigFinder configs = MakeConfigFinder(options.input.configFile, options.input.isolated);
  const std::vector<InputFile> files =
      ExpandInputs(options.input.paths, kVerilogExtensions, options.input.stdinName,
                   WalkOptions{CommandKind::kLint, &configs, !options.input.noIgnore});
  // Settings are looked up here, before the workers start, so that each
  // config file is read once.
  std::vector<ConfigResult> fileConfigs(files.size());
  for (std::size_t i = 0; i < files.size(); ++i) {
    const fs::path path = SettingsPath(files[i], options.input);
    fileConfigs[i] = path.empty() ? configs.ForPath(fs::current_path(), true) : configs.ForPath(path, false);
  }

  const bool color = options.format == LintFormat::kText && UseColor(options.color, stdout);
  std::vector<LintResult> results(files.size());
  std::vector<FileFindings> collected;
  std::set<std::string> reportedErrors;
  std::map<std::pair<LintFilter, std::string>, std::size_t> droppedCounts;
  std::size_t shown = 0, total = 0, warnings = 0, errors = 0, filesWithFindings = 0, linted = 0;
  int exit = kExitClean;

  RunInOrder(
      files.size(), RunOptions{options.input.jobs, CanShowProgress()},
      [&](std::size_t i) { results[i] = LintOne(files[i], fileConfigs[i], options); },
      [&](std::size_t i) {
        LintResult result = std::move(results[i]);
        ItemOutput output;
        if (!result.error.empty()) {
          exit = WorseExit(exit, kExitError);
          // A bad config governs many files: it is reported once.
          if (reportedErrors.insert(result.error).second) output.err = ErrorLine(result.error);
          return output;
        }
        ++linted;
        const std::string& name = files[i].displayName;
        if (result.report.preprocessorProblemLine) {
          output.err += LocatedWarning(name, *result.report.preprocessorProblemLine,
                                       result.report.preprocessorProblem + "; `ifdef branches not evaluated");
        }
        for (const DroppedFinding& dropped : result.report.dropped) ++droppedCounts[{dropped.filter, dropped.check}];
        for (const SuppressionProblem& problem : result.report.problems) {
          output.err += LocatedWarning(name, problem.line, problem.message);
        }
        if (options.reportUnusedSuppressions) {
          for (const Suppression& unused : result.report.unusedSuppressions) {
            output.err += LocatedWarning(name, unused.commentLine,
                                         "suppression '" + std::string(SuppressionKindName(unused.kind)) + " " +
                                             unused.check + "' quieted nothing");
          }
        }
        const std::vector<Finding>& findings = result.report.findings;
        for (const Finding& finding : findings) {
          if (CountsForExit(finding, options.errorOn)) exit = WorseExit(exit, kExitFindings);
          ++(IsErrorSeverity(finding.severity) ? errors : warnings);
        }
        if (!findings.empty()) ++filesWithFindings;
        const std::size_t room = options.maxFindings - std::min(options.maxFindings, shown);
        const std::size_t count = std::min(room, findings.size());
        total += findings.size();
        shown += count;
        switch (options.format) {
          case LintFormat::kText:
            for (std::size_t k = 0; k < count; ++k) output.out += FormatTextFinding(name, findings[k], color);
            break;
          case LintFormat::kGithub:
            for (std::size_t k = 0; k < count; ++k) output.out += FormatGithubFinding(name, findings[k]);
            break;
          case LintFormat::kRaw:
            output.out = FormatJsonArray(findings, count) + "\n";
            break;
          case LintFormat::kJson:
          case LintFormat::kSarif:
            collected.push_back(FileFindings{
                name, std::vector<Finding>(findings.begin(), findings.begin() + static_cast<std::ptrdiff_t>(count))});
            break;
        }
        return output;
      });

  if (options.format == LintFormat::kJson) WriteBytes(stdout, FormatJsonDocument(collected));
  if (options.format == LintFormat::kSarif) WriteBytes(stdout, FormatSarif(collected, EngineVersion()));
  std::fflush(stdout);
  if (total > shown) {
    WriteBytes(stderr, "quill: " + std::to_string(total - shown) + " more finding" + (total - shown == 1 ? "" : "s") +
                           " not shown (--max-findings " + std::to_string(options.maxFindings) + ")\n");
  }
  // The summary speaks of the files that were linted; a run that linted
  // none has only its error lines.
  if (options.format == LintFormat::kText && linted > 0) {
    WriteBytes(stderr, FormatSummary(warnings, errors, filesWithFindings));
  }
  if (options.statistics) WriteBytes(stderr, FormatFilterStatistics(droppedCounts));
  return exit;
}

}  // namespace quill::cli
