#include "highlight/classify_constraint_text.h"

#include <cstring>

namespace quill {

void ClassifyConstraintText(const char*, std::size_t length, unsigned char* out) { std::memset(out, 0, length); }

}  // namespace quill
