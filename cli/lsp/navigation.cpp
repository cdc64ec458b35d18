#include "lsp/navigation.h"

#include <algorithm>

#include "lsp/symbol_lookup.h"

namespace quill::lsp {
namespace {

using Json = nlohmann::json;

// Whole-word uses of `name` between byte offsets [begin, end), outside
// comments and strings.
std::vector<structure::Span> Uses(const IndexedFile& file, std::string_view name, std::size_t begin, std::size_t end) {
  std::vector<structure::Span> uses;
  const auto& tokens = file.tokens.tokens;
  auto it = std::lower_bound(tokens.begin(), tokens.end(), begin,
                             [](const structure::Token& t, std::size_t o) { return t.begin < o; });
  for (; it != tokens.end() && it->end <= end; ++it) {
    // `.name(` in an instance names the other module's port.
    const bool portName = it != tokens.begin() && structure::TextOf(file.text, *(it - 1)) == ".";
    if (it->kind == structure::TokenKind::kIdentifier && !portName && structure::TextOf(file.text, *it) == name) {
      uses.push_back(structure::SpanOfTokens(*it, *it));
    }
  }
  return uses;
}

struct ModuleSite {
  const IndexedFile* file;
  const structure::Module* module;
};

std::vector<ModuleSite> ModulesNamed(const std::vector<FilePtr>& files, std::string_view name) {
  std::vector<ModuleSite> sites;
  for (const FilePtr& file : files) {
    for (const structure::Module& module : file->structure.modules) {
      if (module.name == name) sites.push_back({file.get(), &module});
    }
  }
  return sites;
}

std::string Trimmed(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t' || s.back() == '\r')) s.remove_suffix(1);
  return std::string(s);
}

std::string ModuleHeader(const structure::Module& m) {
  std::string out = m.kind + " " + m.name;
  std::vector<const structure::Parameter*> parameters;
  for (const auto& p : m.parameters) {
    if (!p.local && p.declaration.end <= m.header.end) parameters.push_back(&p);
  }
  if (!parameters.empty()) {
    out += " #(";
    for (std::size_t k = 0; k < parameters.size(); ++k) {
      out += (k ? ", " : "") + parameters[k]->name + (parameters[k]->value.empty() ? "" : " = " + parameters[k]->value);
    }
    out += ")";
  }
  if (m.ports.empty()) return out + ";";
  out += " (\n";
  for (std::size_t k = 0; k < m.ports.size(); ++k) {
    const structure::Port& p = m.ports[k];
    std::string line = "  ";
    for (const std::string* part : {&p.direction, &p.type, &p.range}) {
      if (!part->empty()) line += *part + " ";
    }
    out += line + p.name + (k + 1 < m.ports.size() ? ",\n" : "\n");
  }
  return out + ");";
}

Json Markdown(const std::string& code) {
  return {{"contents", {{"kind", "markdown"}, {"value", "```verilog\n" + code + "\n```"}}}};
}

}  // namespace

Json Definition(const IndexedFile& file, Position position, const std::vector<FilePtr>& files) {
  Json locations = Json::array();
  const std::optional<Target> target = TargetAt(file, position, files);
  if (!target) return locations;
  if (target->kind == Target::Kind::kModule) {
    for (const ModuleSite& site : ModulesNamed(files, target->name)) {
      locations.push_back(LocationJson(*site.file, site.module->nameSpan));
    }
    return locations;
  }
  if (auto declaration = LocalDeclaration(*target->scope, target->name)) {
    locations.push_back(LocationJson(file, *declaration));
  }
  return locations;
}

Json References(const IndexedFile& file, Position position, const std::vector<FilePtr>& files,
                bool includeDeclaration) {
  Json locations = Json::array();
  const std::optional<Target> target = TargetAt(file, position, files);
  if (!target) return locations;
  if (target->kind == Target::Kind::kModule) {
    for (const FilePtr& other : files) {
      for (const structure::Module& module : other->structure.modules) {
        if (includeDeclaration && module.name == target->name) {
          locations.push_back(LocationJson(*other, module.nameSpan));
        }
        for (const structure::Instance& instance : module.instances) {
          if (instance.moduleType == target->name) locations.push_back(LocationJson(*other, instance.typeSpan));
        }
      }
    }
    return locations;
  }
  const std::optional<structure::Span> declaration = LocalDeclaration(*target->scope, target->name);
  for (const structure::Span& use : Uses(file, target->name, target->scope->span.begin, target->scope->span.end)) {
    if (!includeDeclaration && declaration && use.begin == declaration->begin) continue;
    locations.push_back(LocationJson(file, use));
  }
  return locations;
}

Json DocumentHighlights(const IndexedFile& file, Position position, const std::vector<FilePtr>& files) {
  Json highlights = Json::array();
  const std::optional<Target> target = TargetAt(file, position, files);
  if (!target) return highlights;
  std::vector<structure::Span> uses;
  if (target->kind == Target::Kind::kModule) {
    for (const structure::Module& module : file.structure.modules) {
      if (module.name == target->name) uses.push_back(module.nameSpan);
      for (const structure::Instance& instance : module.instances) {
        if (instance.moduleType == target->name) uses.push_back(instance.typeSpan);
      }
    }
  } else {
    uses = Uses(file, target->name, target->scope->span.begin, target->scope->span.end);
  }
  for (const structure::Span& use : uses) highlights.push_back({{"range", RangeJson(file, use)}, {"kind", 1}});
  return highlights;
}

Json Hover(const IndexedFile& file, Position position, const std::vector<FilePtr>& files) {
  const std::optional<Target> target = TargetAt(file, position, files);
  if (!target) return nullptr;
  if (target->kind == Target::Kind::kModule) {
    const std::vector<ModuleSite> sites = ModulesNamed(files, target->name);
    if (sites.empty()) return nullptr;
    return Markdown(ModuleHeader(*sites.front().module));
  }
  const std::optional<structure::Span> declaration = LocalDeclaration(*target->scope, target->name);
  if (!declaration) return nullptr;
  return Markdown(Trimmed(file.lines.Line(declaration->start.line)));
}

}  // namespace quill::lsp
