#include "precision/preprocessor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include "byte_runs.h"

namespace quill::cli {
namespace {

bool IsNameStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool IsNameByte(char c) {
  return IsNameStart(c) || (c >= '0' && c <= '9') || c == '$';
}

// The bytes that may open a comment, a string or a directive.
constexpr ByteSet kMayOpenSomething = [] {
  ByteSet opens{};
  opens['/'] = true;
  opens['"'] = true;
  opens['`'] = true;
  return opens;
}();

enum class Directive { kNone, kIfdef, kIfndef, kElsif, kElse, kEndif, kDefine, kUndef };

Directive DirectiveOf(std::string_view word) {
  if (word == "ifdef") return Directive::kIfdef;
  if (word == "ifndef") return Directive::kIfndef;
  if (word == "elsif") return Directive::kElsif;
  if (word == "else") return Directive::kElse;
  if (word == "endif") return Directive::kEndif;
  if (word == "define") return Directive::kDefine;
  if (word == "undef") return Directive::kUndef;
  return Directive::kNone;
}

// One open `ifdef ... `endif.
struct Conditional {
  bool parentActive = true;
  bool taken = false;  // some branch so far was compiled
  bool elseSeen = false;
  bool active = true;
  std::size_t offset = 0;  // of the `ifdef, for the problem of a missing `endif
};

class Evaluator {
 public:
  Evaluator(std::string_view text, const DefineSet& defines) : text_(text), defines_(defines) {
    out_.reserve(text.size());
  }

  PreprocessedText Run() {
    while (pos_ < text_.size()) {
      if (!Step()) return Unchanged();
    }
    if (!stack_.empty()) {
      problemLine_ = LineAt(stack_.back().offset);
      problem_ = "`ifdef without `endif";
      return Unchanged();
    }
    PreprocessedText result;
    result.changed = changed_;
    result.text = std::move(out_);
    return result;
  }

 private:
  bool Active() const { return stack_.empty() || stack_.back().active; }

  // The zero-based line of an offset, counted only for a problem.
  std::uint32_t LineAt(std::size_t offset) const {
    return static_cast<std::uint32_t>(
        std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(offset), '\n'));
  }

  // Copies the bytes, or drops them when they lie in an inactive branch;
  // line feeds always stay.
  void Emit(std::size_t from, std::size_t to) {
    if (Active()) {
      out_.append(text_.substr(from, to - from));
      return;
    }
    const std::size_t lineFeeds = KeepLineFeeds(from, to);
    if (to - from > lineFeeds) changed_ = true;
  }

  void Drop(std::size_t from, std::size_t to) {
    KeepLineFeeds(from, to);
    if (to > from) changed_ = true;
  }

  // Appends as many line feeds as [from, to) holds; returns their number.
  std::size_t KeepLineFeeds(std::size_t from, std::size_t to) {
    const auto lineFeeds = static_cast<std::size_t>(std::count(
        text_.begin() + static_cast<std::ptrdiff_t>(from), text_.begin() + static_cast<std::ptrdiff_t>(to), '\n'));
    out_.append(lineFeeds, '\n');
    return lineFeeds;
  }

  // Handles what starts at pos_: a comment, a string, a directive or one byte.
  bool Step() {
    const char c = text_[pos_];
    if (c == '/' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '/') return CopyUntilLineEnd();
    if (c == '/' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '*') {
      const std::size_t close = text_.find("*/", pos_ + 2);
      const std::size_t end = close == std::string_view::npos ? text_.size() : close + 2;
      Emit(pos_, end);
      pos_ = end;
      return true;
    }
    if (c == '"') return CopyString();
    if (c == '`') return HandleDirective();
    // Bytes up to the next one that may start a comment, a string or a
    // directive go through as one run.
    const std::size_t end = FindByteIn(text_, pos_ + 1, kMayOpenSomething);
    Emit(pos_, end);
    pos_ = end;
    return true;
  }

  bool CopyUntilLineEnd() {
    const std::size_t lf = text_.find('\n', pos_);
    const std::size_t end = lf == std::string_view::npos ? text_.size() : lf;
    Emit(pos_, end);
    pos_ = end;
    return true;
  }

  // A string ends at its unescaped closing quote, or at the line's end when
  // it is not closed.
  bool CopyString() {
    std::size_t i = pos_ + 1;
    while (i < text_.size() && text_[i] != '"' && text_[i] != '\n') i += text_[i] == '\\' ? 2u : 1u;
    const std::size_t end = i < text_.size() && text_[i] == '"' ? i + 1 : (i < text_.size() ? i : text_.size());
    Emit(pos_, end);
    pos_ = end;
    return true;
  }

  std::size_t WordEnd(std::size_t from) const {
    while (from < text_.size() && IsNameByte(text_[from])) ++from;
    return from;
  }

  // The macro name after a directive, on the same line: [begin, end), or an
  // empty range when there is none.
  std::pair<std::size_t, std::size_t> NameAfter(std::size_t from) const {
    while (from < text_.size() && (text_[from] == ' ' || text_[from] == '\t')) ++from;
    if (from >= text_.size() || !IsNameStart(text_[from])) return {from, from};
    return {from, WordEnd(from)};
  }

