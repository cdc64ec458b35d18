#include "lsp/symbol_lookup.h"

#include <algorithm>

#include "structure/token_view.h"

namespace quill::lsp {
namespace {

bool Holds(const structure::Span& span, std::size_t offset) { return span.begin <= offset && offset <= span.end; }

bool IsModuleNamed(const std::vector<FilePtr>& files, std::string_view name) {
  for (const FilePtr& file : files) {
    for (const structure::Module& module : file->structure.modules) {
      if (module.name == name) return true;
    }
  }
  return false;
}

}  // namespace

Position ToProtocol(const IndexedFile& file, structure::Point point) {
  const std::string_view line = file.lines.Line(point.line);
  return {point.line, Utf16Length(line.substr(0, std::min<std::size_t>(point.column, line.size())))};
}

nlohmann::json RangeJson(const IndexedFile& file, const structure::Span& span) {
  const Position start = ToProtocol(file, span.start), end = ToProtocol(file, span.stop);
  return {{"start", {{"line", start.line}, {"character", start.character}}},
          {"end", {{"line", end.line}, {"character", end.character}}}};
}

nlohmann::json LocationJson(const IndexedFile& file, const structure::Span& span) {
  return {{"uri", file.uri}, {"range", RangeJson(file, span)}};
}

const structure::Module* ModuleAt(const IndexedFile& file, std::size_t offset) {
  for (const structure::Module& module : file.structure.modules) {
    if (Holds(module.span, offset)) return &module;
  }
  return nullptr;
}

std::optional<std::size_t> WordAt(const IndexedFile& file, Position position) {
  if (position.line >= file.lines.LineCount()) return std::nullopt;
  const std::size_t offset = file.lines.Offset(position);
  const std::vector<structure::Token>& tokens = file.tokens.tokens;
  // The last token that starts at or before the offset.
  auto after = std::upper_bound(tokens.begin(), tokens.end(), offset,
                                [](std::size_t o, const structure::Token& t) { return o < t.begin; });
  if (after == tokens.begin()) return std::nullopt;
  const auto index = static_cast<std::size_t>(after - tokens.begin()) - 1;
  const structure::Token& token = tokens[index];
  if (token.kind != structure::TokenKind::kIdentifier || offset > token.end) return std::nullopt;
  if (structure::IsReservedWord(structure::TextOf(file.text, token))) return std::nullopt;
  return index;
}

std::optional<structure::Span> LocalDeclaration(const structure::Module& module, std::string_view name) {
  for (const structure::Port& x : module.ports) {
    if (x.name == name) return x.nameSpan;
  }
  for (const structure::Signal& x : module.signals) {
    if (x.name == name) return x.nameSpan;
  }
  for (const structure::Parameter& x : module.parameters) {
    if (x.name == name) return x.nameSpan;
  }
  for (const structure::Routine& x : module.routines) {
    if (x.name == name) return x.nameSpan;
  }
  for (const structure::Instance& x : module.instances) {
    if (x.name == name) return x.nameSpan;
  }
  return std::nullopt;
}

std::optional<Target> TargetAt(const IndexedFile& file, Position position, const std::vector<FilePtr>& files) {
  const std::optional<std::size_t> index = WordAt(file, position);
  if (!index) return std::nullopt;
  const structure::Token& token = file.tokens.tokens[*index];
  const std::string name(structure::TextOf(file.text, token));
  const structure::Module* module = ModuleAt(file, token.begin);
  if (module == nullptr) {
    if (IsModuleNamed(files, name)) return Target{Target::Kind::kModule, name, nullptr};
    return std::nullopt;
  }
  if (Holds(module->nameSpan, token.begin) && module->name == name) {
    return Target{Target::Kind::kModule, name, nullptr};
  }
  for (const structure::Instance& instance : module->instances) {
    if (Holds(instance.typeSpan, token.begin)) return Target{Target::Kind::kModule, name, nullptr};
  }
  if (!LocalDeclaration(*module, name) && IsModuleNamed(files, name)) {
    return Target{Target::Kind::kModule, name, nullptr};
  }
  return Target{Target::Kind::kLocal, name, module};
}

}  // namespace quill::lsp
