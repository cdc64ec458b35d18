#ifndef QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_
#define QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_

#include <cstddef>

namespace quill {

// Writes one token class code per byte of `text` into the first `length`
// bytes of `out`.
void ClassifyConstraintText(const char* text, std::size_t length, unsigned char* out);

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_
