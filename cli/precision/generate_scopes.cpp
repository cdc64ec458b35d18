#include "precision/generate_scopes.h"

#include <algorithm>
#include <array>

namespace quill::cli {
namespace {

// Deeper nesting than this is not followed (the scan then proves nothing),
// so that no input can exhaust the stack.
constexpr std::size_t kMaxDepth = 400;

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), token.text) != words.end();
}

bool IsProceduralKeyword(const Token& token) {
  return IsAnyOf(token, {"always", "always_ff", "always_comb", "always_latch", "initial", "final"});
}

bool IsModuleKeyword(const Token& token) {
  return IsAnyOf(token, {"module", "macromodule", "interface", "program", "package", "checker"});
}

bool IsDeclarationKeyword(const Token& token) {
  return IsAnyOf(token, {"input", "output", "inout", "wire", "reg", "logic", "tri", "tri0", "tri1", "wand", "wor",
                         "supply0", "supply1", "integer", "real", "time", "genvar", "parameter", "localparam", "bit",
                         "byte", "shortint", "int", "longint", "var"});
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

const std::vector<std::size_t> kNoTokens;

bool IsModuleEnd(const Token& token) {
  return IsAnyOf(token, {"endmodule", "endinterface", "endprogram", "endpackage", "endchecker"});
}

}  // namespace

bool EqualFoldingCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    char x = a[i];
    char y = b[i];
    if (x >= 'A' && x <= 'Z') x = static_cast<char>(x - 'A' + 'a');
    if (y >= 'A' && y <= 'Z') y = static_cast<char>(y - 'A' + 'a');
    if (x != y) return false;
  }
  return true;
}

// A recursive descent over module items that follows generate constructs
// and steps over everything else (declarations, assignments, instances) to
// its ";", and over procedural statements as wholes.
class GenerateScopeParser {
 public:
  explicit GenerateScopeParser(GenerateScopes& scopes)
      : s_(scopes), tokens_(scopes.tokens_), n_(scopes.tokens_.size()) {}

  void Run() {
    s_.nodes_.push_back({ScopeNode::Kind::kRoot, 0, 0, 0, false});
    s_.tokenNode_.assign(n_, 0);
    while (i_ < n_) {
      if (!ParseItem(0, 0)) Take(0);
    }
  }

 private:
  const Token& At() const { return tokens_[i_]; }
  bool AtWord(std::string_view word) const { return i_ < n_ && tokens_[i_].text == word; }

  void Take(std::size_t node) {
    if (i_ < n_) s_.tokenNode_[i_++] = node;
  }

  std::size_t AddNode(ScopeNode::Kind kind, std::size_t parent, std::size_t construct = 0, std::size_t branch = 0) {
    s_.nodes_.push_back({kind, parent, construct, branch, false});
    return s_.nodes_.size() - 1;
  }

  bool TooDeep(std::size_t depth) {
    if (depth <= kMaxDepth) return false;
    s_.complete_ = false;
    while (i_ < n_) Take(0);
    return true;
  }

  // "(" ... the balancing ")", if the current token opens one.
  void SkipParentheses(std::size_t node) {
    if (i_ >= n_ || !At().Is("(")) return;
    std::size_t depth = 0;
    while (i_ < n_) {
      if (At().Is("(")) ++depth;
      if (At().Is(")")) --depth;
      Take(node);
      if (depth == 0) return;
    }
  }

  // Tokens up to and including the ";" that ends an item, outside
  // parentheses; stops before a word that closes an enclosing construct.
  void SkipToSemicolon(std::size_t node) {
    std::size_t depth = 0;
    while (i_ < n_) {
      const Token& token = At();
      if (depth == 0 && (token.Is("end") || token.Is("endgenerate") || token.Is("endcase") || IsModuleEnd(token) ||
                         IsModuleKeyword(token))) {
        return;
      }
      if (token.Is("(")) ++depth;
      if (token.Is(")") && depth > 0) --depth;
      Take(node);
      if (depth == 0 && token.Is(";")) return;
    }
  }

