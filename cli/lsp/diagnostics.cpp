#include "engine.h"
#include "lsp/documents.h"
#include "lsp/features.h"

namespace quill::lsp {

nlohmann::json Diagnostics(std::string_view text) {
  nlohmann::json diagnostics = nlohmann::json::array();
  std::optional<std::string> report = cli::LintSource(text);
  if (!report) return diagnostics;
  nlohmann::json findings = nlohmann::json::parse(*report, nullptr, false);
  if (!findings.is_array()) {
    // The engine's own failure report is the one form that may not parse.
    findings = nlohmann::json::array({{{"severity", "error"}, {"line", 0}, {"check", "cpp-exception"},
                                       {"message", "the linter failed on this text"}}});
  }
  LineIndex lines(text);
  for (const nlohmann::json& finding : findings) {
    const auto line = static_cast<std::size_t>(std::max<std::int64_t>(0, finding.value("line", std::int64_t{0})));
    const std::size_t clamped = std::min(line, lines.LineCount() - 1);
    const std::uint32_t width = Utf16Length(lines.Line(clamped));
    diagnostics.push_back({
        {"range",
         {{"start", {{"line", clamped}, {"character", 0}}}, {"end", {{"line", clamped}, {"character", width}}}}},
        {"severity", finding.value("severity", "") == "error" ? 1 : 2},
        {"code", finding.value("check", "")},
        {"source", "quill"},
        {"message", finding.value("message", "")},
    });
  }
  return diagnostics;
}

}  // namespace quill::lsp
