#include <algorithm>
#include <cctype>

#include "lsp/navigation.h"
#include "lsp/symbol_lookup.h"

namespace quill::lsp {
namespace {

using Json = nlohmann::json;

// LSP SymbolKind values.
namespace kind {
constexpr int kModule = 2, kNamespace = 3, kPackage = 4, kMethod = 6, kProperty = 7,
              kInterface = 11, kFunction = 12, kVariable = 13, kConstant = 14, kObject = 19;
}  // namespace kind

int ContainerKind(const std::string& k) {
  if (k == "interface") return kind::kInterface;
  if (k == "package") return kind::kPackage;
  return kind::kModule;
}

std::string Joined(std::initializer_list<std::string_view> parts) {
  std::string out;
  for (std::string_view part : parts) {
    if (part.empty()) continue;
    if (!out.empty()) out += ' ';
    out += part;
  }
  return out;
}

Json Symbol(const IndexedFile& file, std::string_view name, std::string_view detail, int symbolKind,
            const structure::Span& range, const structure::Span& selection) {
  // The selection must lie inside the range.
  structure::Span outer = range;
  if (selection.begin < outer.begin || selection.end > outer.end) outer = selection;
  return {{"name", name.empty() ? std::string_view("(unnamed)") : name},
          {"detail", detail},
          {"kind", symbolKind},
          {"range", RangeJson(file, outer)},
          {"selectionRange", RangeJson(file, selection)}};
}

}  // namespace

Json DocumentSymbols(const IndexedFile& file) {
  Json symbols = Json::array();
  for (const structure::Module& m : file.structure.modules) {
    Json children = Json::array();
    for (const auto& p : m.ports) {
      children.push_back(Symbol(file, p.name, Joined({p.direction, p.type, p.range}), kind::kProperty,
                                p.declaration, p.nameSpan));
    }
    for (const auto& p : m.parameters) {
      children.push_back(Symbol(file, p.name, Joined({p.local ? "localparam" : "parameter", p.value}),
                                kind::kConstant, p.declaration, p.nameSpan));
    }
    for (const auto& s : m.signals) {
      children.push_back(Symbol(file, s.name, Joined({s.type, s.range}), kind::kVariable, s.declaration, s.nameSpan));
    }
    for (const auto& i : m.instances) {
      children.push_back(Symbol(file, i.name, i.moduleType, kind::kObject, i.span, i.nameSpan));
    }
    for (const auto& b : m.blocks) {
      const structure::Span head{b.span.begin, b.span.begin, b.span.start, b.span.start};
      children.push_back(Symbol(file, b.label.empty() ? b.kind : b.label, b.kind, kind::kNamespace, b.span, head));
    }
    for (const auto& r : m.routines) {
      children.push_back(Symbol(file, r.name, r.kind, r.kind == "task" ? kind::kMethod : kind::kFunction, r.span,
                                r.nameSpan.end > 0 ? r.nameSpan : r.span));
    }
    Json symbol = Symbol(file, m.name, m.kind, ContainerKind(m.kind), m.span, m.name.empty() ? m.span : m.nameSpan);
    symbol["children"] = std::move(children);
    symbols.push_back(std::move(symbol));
  }
  return symbols;
}

Json WorkspaceSymbols(const std::vector<FilePtr>& files, std::string_view query, std::size_t limit) {
  std::string lowered(query);
  for (char& c : lowered) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  auto matches = [&lowered](const std::string& name) {
    if (lowered.empty()) return true;
    auto it = std::search(name.begin(), name.end(), lowered.begin(), lowered.end(), [](char a, char b) {
      return std::tolower(static_cast<unsigned char>(a)) == static_cast<unsigned char>(b);
    });
    return it != name.end();
  };
  Json symbols = Json::array();
  for (const FilePtr& file : files) {
    for (const structure::Module& m : file->structure.modules) {
      if (symbols.size() >= limit) return symbols;
      if (!m.name.empty() && matches(m.name)) {
        symbols.push_back({{"name", m.name}, {"kind", ContainerKind(m.kind)}, {"location", LocationJson(*file, m.nameSpan)}});
      }
      for (const structure::Instance& i : m.instances) {
        if (symbols.size() >= limit) return symbols;
        if (!matches(i.name)) continue;
        symbols.push_back({{"name", i.name},
                           {"kind", kind::kObject},
                           {"containerName", m.name},
                           {"location", LocationJson(*file, i.nameSpan)}});
      }
    }
  }
  return symbols;
}

}  // namespace quill::lsp