  // One module item; false when the current token closes an enclosing
  // construct instead (nothing is taken then).
  bool ParseItem(std::size_t node, std::size_t depth) {
    if (i_ >= n_ || TooDeep(depth)) return false;
    const Token& token = At();
    const bool classAhead = i_ + 1 < n_ && tokens_[i_ + 1].Is("class");
    if (token.Is("class") || ((token.Is("virtual") || token.Is("interface")) && classAhead)) {
      // A class's members, parameters and methods are its own.
      const std::size_t body = AddNode(ScopeNode::Kind::kNamedBlock, node);
      s_.nodes_[body].routine = true;
      while (i_ < n_ && !At().Is("endclass") && !IsModuleEnd(At())) {
        if (At().Is("function") || At().Is("task")) {
          ParseRoutine(body);
        } else {
          Take(body);
        }
      }
      if (AtWord("endclass")) {
        Take(body);
        TakeEndLabel(body);
      }
      return true;
    }
    if (IsModuleKeyword(token)) {
      ParseModule(depth);
      return true;
    }
    if (token.Is("end") || token.Is("endcase") || IsModuleEnd(token)) return false;
    if (token.Is("generate") || token.Is("endgenerate") || token.Is("else")) {
      Take(node);
      return true;
    }
    if (token.kind == Token::Kind::kMacro) {
      // A macro call is a whole item; its ";" may be left out.
      Take(node);
      SkipParentheses(node);
      if (AtWord(";")) Take(node);
      return true;
    }
    if (token.Is("begin")) {
      ParseBlock(node, depth);
    } else if (token.Is("if")) {
      ParseIf(node, depth);
    } else if (token.Is("case") || token.Is("casex") || token.Is("casez")) {
      ParseCase(node, depth);
    } else if (token.Is("for")) {
      Take(node);
      SkipParentheses(node);
      ParseItem(node, depth + 1);
    } else if (IsProceduralKeyword(token)) {
      ParseProcedural(node, depth);
    } else if (token.Is("function") || token.Is("task")) {
      ParseRoutine(node);
    } else if (token.Is("modport")) {
      SkipToSemicolon(AddNode(ScopeNode::Kind::kInterfaceItems, node));
    } else if (token.Is("clocking") ||
               ((token.Is("default") || token.Is("global")) && i_ + 1 < n_ && tokens_[i_ + 1].Is("clocking"))) {
      const std::size_t items = AddNode(ScopeNode::Kind::kInterfaceItems, node);
      while (i_ < n_ && !At().Is("endclocking") && !IsModuleEnd(At())) Take(items);
      if (AtWord("endclocking")) Take(items);
    } else {
      SkipToSemicolon(node);
    }
    return true;
  }

  // A routine's locals are its own, like a named block's.
  void ParseRoutine(std::size_t node) {
    const std::string_view end = At().Is("function") ? "endfunction" : "endtask";
    const std::size_t body = AddNode(ScopeNode::Kind::kNamedBlock, node);
    s_.nodes_[body].routine = true;
    while (i_ < n_ && !At().Is(end) && !IsModuleEnd(At()) && !At().Is("endclass")) Take(body);
    if (!AtWord(end)) return;
    Take(body);
    TakeEndLabel(body);
  }

  // "endfunction : name" and the like: the label belongs to the construct
  // that ends, not to the next item.
  void TakeEndLabel(std::size_t node) {
    if (AtWord(":") && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
      Take(node);
      Take(node);
    }
  }

  void ParseModule(std::size_t depth) {
    const std::size_t node = AddNode(ScopeNode::Kind::kModule, 0);
    Take(node);
    SkipToSemicolon(node);  // the header
    while (i_ < n_ && !IsModuleEnd(At()) && !IsModuleKeyword(At())) {
      if (!ParseItem(node, depth + 1)) Take(node);  // a stray "end" or "endcase"
    }
    if (i_ < n_ && IsModuleEnd(At())) {
      Take(node);
      TakeEndLabel(node);
    }
  }