  bool Fail(std::string problem) {
    problemLine_ = LineAt(pos_);
    problem_ = std::move(problem);
    return false;
  }

  bool HandleDirective() {
    const std::size_t wordEnd = WordEnd(pos_ + 1);
    const std::string_view word = text_.substr(pos_ + 1, wordEnd - pos_ - 1);
    const Directive directive = DirectiveOf(word);
    switch (directive) {
      case Directive::kNone:
        Emit(pos_, wordEnd > pos_ + 1 ? wordEnd : pos_ + 1);
        pos_ = wordEnd > pos_ + 1 ? wordEnd : pos_ + 1;
        return true;
      case Directive::kDefine:
      case Directive::kUndef:
        return HandleDefinition(directive, wordEnd);
      case Directive::kIfdef:
      case Directive::kIfndef:
      case Directive::kElsif: {
        const auto [nameBegin, nameEnd] = NameAfter(wordEnd);
        if (nameBegin == nameEnd) return Fail("`" + std::string(word) + " without a macro name");
        const bool defined = defines_.count(text_.substr(nameBegin, nameEnd - nameBegin)) != 0;
        if (directive == Directive::kElsif) {
          if (stack_.empty()) return Fail("`elsif without `ifdef");
          Conditional& open = stack_.back();
          if (open.elseSeen) return Fail("`elsif after `else");
          open.active = open.parentActive && !open.taken && defined;
          open.taken = open.taken || defined;
        } else {
          const bool condition = directive == Directive::kIfdef ? defined : !defined;
          stack_.push_back({Active(), condition, false, Active() && condition, pos_});
        }
        Drop(pos_, nameEnd);
        pos_ = nameEnd;
        return true;
      }
      case Directive::kElse: {
        if (stack_.empty()) return Fail("`else without `ifdef");
        Conditional& open = stack_.back();
        if (open.elseSeen) return Fail("second `else of one `ifdef");
        open.active = open.parentActive && !open.taken;
        open.taken = true;
        open.elseSeen = true;
        Drop(pos_, wordEnd);
        pos_ = wordEnd;
        return true;
      }
      case Directive::kEndif:
        if (stack_.empty()) return Fail("`endif without `ifdef");
        stack_.pop_back();
        Drop(pos_, wordEnd);
        pos_ = wordEnd;
        return true;
    }
    return true;
  }

  // `define NAME body (to the line's end, continued by a backslash before the
  // line feed) and `undef NAME take effect only in active text; the body is
  // never searched for directives.
  bool HandleDefinition(Directive directive, std::size_t wordEnd) {
    const auto [nameBegin, nameEnd] = NameAfter(wordEnd);
    std::size_t end = nameEnd;
    if (directive == Directive::kDefine) {
      while (end < text_.size() && text_[end] != '\n') {
        if (text_[end] == '\\' && end + 1 < text_.size() && text_[end + 1] == '\n') {
          end += 2;
        } else if (text_[end] == '\\' && end + 2 < text_.size() && text_[end + 1] == '\r' && text_[end + 2] == '\n') {
          end += 3;
        } else {
          ++end;
        }
      }
    }
    if (Active() && nameBegin != nameEnd) {
      std::string name(text_.substr(nameBegin, nameEnd - nameBegin));
      if (directive == Directive::kDefine) {
        defines_.insert(std::move(name));
      } else {
        defines_.erase(name);
      }
    }
    Emit(pos_, end);
    pos_ = end;
    return true;
  }

  PreprocessedText Unchanged() const {
    PreprocessedText result;
    result.text = std::string(text_);
    result.problemLine = problemLine_;
    result.problem = problem_;
    return result;
  }

  std::string_view text_;
  DefineSet defines_;
  std::string out_;
  std::vector<Conditional> stack_;
  std::size_t pos_ = 0;
  bool changed_ = false;
  std::optional<std::uint32_t> problemLine_;
  std::string problem_;
};

}  // namespace

std::optional<std::string> DefineName(std::string_view definition) {
  const std::string_view name = definition.substr(0, definition.find('='));
  if (name.empty() || !IsNameStart(name.front())) return std::nullopt;
  for (char c : name) {
    if (!IsNameByte(c)) return std::nullopt;
  }
  return std::string(name);
}

namespace {

// True when some backquote is followed by an "e" or an "i", as every
// conditional directive is (`ifdef, `ifndef, `elsif, `else, `endif).
bool MayHoldAConditional(std::string_view text) {
  for (std::size_t at = text.find('`'); at != std::string_view::npos; at = text.find('`', at + 1)) {
    if (at + 1 < text.size() && (text[at + 1] == 'e' || text[at + 1] == 'i')) return true;
  }
  return false;
}

}  // namespace

PreprocessedText BlankInactiveBranches(std::string_view text, const DefineSet& defines) {
  // Without a conditional directive every byte stays: `define and `undef
  // change only which names later conditionals see.
  if (!MayHoldAConditional(text)) {
    PreprocessedText result;
    result.text = std::string(text);
    return result;
  }
  return Evaluator(text, defines).Run();
}

}  // namespace quill::cli
