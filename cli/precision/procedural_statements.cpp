#include "precision/procedural_statements.h"

#include <algorithm>
#include <initializer_list>

namespace quill::cli {
namespace {

bool IsAnyOf(const Token& token, std::initializer_list<std::string_view> words) {
  return std::find(words.begin(), words.end(), token.text) != words.end();
}

// Words that may stand before "(" without being a task or function call.
bool IsControlWord(const Token& token) {
  return IsAnyOf(token, {"if", "case", "casex", "casez", "randcase", "for", "while", "repeat", "foreach", "wait",
                         "posedge", "negedge", "edge", "or", "and", "not", "iff", "return", "assert", "assume",
                         "cover", "unique", "unique0", "priority", "begin", "else", "inside"});
}

}  // namespace

bool IsAssignmentOperator(const Token& token) {
  return IsAnyOf(token, {"=", "+=", "-=", "*=", "/=", "|=", "&=", "^=", "++", "--"});
}

bool IsCall(const std::vector<Token>& tokens, std::size_t open) {
  if (open == 0) return false;
  const Token& before = tokens[open - 1];
  if (before.kind == Token::Kind::kMacro) return true;  // a macro call may assign its arguments
  return before.kind == Token::Kind::kWord && !IsControlWord(before) && before.text.front() != '$';
}

std::size_t SkipSelects(const std::vector<Token>& tokens, std::size_t k, std::size_t end) {
  for (;;) {
    if (k < end && tokens[k].Is("[")) {
      std::size_t depth = 0;
      while (k < end) {
        if (tokens[k].Is("[")) ++depth;
        if (tokens[k].Is("]") && --depth == 0) break;
        ++k;
      }
      ++k;
    } else if (k + 1 < end && tokens[k].Is(".") && tokens[k + 1].kind == Token::Kind::kWord) {
      k += 2;
    } else {
      return k;
    }
  }
}

bool IsSplitCompoundAssignment(const std::vector<Token>& tokens, std::size_t k, std::size_t end) {
  if (k + 1 >= end || !IsAnyOf(tokens[k], {"%", "<", ">"})) return false;
  return IsAnyOf(tokens[k + 1], {"=", "<=", ">=", ">"});
}

std::size_t StatementEnd(const std::vector<Token>& tokens, std::size_t j, std::size_t end, std::size_t depth) {
  if (j >= end || depth > kMaxStatementDepth) return kNoStatementEnd;
  const Token& token = tokens[j];
  auto skipParentheses = [&](std::size_t k) {
    if (k >= end || !tokens[k].Is("(")) return k;
    std::size_t nesting = 0;
    for (; k < end; ++k) {
      if (tokens[k].Is("(")) ++nesting;
      if (tokens[k].Is(")") && --nesting == 0) return k + 1;
    }
    return kNoStatementEnd;
  };
  if (token.Is("begin")) {
    std::size_t nesting = 0;
    for (std::size_t k = j; k < end; ++k) {
      if (tokens[k].Is("begin")) ++nesting;
      if (tokens[k].Is("end") && --nesting == 0) {
        if (k + 2 < end && tokens[k + 1].Is(":")) return k + 3;
        return k + 1;
      }
    }
    return kNoStatementEnd;
  }
  if (IsAnyOf(token, {"unique", "unique0", "priority"})) return StatementEnd(tokens, j + 1, end, depth + 1);
  if (token.Is("if")) {
    const std::size_t condition = skipParentheses(j + 1);
    if (condition == kNoStatementEnd) return kNoStatementEnd;
    std::size_t after = StatementEnd(tokens, condition, end, depth + 1);
    if (after != kNoStatementEnd && after < end && tokens[after].Is("else")) after = StatementEnd(tokens, after + 1, end, depth + 1);
    return after;
  }
  if (IsAnyOf(token, {"case", "casex", "casez"})) {
    std::size_t nesting = 0;
    for (std::size_t k = j; k < end; ++k) {
      if (IsAnyOf(tokens[k], {"case", "casex", "casez"})) ++nesting;
      if (tokens[k].Is("endcase") && --nesting == 0) return k + 1;
    }
    return kNoStatementEnd;
  }
  std::size_t nesting = 0;
  for (std::size_t k = j; k < end; ++k) {
    if (tokens[k].Is("(")) ++nesting;
    if (tokens[k].Is(")") && nesting > 0) --nesting;
    if (nesting == 0 && tokens[k].Is(";")) return k + 1;
    if (tokens[k].Is("end") || tokens[k].Is("begin")) return kNoStatementEnd;
  }
  return kNoStatementEnd;
}

std::size_t BodyStart(const std::vector<Token>& tokens, const ProceduralBlock& block) {
  std::size_t j = block.keyword + 1;
  while (j < block.end && (tokens[j].Is("@") || tokens[j].Is("#"))) {
    ++j;
    if (j < block.end && tokens[j].Is("(")) {
      std::size_t nesting = 0;
      for (; j < block.end; ++j) {
        if (tokens[j].Is("(")) ++nesting;
        if (tokens[j].Is(")") && --nesting == 0) break;
      }
      ++j;
    } else if (j < block.end) {
      ++j;
    }
  }
  return j;
}

}  // namespace quill::cli
