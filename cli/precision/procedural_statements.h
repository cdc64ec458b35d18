// The statements of an always or initial block, read token by token: where
// one ends, whether a "(" opens a call, where a name's selects end. Shared by
// the readings of what a block assigns.
#ifndef QUILL_CLI_PRECISION_PROCEDURAL_STATEMENTS_H_
#define QUILL_CLI_PRECISION_PROCEDURAL_STATEMENTS_H_

#include <cstddef>
#include <vector>

#include "precision/generate_scopes.h"

namespace quill::cli {

inline constexpr std::size_t kNoStatementEnd = static_cast<std::size_t>(-1);
// Nesting beyond this is not followed: the reading gives up.
inline constexpr std::size_t kMaxStatementDepth = 200;

// "=", "+=", ..., "++", "--" (not "<=", which is also a comparison).
bool IsAssignmentOperator(const Token& token);
// True when the "(" at `open` opens a task, function or macro call.
bool IsCall(const std::vector<Token>& tokens, std::size_t open);
// The token after a name's selects ("[...]" and ".member"), from `k`.
std::size_t SkipSelects(const std::vector<Token>& tokens, std::size_t k, std::size_t end);
// "%=", "<<=", ">>=" and ">>>=" come out of the tokenizer in pieces.
bool IsSplitCompoundAssignment(const std::vector<Token>& tokens, std::size_t k, std::size_t end);
// The end (one past) of the statement that starts at `j`, or kNoStatementEnd
// when it cannot be read.
std::size_t StatementEnd(const std::vector<Token>& tokens, std::size_t j, std::size_t end, std::size_t depth);
// The first token of the block's statement, past its keyword and timing.
std::size_t BodyStart(const std::vector<Token>& tokens, const ProceduralBlock& block);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_PROCEDURAL_STATEMENTS_H_
