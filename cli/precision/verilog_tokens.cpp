#include "precision/verilog_tokens.h"

#include <algorithm>
#include <array>

namespace quill::cli {
namespace {

bool IsWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '$';
}
bool IsWordByte(char c) {
  return IsWordStart(c) || (c >= '0' && c <= '9');
}
bool IsBlank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f' || c == '\v';
}

constexpr std::array<std::string_view, 17> kLongSymbols = {"===", "!==", "<=", "==", "!=", ">=", "+=", "-=", "*=",
                                                           "/=",  "|=",  "&=", "^=", "++", "--", "->", "::"};

constexpr std::array<std::string_view, 23> kDirectives = {
    "define",        "undef",     "undefineall",     "ifdef",          "ifndef",    "elsif",
    "else",          "endif",     "include",         "timescale",      "default_nettype",
    "resetall",      "celldefine", "endcelldefine",  "line",           "pragma",    "unconnected_drive",
    "nounconnected_drive", "begin_keywords", "end_keywords", "__FILE__", "__LINE__", "protect"};

bool IsDirective(std::string_view name) {
  for (std::string_view directive : kDirectives) {
    if (name == directive) return true;
  }
  return false;
}

// Directives followed by one name, and directives whose arguments run to
// the end of their line.
bool TakesAName(std::string_view name) {
  return name == "undef" || name == "ifdef" || name == "ifndef" || name == "elsif" || name == "default_nettype" ||
         name == "unconnected_drive";
}

bool TakesTheLine(std::string_view name) {
  return name == "timescale" || name == "include" || name == "line" || name == "pragma" || name == "begin_keywords";
}

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text) {}

  std::vector<Token> Run() {
    while (pos_ < text_.size()) Step();
    return std::move(tokens_);
  }

 private:
  void Advance(std::size_t to) {
    to = std::min(to, text_.size());
    if (to <= pos_) return;
    line_ += static_cast<std::uint32_t>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(pos_),
                                                   text_.begin() + static_cast<std::ptrdiff_t>(to), '\n'));
    pos_ = to;
  }

  std::size_t Find(std::string_view what, std::size_t from) const {
    const std::size_t at = text_.find(what, from);
    return at == std::string_view::npos ? text_.size() : at;
  }

  void Push(Token::Kind kind, std::size_t end) {
    tokens_.push_back({kind, text_.substr(pos_, end - pos_), pos_, line_});
    Advance(end);
  }

  void Step() {
    const char c = text_[pos_];
    const char next = pos_ + 1 < text_.size() ? text_[pos_ + 1] : '\0';
    if (IsBlank(c)) {
      std::size_t end = pos_ + 1;
      while (end < text_.size() && IsBlank(text_[end])) ++end;
      return Advance(end);
    }
    if (c == '/' && next == '/') return Advance(Find("\n", pos_));
    if (c == '/' && next == '*') {
      const std::size_t close = Find("*/", pos_ + 2);
      return Advance(close < text_.size() ? close + 2 : close);
    }
    if (c == '"') return SkipString();
    if (c == '`') return SkipDirective();
    if (c == '\\') {  // escaped identifier: up to the next blank
      std::size_t end = pos_ + 1;
      while (end < text_.size() && !IsBlank(text_[end])) ++end;
      return Push(Token::Kind::kWord, end);
    }
    if (IsWordStart(c)) {
      std::size_t end = pos_ + 1;
      while (end < text_.size() && IsWordByte(text_[end])) ++end;
      return Push(Token::Kind::kWord, end);
    }
    if ((c >= '0' && c <= '9') || c == '\'') {
      std::size_t end = pos_ + 1;
      while (end < text_.size() && (IsWordByte(text_[end]) || text_[end] == '\'' || text_[end] == '.')) ++end;
      return Push(Token::Kind::kNumber, end);
    }
    Push(Token::Kind::kSymbol, pos_ + LongSymbolLength());
  }

  // The length of the longest symbol of kLongSymbols at pos_, or 1. Every
  // long symbol begins with a byte that can start one, so most bytes are
  // decided by their first byte alone.
  std::size_t LongSymbolLength() const {
    if (std::string_view("=!<>+-*/|&^:").find(text_[pos_]) == std::string_view::npos) return 1;
    for (std::string_view symbol : kLongSymbols) {
      if (text_.compare(pos_, symbol.size(), symbol) == 0) return symbol.size();
    }
    return 1;
  }

  void SkipString() {
    std::size_t i = pos_ + 1;
    while (i < text_.size() && text_[i] != '"' && text_[i] != '\n') i += text_[i] == '\\' ? 2u : 1u;
    Advance(i < text_.size() && text_[i] == '"' ? i + 1 : i);
  }

  // A directive is not part of the structure: `define runs to its line's
  // end (continued by a backslash), any other directive is one word. A
  // macro's use stays as a token, so that a call such as `ASSERT(a, b)
  // without its ";" reads as one item.
  void SkipDirective() {
    std::size_t end = pos_ + 1;
    while (end < text_.size() && IsWordByte(text_[end])) ++end;
    const std::string_view word = text_.substr(pos_, end - pos_);
    if (word == "`define") {
      while (end < text_.size() && text_[end] != '\n') {
        end += text_[end] == '\\' && end + 1 < text_.size() ? 2u : 1u;
      }
    }
    if (end > pos_ + 1 && !IsDirective(word.substr(1))) return Push(Token::Kind::kMacro, end);
    if (TakesAName(word.substr(1))) {
      // "`undef NAME": the name is the directive's, not an item of the text.
      while (end < text_.size() && IsBlank(text_[end]) && text_[end] != '\n') ++end;
      while (end < text_.size() && IsWordByte(text_[end])) ++end;
    } else if (TakesTheLine(word.substr(1))) {
      while (end < text_.size() && text_[end] != '\n') ++end;
    }
    Advance(end);
  }

  std::string_view text_;
  std::vector<Token> tokens_;
  std::size_t pos_ = 0;
  std::uint32_t line_ = 0;
};

}  // namespace

std::vector<Token> TokenizeVerilog(std::string_view text) {
  return Tokenizer(text).Run();
}

}  // namespace quill::cli
