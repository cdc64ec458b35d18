// What the language server computes for a document: diagnostics from the
// linter, text edits from the formatter, semantic tokens from the
// highlighter. All of it comes through the engine's C interface.
#ifndef QUILL_CLI_LSP_FEATURES_H_
#define QUILL_CLI_LSP_FEATURES_H_

#include <filesystem>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

namespace quill::lsp {

// publishDiagnostics items for the document at `uri`: linted module by
// module and filtered by its suppression comments and the nearest
// quill.toml, as `quill lint` does. Each finding covers its whole
// (zero-based) line, with the check name as code and "quill" as source.
nlohmann::json Diagnostics(std::string_view uri, std::string_view text);

// The local path of a file:// URI (percent-decoded); empty for others.
std::filesystem::path PathOfUri(std::string_view uri);

struct LineRange {
  std::uint32_t first = 0;
  std::uint32_t last = 0;  // inclusive
};

struct FormattingResult {
  nlohmann::json edits = nlohmann::json::array();
  std::string refusal;  // set when the edits would lose text
};

// Minimal TextEdits that turn the text into its formatted form, from a line
// diff. With a range, only lines inside it change: a change that reaches
// past the range is clipped to its lines when they are replaced one for one
// and dropped otherwise; lines are inserted only between two lines of the
// range. Edits that would drop any non-blank character of the text are
// refused instead.
FormattingResult FormattingEdits(std::string_view text, std::optional<LineRange> range);

// The fixed semantic-token legend.
nlohmann::json SemanticTokensLegend();

// Semantic tokens of a constraint or Tcl text, relative-encoded; with a
// range, only the tokens on those lines.
nlohmann::json SemanticTokens(std::string_view text, std::optional<LineRange> range);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_FEATURES_H_
