#include "lint_file.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>

#include "engine.h"
#include "source_scan.h"

namespace quill::cli {
namespace {

int64_t CountNewlines(std::string_view text) {
  return static_cast<int64_t>(std::count(text.begin(), text.end(), '\n'));
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
      finding.raw = RewriteRaw(finding);
    }
    findings->push_back(std::move(finding));
  }
  return true;
}

}  // namespace

std::vector<std::size_t> ModuleStretches(const std::vector<std::size_t>& moduleStarts) {
  std::vector<std::size_t> stretches = {0};
  for (std::size_t i = 1; i < moduleStarts.size(); ++i) stretches.push_back(moduleStarts[i]);
  return stretches;
}

FileReport LintFile(std::string_view text, const std::filesystem::path& path, const Config& config,
                    const LintFileOptions& options) {
  FileReport report;
  const SourceScan scan = ScanSource(text);
  std::vector<Finding> all;
  const std::vector<std::size_t> stretches =
      options.wholeFile ? std::vector<std::size_t>{0} : ModuleStretches(scan.moduleStarts);
  int64_t line = 0;
  for (std::size_t i = 0; i < stretches.size(); ++i) {
    const std::size_t begin = stretches[i];
    const std::size_t end = i + 1 < stretches.size() ? stretches[i + 1] : text.size();
    if (i > 0) line += CountNewlines(text.substr(stretches[i - 1], begin - stretches[i - 1]));
    if (!LintStretch(text.substr(begin, end - begin), line, &all, &report.error)) return report;
  }

  Suppressions suppressions(text, scan.comments);
  for (Finding& finding : all) {
    if (!path.empty() && !IsCheckEnabled(config, path, finding.check)) continue;
    if (path.empty() && !IsCheckEnabled(config, config.folder, finding.check)) continue;
    if (suppressions.Covers(finding.line, finding.check)) continue;
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

}  // namespace quill::cli
