// Where the linter reads declared names. It takes a line that starts with
// input, output, inout, wire, reg or logic (any letter case) as a
// declaration, joins the lines after it until one holds a ";" or ")" or
// starts with such a word, and counts each comma-separated piece that is one
// plain name once its selects ("[3:0]") and any "= value" are left out.
// The filters compare its counts with these places.
#ifndef QUILL_CLI_PRECISION_DECLARATION_PLACES_H_
#define QUILL_CLI_PRECISION_DECLARATION_PLACES_H_

#include <cstddef>
#include <string_view>
#include <vector>

#include "precision/verilog_tokens.h"

namespace quill::cli {

struct DeclarationPlace {
  std::size_t token;      // the name
  std::size_t statement;  // the word that starts its declaration's line
};

// One declaration as the linter joins it: tokens [begin, end).
struct DeclarationStatement {
  std::size_t begin;
  std::size_t end;
};

// Every declaration of the text, in text order. They do not depend on the
// name asked for, so a caller that asks for many names finds them once.
std::vector<DeclarationStatement> FindDeclarationStatements(const std::vector<Token>& tokens);

// The words spelt `name` (exactly) that the linter may count as declarations
// of it, in text order. It counts no place missing here, unless a string
// holds the name between commas ("wire s = ", a, ";"): the tokens leave
// strings out. A place here may be one it does not count.
std::vector<DeclarationPlace> FindDeclarationPlaces(const std::vector<Token>& tokens, std::string_view name);
// The same among declarations found before.
std::vector<DeclarationPlace> FindDeclarationPlaces(const std::vector<Token>& tokens,
                                                    const std::vector<DeclarationStatement>& statements,
                                                    std::string_view name);

}  // namespace quill::cli

#endif  // QUILL_CLI_PRECISION_DECLARATION_PLACES_H_
