#include "precision/generate_scopes.h"

#include <algorithm>
#include <array>

namespace quill::cli {
namespace {

// Deeper nesting than this is not followed (the scan then proves nothing),
// so that no input can exhaust the stack.
constexpr std::size_t kMaxDepth = 400;

bool IsProceduralKeyword(const Token& token) {
  switch (token.keyword) {
    case Keyword::kAlways:
    case Keyword::kAlwaysFf:
    case Keyword::kAlwaysComb:
    case Keyword::kAlwaysLatch:
    case Keyword::kInitial:
    case Keyword::kFinal:
      return true;
    default:
      return false;
  }
}

bool IsModuleKeyword(const Token& token) {
  switch (token.keyword) {
    case Keyword::kModule:
    case Keyword::kMacromodule:
    case Keyword::kInterface:
    case Keyword::kProgram:
    case Keyword::kPackage:
    case Keyword::kChecker:
      return true;
    default:
      return false;
  }
}

bool IsDeclarationKeyword(const Token& token) {
  switch (token.keyword) {
    case Keyword::kInput:
    case Keyword::kOutput:
    case Keyword::kInout:
    case Keyword::kWire:
    case Keyword::kReg:
    case Keyword::kLogic:
    case Keyword::kTri:
    case Keyword::kTri0:
    case Keyword::kTri1:
    case Keyword::kWand:
    case Keyword::kWor:
    case Keyword::kSupply0:
    case Keyword::kSupply1:
    case Keyword::kInteger:
    case Keyword::kReal:
    case Keyword::kTime:
    case Keyword::kGenvar:
    case Keyword::kParameter:
    case Keyword::kLocalparam:
    case Keyword::kBit:
    case Keyword::kByte:
    case Keyword::kShortint:
    case Keyword::kInt:
    case Keyword::kLongint:
    case Keyword::kVar:
      return true;
    default:
      return false;
  }
}

bool IsCaseKeyword(const Token& token) {
  return token.Is(Keyword::kCase) || token.Is(Keyword::kCasex) || token.Is(Keyword::kCasez);
}

bool IsAggregateQualifier(const Token& token) {
  switch (token.keyword) {
    case Keyword::kPacked:
    case Keyword::kSigned:
    case Keyword::kUnsigned:
    case Keyword::kTagged:
    case Keyword::kSoft:
      return true;
    default:
      return false;
  }
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
  switch (token.keyword) {
    case Keyword::kEndmodule:
    case Keyword::kEndinterface:
    case Keyword::kEndprogram:
    case Keyword::kEndpackage:
    case Keyword::kEndchecker:
      return true;
    default:
      return false;
  }
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
  bool AtKeyword(Keyword keyword) const { return i_ < n_ && tokens_[i_].Is(keyword); }
  bool AtSymbol(char symbol) const { return i_ < n_ && tokens_[i_].IsSymbol(symbol); }

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
    if (i_ >= n_ || !At().IsSymbol('(')) return;
    std::size_t depth = 0;
    while (i_ < n_) {
      if (At().IsSymbol('(')) ++depth;
      if (At().IsSymbol(')')) --depth;
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
      if (depth == 0 && (token.Is(Keyword::kEnd) || token.Is(Keyword::kEndgenerate) || token.Is(Keyword::kEndcase) ||
                         IsModuleEnd(token) || IsModuleKeyword(token))) {
        return;
      }
      if (token.IsSymbol('(')) ++depth;
      if (token.IsSymbol(')') && depth > 0) --depth;
      Take(node);
      if (depth == 0 && token.IsSymbol(';')) return;
    }
  }

