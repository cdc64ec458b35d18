// The words and symbols of a Verilog text, with comments, strings and
// compiler directives left out, for the structure the lint filters read.
#ifndef QUILL_CLI_PRECISION_VERILOG_TOKENS_H_
#define QUILL_CLI_PRECISION_VERILOG_TOKENS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quill::cli {

struct Token {
  enum class Kind : std::uint8_t { kWord, kNumber, kSymbol, kMacro };
  Kind kind = Kind::kSymbol;
  std::string_view text;  // a view into the tokenized text
  std::size_t offset = 0;
  std::uint32_t line = 0;  // zero-based

  bool Is(std::string_view s) const { return text == s; }
};

// Words are identifiers and keywords (escaped identifiers included, "$"
// allowed); numbers start with a digit or "'"; symbols are one byte, except
// "<=", "==", "!=", ">=", "===", "!==", "+=", "-=", "*=", "/=", "|=", "&=",
// "^=", "++", "--", "->", "::", which are one token each. A macro's use
// ("`NAME", not a compiler directive) is one kMacro token; directives and
// `define lines give none.
std::vector<Token> TokenizeVerilog(std::string_view text);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_VERILOG_TOKENS_H_
