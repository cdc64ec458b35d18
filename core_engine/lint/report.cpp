#include "lint/report.h"

namespace quill {

std::string EscapeJson(std::string_view s) {
  std::string escaped;
  escaped.reserve(s.size() + 8);
  for (char c : s) {
    switch (c) {
      case '\t':
        escaped += "\\t";
        break;
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '"':
        escaped += "\\\"";
        break;
      case '\\':
        escaped += "\\\\";
        break;
      default:
        escaped += c;
        break;
    }
  }
  return escaped;
}

std::string RenderReport(const std::vector<Diagnostic>& diagnostics) {
  // Severity and check names are plain words from the check table: only the
  // message needs escaping.
  std::string json = "[";
  for (std::size_t k = 0; k < diagnostics.size(); ++k) {
    const Diagnostic& diagnostic = diagnostics[k];
    if (k > 0) json += ',';
    json += "{\"severity\":\"";
    json += SeverityName(diagnostic.severity);
    json += "\",";
    json += "\"line\":";
    json += std::to_string(diagnostic.line);
    json += ",";
    json += "\"check\":\"";
    json += LookUpCheck(diagnostic.check).name;
    json += "\",";
    json += "\"message\":\"";
    json += EscapeJson(diagnostic.message);
    json += "\"}";
  }
  json += ']';
  return json;
}

}  // namespace quill
