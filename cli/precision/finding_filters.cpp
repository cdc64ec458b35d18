#include "precision/finding_filters.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <vector>

#include "precision/assignment_paths.h"
#include "precision/declaration_places.h"
#include "precision/procedural_drives.h"
#include "precision/statement_paths.h"

namespace quill::cli {
namespace {

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), token.text) != words.end();
}

// The first name in quotes in a message: "signal 'q' driven ..." gives q.
std::optional<std::string_view> QuotedName(std::string_view message) {
  const std::size_t open = message.find('\'');
  if (open == std::string_view::npos) return std::nullopt;
  const std::size_t close = message.find('\'', open + 1);
  if (close == std::string_view::npos) return std::nullopt;
  return message.substr(open + 1, close - open - 1);
}

// The numbers of "(lines: 4, 9)" at the end of a message.
std::optional<std::vector<std::uint32_t>> ListedLines(std::string_view message) {
  const std::size_t start = message.rfind("(lines: ");
  if (start == std::string_view::npos || message.back() != ')') return std::nullopt;
  std::vector<std::uint32_t> lines;
  const char* p = message.data() + start + 8;
  const char* end = message.data() + message.size() - 1;
  while (p < end) {
    std::uint32_t value = 0;
    const auto [next, error] = std::from_chars(p, end, value);
    if (error != std::errc()) return std::nullopt;
    lines.push_back(value);
    p = next;
    if (p < end && *p == ',') p += 2;
  }
  return lines;
}

// The count N of "... N times ...".
std::optional<std::size_t> TimesCount(std::string_view message) {
  const std::size_t times = message.find(" times");
  if (times == std::string_view::npos) return std::nullopt;
  const std::size_t space = message.rfind(' ', times - 1);
  if (space == std::string_view::npos) return std::nullopt;
  std::size_t value = 0;
  const auto [next, error] = std::from_chars(message.data() + space + 1, message.data() + times, value);
  if (error != std::errc() || next != message.data() + times) return std::nullopt;
  return value;
}

class FindingProof {
 public:
  FindingProof(const GenerateScopes& scopes, const FindingToFilter& finding) : scopes_(scopes), finding_(finding) {}

  bool EmptyName() const {
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    return name && name->empty();
  }