  // "begin [: label] items end [: label]"; a label makes a named block.
  void ParseBlock(std::size_t node, std::size_t depth) {
    std::size_t inner = node;
    Take(node);
    if (AtWord(":") && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
      inner = AddNode(ScopeNode::Kind::kNamedBlock, node);
      Take(inner);
      Take(inner);
    }
    while (i_ < n_ && !At().Is("end")) {
      if (!ParseItem(inner, depth + 1)) {
        if (!At().Is("endcase")) return;  // the module ends inside the block
        Take(inner);
      }
    }
    if (AtWord("end")) {
      Take(inner);
      if (AtWord(":") && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
        Take(inner);
        Take(inner);
      }
    }
  }

  void ParseIf(std::size_t node, std::size_t depth) {
    const std::size_t construct = nextConstruct_++;
    Take(node);
    SkipParentheses(node);
    const std::size_t thenNode = AddNode(ScopeNode::Kind::kBranch, node, construct, 0);
    ParseItem(thenNode, depth + 1);
    if (AtWord("else")) {
      Take(node);
      const std::size_t elseNode = AddNode(ScopeNode::Kind::kBranch, node, construct, 1);
      ParseItem(elseNode, depth + 1);
    }
  }

  void ParseCase(std::size_t node, std::size_t depth) {
    const std::size_t construct = nextConstruct_++;
    Take(node);
    SkipParentheses(node);
    std::size_t branch = 0;
    while (i_ < n_ && !At().Is("endcase")) {
      if (At().Is("end") || IsModuleEnd(At()) || IsModuleKeyword(At())) return;
      // The item's labels, up to the ":" outside brackets.
      std::size_t nesting = 0;
      bool colon = false;
      while (i_ < n_) {
        const Token& token = At();
        if (nesting == 0 && (token.Is("endcase") || token.Is("end") || IsModuleEnd(token))) break;
        if (token.Is("(") || token.Is("[") || token.Is("{")) ++nesting;
        if ((token.Is(")") || token.Is("]") || token.Is("}")) && nesting > 0) --nesting;
        const bool isDefault = nesting == 0 && token.Is("default");
        Take(node);
        if (nesting == 0 && token.Is(":")) {
          colon = true;
          break;
        }
        if (isDefault && !AtWord(":")) {
          colon = true;
          break;
        }
      }
      if (!colon) break;
      const std::size_t itemNode = AddNode(ScopeNode::Kind::kBranch, node, construct, branch++);
      if (!ParseItem(itemNode, depth + 1)) break;
    }
    if (AtWord("endcase")) Take(node);
  }

  // The keyword, its event control or delay, and one statement.
  void ParseProcedural(std::size_t node, std::size_t depth) {
    ProceduralBlock block;
    block.keyword = i_;
    block.node = node;
    Take(node);
    SkipTiming(node);
    SkipStatement(node, depth + 1);
    block.end = i_;
    s_.blocks_.push_back(block);
  }

  void SkipTiming(std::size_t node) {
    while (i_ < n_ && (At().Is("@") || At().Is("#"))) {
      Take(node);
      if (AtWord("(")) {
        SkipParentheses(node);
      } else if (i_ < n_ && (At().Is("*") || At().kind != Token::Kind::kSymbol)) {
        Take(node);
      }
    }
  }

