// Navigation over the structure of Verilog files: outline, workspace
// symbols, definition, references, highlights, hover, folding and quick
// fixes. Positions in and out are the protocol's (UTF-16 columns).
#ifndef QUILL_CLI_LSP_NAVIGATION_H_
#define QUILL_CLI_LSP_NAVIGATION_H_

#include <nlohmann/json.hpp>
#include <string_view>
#include <vector>

#include "lsp/features.h"
#include "lsp/workspace_index.h"

namespace quill::lsp {

// Hierarchical DocumentSymbols: each module with its ports, parameters,
// signals, instances, blocks and routines.
nlohmann::json DocumentSymbols(const IndexedFile& file);

// SymbolInformation of modules and instances whose name holds the query
// (ignoring case); at most `limit`.
nlohmann::json WorkspaceSymbols(const std::vector<FilePtr>& files, std::string_view query, std::size_t limit);

// Locations of the module an instance's type (or a module name) names, in
// any file, or of a local name's declaration in its module; [] when none.
nlohmann::json Definition(const IndexedFile& file, Position position, const std::vector<FilePtr>& files);

// A module's instances in every file (and its header with
// `includeDeclaration`), or a local name's whole-word uses in its module.
nlohmann::json References(const IndexedFile& file, Position position, const std::vector<FilePtr>& files,
                          bool includeDeclaration);

// The uses of the name at the position within this file (for a module: its
// header name and instance types; for a local name: its module).
nlohmann::json DocumentHighlights(const IndexedFile& file, Position position, const std::vector<FilePtr>& files);

// Markdown: a local name's declaration line, or a module's header with its
// ports; null when the position names nothing known.
nlohmann::json Hover(const IndexedFile& file, Position position, const std::vector<FilePtr>& files);

// Modules, blocks, routines, begin/end pairs and comment blocks over more
// than one line, one range per start line.
nlohmann::json FoldingRanges(const IndexedFile& file);

// Quick fixes for the linter's findings among `diagnostics` on the range's
// lines: reg-assign, wire-always and blocking-assign where the edit is
// certain, and a comment that disables the check on the line.
nlohmann::json CodeActions(const IndexedFile& file, LineRange range, const nlohmann::json& diagnostics);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_NAVIGATION_H_
