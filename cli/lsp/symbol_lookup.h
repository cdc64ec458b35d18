// What a position in a Verilog file names, and the conversions from the
// structure's positions (UTF-8 byte columns) to the protocol's (UTF-16).
#ifndef QUILL_CLI_LSP_SYMBOL_LOOKUP_H_
#define QUILL_CLI_LSP_SYMBOL_LOOKUP_H_

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "lsp/workspace_index.h"

namespace quill::lsp {

Position ToProtocol(const IndexedFile& file, structure::Point point);
nlohmann::json RangeJson(const IndexedFile& file, const structure::Span& span);
nlohmann::json LocationJson(const IndexedFile& file, const structure::Span& span);

// The module whose span holds the byte offset, if any.
const structure::Module* ModuleAt(const IndexedFile& file, std::size_t offset);

// The index of the identifier token at a position (a position just after a
// word counts as on it), or nullopt.
std::optional<std::size_t> WordAt(const IndexedFile& file, Position position);

struct Target {
  enum class Kind { kModule, kLocal } kind = Kind::kLocal;
  std::string name;
  const structure::Module* scope = nullptr;  // the module for a local name
};

// A module name (its header or an instance's type, or any name that only a
// module of the files declares), or a name local to the enclosing module.
std::optional<Target> TargetAt(const IndexedFile& file, Position position, const std::vector<FilePtr>& files);

// Where a local name is declared in its module: port, signal, parameter,
// routine or instance name.
std::optional<structure::Span> LocalDeclaration(const structure::Module& module, std::string_view name);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_SYMBOL_LOOKUP_H_