  // One module item; false when the current token closes an enclosing
  // construct instead (nothing is taken then).
  bool ParseItem(std::size_t node, std::size_t depth) {
    if (i_ >= n_ || TooDeep(depth)) return false;
    const Token& token = At();
    const bool classAhead = i_ + 1 < n_ && tokens_[i_ + 1].Is(Keyword::kClass);
    if (token.Is(Keyword::kClass) || ((token.Is(Keyword::kVirtual) || token.Is(Keyword::kInterface)) && classAhead)) {
      // A class's members, parameters and methods are its own.
      const std::size_t body = AddNode(ScopeNode::Kind::kNamedBlock, node);
      s_.nodes_[body].routine = true;
      while (i_ < n_ && !At().Is(Keyword::kEndclass) && !IsModuleEnd(At())) {
        if (At().Is(Keyword::kFunction) || At().Is(Keyword::kTask)) {
          ParseRoutine(body);
        } else {
          Take(body);
        }
      }
      if (AtKeyword(Keyword::kEndclass)) {
        Take(body);
        TakeEndLabel(body);
      }
      return true;
    }
    if (IsModuleKeyword(token)) {
      ParseModule(depth);
      return true;
    }
    if (token.Is(Keyword::kEnd) || token.Is(Keyword::kEndcase) || IsModuleEnd(token)) return false;
    if (token.Is(Keyword::kGenerate) || token.Is(Keyword::kEndgenerate) || token.Is(Keyword::kElse)) {
      Take(node);
      return true;
    }
    if (token.kind == Token::Kind::kMacro) {
      // A macro call is a whole item; its ";" may be left out.
      Take(node);
      SkipParentheses(node);
      if (AtSymbol(';')) Take(node);
      return true;
    }
    if (token.Is(Keyword::kBegin)) {
      ParseBlock(node, depth);
    } else if (token.Is(Keyword::kIf)) {
      ParseIf(node, depth);
    } else if (IsCaseKeyword(token)) {
      ParseCase(node, depth);
    } else if (token.Is(Keyword::kFor)) {
      Take(node);
      SkipParentheses(node);
      ParseItem(node, depth + 1);
    } else if (IsProceduralKeyword(token)) {
      ParseProcedural(node, depth);
    } else if (token.Is(Keyword::kFunction) || token.Is(Keyword::kTask)) {
      ParseRoutine(node);
    } else if (token.Is(Keyword::kModport)) {
      SkipToSemicolon(AddNode(ScopeNode::Kind::kInterfaceItems, node));
    } else if (token.Is(Keyword::kClocking) || ((token.Is(Keyword::kDefault) || token.Is(Keyword::kGlobal)) &&
                                                i_ + 1 < n_ && tokens_[i_ + 1].Is(Keyword::kClocking))) {
      const std::size_t items = AddNode(ScopeNode::Kind::kInterfaceItems, node);
      while (i_ < n_ && !At().Is(Keyword::kEndclocking) && !IsModuleEnd(At())) Take(items);
      if (AtKeyword(Keyword::kEndclocking)) Take(items);
    } else {
      SkipToSemicolon(node);
    }
    return true;
  }

  // A routine's locals are its own, like a named block's.
  void ParseRoutine(std::size_t node) {
    const Keyword end = At().Is(Keyword::kFunction) ? Keyword::kEndfunction : Keyword::kEndtask;
    const std::size_t body = AddNode(ScopeNode::Kind::kNamedBlock, node);
    s_.nodes_[body].routine = true;
    while (i_ < n_ && !At().Is(end) && !IsModuleEnd(At()) && !At().Is(Keyword::kEndclass)) Take(body);
    if (!AtKeyword(end)) return;
    Take(body);
    TakeEndLabel(body);
  }

