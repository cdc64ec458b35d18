#include "lint_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "engine.h"
#include "precision/generate_scopes.h"
#include "precision/preprocessor.h"
#include "source_scan.h"

namespace quill::cli {
namespace {

int64_t CountNewlines(std::string_view text) {
  return static_cast<int64_t>(std::count(text.begin(), text.end(), '\n'));
}

// Adds `shift` to the one-based line numbers the messages quote: the lists
// "(lines: 12, 40)" and "at line 12".
std::string ShiftQuotedLines(const std::string& message, int64_t shift) {
  std::string out;
  std::size_t i = 0;
  auto shiftNumber = [&]() {
    const std::size_t start = i;
    int64_t value = 0;
    while (i < message.size() && message[i] >= '0' && message[i] <= '9' && i - start < 15) {
      value = value * 10 + (message[i] - '0');
      ++i;
    }
    if (i == start) return false;
    out += std::to_string(value + shift);
    return true;
  };
  while (i < message.size()) {
    if (message.compare(i, 8, "(lines: ") == 0) {
      out += "(lines: ";
      i += 8;
      while (shiftNumber() && message.compare(i, 2, ", ") == 0) {
        out += ", ";
        i += 2;
      }
    } else if (message.compare(i, 8, "at line ") == 0) {
      out += "at line ";
      i += 8;
      shiftNumber();
    } else {
      out.push_back(message[i++]);
    }
  }
  return out;
}

// The finding's object as the engine would write it with these values.
std::string RewriteRaw(const Finding& finding) {
  const nlohmann::ordered_json object = {
      {"severity", finding.severity}, {"line", finding.line}, {"check", finding.check}, {"message", finding.message}};
  return object.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

// Lints one stretch and appends its findings with lines moved by `lineShift`.
bool LintStretch(std::string_view text, int64_t lineShift, std::vector<Finding>* findings, std::string* error) {
  std::optional<std::string> report = LintSource(text);
  if (!report) {
    *error = "the linter could not process this file";
    return false;
  }
  std::optional<std::vector<Finding>> parsed = ParseFindings(*report);
  if (!parsed) {
    *error = "the linter returned a report that is not an array of findings";
    return false;
  }
  for (Finding& finding : *parsed) {
    if (lineShift != 0 && finding.line >= 0) {
      finding.line += lineShift;
      finding.message = ShiftQuotedLines(finding.message, lineShift);
      finding.raw = RewriteRaw(finding);
    }
    findings->push_back(std::move(finding));
  }
  return true;
}

}  // namespace

std::vector<std::size_t> UnitStretches(const std::vector<std::size_t>& unitStarts) {
  std::vector<std::size_t> stretches = {0};
  for (std::size_t i = 1; i < unitStarts.size(); ++i) stretches.push_back(unitStarts[i]);
  return stretches;
}

namespace {

// -D and [lint] defines, less -U.
DefineSet ActiveDefines(const Config& config, const LintFileOptions& options) {
  DefineSet defines;
  for (const std::vector<std::string>* list : {&config.lint.defines, &options.defines}) {
    for (const std::string& definition : *list) {
      if (std::optional<std::string> name = DefineName(definition)) defines.insert(std::move(*name));
    }
  }
  for (const std::string& name : options.undefines) defines.erase(name);
  return defines;
}

LintFilterSet EnabledFilters(const Config& config, const LintFileOptions& options) {
  LintFilterSet filters;
  for (const std::string& name : config.lint.filters) {
    if (name == "all") {
      filters = LintFilterSet::All();
    } else if (std::optional<LintFilter> filter = FindLintFilter(name)) {
      filters.Enable(*filter);
    }
  }
  for (const std::string& name : options.disabledFilters) {
    if (std::optional<LintFilter> filter = FindLintFilter(name)) filters.Disable(*filter);
  }
  return filters;
}

}  // namespace

FileReport LintFile(std::string_view text, const std::filesystem::path& path, const Config& config,
                    const LintFileOptions& options) {
  FileReport report;
  if (options.exact) {
    LintStretch(text, 0, &report.findings, &report.error);
    return report;
  }
  // The linter sees only the compiled branches of `ifdef; suppression
  // comments are read from the text as written.
  const PreprocessedText preprocessed = BlankInactiveBranches(text, ActiveDefines(config, options));
  report.preprocessorProblemLine = preprocessed.problemLine;
  report.preprocessorProblem = preprocessed.problem;
  const std::string_view linted = preprocessed.text;

  // The units are those of the linted text; the comments those of the text
  // as written, needed only when it holds a suppression marker at all.
  const SourceScan lintedScan = ScanSource(linted);
  const bool readsOwnComments = preprocessed.changed && text.find(kSuppressionMarker) != std::string_view::npos;
  const SourceScan writtenScan = readsOwnComments ? ScanSource(text) : SourceScan();
  const SourceScan& scan = preprocessed.changed ? writtenScan : lintedScan;
  const std::vector<std::size_t>& unitStarts = lintedScan.unitStarts;
  std::vector<Finding> all;
  const std::vector<std::size_t> stretches =
      options.wholeFile ? std::vector<std::size_t>{0} : UnitStretches(unitStarts);
  int64_t line = 0;
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    const std::size_t begin = stretches[i];
    const std::size_t end = i + 1 < stretches.size() ? stretches[i + 1] : linted.size();
    if (i > 0) line += CountNewlines(linted.substr(stretches[i - 1], begin - stretches[i - 1]));
    if (!LintStretch(linted.substr(begin, end - begin), line, &all, &report.error)) return report;
  }

  const LintFilterSet filters = EnabledFilters(config, options);
  std::optional<GenerateScopes> scopes;
  Suppressions suppressions(text, scan.comments);
  for (Finding& finding : all) {
    if (!path.empty() && !IsCheckEnabled(config, path, finding.check)) continue;
    if (path.empty() && !IsCheckEnabled(config, config.folder, finding.check)) continue;
    if (suppressions.Covers(finding.line, finding.check)) continue;
    if (!filters.Empty() && finding.line >= 0) {
      if (!scopes) scopes.emplace(linted);
      const FindingToFilter candidate{static_cast<std::uint32_t>(finding.line), finding.check, finding.message};
      if (const std::optional<LintFilter> filter = FilterThatDrops(*scopes, candidate, filters)) {
        report.dropped.push_back(DroppedFinding{*filter, finding.check});
        continue;
      }
    }
    if (const std::optional<quill::Severity> severity = SeverityOverride(config, finding.check)) {
      const std::string name(SeverityName(*severity));
      if (name != finding.severity) {
        finding.severity = name;
        finding.raw = RewriteRaw(finding);
      }
    }
    report.findings.push_back(std::move(finding));
  }
  report.problems = suppressions.Problems();
  for (const Suppression& entry : suppressions.Entries()) {
    if (!entry.used) report.unusedSuppressions.push_back(entry);
  }
  return report;
}

DocumentReport LintDocument(const std::filesystem::path& path, std::string_view text, ConfigFinder& configs,
                            const LintFileOptions& options) {
  DocumentReport report;
  ConfigResult config = path.empty() ? ConfigResult{} : configs.ForPath(path, false);
  if (!config.config) {
    report.configError = config.error;
    config.config = std::make_shared<Config>(DefaultConfig(path.empty() ? std::filesystem::path("/") : path.parent_path()));
  }
  report.file = LintFile(text, path, *config.config, options);
  return report;
}

}  // namespace quill::cli
