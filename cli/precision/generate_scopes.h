// Where each token of a Verilog text stands among the generate constructs of
// its module: the branches of generate if/else and case, named generate
// blocks, and the always/initial blocks at module level. Two lines in
// different branches of one generate if or case are never elaborated
// together; names declared in different named blocks are different objects.
#ifndef QUILL_CLI_PRECISION_GENERATE_SCOPES_H_
#define QUILL_CLI_PRECISION_GENERATE_SCOPES_H_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <string_view>
#include <vector>

#include "precision/declaration_places.h"
#include "precision/verilog_tokens.h"

namespace quill::cli {

struct ScopeNode {
  // kNamedBlock also stands for a function or task body; kInterfaceItems for
  // a modport list or a clocking block, whose "input x" names no new signal.
  enum class Kind : std::uint8_t { kRoot, kModule, kBranch, kNamedBlock, kInterfaceItems };
  Kind kind = Kind::kRoot;
  std::size_t parent = 0;
  std::size_t construct = 0;  // for a branch: which if or case it belongs to
  std::size_t branch = 0;     // for a branch: 0 for "then", 1 for "else", k for the k-th case item
  bool routine = false;       // a named block that is a function, task or class body
};

// An always, always_ff, always_comb, always_latch, initial or final block
// at module or generate level: tokens [keyword, end).
struct ProceduralBlock {
  std::size_t keyword = 0;
  std::size_t end = 0;
  std::size_t node = 0;
};

class GenerateScopes {
 public:
  explicit GenerateScopes(std::string_view text);

  const std::vector<Token>& Tokens() const { return tokens_; }
  std::string_view Text() const { return text_; }
  const std::vector<ProceduralBlock>& Blocks() const { return blocks_; }
  // False when the text nests deeper than the scan follows: nothing can
  // then be proved from it.
  bool Complete() const { return complete_; }

  std::size_t NodeOfToken(std::size_t token) const { return tokenNode_[token]; }
  // The module node that holds the token (0 outside every module).
  std::size_t ModuleOf(std::size_t node) const;

  // The first token on `line` whose text is `word` (ASCII letter case
  // ignored when `foldCase`).
  std::optional<std::size_t> FindOnLine(std::uint32_t line, std::string_view word, bool foldCase) const;
  // The procedural block whose keyword is the first such keyword on `line`.
  const ProceduralBlock* BlockOnLine(std::uint32_t line) const;

  // True when the two nodes lie in different branches of one generate if or
  // case.
  bool AreExclusive(std::size_t a, std::size_t b) const;
  // True when, below their common ancestor, each node lies inside a named
  // generate block (so the two are in different named blocks).
  bool InDifferentNamedBlocks(std::size_t a, std::size_t b) const;
  // The innermost named block holding the node, or nullopt.
  std::optional<std::size_t> InnermostNamedBlock(std::size_t node) const;
  bool IsWithin(std::size_t node, std::size_t ancestor) const;
  bool IsInInterfaceItems(std::size_t node) const;
  // The innermost function, task or class body holding the node, or nullopt.
  std::optional<std::size_t> InnermostRoutine(std::size_t node) const;

  // The name's token on each line whose first word declares (input, wire,
  // reg, parameter, ...), exact spelling, in text order; one per line.
  const std::vector<std::size_t>& DeclarationsOf(std::string_view name) const;
  // The declarations as the linter joins them (see declaration_places.h),
  // found on the first call: only some filters ask, many times per file.
  const std::vector<DeclarationStatement>& LinterDeclarationStatements() const;
  // The "assign" tokens of "assign NAME =", letter case ignored.
  const std::vector<std::size_t>& AssignmentsOf(std::string_view name) const;
  // Every "assign" token, in text order.
  const std::vector<std::size_t>& AssignKeywords() const { return assignKeywords_; }
  // The body of the innermost struct or union that holds the token: the
  // index of its "{" (which tells bodies apart), or nullopt.
  std::optional<std::size_t> InnermostAggregate(std::size_t token) const;

 private:
  friend class GenerateScopeParser;
  void AddAggregate(std::size_t keyword);

  std::string_view text_;
  std::vector<Token> tokens_;
  std::vector<std::size_t> tokenNode_;
  std::vector<ScopeNode> nodes_;
  std::vector<ProceduralBlock> blocks_;
  std::vector<std::size_t> lineFirstToken_;  // per line, the index of its first token (or the next line's)
  std::unordered_map<std::string_view, std::vector<std::size_t>> declarations_;
  std::unordered_map<std::string, std::vector<std::size_t>> assignments_;  // by lower-case name
  std::vector<std::size_t> assignKeywords_;
  mutable std::optional<std::vector<DeclarationStatement>> linterDeclarationStatements_;
  struct TokenRange {
    std::size_t open = 0;   // the "{"
    std::size_t close = 0;  // the matching "}" (or the end)
  };
  std::vector<TokenRange> aggregates_;  // in order of their "{"
  bool complete_ = true;
};

bool EqualFoldingCase(std::string_view a, std::string_view b);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_GENERATE_SCOPES_H_