  bool ReadOnlyDriver() const {
    if (finding_.check != "multi-driver") return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    if (!name || name->empty()) return false;
    if (const auto lines = ListedLines(finding_.message)) {
      std::size_t drivers = 0;
      for (std::uint32_t line : *lines) {
        const ProceduralBlock* block = scopes_.BlockOnLine(line);
        if (block == nullptr) return false;
        if (MayDrive(scopes_.Tokens(), *block, *name)) ++drivers;
      }
      return drivers < 2;
    }
    // "driven by both assign and always": no always block of the module may
    // drive it.
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!module) return false;
    bool anyBlock = false;
    for (const ProceduralBlock& block : scopes_.Blocks()) {
      if (scopes_.ModuleOf(block.node) != *module) continue;
      anyBlock = true;
      if (MayDrive(scopes_.Tokens(), block, *name)) return false;
    }
    return anyBlock;
  }

  bool GenerateScope() const {
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    if (!name || name->empty()) return false;
    if (finding_.check == "dupli-define") return DeclarationsApart(*name);
    if (finding_.check == "dupli-inst") return InstancesApart(*name);
    if (finding_.check == "repeated-assig") return AssignsApart(*name, false);
    if (finding_.check == "multi-driver") {
      if (const auto lines = ListedLines(finding_.message)) return BlocksApart(*name, *lines);
      return AssignsApart(*name, true);
    }
    return false;
  }

  // "combinational always uses '<='" on a block with no "<=" outside
  // parentheses, "sequential always uses '='" on one with no "=": the
  // linter read another block's body for it.
  bool AbsentAssignment() const {
    if (finding_.check != "blocking-assign") return false;
    const bool nonBlocking = finding_.message.find("uses '<='") != std::string_view::npos;
    if (!nonBlocking && finding_.message.find("uses '='") == std::string_view::npos) return false;
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    if (block == nullptr) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t parentheses = 0;
    for (std::size_t t = block->keyword; t < block->end && t < tokens.size(); ++t) {
      if (tokens[t].Is("(")) ++parentheses;
      if (tokens[t].Is(")") && parentheses > 0) --parentheses;
      if (nonBlocking && parentheses == 0 && tokens[t].Is("<=")) return false;
      if (!nonBlocking && tokens[t].Is("=")) return false;
    }
    return true;
  }

  // "sequential always uses '='" on a block whose every blocking assignment
  // writes a variable declared in a begin-end scope of the block around it
  // ("begin : gen  reg [3:0] count;  count = count + 1;"): such variables
  // are the block's own, and '=' is how they are meant to be written.
  bool BlockLocals() const {
    if (finding_.check != "blocking-assign" || finding_.message.rfind("sequential always uses '='", 0) != 0) {
      return false;
    }
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    if (block == nullptr) return false;
    const std::vector<ProceduralBlock>& blocks = scopes_.Blocks();
    const auto next = static_cast<std::size_t>(block - blocks.data()) + 1;
    if (next < blocks.size() && scopes_.Tokens()[blocks[next].keyword].line == finding_.line) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    const std::size_t end = std::min(block->end, tokens.size());
    // The names declared in each begin-end scope open at the current token.
    std::vector<std::vector<std::string_view>> scopes;
    std::size_t parentheses = 0;
    bool statementStart = false;
    bool written = false;
    for (std::size_t t = block->keyword; t < end; ++t) {
      const Token& token = tokens[t];
      if (token.Is("(")) ++parentheses;
      if (token.Is(")") && parentheses > 0) --parentheses;
      if (parentheses > 0) continue;
      if (token.Is("begin")) {
        scopes.emplace_back();
        statementStart = true;
        if (t + 2 < end && tokens[t + 1].Is(":") && tokens[t + 2].kind == Token::Kind::kWord) t += 2;
        continue;
      }
      if (token.Is("end")) {
        if (!scopes.empty()) scopes.pop_back();
        statementStart = true;
        continue;
      }
      if (statementStart && !scopes.empty() &&
          IsAnyOf(token, {"reg", "integer", "int", "logic", "bit", "byte", "shortint", "longint", "string",
                          "automatic", "static", "var"})) {
        // A declaration: its names, not those of its initializers.
        std::size_t k = t + 1;
        for (; k < end && !tokens[k].Is(";"); ++k) {
          if (tokens[k].kind == Token::Kind::kWord && !IsInInitializer(tokens, t, k)) scopes.back().push_back(tokens[k].text);
        }
        t = k;
        statementStart = true;
        continue;
      }
      statementStart = token.Is(";");
      if (!token.Is("=")) continue;
      // The word the '=' writes, past any selects and parenthesized parts,
      // as the linter reads it.
      std::size_t k = t;
      while (k > block->keyword && (tokens[k - 1].Is("]") || tokens[k - 1].Is(")"))) {
        std::size_t depth = 0;
        do {
          --k;
          if (tokens[k].Is("]") || tokens[k].Is(")")) ++depth;
          if (tokens[k].Is("[") || tokens[k].Is("(")) --depth;
        } while (k > block->keyword && depth > 0);
        if (depth > 0) return false;
      }
      if (k == block->keyword) return false;
      const Token& target = tokens[k - 1];
      if (target.kind == Token::Kind::kMacro) return false;
      if (target.kind != Token::Kind::kWord) continue;
      const bool local = std::any_of(scopes.begin(), scopes.end(), [&target](const auto& names) {
        return std::find(names.begin(), names.end(), target.text) != names.end();
      });
      if (!local) return false;
      written = true;
    }
    return written;
  }

  // "output q;" (direction only, non-ANSI) and "reg q;" or "wire q;": one
  // port, declared in two legal steps. A "wire-always" finding on such a
  // port that is declared "reg" goes too: the linter judged it by the
  // direction alone.
  bool PortRedeclaration() const {
    const bool duplicate = finding_.check == "dupli-define" && finding_.message.rfind("signal '", 0) == 0;
    if (!duplicate && finding_.check != "wire-always") return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!name || name->empty() || !module) return false;
    if (duplicate && TimesCount(finding_.message) != 2u) return false;
    if (IsDirectionThenType(OnTheirLines(DeclarationTokens(*name, *module)), duplicate)) return true;
    // Two places where the linter may count the name, and it counted two:
    // they are the ones it counted. Both must be the module's own (not a
    // modport's item, not a routine's port).
    if (!duplicate) return false;
    const std::vector<DeclarationPlace> places = LinterDeclarationPlaces(*name, *module);
    for (const DeclarationPlace& place : places) {
      const std::size_t node = scopes_.NodeOfToken(place.token);
      if (scopes_.IsInInterfaceItems(node) || scopes_.InnermostRoutine(node)) return false;
    }
    return IsDirectionThenType(places, true);
  }

  // A modport's or clocking block's "input x" names a signal declared
  // elsewhere: a duplicate whose declarations all but one are such items,
  // or a use "before" one of them, is not what it says.
  bool InterfaceItems() const {
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!name || name->empty() || !module) return false;
    if (finding_.check == "dupli-define" && finding_.message.rfind("signal '", 0) == 0) {
      const std::vector<std::size_t> declarations = DeclarationTokens(*name, *module);
      const std::optional<std::size_t> count = TimesCount(finding_.message);
      const auto real = static_cast<std::size_t>(
          std::count_if(declarations.begin(), declarations.end(),
                        [this](std::size_t t) { return !scopes_.IsInInterfaceItems(scopes_.NodeOfToken(t)); }));
      if (!count || real > 1) return false;
      // A modport list continued on a line of its own counts there too.
      if (declarations.size() == *count || real + ItemLinesNaming(*name, *module) == *count) return true;
      // Every place the linter may have counted, at most one outside the
      // lists, however it joined their lines.
      const std::vector<DeclarationPlace> places = LinterDeclarationPlaces(*name, *module);
      return places.size() >= *count &&
             std::count_if(places.begin(), places.end(), [this](const DeclarationPlace& place) {
               return !scopes_.IsInInterfaceItems(scopes_.NodeOfToken(place.token));
             }) <= 1;
    }
    if (finding_.check == "used-bef-declare") {
      const std::optional<std::uint32_t> line = DeclarationLine();
      if (!line) return false;
      const std::optional<std::size_t> token = scopes_.FindOnLine(*line, *name, true);
      return token && scopes_.IsInInterfaceItems(scopes_.NodeOfToken(*token));
    }
    return false;
  }

  bool DefaultBeforeBranch() const {
    if (finding_.check != "latch") return false;
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    return block != nullptr && DefaultsCoverBranches(scopes_.Tokens(), *block);
  }

  // Struct and union members and the locals of a function, task or class
  // live in scopes of their own: a duplicate whose declarations lie pairwise in
  // different such scopes (at most one outside them) names different
  // objects. Continuous assigns that each drive a member or select of one
  // signal, pairwise disjoint, do not assign it repeatedly.
  bool MemberScopes() const {
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    // Text outside every unit (a file of tasks) is a scope of its own.
    const std::optional<std::size_t> first = FirstTokenOfLine(finding_.line);
    if (!name || name->empty() || !first) return false;
    const std::size_t module = scopes_.ModuleOf(scopes_.NodeOfToken(*first));
    const bool declaration = finding_.message.rfind("signal '", 0) == 0 || finding_.message.rfind("parameter '", 0) == 0;
    if (finding_.check == "dupli-define" && declaration) {
      // Exactly the counted places, each in a scope of its own.
      const auto inScopesApart = [this](const std::vector<std::size_t>& declarations, std::optional<std::size_t> count) {
        if (declarations.size() < 2 || declarations.size() != count) return false;
        std::vector<std::pair<int, std::size_t>> seen;
        for (std::size_t t : declarations) {
          std::pair<int, std::size_t> scope{0, 0};
          if (const std::optional<std::size_t> body = scopes_.InnermostAggregate(t)) {
            scope = {1, *body};
          } else if (const std::optional<std::size_t> routine = scopes_.InnermostRoutine(scopes_.NodeOfToken(t))) {
            scope = {2, *routine};
          }
          if (std::find(seen.begin(), seen.end(), scope) != seen.end()) return false;
          seen.push_back(scope);
        }
        return true;
      };
      const std::optional<std::size_t> count = TimesCount(finding_.message);
      if (inScopesApart(DeclarationTokens(*name, module), count)) return true;
      if (finding_.message.rfind("signal '", 0) != 0) return false;
      // As many places as the linter counted, among places that hold all it
      // counts, are exactly its places.
      std::vector<std::size_t> places;
      for (const DeclarationPlace& place : LinterDeclarationPlaces(*name, module)) places.push_back(place.token);
      return inScopesApart(places, count);
    }
    if (finding_.check == "repeated-assig") {
      // A whole-signal assign counts as the empty path; two assigns in
      // exclusive generate branches never meet.
      const std::vector<Token>& tokens = scopes_.Tokens();
      std::vector<std::pair<std::vector<PathSegment>, std::size_t>> paths;
      for (std::size_t a : scopes_.AssignKeywords()) {
        if (a + 1 >= tokens.size() || !EqualFoldingCase(tokens[a + 1].text, *name)) continue;
        const std::size_t node = scopes_.NodeOfToken(a);
        if (scopes_.ModuleOf(node) != module) continue;
        const std::optional<StatementSplit> split = SplitAssignment(tokens, a + 1);
        if (!split) return false;
        Path path = ReadPath(tokens, a + 1, split->equals);
        if (path.end != split->equals) return false;
        for (const auto& [other, otherNode] : paths) {
          if (!scopes_.AreExclusive(node, otherNode) && PathsMayOverlap(other, path.segments)) return false;
        }
        paths.emplace_back(std::move(path.segments), node);
      }
      // The linter counts only assigns whose left side starts with the name
      // and holds no "[" or "{": each is among those read here, so when all
      // of these are apart, so are the ones it counted.
      const std::optional<std::size_t> count = TimesCount(finding_.message);
      return count && *count >= 2 && paths.size() >= *count;
    }
    return false;
  }

  // "wire x = a & b;": the linter takes a and b for declared names. A
  // duplicate that is one declaration (or a port declared by direction and
  // then by type) once such places are left out, or a "wire-always" whose
  // only wire declaration is such a place, on a name declared as a
  // variable, is not what it says.
  bool InitializerNames() const {
    const bool duplicate = finding_.check == "dupli-define" && finding_.message.rfind("signal '", 0) == 0;
    if (!duplicate && finding_.check != "wire-always") return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!name || name->empty() || !module) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    if (duplicate) {
      // Every place the linter may have counted is among these; a count
      // above them may hide a declaration this scan cannot read, which
      // keeps the finding.
      const std::vector<DeclarationPlace> places = LinterDeclarationPlaces(*name, *module);
      const std::optional<std::size_t> count = TimesCount(finding_.message);
      if (!count || places.size() < *count) return false;
      std::vector<DeclarationPlace> declared;
      for (const DeclarationPlace& place : places) {
        if (!IsInInitializer(tokens, place.statement, place.token)) declared.push_back(place);
      }
      if (declared.size() == places.size()) return false;
      return declared.size() <= 1 || IsDirectionThenType(declared, true);
    }
    const std::vector<std::size_t> declarations = DeclarationTokens(*name, *module);
    std::vector<std::size_t> declared;
    bool wireInInitializer = false;
    bool variable = false;
    for (std::size_t t : declarations) {
      const std::optional<std::size_t> first = FirstTokenOfLine(tokens[t].line);
      if (!first) return false;
      bool wire = false;
      bool variableType = false;
      for (std::size_t k = *first; k < t; ++k) {
        if (IsAnyOf(tokens[k], {"wire", "tri"})) wire = true;
        if (IsAnyOf(tokens[k], {"reg", "logic", "integer", "var", "bit"})) variableType = true;
      }
      if (IsInInitializer(tokens, *first, t)) {
        wireInInitializer = wireInInitializer || wire;
        continue;
      }
      if (wire) return false;
      variable = variable || variableType;
      declared.push_back(t);
    }
    if (declared.size() == declarations.size()) return false;
    return wireInInitializer && variable;
  }

  // "used at line A before declaration at line B" where the name does not
  // occur before line B in its unit, other than as a member ("a.name") or
  // a port ".name(...)": no use precedes the declaration. A ".*"
  // connection may use any name and keeps the finding.
  bool AbsentUse() const {
    if (finding_.check != "used-bef-declare") return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::uint32_t> line = DeclarationLine();
    if (!name || name->empty() || !line) return false;
    const std::optional<std::size_t> declaration = scopes_.FindOnLine(*line, *name, true);
    if (!declaration) return false;
    const std::size_t module = scopes_.ModuleOf(scopes_.NodeOfToken(*declaration));
    if (module == 0) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t start = *declaration;
    while (start > 0) {
      const std::size_t other = scopes_.ModuleOf(scopes_.NodeOfToken(start - 1));
      if (other != 0 && other != module) break;
      --start;
    }
    for (std::size_t t = start; t < *declaration; ++t) {
      if (tokens[t].Is(".") && t + 1 < tokens.size() && tokens[t + 1].Is("*")) return false;
      if (!EqualFoldingCase(tokens[t].text, *name)) continue;
      const bool afterDot = t > 0 && tokens[t - 1].Is(".");
      const bool member = afterDot && t > 1 && (tokens[t - 2].kind == Token::Kind::kWord || tokens[t - 2].Is("]") ||
                                                tokens[t - 2].Is(")"));
      const bool port = afterDot && t + 1 < tokens.size() && tokens[t + 1].Is("(");
      if (!member && !port) return false;
    }
    return true;
  }

  bool IntendedLatch() const {
    if (finding_.check != "latch") return false;
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    return block != nullptr && scopes_.Tokens()[block->keyword].Is("always_latch");
  }

  // "assign root.a.b = root.c.d;" or "assign x[l] = x[l-1];" reported as a
  // loop: where the root stands on the right only as the root of paths that
  // name parts disjoint from the left-hand path's, or only as a member of
  // another object ("pkt.x"), nothing feeds back.
  bool HierarchicalPaths() const {
    if (finding_.check != "comb-loop" || finding_.message.rfind("assign '", 0) != 0) return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::size_t> first = FirstTokenOfLine(finding_.line);
    const std::vector<Token>& tokens = scopes_.Tokens();
    if (!name || name->empty() || !first || !tokens[*first].Is("assign") || *first + 1 >= tokens.size()) return false;
    const std::size_t root = *first + 1;
    if (!EqualFoldingCase(tokens[root].text, *name)) return false;
    const std::optional<StatementSplit> split = SplitAssignment(tokens, root);
    if (!split) return false;
    const Path left = ReadPath(tokens, root, split->equals);
    if (left.end != split->equals) return false;
    const bool memberFirst = !left.segments.empty() && left.segments.front().member;
    if (!memberFirst) {
      // Another statement on the line may be the one reported.
      if (AssignsOnLine(*first) != 1) return false;
      if (ReadOnlyAsMember(*name, root, split->end)) return true;
      if (left.segments.empty()) return false;
    }
    // Paths that start alike ("x.a" and "x.b", "x[l]" and "x[l-1]") and part.
    bool onRight = false;
    for (std::size_t t = split->equals + 1; t < split->end; ++t) {
      if (!EqualFoldingCase(tokens[t].text, *name) || tokens[t - 1].Is(".")) continue;
      const Path right = ReadPath(tokens, t, split->end);
      if (right.segments.empty() || right.segments.front().member != memberFirst) return false;
      if (PathsMayOverlap(left.segments, right.segments, OffsetSelects::kApart)) return false;
      onRight = true;
    }
    return onRight;
  }

  // "assert property (...)" read as an instance named "property".
  bool AssertionItems() const {
    if (finding_.check != "dupli-inst") return false;
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const auto lines = ListedLines(finding_.message);
    if (!name || !lines || (*name != "property" && *name != "sequence")) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    for (std::uint32_t oneBased : *lines) {
      if (oneBased == 0) return false;
      const std::optional<std::size_t> token = scopes_.FindOnLine(oneBased - 1, *name, false);
      if (!token || *token == 0) return false;
      if (!IsAnyOf(tokens[*token - 1], {"assert", "assume", "cover", "restrict", "expect"})) return false;
    }
    return true;
  }

  // "if without else" on a block with no "if" of its own, "case without
  // default" on one with no case: the linter read another block. A macro
  // in the block may hide either, which keeps the finding.
  bool AbsentBranch() const {
    if (finding_.check != "latch") return false;
    const bool ifNamed = finding_.message.find("if without else") != std::string_view::npos;
    const bool caseNamed = finding_.message.find("case without default") != std::string_view::npos;
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    if ((!ifNamed && !caseNamed) || block == nullptr) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    if (block->end <= block->keyword || block->end > tokens.size()) return false;
    const std::size_t last = tokens[block->end - 1].offset;
    if (scopes_.Text().substr(tokens[block->keyword].offset, last - tokens[block->keyword].offset).find('`') !=
        std::string_view::npos) {
      return false;
    }
    for (std::size_t t = block->keyword; t < block->end; ++t) {
      if (ifNamed && tokens[t].Is("if")) return false;
      if (caseNamed && IsAnyOf(tokens[t], {"case", "casex", "casez", "randcase"})) return false;
    }
    return true;
  }

  // Verilog names are case-sensitive; the linter folds letter case. A loop
  // on an assign whose right side holds the target's name only in another
  // spelling, repeated assigns whose targets are all spelt differently, or
  // an assign and always blocks that drive different spellings, are not
  // what they say.
  bool LetterCase() const {
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!name || name->empty() || !module) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    if (finding_.check == "comb-loop" && finding_.message.rfind("assign '", 0) == 0) {
      const std::optional<std::size_t> first = FirstTokenOfLine(finding_.line);
      if (!first || !tokens[*first].Is("assign") || *first + 1 >= tokens.size()) return false;
      const Token& target = tokens[*first + 1];
      if (target.text != *name) return false;
      const std::optional<StatementSplit> split = SplitAssignment(tokens, *first + 1);
      if (!split) return false;
      bool otherSpelling = false;
      for (std::size_t t = split->equals + 1; t < split->end; ++t) {
        if (tokens[t].text == target.text) return false;
        otherSpelling = otherSpelling || EqualFoldingCase(tokens[t].text, target.text);
      }
      return otherSpelling;
    }
    if (finding_.check == "comb-loop" && finding_.message.find("feeds back to itself in always") != std::string_view::npos) {
      // "x = X(a);" whole on its line, with "x" spelt so only once there:
      // the right side names another object ("X", a function).
      const std::optional<std::size_t> first = FirstTokenOfLine(finding_.line);
      if (!first) return false;
      std::optional<std::size_t> target;
      std::size_t t = *first;
      for (; t < tokens.size() && tokens[t].line == finding_.line; ++t) {
        if (tokens[t].text != *name) continue;
        if (target) return false;
        target = t;
      }
      const std::size_t lineEnd = t;
      if (!target || *target + 1 >= lineEnd || !tokens[*target + 1].Is("=") ||
          (*target > 0 && tokens[*target - 1].Is("."))) {
        return false;
      }
      bool otherSpelling = false;
      for (std::size_t k = *target + 2; k < lineEnd; ++k) {
        if (tokens[k].Is(";")) return otherSpelling;
        otherSpelling = otherSpelling || EqualFoldingCase(tokens[k].text, *name);
      }
      return false;
    }
    if (finding_.check == "multi-driver" && finding_.message.find("by both assign and always") !=
                                                 std::string_view::npos) {
      // No always block drives a name spelt as an assign's target.
      std::vector<std::string_view> spellings;
      for (std::size_t a : scopes_.AssignKeywords()) {
        if (a + 1 >= tokens.size() || !EqualFoldingCase(tokens[a + 1].text, *name)) continue;
        if (scopes_.ModuleOf(scopes_.NodeOfToken(a)) != *module) continue;
        spellings.push_back(tokens[a + 1].text);
      }
      if (spellings.empty()) return false;
      bool otherSpelling = false;
      for (const ProceduralBlock& block : scopes_.Blocks()) {
        if (scopes_.ModuleOf(block.node) != *module || !MayDrive(tokens, block, *name)) continue;
        for (std::string_view spelling : spellings) {
          if (MayDrive(tokens, block, spelling, true)) return false;
        }
        otherSpelling = true;
      }
      return otherSpelling;
    }
    if (finding_.check == "wire-always") {
      // The name as spelt is declared only as a variable (the wire is
      // another spelling of it).
      const std::vector<std::size_t> declarations = DeclarationTokens(*name, *module);
      if (declarations.empty()) return false;
      for (std::size_t t : declarations) {
        const std::optional<std::size_t> first = FirstTokenOfLine(tokens[t].line);
        if (!first || IsInInitializer(tokens, *first, t)) return false;
        bool variable = false;
        for (std::size_t k = *first; k < t; ++k) {
          if (IsAnyOf(tokens[k], {"wire", "tri", "input", "output", "inout"})) return false;
          if (IsAnyOf(tokens[k], {"reg", "logic", "integer", "var", "bit"})) variable = true;
        }
        if (!variable) return false;
      }
      return true;
    }
    if (finding_.check == "repeated-assig") {
      std::vector<std::string_view> spellings;
      for (std::size_t a : scopes_.AssignKeywords()) {
        if (a + 1 >= tokens.size() || !EqualFoldingCase(tokens[a + 1].text, *name)) continue;
        if (scopes_.ModuleOf(scopes_.NodeOfToken(a)) != *module) continue;
        if (std::find(spellings.begin(), spellings.end(), tokens[a + 1].text) != spellings.end()) return false;
        spellings.push_back(tokens[a + 1].text);
      }
      return spellings.size() >= 2 && spellings.size() == TimesCount(finding_.message);
    }
    return false;
  }

  // "signal 'X' feeds back to itself in always" on a block that assigns X
  // whole before anything reads it: each read sees the block's own value.
  bool AssignedFirst() const {
    if (finding_.check != "comb-loop" || finding_.message.rfind("signal '", 0) != 0 ||
        finding_.message.find("feeds back to itself in always") == std::string_view::npos) {
      return false;
    }
    const std::optional<std::string_view> name = QuotedName(finding_.message);
    const ProceduralBlock* block = BlockAroundLine(finding_.line);
    return name && !name->empty() && block != nullptr && AssignsBeforeReading(scopes_.Tokens(), *block, *name);
  }

  // A latch on a block that assigns every target on every path through it.
  // Two blocks starting on the finding's line leave it in doubt.
  bool CompletePaths() const {
    if (finding_.check != "latch") return false;
    const ProceduralBlock* block = scopes_.BlockOnLine(finding_.line);
    if (block == nullptr) return false;
    const std::vector<ProceduralBlock>& blocks = scopes_.Blocks();
    const auto next = static_cast<std::size_t>(block - blocks.data()) + 1;
    if (next < blocks.size() && scopes_.Tokens()[blocks[next].keyword].line == finding_.line) return false;
    const std::size_t module = scopes_.ModuleOf(block->node);
    return EveryPathAssigns(
        scopes_.Tokens(), *block, [this, module](std::string_view name) { return IsInputOnly(name, module); },
        [this, module](std::string_view name) { return DeclaredWidth(name, module); },
        [this, module](std::string_view name) { return IsLoopIndexOnly(name, module); });
  }

 private:
  // The width every declaration of the name in the module gives it, when
  // each is plain: net, variable and direction words, at most one range of
  // two numbers, then a list of names ("wire [2:0] a, b", "output q").
  std::optional<unsigned> DeclaredWidth(std::string_view name, std::size_t module) const {
    const std::vector<std::size_t> declarations = DeclarationTokens(name, module);
    const std::vector<Token>& tokens = scopes_.Tokens();
    if (module == 0 || declarations.empty()) return std::nullopt;
    std::optional<unsigned> width;
    for (std::size_t t : declarations) {
      const std::optional<std::size_t> first = FirstTokenOfLine(tokens[t].line);
      if (first && IsInInitializer(tokens, *first, t)) continue;  // "wire y = (x == 1);" reads x
      if (!first || *first >= t || (t + 1 < tokens.size() && tokens[t + 1].Is("["))) return std::nullopt;
      std::size_t k = *first;
      while (k < t && IsAnyOf(tokens[k], {"input", "output", "inout", "wire", "reg", "logic", "bit", "var", "tri",
                                          "unsigned"})) {
        ++k;
      }
      unsigned here = 1;
      if (k < t && tokens[k].Is("[")) {
        std::uint32_t high = 0;
        std::uint32_t low = 0;
        const auto number = [&tokens](std::size_t at, std::uint32_t& value) {
          const std::string_view text = tokens[at].text;
          return tokens[at].kind == Token::Kind::kNumber &&
                 std::from_chars(text.data(), text.data() + text.size(), value).ptr == text.data() + text.size();
        };
        if (k + 5 > t || !number(k + 1, high) || !tokens[k + 2].Is(":") || !number(k + 3, low) ||
            !tokens[k + 4].Is("]")) {
          return std::nullopt;
        }
        here = (high > low ? high - low : low - high) + 1;
        k += 5;
      }
      for (; k < t; k += 2) {
        if (tokens[k].kind != Token::Kind::kWord || !tokens[k + 1].Is(",")) return std::nullopt;
      }
      if (k != t || (width && *width != here)) return std::nullopt;
      width = here;
    }
    return width;
  }

  // Every declaration of the name in the module is an input port's: the
  // nearest direction before it (a port list's "input a, b" gives both) is
  // "input", within its statement.
  // Whether every use of `name` in the module, declarations aside, lies in
  // a "for" loop that starts by assigning it ("for (i = 0; ...)"), in its
  // header or its body: the value never outlives a loop, so a path that
  // leaves it unassigned keeps no state in it.
  bool IsLoopIndexOnly(std::string_view name, std::size_t module) const {
    if (module == 0) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::vector<std::pair<std::size_t, std::size_t>> loops;  // [for, end of body)
    for (std::size_t t = 0; t + 3 < tokens.size(); ++t) {
      if (!tokens[t].Is("for") || !tokens[t + 1].Is("(") || tokens[t + 2].text != name || !tokens[t + 3].Is("=")) {
        continue;
      }
      if (scopes_.ModuleOf(scopes_.NodeOfToken(t)) != module) continue;
      const std::optional<std::size_t> end = LoopEnd(t + 1);
      if (!end) return false;
      loops.emplace_back(t, *end);
    }
    if (loops.empty()) return false;
    for (std::size_t t = 0; t < tokens.size(); ++t) {
      if (tokens[t].kind != Token::Kind::kWord || !EqualFoldingCase(tokens[t].text, name)) continue;
      if (scopes_.ModuleOf(scopes_.NodeOfToken(t)) != module) continue;
      const bool inLoop = std::any_of(loops.begin(), loops.end(), [t](const auto& loop) {
        return loop.first < t && t < loop.second;
      });
      if (inLoop) continue;
      const std::optional<std::size_t> first = FirstTokenOfLine(tokens[t].line);
      if (!first || !IsAnyOf(tokens[*first], {"integer", "int", "reg", "logic", "genvar"}) ||
          IsInInitializer(tokens, *first, t)) {
        return false;
      }
    }
    return true;
  }

  // The end of the loop whose header's "(" is at `open`: after its body's
  // "end" when the body is "begin ... end", else after its first ";" (a
  // body of more statements ends later, which only keeps more uses out).
  std::optional<std::size_t> LoopEnd(std::size_t open) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t depth = 0;
    std::size_t k = open;
    for (; k < tokens.size(); ++k) {
      if (tokens[k].Is("(")) ++depth;
      if (tokens[k].Is(")") && --depth == 0) break;
    }
    if (k + 1 >= tokens.size()) return std::nullopt;
    ++k;
    if (tokens[k].Is("begin")) {
      std::size_t nesting = 0;
      for (; k < tokens.size(); ++k) {
        if (tokens[k].Is("begin")) ++nesting;
        if (tokens[k].Is("end") && --nesting == 0) return k + 1;
      }
      return std::nullopt;
    }
    for (; k < tokens.size(); ++k) {
      if (tokens[k].Is(";")) return k + 1;
    }
    return std::nullopt;
  }

  bool IsInputOnly(std::string_view name, std::size_t module) const {
    const std::vector<std::size_t> declarations = DeclarationTokens(name, module);
    if (module == 0 || declarations.empty()) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    return std::all_of(declarations.begin(), declarations.end(), [&tokens](std::size_t t) {
      for (std::size_t k = t; k-- > 0;) {
        if (IsAnyOf(tokens[k], {"output", "inout", "ref", ";", "module"})) return false;
        if (tokens[k].Is("input")) return true;
      }
      return false;
    });
  }

  // The procedural block whose text spans `line`.
  const ProceduralBlock* BlockAroundLine(std::uint32_t line) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    for (const ProceduralBlock& block : scopes_.Blocks()) {
      if (block.end == 0 || block.end > tokens.size() || tokens[block.keyword].line > line) continue;
      if (tokens[block.end - 1].line >= line) return &block;
    }
    return nullptr;
  }

  // The lines of the unit's modport and clocking items that name `name`.
  std::size_t ItemLinesNaming(std::string_view name, std::size_t module) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t lines = 0;
    std::optional<std::uint32_t> last;
    for (std::size_t t = 0; t < tokens.size(); ++t) {
      if (tokens[t].text != name || (last && *last == tokens[t].line)) continue;
      const std::size_t node = scopes_.NodeOfToken(t);
      if (!scopes_.IsInInterfaceItems(node) || scopes_.ModuleOf(node) != module) continue;
      last = tokens[t].line;
      ++lines;
    }
    return lines;
  }

  // B of "declaration at line B", zero-based.
  std::optional<std::uint32_t> DeclarationLine() const {
    const std::size_t at = finding_.message.rfind("declaration at line ");
    if (at == std::string_view::npos) return std::nullopt;
    std::uint32_t oneBased = 0;
    const char* begin = finding_.message.data() + at + 20;
    const char* end = finding_.message.data() + finding_.message.size();
    if (std::from_chars(begin, end, oneBased).ec != std::errc() || oneBased == 0) return std::nullopt;
    return oneBased - 1;
  }

  // The instance's name in the statement that starts on `line` (the
  // linter quotes the line of the module name, which may precede the
  // parameters and the instance name).
  std::optional<std::size_t> InstanceNameFrom(std::uint32_t line, std::string_view name) const {
    const std::optional<std::size_t> first = FirstTokenOfLine(line);
    if (!first) return std::nullopt;
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t depth = 0;
    for (std::size_t t = *first; t < tokens.size(); ++t) {
      if (tokens[t].Is("(")) ++depth;
      if (tokens[t].Is(")") && depth > 0) --depth;
      if (depth == 0 && tokens[t].Is(";")) return std::nullopt;
      if (depth == 0 && tokens[t].text == name) return t;
    }
    return std::nullopt;
  }
  std::optional<std::size_t> ModuleOfLine(std::uint32_t line) const {
    const std::optional<std::size_t> token = FirstTokenOfLine(line);
    if (!token) return std::nullopt;
    const std::size_t module = scopes_.ModuleOf(scopes_.NodeOfToken(*token));
    if (module == 0) return std::nullopt;
    return module;
  }

  // Two declarations: one by direction only, one by type only (for a
  // "wire-always" finding, the type must be a variable's).
  bool IsDirectionThenType(const std::vector<DeclarationPlace>& declarations, bool duplicate) const {
    if (declarations.size() != 2) return false;
    int directions = 0;
    int types = 0;
    int variables = 0;
    for (const DeclarationPlace& place : declarations) {
      bool direction = false;
      bool type = false;
      bool variable = false;
      for (std::size_t k = place.statement; k < place.token; ++k) {
        const Token& word = scopes_.Tokens()[k];
        if (IsAnyOf(word, {"input", "output", "inout"})) direction = true;
        if (IsAnyOf(word, {"wire", "tri"})) type = true;
        if (IsAnyOf(word, {"reg", "logic", "integer", "var", "bit"})) type = variable = true;
      }
      if (direction && !type) ++directions;
      if (type && !direction) ++types;
      if (variable && !direction) ++variables;
    }
    return directions == 1 && types == 1 && (duplicate || variables == 1);
  }

  // Declaration words, each with the first token of its line as the start
  // of its declaration; none when a word's line has no first token.
  std::vector<DeclarationPlace> OnTheirLines(const std::vector<std::size_t>& words) const {
    std::vector<DeclarationPlace> places;
    for (std::size_t t : words) {
      const std::optional<std::size_t> first = FirstTokenOfLine(scopes_.Tokens()[t].line);
      if (!first) return {};
      places.push_back({t, *first});
    }
    return places;
  }

  // The places in the module where the linter may have read `name` as
  // declared (see FindDeclarationPlaces).
  std::vector<DeclarationPlace> LinterDeclarationPlaces(std::string_view name, std::size_t module) const {
    std::vector<DeclarationPlace> places =
        FindDeclarationPlaces(scopes_.Tokens(), scopes_.LinterDeclarationStatements(), name);
    std::erase_if(places, [this, module](const DeclarationPlace& place) {
      return scopes_.ModuleOf(scopes_.NodeOfToken(place.token)) != module;
    });
    return places;
  }

  // In the assign whose target word is at `root` and which ends at `end`,
  // `name` stands, apart from the target, only after a "." ("pkt.x", "u.x"):
  // a member of another object, not the target itself. At least once.
  bool ReadOnlyAsMember(std::string_view name, std::size_t root, std::size_t end) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    bool asMember = false;
    for (std::size_t t = root + 1; t < end; ++t) {
      if (!EqualFoldingCase(tokens[t].text, name)) continue;
      if (!tokens[t - 1].Is(".")) return false;
      asMember = true;
    }
    return asMember;
  }

  // The "assign" keywords on the line of the token at `first`.
  std::size_t AssignsOnLine(std::size_t first) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::size_t count = 0;
    for (std::size_t t = first; t < tokens.size() && tokens[t].line == tokens[first].line; ++t) {
      if (tokens[t].Is("assign")) ++count;
    }
    return count;
  }

  std::optional<std::size_t> FirstTokenOfLine(std::uint32_t line) const {
    const std::vector<Token>& tokens = scopes_.Tokens();
    const auto it =
        std::lower_bound(tokens.begin(), tokens.end(), line, [](const Token& t, std::uint32_t l) { return t.line < l; });
    if (it == tokens.end() || it->line != line) return std::nullopt;
    return static_cast<std::size_t>(it - tokens.begin());
  }

  // Every pair of places lies in exclusive branches or in different named
  // blocks; with `needLocalDeclaration`, different named blocks count only
  // when each declares the name itself (else both drive one outer signal).
  bool PairwiseApart(const std::vector<std::size_t>& nodes, std::string_view name, bool needLocalDeclaration) const {
    if (nodes.size() < 2) return false;
    for (std::size_t a = 0; a < nodes.size(); ++a) {
      for (std::size_t b = a + 1; b < nodes.size(); ++b) {
        if (scopes_.AreExclusive(nodes[a], nodes[b])) continue;
        if (!scopes_.InDifferentNamedBlocks(nodes[a], nodes[b])) return false;
        if (needLocalDeclaration && !(DeclaredWithin(nodes[a], name) && DeclaredWithin(nodes[b], name))) return false;
      }
    }
    return true;
  }

  bool DeclaredWithin(std::size_t node, std::string_view name) const {
    const std::optional<std::size_t> block = scopes_.InnermostNamedBlock(node);
    if (!block) return false;
    for (std::size_t t : DeclarationTokens(name, scopes_.ModuleOf(node))) {
      if (scopes_.IsWithin(scopes_.NodeOfToken(t), *block)) return true;
    }
    return false;
  }

  // The name's token on each line in the module whose first word declares.
  std::vector<std::size_t> DeclarationTokens(std::string_view name, std::size_t module) const {
    std::vector<std::size_t> found;
    for (std::size_t t : scopes_.DeclarationsOf(name)) {
      if (scopes_.ModuleOf(scopes_.NodeOfToken(t)) == module) found.push_back(t);
    }
    return found;
  }

  bool DeclarationsApart(std::string_view name) const {
    const std::optional<std::size_t> count = TimesCount(finding_.message);
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!count || !module) return false;
    const auto apart = [&](const std::vector<std::size_t>& declarations) {
      if (declarations.size() != *count) return false;
      std::vector<std::size_t> nodes;
      for (std::size_t t : declarations) nodes.push_back(scopes_.NodeOfToken(t));
      return PairwiseApart(nodes, name, false);
    };
    if (apart(DeclarationTokens(name, *module))) return true;
    if (finding_.message.rfind("signal '", 0) != 0) return false;
    // As many places as the linter counted are exactly its places.
    std::vector<std::size_t> places;
    for (const DeclarationPlace& place : LinterDeclarationPlaces(name, *module)) places.push_back(place.token);
    return apart(places);
  }

  bool InstancesApart(std::string_view name) const {
    const auto lines = ListedLines(finding_.message);
    if (!lines) return false;
    std::vector<std::size_t> nodes;
    for (std::uint32_t oneBased : *lines) {
      if (oneBased == 0) return false;
      std::optional<std::size_t> token = scopes_.FindOnLine(oneBased - 1, name, false);
      if (!token) token = InstanceNameFrom(oneBased - 1, name);
      if (!token) return false;
      nodes.push_back(scopes_.NodeOfToken(*token));
    }
    return PairwiseApart(nodes, name, false);
  }

  // Every listed block must be found; those that surely only read the name
  // (a case selector, the right side of an assignment) drive nothing, and
  // the rest must lie pairwise apart. A state register declared and driven in
  // each branch of a generate if/else is read by the next-state logic beside
  // each driver, in the same branch.
  bool BlocksApart(std::string_view name, const std::vector<std::uint32_t>& lines) const {
    std::vector<std::size_t> drivers;
    for (std::uint32_t line : lines) {
      const ProceduralBlock* block = scopes_.BlockOnLine(line);
      if (block == nullptr) return false;
      if (MayDrive(scopes_.Tokens(), *block, name)) drivers.push_back(block->node);
    }
    return PairwiseApart(drivers, name, true);
  }

  // The continuous assignments of the name in the finding's module ("assign
  // NAME =", letter case ignored), plus with `withBlocks` every always block
  // that may drive it: all must lie apart.
  bool AssignsApart(std::string_view name, bool withBlocks) const {
    const std::optional<std::size_t> module = ModuleOfLine(finding_.line);
    if (!module) return false;
    const std::vector<Token>& tokens = scopes_.Tokens();
    std::vector<std::size_t> nodes;
    for (std::size_t t : scopes_.AssignmentsOf(name)) {
      if (scopes_.ModuleOf(scopes_.NodeOfToken(t)) == *module) nodes.push_back(scopes_.NodeOfToken(t));
    }
    if (!withBlocks) {
      const std::optional<std::size_t> count = TimesCount(finding_.message);
      if (!count || nodes.size() != *count) return false;
    } else {
      if (nodes.empty()) return false;
      for (const ProceduralBlock& block : scopes_.Blocks()) {
        if (scopes_.ModuleOf(block.node) == *module && MayDrive(tokens, block, name)) nodes.push_back(block.node);
      }
    }
    return PairwiseApart(nodes, name, true);
  }

  const GenerateScopes& scopes_;
  const FindingToFilter& finding_;
};

}  // namespace