  void SkipStatement(std::size_t node, std::size_t depth) {
    if (i_ >= n_ || TooDeep(depth)) return;
    const Token& token = At();
    if (token.Is("begin") || token.Is("fork")) {
      std::size_t nesting = 0;
      while (i_ < n_) {
        const Token& t = At();
        if (t.Is("begin") || t.Is("fork")) ++nesting;
        if (t.Is("end") || t.Is("join") || t.Is("join_any") || t.Is("join_none")) --nesting;
        if (IsModuleEnd(t)) return;
        Take(node);
        if (nesting == 0) break;
      }
      if (AtWord(":") && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
        Take(node);
        Take(node);
      }
    } else if (token.Is("if")) {
      Take(node);
      SkipParentheses(node);
      SkipStatement(node, depth + 1);
      if (AtWord("else")) {
        Take(node);
        SkipStatement(node, depth + 1);
      }
    } else if (token.Is("case") || token.Is("casex") || token.Is("casez") || token.Is("randcase")) {
      std::size_t nesting = 0;
      while (i_ < n_) {
        const Token& t = At();
        if (t.Is("case") || t.Is("casex") || t.Is("casez") || t.Is("randcase")) ++nesting;
        if (t.Is("endcase")) --nesting;
        if (IsModuleEnd(t)) return;
        Take(node);
        if (nesting == 0) break;
      }
    } else if (IsAnyOf(token, {"for", "while", "repeat", "foreach"})) {
      Take(node);
      SkipParentheses(node);
      SkipStatement(node, depth + 1);
    } else if (IsAnyOf(token, {"forever", "unique", "unique0", "priority"})) {
      Take(node);
      SkipStatement(node, depth + 1);
    } else if (token.Is("@") || token.Is("#")) {
      SkipTiming(node);
      SkipStatement(node, depth + 1);
    } else {
      SkipToSemicolon(node);
    }
  }

  GenerateScopes& s_;
  const std::vector<Token>& tokens_;
  const std::size_t n_;
  std::size_t i_ = 0;
  std::size_t nextConstruct_ = 0;
};

GenerateScopes::GenerateScopes(std::string_view text) : text_(text), tokens_(TokenizeVerilog(text)) {
  GenerateScopeParser(*this).Run();
  std::uint32_t lines = tokens_.empty() ? 0 : tokens_.back().line + 1;
  lineFirstToken_.assign(static_cast<std::size_t>(lines) + 1, tokens_.size());
  for (std::size_t t = tokens_.size(); t-- > 0;) lineFirstToken_[tokens_[t].line] = t;
  for (std::size_t line = lines; line-- > 0;) {
    lineFirstToken_[line] = std::min(lineFirstToken_[line], lineFirstToken_[line + 1]);
  }
  bool lineDeclares = false;
  for (std::size_t t = 0; t < tokens_.size(); ++t) {
    const Token& token = tokens_[t];
    if (t == 0 || token.line != tokens_[t - 1].line) {
      lineDeclares = IsDeclarationKeyword(token);
    } else if (lineDeclares && token.kind == Token::Kind::kWord) {
      std::vector<std::size_t>& found = declarations_[token.text];
      if (found.empty() || tokens_[found.back()].line != token.line) found.push_back(t);
    }
    if (token.Is("assign")) assignKeywords_.push_back(t);
    if (token.Is("struct") || token.Is("union")) AddAggregate(t);
    if (token.Is("assign") && t + 2 < tokens_.size() && tokens_[t + 1].kind == Token::Kind::kWord &&
        tokens_[t + 2].Is("=")) {
      assignments_[LowerCase(tokens_[t + 1].text)].push_back(t);
    }
  }
}

void GenerateScopes::AddAggregate(std::size_t keyword) {
  std::size_t open = keyword + 1;
  while (open < tokens_.size() && IsAnyOf(tokens_[open], {"packed", "signed", "unsigned", "tagged", "soft"})) ++open;
  if (open >= tokens_.size() || !tokens_[open].Is("{")) return;
  std::size_t depth = 0;
  std::size_t close = open;
  for (; close < tokens_.size(); ++close) {
    if (tokens_[close].Is("{")) ++depth;
    if (tokens_[close].Is("}") && --depth == 0) break;
  }
  aggregates_.push_back({open, close});
}

