#include "precision/declaration_places.h"

#include "precision/generate_scopes.h"

namespace quill::cli {
namespace {

bool StartsDeclaration(const Token& token) {
  if (token.kind != Token::Kind::kWord) return false;
  // Told apart by length first: most words have none of these lengths.
  switch (token.text.size()) {
    case 3:
      return EqualFoldingCase(token.text, "reg");
    case 4:
      return EqualFoldingCase(token.text, "wire");
    case 5:
      return EqualFoldingCase(token.text, "input") || EqualFoldingCase(token.text, "inout") ||
             EqualFoldingCase(token.text, "logic");
    case 6:
      return EqualFoldingCase(token.text, "output");
    default:
      return false;
  }
}

// The words the linter strips from a declaration's head besides the first.
bool IsHeadWord(const Token& token) {
  if (StartsDeclaration(token)) return true;
  return EqualFoldingCase(token.text, "signed") || EqualFoldingCase(token.text, "unsigned");
}

// The declaration that starts at the first token of a line, `begin`.
DeclarationStatement ReadStatement(const std::vector<Token>& tokens, std::size_t begin) {
  std::size_t t = begin;
  for (;;) {
    // The tokens of one line.
    const std::uint32_t line = tokens[t].line;
    bool ends = false;
    for (; t < tokens.size() && tokens[t].line == line; ++t) {
      if (tokens[t].Is(";") || tokens[t].Is(")")) ends = true;
    }
    if (ends || t == tokens.size() || StartsDeclaration(tokens[t])) return {begin, t};
  }
}

// Whether the piece around the name at `t` holds nothing but it and its
// selects before a "," or "=" (or the declaration's end, where ";" and ")"
// are stripped).
bool IsPieceName(const std::vector<Token>& tokens, const DeclarationStatement& statement, std::size_t t) {
  std::size_t before = t;
  while (before > statement.begin && tokens[before - 1].Is("]")) {
    std::size_t depth = 0;
    std::size_t k = before;
    while (k > statement.begin) {
      --k;
      if (tokens[k].Is("]")) ++depth;
      if (tokens[k].Is("[") && --depth == 0) break;
    }
    if (depth != 0) return false;
    before = k;
  }
  if (before == statement.begin) return false;
  const Token& previous = tokens[before - 1];
  if (!previous.Is(",") && !IsHeadWord(previous)) return false;

  std::size_t after = t + 1;
  while (after < statement.end && tokens[after].Is("[")) {
    std::size_t depth = 0;
    for (; after < statement.end; ++after) {
      if (tokens[after].Is("[")) ++depth;
      if (tokens[after].Is("]") && --depth == 0) break;
    }
    if (after == statement.end) return true;  // an open select runs to the end
    ++after;
  }
  // What is left of a trailing ";" or ")" is stripped; "a == b" is cut at
  // its first "=" like "a = b".
  return after == statement.end || tokens[after].Is(",") || tokens[after].Is(";") || tokens[after].Is(")") ||
         (!tokens[after].text.empty() && tokens[after].text.front() == '=');
}

}  // namespace

std::vector<DeclarationStatement> FindDeclarationStatements(const std::vector<Token>& tokens) {
  std::vector<DeclarationStatement> statements;
  std::size_t t = 0;
  while (t < tokens.size()) {
    const bool lineStart = t == 0 || tokens[t].line != tokens[t - 1].line;
    if (!lineStart || !StartsDeclaration(tokens[t])) {
      ++t;
      continue;
    }
    statements.push_back(ReadStatement(tokens, t));
    t = statements.back().end;
  }
  return statements;
}

std::vector<DeclarationPlace> FindDeclarationPlaces(const std::vector<Token>& tokens,
                                                    const std::vector<DeclarationStatement>& statements,
                                                    std::string_view name) {
  std::vector<DeclarationPlace> places;
  for (const DeclarationStatement& statement : statements) {
    for (std::size_t k = statement.begin + 1; k < statement.end; ++k) {
      if (tokens[k].text == name && IsPieceName(tokens, statement, k)) places.push_back({k, statement.begin});
    }
  }
  return places;
}

std::vector<DeclarationPlace> FindDeclarationPlaces(const std::vector<Token>& tokens, std::string_view name) {
  return FindDeclarationPlaces(tokens, FindDeclarationStatements(tokens), name);
}

}  // namespace quill::cli
