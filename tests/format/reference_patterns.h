// Patterns the formatter's hand-written scanners stand for. The engine no
// longer compiles them; the tests keep them as the plain statement of the
// rules the scanners must agree with.
#ifndef QUILL_TESTS_FORMAT_REFERENCE_PATTERNS_H_
#define QUILL_TESTS_FORMAT_REFERENCE_PATTERNS_H_

#include "common/pattern.h"

namespace quill {

struct ReferencePatternTable {
  Pattern kEndPattern{R"(\bend\b)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kCasePattern{R"(\bcase[zx]?\b)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kEndcasePattern{R"(\bendcase\b)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kPortDeclPattern{
      R"(^\s*(input|output|inout)\s*(wire|reg|logic)?\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*(,?)\s*(//.*)?$)",
      CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kModuleHeaderPattern{R"(^\s*module\s+(.+?)\s*(?=[#(\n\r]|$))", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kNetDeclPattern{
      R"(^\s*(wire|reg|logic)\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*;\s*(//.*)?$)",
      CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kParamDeclPattern{R"(^\s*(parameter|localparam)?\s*(\[[^\]]*\])?\s*(\w+)\s*(=\s*.+?)\s*([,;])?\s*(//.*)?$)",
                            CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kIfHeaderPattern{R"(\bif\b\s*\(.+?\)\s*$)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kBlockCommentPattern{R"(/\*[\s\S]*?\*/)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kLineCommentPattern{R"(//[^\n]*)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // The instance head shapes (format/scan/instance_heads.h).
  Pattern kInstanceHeadPattern{R"(^(\w+)\s+(\w+)\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kParamInstanceHeadPattern{R"(^(\w+)\s+#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kTypeAndNamePattern{R"(^(\w+)\s+(\w+)$)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kSingleWordPattern{R"(^(\w+)$)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kCallHeadPattern{R"(^(\w+)\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // The "#(" list openers (format/scan/param_list_open.h).
  Pattern kParamListOpenPattern{R"(^\s*#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kNamedParamListOpenPattern{R"(\w+\s+#\s*\()", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // Blank runs collapsed in an instance header (format/scan/find_instance.h).
  Pattern kBlankRunPattern{R"(\s+)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  // Leading-word tests the formatter reads off the line's leading word.
  Pattern kModulePattern{R"(^\s*module\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kEndmodulePattern{R"(^\s*endmodule\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kLineCommentStartPattern{R"(^\s*//)", CaseMode::kSensitive, LimitPolicy::kNoMatch};
  Pattern kAlwaysPattern{R"(^\s*(always_ff|always_comb|always)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kGeneratePattern{R"(^\s*generate\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kEndgeneratePattern{R"(^\s*endgenerate\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kAssignPattern{R"(^\s*assign\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kStatementStartPattern{R"(^\s*(always|initial|module|endmodule|assign|wire|reg|logic)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kBlockKeywordPattern{R"(^\s*(module|function|task|if|else|case|casex|casez|for|while|forever|assign|always|always_ff|always_comb|initial|generate|endgenerate|specify|endspecify)\b)", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
  Pattern kBodyItemPattern{R"(^\s*(module\b|endmodule\b|always\b|always_ff\b|always_comb\b|initial\b|assign\b))",
                           CaseMode::kIgnoreCase, LimitPolicy::kNoMatch};
};

inline const ReferencePatternTable& ReferencePatterns() {
  static const ReferencePatternTable kTable;
  return kTable;
}

}  // namespace quill

#endif  // QUILL_TESTS_FORMAT_REFERENCE_PATTERNS_H_
