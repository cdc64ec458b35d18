// Reading helpers over the token list: words, bracket groups, statement ends
// and the keyword sets that steer the structure scanner.
#ifndef QUILL_STRUCTURE_TOKEN_VIEW_H_
#define QUILL_STRUCTURE_TOKEN_VIEW_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include "structure/structure.h"
#include "structure/verilog_tokens.h"

namespace quill::structure {

// Reserved words of Verilog and SystemVerilog that the scanner meets.
bool IsReservedWord(std::string_view word);
// Words that end whatever is being read: a container's end or a new module.
bool IsHardStop(std::string_view word);
bool IsDirection(std::string_view word);
// Net and variable type words that start a declaration.
bool IsDeclarationWord(std::string_view word);

class TokenView {
 public:
  TokenView(std::string_view text, const std::vector<Token>& tokens) : text_(text), tokens_(tokens) {}

  std::size_t Size() const { return tokens_.size(); }
  const Token& At(std::size_t i) const { return tokens_[i]; }
  // The token's text; empty past the end.
  std::string_view Word(std::size_t i) const {
    return i < tokens_.size() ? structure::TextOf(text_, tokens_[i]) : std::string_view();
  }
  // An identifier that is not a reserved word.
  bool IsName(std::size_t i) const {
    return i < tokens_.size() && tokens_[i].kind == TokenKind::kIdentifier && !IsReservedWord(Word(i));
  }
  // The index just past the bracket group that opens at `open`. A group left
  // open stops before a hard-stop word (or a ';' when `stopAtSemicolon`), and
  // the index returned points there.
  std::size_t SkipGroup(std::size_t open, bool stopAtSemicolon) const;
  // The index of the ';' that ends the statement starting at `from`, outside
  // brackets, or of the hard-stop word or end of tokens that cuts it short.
  std::size_t StatementEnd(std::size_t from) const;
  // Tokens [first, last], both inclusive.
  Span SpanOf(std::size_t first, std::size_t last) const { return SpanOfTokens(tokens_[first], tokens_[last]); }
  std::string_view TextOf(std::size_t first, std::size_t last) const {
    return text_.substr(tokens_[first].begin, tokens_[last].end - tokens_[first].begin);
  }

 private:
  // A group ends at the close that balances its open (kGroupOrSemicolon:
  // or at the first ';'); a statement at a ';' outside brackets.
  enum class WalkEnd { kGroup, kGroupOrSemicolon, kStatement };
  std::size_t Walk(std::size_t from, WalkEnd end) const;

  std::string_view text_;
  const std::vector<Token>& tokens_;
};

}  // namespace quill::structure

#endif  // QUILL_STRUCTURE_TOKEN_VIEW_H_
