#ifndef QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_
#define QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_

#include <cstddef>

namespace quill {

// Writes one TokenClass code per byte of `text` into the first `length` bytes
// of `out`, in one left-to-right pass: comments, strings, braces, constraint
// and Tcl keywords, tool and flow commands, pin properties, I/O standards,
// package pins and the port objects of "get_ports". Any byte sequence is
// accepted; `out` must hold `length` bytes and may be null only when `length`
// is 0.
void ClassifyConstraintText(const char* text, std::size_t length, unsigned char* out);

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_CLASSIFY_CONSTRAINT_TEXT_H_
