#ifndef QUILL_LINT_KEYWORD_SET_H_
#define QUILL_LINT_KEYWORD_SET_H_

#include "common/name_set.h"

namespace quill {

// The 162 Verilog keywords and chosen SystemVerilog ones, ignoring case.
// Built on first use under thread-safe one-time initialisation.
const NameSet& KeywordSet();

}  // namespace quill

#endif  // QUILL_LINT_KEYWORD_SET_H_
