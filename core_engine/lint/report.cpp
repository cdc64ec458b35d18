#include "lint/report.h"

namespace quill {

void AppendEscapedJson(std::string_view s, std::string& out) {
  for (char c : s) {
    switch (c) {
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        out += c;
        break;
    }
  }
}

std::string EscapeJson(std::string_view s) {
  std::string escaped;
  escaped.reserve(s.size() + 8);
  AppendEscapedJson(s, escaped);
  return escaped;
}

std::string RenderReport(const std::vector<Diagnostic>& diagnostics) {
  // Severity and check names are plain words from the check table: only the
  // message needs escaping.
  // Each finding's fixed text, line number and check name fit in this.
  constexpr std::size_t kFixedBytes = 96;
  std::size_t expected = 2;
  for (const Diagnostic& diagnostic : diagnostics) expected += diagnostic.message.size() + kFixedBytes;
  std::string json;
  json.reserve(expected);
  json += '[';
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
    AppendEscapedJson(diagnostic.message, json);
    json += "\"}";
  }
  json += ']';
  return json;
}

}  // namespace quill
