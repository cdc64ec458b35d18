// Conditional compilation for linting: the branches of `ifdef, `ifndef,
// `elsif and `else that are not compiled are blanked, so the linter does not
// take both sides of a conditional declaration or driver for two of them.
// No macro is expanded and no `include is followed.
#ifndef QUILL_CLI_PRECISION_PREPROCESSOR_H_
#define QUILL_CLI_PRECISION_PREPROCESSOR_H_

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// The macro names defined before the file's first line (from -D and the
// configuration, less -U). Values do not matter to `ifdef.
using DefineSet = std::set<std::string, std::less<>>;

// "NAME" or "NAME=VALUE" as given to -D: the name, or nullopt when it is not
// a macro name.
std::optional<std::string> DefineName(std::string_view definition);

struct PreprocessedText {
  // The text with every byte of an inactive branch and every conditional
  // directive removed, line feeds kept: each line keeps its number.
  std::string text;
  bool changed = false;
  // Set when the directives do not nest (an `else or `endif without its
  // `ifdef, an `ifdef without `endif, a directive without its name): the
  // text is then returned unchanged and this says where and what.
  std::optional<std::uint32_t> problemLine;  // zero-based
  std::string problem;
};

// Evaluates the conditional directives of `text` outside comments and
// strings, with `define and `undef taking effect where they stand in active
// text.
PreprocessedText BlankInactiveBranches(std::string_view text, const DefineSet& defines);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_PREPROCESSOR_H_
