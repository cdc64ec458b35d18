// One finding of a check. Its name and the words of the report come from the
// check table; a finding carries only the check, its severity, line and text.
#ifndef QUILL_LINT_DIAGNOSTIC_H_
#define QUILL_LINT_DIAGNOSTIC_H_

#include <cstdint>
#include <string>

#include "lint/check_table.h"

namespace quill {

struct Diagnostic {
  Severity severity = Severity::kWarning;
  std::int32_t line = 0;
  CheckId check = CheckId::kLatch;
  std::string message;
};

}  // namespace quill

#endif  // QUILL_LINT_DIAGNOSTIC_H_
