#include "structure/verilog_tokens.h"

#include <array>

namespace quill::structure {
namespace {

bool IsWordStart(unsigned char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_'; }
bool IsWordByte(unsigned char c) { return IsWordStart(c) || (c >= '0' && c <= '9') || c == '$'; }
bool IsDigit(unsigned char c) { return c >= '0' && c <= '9'; }
bool IsSpace(unsigned char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v' || c == '\n'; }

// Directives whose whole line (with backslash continuations for `define) is
// skipped, and those that take one name.
constexpr std::array<std::string_view, 8> kLineDirectives = {
    "define", "include", "timescale", "default_nettype", "line", "pragma", "begin_keywords", "unconnected_drive"};
constexpr std::array<std::string_view, 4> kNameDirectives = {"ifdef", "ifndef", "elsif", "undef"};
constexpr std::array<std::string_view, 7> kBareDirectives = {
    "else", "endif", "resetall", "celldefine", "endcelldefine", "nounconnected_drive", "end_keywords"};

template <std::size_t N>
bool IsOneOf(std::string_view word, const std::array<std::string_view, N>& words) {
  for (std::string_view w : words) {
    if (w == word) return true;
  }
  return false;
}

// Operators read as one token; longest first within each leading byte.
constexpr std::array<std::string_view, 20> kOperators = {
    "<<<=", ">>>=", "===", "!==", "<<<", ">>>", "<<=", ">>=", "==?", "!=?",
    "<=",   ">=",   "==",  "!=",  "<<",  ">>",  "::",  "->",  "+:",  "-:"};

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  TokenizedText Run() {
    while (pos_ < text_.size()) Step();
    CloseCommentRun();
    return std::move(out_);
  }

 private:
  unsigned char At(std::size_t i) const { return i < text_.size() ? static_cast<unsigned char>(text_[i]) : 0; }

  Point PointAt(std::size_t offset) const {
    return {line_, static_cast<std::uint32_t>(offset - lineStart_)};
  }

  // Moves to `to`, counting the line ends passed.
  void Advance(std::size_t to) {
    while (pos_ < to) {
      if (text_[pos_] == '\n') {
        ++line_;
        lineStart_ = pos_ + 1;
      }
      ++pos_;
    }
  }

  void Emit(TokenKind kind, std::size_t end) {
    out_.tokens.push_back({kind, pos_, end, line_, static_cast<std::uint32_t>(pos_ - lineStart_)});
    tokenOnLine_ = line_ + 1;
    pos_ = end;
  }

  void Step() {
    const unsigned char c = At(pos_);
    if (IsSpace(c)) return Advance(pos_ + 1);
    if (c == '/' && At(pos_ + 1) == '/') return LineComment();
    if (c == '/' && At(pos_ + 1) == '*') return BlockComment();
    if (c == '"') return SkipString();
    if (c == '(' && At(pos_ + 1) == '*' && At(pos_ + 2) != ')') return SkipAttribute();
    if (c == '`') return Directive();
    if (IsWordStart(c)) return Emit(TokenKind::kIdentifier, WordEnd(pos_ + 1));
    if (c == '$' && IsWordByte(At(pos_ + 1))) return Emit(TokenKind::kSystemName, WordEnd(pos_ + 1));
    if (c == '\\' && pos_ + 1 < text_.size() && !IsSpace(At(pos_ + 1))) {
      std::size_t end = pos_ + 1;
      while (end < text_.size() && !IsSpace(At(end))) ++end;
      return Emit(TokenKind::kIdentifier, end);
    }
    if (IsDigit(c) || (c == '\'' && IsBaseLetter(At(pos_ + 1)))) return Number();
    for (std::string_view op : kOperators) {
      if (text_.substr(pos_, op.size()) == op) return Emit(TokenKind::kPunctuation, pos_ + op.size());
    }
    // One byte; a multi-byte character goes whole so that no token splits it.
    std::size_t end = pos_ + 1;
    if (c >= 0xC0) {
      while (end < text_.size() && (At(end) & 0xC0) == 0x80 && end < pos_ + 4) ++end;
    }
    Emit(TokenKind::kPunctuation, end);
  }

  std::size_t WordEnd(std::size_t from) const {
    while (from < text_.size() && IsWordByte(At(from))) ++from;
    return from;
  }

  static bool IsBaseLetter(unsigned char c) {
    return c == 'b' || c == 'B' || c == 'o' || c == 'O' || c == 'd' || c == 'D' || c == 'h' || c == 'H' ||
           c == 's' || c == 'S';
  }

  void Number() {
    std::size_t end = pos_;
    while (IsDigit(At(end)) || At(end) == '_') ++end;
    if (At(end) == '.' && IsDigit(At(end + 1))) {
      ++end;
      while (IsDigit(At(end)) || At(end) == '_') ++end;
    }
    if ((At(end) == 'e' || At(end) == 'E') && (IsDigit(At(end + 1)) || At(end + 1) == '-' || At(end + 1) == '+')) {
      end += 2;
      while (IsDigit(At(end))) ++end;
    }
    if (At(end) == '\'' && IsBaseLetter(At(end + 1))) {
      end += 1;
      if (At(end) == 's' || At(end) == 'S') ++end;
      if (IsBaseLetter(At(end))) ++end;
      while (At(end) == ' ' || At(end) == '\t') ++end;
      while (IsWordByte(At(end)) || At(end) == '?') ++end;
    }
    if (end == pos_) end = pos_ + 1;
    Emit(TokenKind::kNumber, end);
  }

  void LineComment() {
    const bool alone = tokenOnLine_ != line_ + 1;
    const std::size_t start = pos_;
    const Point startPoint = PointAt(pos_);
    std::size_t end = text_.find('\n', pos_);
    if (end == std::string_view::npos) end = text_.size();
    Advance(end);
    if (!alone) return;
    if (runOpen_ && runLastLine_ + 1 == line_) {
      runLastLine_ = line_;
      run_.end = end;
      run_.stop = PointAt(end);
      return;
    }
    CloseCommentRun();
    runOpen_ = true;
    runFirstLine_ = runLastLine_ = line_;
    run_ = {start, end, startPoint, PointAt(end)};
  }

  void CloseCommentRun() {
    if (runOpen_ && runLastLine_ > runFirstLine_) out_.commentBlocks.push_back(run_);
    runOpen_ = false;
  }

  void BlockComment() {
    const std::size_t start = pos_;
    const Point startPoint = PointAt(pos_);
    std::size_t close = text_.find("*/", pos_ + 2);
    const std::size_t end = close == std::string_view::npos ? text_.size() : close + 2;
    Advance(end);
    if (line_ > startPoint.line) {
      CloseCommentRun();
      out_.commentBlocks.push_back({start, end, startPoint, PointAt(end)});
    }
  }

  // A string ends at its closing quote or, unterminated, at the line end.
  void SkipString() {
    std::size_t end = pos_ + 1;
    while (end < text_.size() && text_[end] != '"' && text_[end] != '\n') {
      end += text_[end] == '\\' && end + 1 < text_.size() && text_[end + 1] != '\n' ? std::size_t{2} : std::size_t{1};
    }
    if (end < text_.size() && text_[end] == '"') ++end;
    tokenOnLine_ = line_ + 1;
    Advance(end);
  }

  void SkipAttribute() {
    std::size_t close = text_.find("*)", pos_ + 2);
    tokenOnLine_ = line_ + 1;
    Advance(close == std::string_view::npos ? text_.size() : close + 2);
  }

  void Directive() {
    const std::size_t nameEnd = WordEnd(pos_ + 1);
    const std::string_view name = text_.substr(pos_ + 1, nameEnd - pos_ - 1);
    if (name.empty()) return Advance(pos_ + 1);
    if (IsOneOf(name, kLineDirectives)) {
      std::size_t end = nameEnd;
      while (end < text_.size() && text_[end] != '\n') {
        // A backslash before the line end continues a macro body.
        if (text_[end] == '\\' && (At(end + 1) == '\n' || (At(end + 1) == '\r' && At(end + 2) == '\n'))) {
          end += At(end + 1) == '\n' ? std::size_t{2} : std::size_t{3};
          continue;
        }
        if (text_[end] == '/' && At(end + 1) == '*') {
          std::size_t close = text_.find("*/", end + 2);
          end = close == std::string_view::npos ? text_.size() : close + 2;
          continue;
        }
        ++end;
      }
      tokenOnLine_ = line_ + 1;
      return Advance(end);
    }
    if (IsOneOf(name, kNameDirectives)) {
      std::size_t end = nameEnd;
      while (At(end) == ' ' || At(end) == '\t') ++end;
      end = WordEnd(end);
      tokenOnLine_ = line_ + 1;
      return Advance(end);
    }
    if (IsOneOf(name, kBareDirectives)) {
      tokenOnLine_ = line_ + 1;
      return Advance(nameEnd);
    }
    Emit(TokenKind::kMacro, nameEnd);
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  std::uint32_t line_ = 0;
  std::size_t lineStart_ = 0;
  std::uint32_t tokenOnLine_ = 0;  // one more than the last line that holds code
  bool runOpen_ = false;
  std::uint32_t runFirstLine_ = 0, runLastLine_ = 0;
  Span run_;
  TokenizedText out_;
};

}  // namespace

TokenizedText TokenizeVerilog(std::string_view text) { return Lexer(text).Run(); }

Span SpanOfTokens(const Token& first, const Token& last) {
  return {first.begin, last.end, {first.line, first.column},
          {last.line, last.column + static_cast<std::uint32_t>(last.end - last.begin)}};
}

}  // namespace quill::structure
