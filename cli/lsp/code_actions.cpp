#include <algorithm>
#include <charconv>

#include "lsp/navigation.h"
#include "lsp/symbol_lookup.h"

namespace quill::lsp {
namespace {

using Json = nlohmann::json;

// The first 'quoted' name of a finding's message.
std::string QuotedName(std::string_view message) {
  const std::size_t open = message.find('\'');
  if (open == std::string_view::npos) return {};
  const std::size_t close = message.find('\'', open + 1);
  if (close == std::string_view::npos) return {};
  return std::string(message.substr(open + 1, close - open - 1));
}

// The count N of a message's "(Nx)".
std::optional<std::size_t> Count(std::string_view message) {
  const std::size_t open = message.rfind('(');
  if (open == std::string_view::npos) return std::nullopt;
  std::size_t count = 0;
  const char* end = message.data() + message.size();
  auto [next, error] = std::from_chars(message.data() + open + 1, end, count);
  if (error != std::errc() || next == end || *next != 'x') return std::nullopt;
  return count;
}

const structure::Module* ModuleOnLine(const IndexedFile& file, std::uint32_t line) {
  for (const structure::Module& m : file.structure.modules) {
    if (m.span.start.line <= line && line <= m.span.stop.line) return &m;
  }
  return nullptr;
}

Json Edit(const IndexedFile& file, const structure::Span& span, std::string_view newText) {
  return {{"range", RangeJson(file, span)}, {"newText", newText}};
}

Json QuickFix(const IndexedFile& file, const std::string& title, const Json& diagnostic, Json edits, bool preferred) {
  return {{"title", title},
          {"kind", "quickfix"},
          {"diagnostics", Json::array({diagnostic})},
          {"isPreferred", preferred},
          {"edit", {{"changes", {{file.uri, std::move(edits)}}}}}};
}

// The one declaration of `name` in the module, when it declares that name
// alone with the type word `from`.
std::optional<structure::Span> SoleTypeWord(const IndexedFile& file, const structure::Module& m,
                                            const std::string& name, std::string_view from) {
  std::vector<std::pair<structure::Span, bool>> found;  // type word, sole name
  for (const auto& s : m.signals) {
    if (s.name == name) found.emplace_back(s.typeWord, s.soleName);
  }
  if (found.empty()) {
    for (const auto& p : m.ports) {
      if (p.name == name) found.emplace_back(p.typeWord, p.soleName);
    }
  }
  if (found.size() != 1 || !found.front().second) return std::nullopt;
  const structure::Span word = found.front().first;
  if (word.end <= word.begin || file.text.substr(word.begin, word.end - word.begin) != from) return std::nullopt;
  return word;
}

// The assignment operators `from` of an always block, when every statement
// of it holds one assignment at most and their count is `expected`.
std::optional<std::vector<structure::Span>> AssignmentOperators(const IndexedFile& file, const structure::Block& block,
                                                                std::string_view from, std::size_t expected) {
  std::vector<structure::Span> operators;
  const auto& tokens = file.tokens.tokens;
  auto it = std::lower_bound(tokens.begin(), tokens.end(), block.span.begin,
                             [](const structure::Token& t, std::size_t o) { return t.begin < o; });
  std::size_t depth = 0, inStatement = 0;
  const structure::Token* previous = nullptr;
  for (; it != tokens.end() && it->end <= block.span.end; previous = &*it, ++it) {
    const std::string_view w = structure::TextOf(file.text, *it);
    if (it->kind == structure::TokenKind::kPunctuation) {
      if (w == "(" || w == "[" || w == "{") ++depth;
      if ((w == ")" || w == "]" || w == "}") && depth > 0) --depth;
      if (w == ";" && depth == 0) inStatement = 0;
      if (depth != 0 || (w != "=" && w != "<=")) continue;
      if (++inStatement > 1) return std::nullopt;
      if (w != from) continue;
      const bool target = previous != nullptr && (previous->kind == structure::TokenKind::kIdentifier ||
                                                  structure::TextOf(file.text, *previous) == "]" ||
                                                  structure::TextOf(file.text, *previous) == "}");
      if (!target) return std::nullopt;
      operators.push_back(structure::SpanOfTokens(*it, *it));
    } else if (depth == 0 && (w == "begin" || w == "end" || w == "else")) {
      inStatement = 0;
    }
  }
  if (operators.size() != expected) return std::nullopt;
  return operators;
}

}  // namespace

Json CodeActions(const IndexedFile& file, LineRange range, const Json& diagnostics) {
  Json actions = Json::array();
  if (!diagnostics.is_array()) return actions;
  for (const Json& diagnostic : diagnostics) {
    if (!diagnostic.is_object()) continue;
    const Json* start = diagnostic.contains("range") && diagnostic["range"].is_object() &&
                                diagnostic["range"].contains("start")
                            ? &diagnostic["range"]["start"]
                            : nullptr;
    if (start == nullptr || !start->is_object() || !start->contains("line") ||
        !(*start)["line"].is_number_integer() || (*start)["line"].get<std::int64_t>() < 0) {
      continue;
    }
    const auto line64 = static_cast<std::uint64_t>((*start)["line"].get<std::int64_t>());
    if (line64 < range.first || line64 > range.last || line64 >= file.lines.LineCount()) continue;
    const auto line = static_cast<std::uint32_t>(line64);
    const std::string code = diagnostic.contains("code") && diagnostic["code"].is_string() ? diagnostic["code"].get<std::string>() : "";
    const std::string message =
        diagnostic.contains("message") && diagnostic["message"].is_string() ? diagnostic["message"].get<std::string>() : "";
    if (code.empty()) continue;
    const structure::Module* module = ModuleOnLine(file, line);
    if (module != nullptr && (code == "reg-assign" || code == "wire-always")) {
      const std::string name = QuotedName(message);
      const bool toWire = code == "reg-assign";
      if (auto word = SoleTypeWord(file, *module, name, toWire ? "reg" : "wire")) {
        actions.push_back(QuickFix(file, "Declare '" + name + "' as " + (toWire ? "wire" : "reg"), diagnostic,
                                   Json::array({Edit(file, *word, toWire ? "wire" : "reg")}), true));
      }
    }
    if (module != nullptr && code == "blocking-assign") {
      const bool sequential = message.find("sequential") != std::string::npos;
      const std::optional<std::size_t> count = Count(message);
      for (const structure::Block& block : module->blocks) {
        if (!count || block.span.start.line != line || !block.kind.starts_with("always")) continue;
        auto operators = AssignmentOperators(file, block, sequential ? "=" : "<=", *count);
        if (!operators) break;
        Json edits = Json::array();
        for (const structure::Span& op : *operators) edits.push_back(Edit(file, op, sequential ? "<=" : "="));
        actions.push_back(QuickFix(file, sequential ? "Use '<=' in this sequential block" : "Use '=' in this combinational block",
                                   diagnostic, std::move(edits), true));
        break;
      }
    }
    const std::string marker = "quill: disable-line " + code;
    const std::string_view text = file.lines.Line(line);
    if (text.find(marker) != std::string_view::npos) continue;
    const Position end{line, Utf16Length(text)};
    const Json position = {{"line", end.line}, {"character", end.character}};
    actions.push_back(QuickFix(file, "Disable " + code + " on this line", diagnostic,
                               Json::array({{{"range", {{"start", position}, {"end", position}}},
                                             {"newText", " // " + marker}}}),
                               false));
  }
  return actions;
}

}  // namespace quill::lsp
