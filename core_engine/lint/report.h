#ifndef QUILL_LINT_REPORT_H_
#define QUILL_LINT_REPORT_H_

#include <string>
#include <string_view>
#include <vector>

#include "lint/diagnostic.h"

namespace quill {

// Escapes TAB, LF, CR, quotation mark and backslash for a JSON string; every
// other byte passes unchanged.
std::string EscapeJson(std::string_view s);

// Appends EscapeJson(s) to `out`.
void AppendEscapedJson(std::string_view s, std::string& out);

// The findings as one compact JSON array.
std::string RenderReport(const std::vector<Diagnostic>& diagnostics);

}  // namespace quill

#endif  // QUILL_LINT_REPORT_H_
