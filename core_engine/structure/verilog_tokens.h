// The tokens of a Verilog or SystemVerilog text that its structure is read
// from. Comments, strings, attributes `(* ... *)` and compiler-directive
// lines are skipped; macro uses stay as single tokens.
#ifndef QUILL_STRUCTURE_VERILOG_TOKENS_H_
#define QUILL_STRUCTURE_VERILOG_TOKENS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "structure/structure.h"

namespace quill::structure {

enum class TokenKind : std::uint8_t {
  kIdentifier,  // keywords too; escaped identifiers keep their backslash
  kSystemName,  // $display
  kMacro,       // `WIDTH
  kNumber,
  kPunctuation  // one operator or delimiter, e.g. ( ; <= ::
};

struct Token {
  TokenKind kind = TokenKind::kPunctuation;
  std::size_t begin = 0;  // byte offsets [begin, end) in the text
  std::size_t end = 0;
  std::uint32_t line = 0;    // zero-based
  std::uint32_t column = 0;  // UTF-8 bytes from the line start
};

struct TokenizedText {
  std::vector<Token> tokens;
  // Block comments over several lines and runs of two or more lines that
  // hold only a line comment.
  std::vector<Span> commentBlocks;
};

// One left-to-right pass over the text; any bytes are accepted.
TokenizedText TokenizeVerilog(std::string_view text);

inline std::string_view TextOf(std::string_view text, const Token& token) {
  return text.substr(token.begin, token.end - token.begin);
}

// ScanStructure on a text tokenized already.
FileStructure ScanStructure(std::string_view text, const TokenizedText& tokenized);

// The span of tokens [first, last], both inclusive.
Span SpanOfTokens(const Token& first, const Token& last);

}  // namespace quill::structure

#endif  // QUILL_STRUCTURE_VERILOG_TOKENS_H_
