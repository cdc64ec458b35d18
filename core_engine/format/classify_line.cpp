#include "format/classify_line.h"

#include <array>

#include "common/pattern.h"
#include "common/text_utils.h"

namespace quill {
namespace {

struct LabelRule {
  Pattern pattern;
  std::string_view label;
};

struct ClassifierPatterns {
  // Lines that have no kind although a later rule would give them one.
  Pattern moduleWord{R"(^(module|endmodule)\b)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern blockWord{R"(^(begin\b|end\b|endcase\b|endgenerate\b|endif\b|else\b))", CaseMode::kSensitive,
                    LimitPolicy::kNoMatch};
  Pattern controlWord{R"(^(if\b|case[zx]?\b|for\b|forever\b|while\b|repeat\b))", CaseMode::kSensitive,
                      LimitPolicy::kNoMatch};

  // Declaration and block words, tried in this order.
  std::array<LabelRule, 9> keywordRules{{
      {Pattern(R"(^(input|output|inout)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "PORT"},
      {Pattern(R"(^(wire|reg|logic)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "SIGNAL"},
      {Pattern(R"(^(parameter|localparam)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "PARAM"},
      {Pattern(R"(^(integer|genvar)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "INTEGER"},
      {Pattern(R"(^assign\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "ASSIGN"},
      {Pattern(R"(^(always|always_ff|always_comb|always_latch)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch),
       "ALWAYS"},
      {Pattern(R"(^initial\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "INITIAL"},
      {Pattern(R"(^generate\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "GENERATE"},
      {Pattern(R"(^(function|task)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch), "FUNCTION"},
  }};

  // A module instance, with or without a parameter list.
  Pattern instance{R"(^\w+\s+\w+\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern paramInstance{R"(^\w+\s+#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
};

const ClassifierPatterns& Classifier() {
  static const ClassifierPatterns patterns;
  return patterns;
}

bool StartsWith(std::string_view s, std::string_view prefix) {
  return s.substr(0, prefix.size()) == prefix;
}

}  // namespace

std::string ClassifyLine(std::string_view line) {
  const std::string t = TrimLeft(line);
  if (t.empty() || StartsWith(t, "//") || StartsWith(t, "/*")) return "";
  const ClassifierPatterns& p = Classifier();
  if (p.moduleWord.Search(t) || p.blockWord.Search(t) || p.controlWord.Search(t)) return "";
  if (t == ");" || t.front() == '.') return "";
  for (const LabelRule& rule : p.keywordRules) {
    if (rule.pattern.Search(t)) return std::string(rule.label);
  }
  if (p.instance.Search(t) || p.paramInstance.Search(t)) return "INST";
  return "";
}

}  // namespace quill