std::optional<std::size_t> GenerateScopes::InnermostAggregate(std::size_t token) const {
  std::optional<std::size_t> innermost;
  for (const TokenRange& range : aggregates_) {
    if (range.open > token) break;
    if (token < range.close) innermost = range.open;
  }
  return innermost;
}

const std::vector<std::size_t>& GenerateScopes::DeclarationsOf(std::string_view name) const {
  const auto it = declarations_.find(name);
  return it == declarations_.end() ? kNoTokens : it->second;
}

const std::vector<std::size_t>& GenerateScopes::AssignmentsOf(std::string_view name) const {
  const auto it = assignments_.find(LowerCase(name));
  return it == assignments_.end() ? kNoTokens : it->second;
}

std::size_t GenerateScopes::ModuleOf(std::size_t node) const {
  while (node != 0 && nodes_[node].kind != ScopeNode::Kind::kModule) node = nodes_[node].parent;
  return node;
}

std::optional<std::size_t> GenerateScopes::FindOnLine(std::uint32_t line, std::string_view word,
                                                      bool foldCase) const {
  if (line + 1u >= lineFirstToken_.size()) return std::nullopt;
  for (std::size_t t = lineFirstToken_[line]; t < tokens_.size() && tokens_[t].line == line; ++t) {
    if (foldCase ? EqualFoldingCase(tokens_[t].text, word) : tokens_[t].text == word) return t;
  }
  return std::nullopt;
}

const ProceduralBlock* GenerateScopes::BlockOnLine(std::uint32_t line) const {
  const auto it = std::lower_bound(blocks_.begin(), blocks_.end(), line, [this](const ProceduralBlock& b, std::uint32_t l) {
    return tokens_[b.keyword].line < l;
  });
  if (it == blocks_.end() || tokens_[it->keyword].line != line) return nullptr;
  return &*it;
}

bool GenerateScopes::IsWithin(std::size_t node, std::size_t ancestor) const {
  for (;;) {
    if (node == ancestor) return true;
    if (node == 0) return false;
    node = nodes_[node].parent;
  }
}

bool GenerateScopes::IsInInterfaceItems(std::size_t node) const {
  for (std::size_t x = node; x != 0; x = nodes_[x].parent) {
    if (nodes_[x].kind == ScopeNode::Kind::kInterfaceItems) return true;
  }
  return false;
}

bool GenerateScopes::AreExclusive(std::size_t a, std::size_t b) const {
  for (std::size_t x = a; x != 0; x = nodes_[x].parent) {
    if (nodes_[x].kind != ScopeNode::Kind::kBranch) continue;
    for (std::size_t y = b; y != 0; y = nodes_[y].parent) {
      if (nodes_[y].kind == ScopeNode::Kind::kBranch && nodes_[y].construct == nodes_[x].construct &&
          nodes_[y].branch != nodes_[x].branch) {
        return true;
      }
    }
  }
  return false;
}

bool GenerateScopes::InDifferentNamedBlocks(std::size_t a, std::size_t b) const {
  auto namedBelow = [this](std::size_t from, std::size_t other) {
    for (std::size_t x = from; x != 0 && !IsWithin(other, x); x = nodes_[x].parent) {
      if (nodes_[x].kind == ScopeNode::Kind::kNamedBlock) return true;
    }
    return false;
  };
  return namedBelow(a, b) && namedBelow(b, a);
}

std::optional<std::size_t> GenerateScopes::InnermostRoutine(std::size_t node) const {
  for (std::size_t x = node; x != 0; x = nodes_[x].parent) {
    if (nodes_[x].routine) return x;
  }
  return std::nullopt;
}

std::optional<std::size_t> GenerateScopes::InnermostNamedBlock(std::size_t node) const {
  for (std::size_t x = node; x != 0; x = nodes_[x].parent) {
    if (nodes_[x].kind == ScopeNode::Kind::kNamedBlock) return x;
  }
  return std::nullopt;
}

}  // namespace quill::cli
