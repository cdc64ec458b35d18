// Comma-separated lists inside a module: the header's port and parameter
// lists and the body's port, parameter and signal declarations.
#ifndef QUILL_STRUCTURE_ITEM_LISTS_H_
#define QUILL_STRUCTURE_ITEM_LISTS_H_

#include <cstddef>

#include "structure/structure.h"
#include "structure/token_view.h"

namespace quill::structure {

// The header's port list, tokens [first, last) inside its parentheses: ANSI
// entries with directions and types, or bare names declared in the body.
void ReadPortList(const TokenView& view, std::size_t first, std::size_t last, Module& module);

// A body statement `input [3:0] a, b;` from its direction word to `end` (its
// ';'): completes the ports the header named, or adds them.
void ReadPortDeclaration(const TokenView& view, std::size_t first, std::size_t end, Module& module);

// Parameters of `#( ... )` or of a parameter/localparam statement, tokens
// [first, last); `local` until a list names parameter or localparam itself.
void ReadParameters(const TokenView& view, std::size_t first, std::size_t last, bool local, Module& module);

// A net or variable declaration from its first type word to `end` (its ';').
void ReadSignals(const TokenView& view, std::size_t first, std::size_t end, Module& module);

}  // namespace quill::structure

#endif  // QUILL_STRUCTURE_ITEM_LISTS_H_
