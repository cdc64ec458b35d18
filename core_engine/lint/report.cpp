#include "lint/report.h"

namespace quill {

std::string EscapeJson(std::string_view s) { return std::string(s); }

std::string RenderReport(const std::vector<Diagnostic>&) { return "[]"; }

}  // namespace quill