  // "endfunction : name" and the like: the label belongs to the construct
  // that ends, not to the next item.
  void TakeEndLabel(std::size_t node) {
    if (AtSymbol(':') && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
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
    if (AtSymbol(':') && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
      inner = AddNode(ScopeNode::Kind::kNamedBlock, node);
      Take(inner);
      Take(inner);
    }
    while (i_ < n_ && !At().Is(Keyword::kEnd)) {
      if (!ParseItem(inner, depth + 1)) {
        if (!At().Is(Keyword::kEndcase)) return;  // the module ends inside the block
        Take(inner);
      }
    }
    if (AtKeyword(Keyword::kEnd)) {
      Take(inner);
      if (AtSymbol(':') && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
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
    if (AtKeyword(Keyword::kElse)) {
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
    while (i_ < n_ && !At().Is(Keyword::kEndcase)) {
      if (At().Is(Keyword::kEnd) || IsModuleEnd(At()) || IsModuleKeyword(At())) return;
      // The item's labels, up to the ":" outside brackets.
      std::size_t nesting = 0;
      bool colon = false;
      while (i_ < n_) {
        const Token& token = At();
        if (nesting == 0 && (token.Is(Keyword::kEndcase) || token.Is(Keyword::kEnd) || IsModuleEnd(token))) break;
        if (token.IsSymbol('(') || token.IsSymbol('[') || token.IsSymbol('{')) ++nesting;
        if ((token.IsSymbol(')') || token.IsSymbol(']') || token.IsSymbol('}')) && nesting > 0) --nesting;
        const bool isDefault = nesting == 0 && token.Is(Keyword::kDefault);
        Take(node);
        if (nesting == 0 && token.IsSymbol(':')) {
          colon = true;
          break;
        }
        if (isDefault && !AtSymbol(':')) {
          colon = true;
          break;
        }
      }
      if (!colon) break;
      const std::size_t itemNode = AddNode(ScopeNode::Kind::kBranch, node, construct, branch++);
      if (!ParseItem(itemNode, depth + 1)) break;
    }
    if (AtKeyword(Keyword::kEndcase)) Take(node);
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
    while (i_ < n_ && (At().IsSymbol('@') || At().IsSymbol('#'))) {
      Take(node);
      if (AtSymbol('(')) {
        SkipParentheses(node);
      } else if (i_ < n_ && (At().IsSymbol('*') || At().kind != Token::Kind::kSymbol)) {
        Take(node);
      }
    }
  }

  void SkipStatement(std::size_t node, std::size_t depth) {
    if (i_ >= n_ || TooDeep(depth)) return;
    const Token& token = At();
    if (token.Is(Keyword::kBegin) || token.Is(Keyword::kFork)) {
      std::size_t nesting = 0;
      while (i_ < n_) {
        const Token& t = At();
        if (t.Is(Keyword::kBegin) || t.Is(Keyword::kFork)) ++nesting;
        if (t.Is(Keyword::kEnd) || t.Is(Keyword::kJoin) || t.Is(Keyword::kJoinAny) || t.Is(Keyword::kJoinNone)) {
          --nesting;
        }
        if (IsModuleEnd(t)) return;
        Take(node);
        if (nesting == 0) break;
      }
      if (AtSymbol(':') && i_ + 1 < n_ && tokens_[i_ + 1].kind == Token::Kind::kWord) {
        Take(node);
        Take(node);
      }
    } else if (token.Is(Keyword::kIf)) {
      Take(node);
      SkipParentheses(node);
      SkipStatement(node, depth + 1);
      if (AtKeyword(Keyword::kElse)) {
        Take(node);
        SkipStatement(node, depth + 1);
      }
    } else if (IsCaseKeyword(token) || token.Is(Keyword::kRandcase)) {
      std::size_t nesting = 0;
      while (i_ < n_) {
        const Token& t = At();
        if (IsCaseKeyword(t) || t.Is(Keyword::kRandcase)) ++nesting;
        if (t.Is(Keyword::kEndcase)) --nesting;
        if (IsModuleEnd(t)) return;
        Take(node);
        if (nesting == 0) break;
      }
    } else if (token.Is(Keyword::kFor) || token.Is(Keyword::kWhile) || token.Is(Keyword::kRepeat) ||
               token.Is(Keyword::kForeach)) {
      Take(node);
      SkipParentheses(node);
      SkipStatement(node, depth + 1);
    } else if (token.Is(Keyword::kForever) || token.Is(Keyword::kUnique) || token.Is(Keyword::kUnique0) ||
               token.Is(Keyword::kPriority)) {
      Take(node);
      SkipStatement(node, depth + 1);
    } else if (token.IsSymbol('@') || token.IsSymbol('#')) {
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
  std::size_t unsetLine = 0;  // lines before it have their first token set
  bool lineDeclares = false;
  for (std::size_t t = 0; t < tokens_.size(); ++t) {
    const Token& token = tokens_[t];
    if (t == 0 || token.line != tokens_[t - 1].line) {
      // This token is the first of its line and of every line without
      // tokens just before it.
      for (; unsetLine <= token.line; ++unsetLine) lineFirstToken_[unsetLine] = t;
      lineDeclares = IsDeclarationKeyword(token);
    } else if (lineDeclares && token.kind == Token::Kind::kWord) {
      std::vector<std::size_t>& found = declarations_[token.text];
      if (found.empty() || tokens_[found.back()].line != token.line) found.push_back(t);
    }
    if (token.Is(Keyword::kAssign)) assignKeywords_.push_back(t);
    if (token.Is(Keyword::kStruct) || token.Is(Keyword::kUnion)) AddAggregate(t);
    if (token.Is(Keyword::kAssign) && t + 2 < tokens_.size() && tokens_[t + 1].kind == Token::Kind::kWord &&
        tokens_[t + 2].IsSymbol('=')) {
      assignments_[LowerCase(tokens_[t + 1].text)].push_back(t);
    }
  }
}

void GenerateScopes::AddAggregate(std::size_t keyword) {
  std::size_t open = keyword + 1;
  while (open < tokens_.size() && IsAggregateQualifier(tokens_[open])) ++open;
  if (open >= tokens_.size() || !tokens_[open].IsSymbol('{')) return;
  std::size_t depth = 0;
  std::size_t close = open;
  for (; close < tokens_.size(); ++close) {
    if (tokens_[close].IsSymbol('{')) ++depth;
    if (tokens_[close].IsSymbol('}') && --depth == 0) break;
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

const std::vector<DeclarationStatement>& GenerateScopes::LinterDeclarationStatements() const {
  if (!linterDeclarationStatements_) linterDeclarationStatements_ = FindDeclarationStatements(tokens_);
  return *linterDeclarationStatements_;
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
