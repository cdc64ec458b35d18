#include <cstdint>
#include <limits>
#include <optional>

#include "common/text_utils.h"
#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

using WidthTable = NameViewMap<std::int32_t>;

constexpr std::int32_t kUnknownWidth = -1;
constexpr std::int64_t kMaxInt32 = std::numeric_limits<std::int32_t>::max();

// Reads a run of decimal digits at `pos`, moving `pos` past it. Empty runs
// and values beyond a signed 32-bit integer give nothing.
std::optional<std::int64_t> ReadDecimal(std::string_view text, std::size_t& pos) {
  std::size_t start = pos;
  std::int64_t value = 0;
  bool overflow = false;
  while (pos < text.size() && IsDigitByte(text[pos])) {
    value = value * 10 + (text[pos] - '0');
    if (value > kMaxInt32) {
      overflow = true;
      value = kMaxInt32;
    }
    ++pos;
  }
  if (pos == start || overflow) return std::nullopt;
  return value;
}

void SkipBlanks(std::string_view text, std::size_t& pos) {
  while (pos < text.size() && IsBlankByte(text[pos])) ++pos;
}

// The width of a "[msb:lsb]" range of two decimal numbers; 1 for an empty
// range and for any other form.
std::int32_t DeclaredWidth(std::string_view range) {
  if (range.empty()) return 1;
  std::size_t pos = 0;
  if (range[pos++] != '[') return 1;
  SkipBlanks(range, pos);
  std::optional<std::int64_t> msb = ReadDecimal(range, pos);
  if (!msb) return 1;
  SkipBlanks(range, pos);
  if (pos >= range.size() || range[pos++] != ':') return 1;
  SkipBlanks(range, pos);
  std::optional<std::int64_t> lsb = ReadDecimal(range, pos);
  if (!lsb) return 1;
  SkipBlanks(range, pos);
  if (pos >= range.size() || range[pos++] != ']' || pos != range.size()) return 1;
  std::int64_t width = (*msb > *lsb ? *msb - *lsb : *lsb - *msb) + 1;
  return width > kMaxInt32 ? 1 : static_cast<std::int32_t>(width);
}

// The width of a right-hand side that is a sized literal ("8'hFF") or a
// single declared name; kUnknownWidth for anything else.
std::int32_t ExpressionWidth(std::string_view rhs, const WidthTable& widths) {
  const std::string text = Trim(rhs);
  std::size_t pos = 0;
  std::size_t digitsEnd = 0;
  while (digitsEnd < text.size() && IsDigitByte(text[digitsEnd])) ++digitsEnd;
  if (digitsEnd > 0) {
    pos = digitsEnd;
    while (pos < text.size() && IsSpaceByte(text[pos])) ++pos;
    if (pos < text.size() && text[pos] == '\'') {
      ++pos;
      while (pos < text.size() && IsSpaceByte(text[pos])) ++pos;
      char base = pos < text.size() ? FoldAscii(text[pos]) : '\0';
      if (base == 'b' || base == 'h' || base == 'd' || base == 'o') {
        std::size_t digits = 0;
        std::optional<std::int64_t> size = ReadDecimal(text, digits);
        return size ? static_cast<std::int32_t>(*size) : kUnknownWidth;
      }
    }
    if (digitsEnd == text.size()) return kUnknownWidth;
  }
  if (text.empty()) return kUnknownWidth;
  for (char c : text) {
    if (!IsWordByte(c)) return kUnknownWidth;
  }
  auto found = widths.find(text);
  return found == widths.end() ? kUnknownWidth : found->second;
}

}  // namespace

std::vector<Diagnostic> CheckWidthMismatch(const ModuleModel& model) {
  WidthTable widths;
  for (const SignalDecl& signal : model.signals) {
    if (widths.find(signal.name) == widths.end()) widths.emplace(signal.name, DeclaredWidth(signal.range));
  }
  std::vector<Diagnostic> findings;
  for (const ContAssign& assign : model.assigns) {
    if (assign.lhs.find_first_of("[{") != std::string::npos) continue;
    auto target = widths.find(assign.target);
    if (target == widths.end() || target->second < 1) continue;
    const std::int32_t lhsWidth = target->second;
    const std::int32_t rhsWidth = ExpressionWidth(assign.rhs, widths);
    if (rhsWidth < 1 || rhsWidth == lhsWidth) continue;
    findings.push_back(MakeDiagnostic(CheckId::kWidthMismatch, assign.line,
                                      "assign '" + assign.target + "' LHS=" + std::to_string(lhsWidth) +
                                          "bit RHS=" + std::to_string(rhsWidth) + "bit"));
  }
  return findings;
}

}  // namespace quill
