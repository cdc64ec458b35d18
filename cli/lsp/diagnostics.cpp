// Diagnostics of a Verilog document: the tool's own lint report (module by
// module, suppression comments, the nearest quill.toml) as LSP items.
#include <mutex>

#include "engine.h"
#include "lint_file.h"
#include "lsp/documents.h"
#include "lsp/features.h"

namespace quill::lsp {
namespace {

int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

nlohmann::json LineDiagnostic(const LineIndex& lines, int64_t line, int severity, const std::string& code,
                              const std::string& message) {
  const auto index = static_cast<std::size_t>(std::max<std::int64_t>(0, line));
  const std::size_t clamped = std::min(index, lines.LineCount() - 1);
  const std::uint32_t width = Utf16Length(lines.Line(clamped));
  return {
      {"range", {{"start", {{"line", clamped}, {"character", 0}}}, {"end", {{"line", clamped}, {"character", width}}}}},
      {"severity", severity},
      {"code", code},
      {"source", "quill"},
      {"message", message},
  };
}

}  // namespace

std::filesystem::path PathOfUri(std::string_view uri) {
  constexpr std::string_view kScheme = "file://";
  if (!uri.starts_with(kScheme)) return {};
  uri.remove_prefix(kScheme.size());
  // "file://host/path": only the local host is a path here.
  if (!uri.starts_with("/")) {
    if (!uri.starts_with("localhost/")) return {};
    uri.remove_prefix(std::string_view("localhost").size());
  }
  std::string path;
  for (std::size_t i = 0; i < uri.size(); ++i) {
    if (uri[i] == '%' && i + 2 < uri.size() && HexValue(uri[i + 1]) >= 0 && HexValue(uri[i + 2]) >= 0) {
      path.push_back(static_cast<char>(HexValue(uri[i + 1]) * 16 + HexValue(uri[i + 2])));
      i += 2;
    } else if (uri[i] == '?' || uri[i] == '#') {
      break;
    } else {
      path.push_back(uri[i]);
    }
  }
  return path;
}

nlohmann::json Diagnostics(std::string_view uri, std::string_view text) {
  // Settings are cached across documents; a changed quill.toml is re-read.
  static std::mutex mutex;
  static cli::ConfigFinder configs;
  cli::DocumentReport report;
  {
    std::lock_guard<std::mutex> lock(mutex);
    report = cli::LintDocument(PathOfUri(uri), text, configs, cli::LintFileOptions{});
  }
  nlohmann::json diagnostics = nlohmann::json::array();
  const LineIndex lines(text);
  if (!report.configError.empty()) diagnostics.push_back(LineDiagnostic(lines, 0, 1, "config", report.configError));
  if (!report.file.error.empty()) {
    diagnostics.push_back(LineDiagnostic(lines, 0, 1, "cpp-exception", "the linter failed on this text"));
    return diagnostics;
  }
  for (const cli::SuppressionProblem& problem : report.file.problems) {
    diagnostics.push_back(LineDiagnostic(lines, problem.line, 2, "suppression", problem.message));
  }
  for (const cli::Finding& finding : report.file.findings) {
    diagnostics.push_back(
        LineDiagnostic(lines, finding.line, cli::IsErrorSeverity(finding.severity) ? 1 : 2, finding.check,
                       finding.message));
  }
  return diagnostics;
}

}  // namespace quill::lsp