std::optional<LintFilter> FindLintFilter(std::string_view name) {
  for (const LintFilterInfo& filter : kLintFilters) {
    if (filter.name == name) return filter.id;
  }
  return std::nullopt;
}

std::string LintFilterNames() {
  std::string names;
  for (const LintFilterInfo& filter : kLintFilters) names += (names.empty() ? "" : ", ") + std::string(filter.name);
  return names;
}

std::optional<LintFilter> FilterThatDrops(const GenerateScopes& scopes, const FindingToFilter& finding,
                                          LintFilterSet enabled) {
  if (enabled.Empty() || !scopes.Complete()) return std::nullopt;
  const FindingProof proof(scopes, finding);
  if (enabled.Has(LintFilter::kEmptyName) && proof.EmptyName()) return LintFilter::kEmptyName;
  if (enabled.Has(LintFilter::kReadOnlyDriver) && proof.ReadOnlyDriver()) return LintFilter::kReadOnlyDriver;
  if (enabled.Has(LintFilter::kAbsentAssignment) && proof.AbsentAssignment()) return LintFilter::kAbsentAssignment;
  if (enabled.Has(LintFilter::kGenerateScope) && proof.GenerateScope()) return LintFilter::kGenerateScope;
  if (enabled.Has(LintFilter::kPortRedeclaration) && proof.PortRedeclaration()) {
    return LintFilter::kPortRedeclaration;
  }
  if (enabled.Has(LintFilter::kInterfaceItems) && proof.InterfaceItems()) return LintFilter::kInterfaceItems;
  if (enabled.Has(LintFilter::kDefaultBeforeBranch) && proof.DefaultBeforeBranch()) {
    return LintFilter::kDefaultBeforeBranch;
  }
  if (enabled.Has(LintFilter::kMemberScopes) && proof.MemberScopes()) return LintFilter::kMemberScopes;
  if (enabled.Has(LintFilter::kInitializerNames) && proof.InitializerNames()) return LintFilter::kInitializerNames;
  if (enabled.Has(LintFilter::kAbsentUse) && proof.AbsentUse()) return LintFilter::kAbsentUse;
  if (enabled.Has(LintFilter::kIntendedLatch) && proof.IntendedLatch()) return LintFilter::kIntendedLatch;
  if (enabled.Has(LintFilter::kHierarchicalPaths) && proof.HierarchicalPaths()) {
    return LintFilter::kHierarchicalPaths;
  }
  if (enabled.Has(LintFilter::kAbsentBranch) && proof.AbsentBranch()) return LintFilter::kAbsentBranch;
  if (enabled.Has(LintFilter::kLetterCase) && proof.LetterCase()) return LintFilter::kLetterCase;
  if (enabled.Has(LintFilter::kAssertionItems) && proof.AssertionItems()) return LintFilter::kAssertionItems;
  if (enabled.Has(LintFilter::kAssignedFirst) && proof.AssignedFirst()) return LintFilter::kAssignedFirst;
  if (enabled.Has(LintFilter::kCompletePaths) && proof.CompletePaths()) return LintFilter::kCompletePaths;
  if (enabled.Has(LintFilter::kBlockLocals) && proof.BlockLocals()) return LintFilter::kBlockLocals;
  return std::nullopt;
}

}  // namespace quill::cli
