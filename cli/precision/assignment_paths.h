// Reading the parts of a statement the lint filters need: the member and
// select path a name is used through ("sig.aw.addr", "sig[3]"), whether two
// such paths can name overlapping bits, and whether a word of a declaration
// stands in its initializer ("wire x = a & b;": a and b are read, not
// declared). Every answer leans to the side that keeps a finding.
#ifndef QUILL_CLI_PRECISION_ASSIGNMENT_PATHS_H_
#define QUILL_CLI_PRECISION_ASSIGNMENT_PATHS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "precision/verilog_tokens.h"

namespace quill::cli {

// One step of a path: ".name" or "[...]" (the select's tokens as text).
struct PathSegment {
  bool member = false;
  std::string text;
};

struct Path {
  std::vector<PathSegment> segments;
  std::size_t end = 0;  // the first token after the path
};

// The segments after the root word at `root`, up to the first token that
// continues neither a member nor a select. A select that does not close
// before `end` ends the path.
Path ReadPath(const std::vector<Token>& tokens, std::size_t root, std::size_t end);

// Whether selects of one name plus different constants ("[l]", "[l-1]")
// count as apart. In one statement they name different elements; in two
// statements of a generate loop they meet across iterations.
enum class OffsetSelects { kMayMeet, kApart };

// False only when the two paths surely name disjoint parts of one signal:
// at some step both name different members, or both select different
// plain decimal indices (or, with OffsetSelects::kApart, one name plus
// different constants), while every earlier step may be the same.
bool PathsMayOverlap(const std::vector<PathSegment>& a, const std::vector<PathSegment>& b,
                     OffsetSelects offsets = OffsetSelects::kMayMeet);

// The statement that starts at `first` runs to its ";" outside brackets:
// the index of the "=" that splits it outside brackets (not "<=", "=="), or
// nullopt when there is none before the ";" or the end.
struct StatementSplit {
  std::size_t equals = 0;
  std::size_t end = 0;  // the ";" (or the last token's index + 1)
};
std::optional<StatementSplit> SplitAssignment(const std::vector<Token>& tokens, std::size_t first);

// True when, in the declaration that starts at `first`, the token at `at`
// follows an "=" outside brackets with no "," outside brackets between them
// (so it stands in an initializer, not as a declared name).
bool IsInInitializer(const std::vector<Token>& tokens, std::size_t first, std::size_t at);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_ASSIGNMENT_PATHS_H_
