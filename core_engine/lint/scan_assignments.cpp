#include "lint/always_analysis.h"

namespace quill {

void ScanAssignments(std::string_view, std::string_view, std::uint32_t, ModuleModel&, AlwaysBlock&) {}

std::string StripParenthesized(std::string_view text) { return std::string(text); }

std::string StripBracketed(std::string_view text) { return std::string(text); }

}  // namespace quill
