#include "source_scan.h"

#include <array>
#include <cstdint>

#include "byte_runs.h"

namespace quill::cli {
namespace {

// What a byte can start, one table lookup per byte: the scan's hot loops
// run over blanks and words.
enum ByteClass : std::uint8_t { kPlainByte, kBlankByte, kLineFeedByte, kWordStartByte, kDigitByte, kDollarByte,
                                kSpecialByte };

constexpr std::array<ByteClass, 256> kByteClasses = [] {
  std::array<ByteClass, 256> classes{};
  for (const char c : std::string_view(" \t\r\f\v")) classes[static_cast<unsigned char>(c)] = kBlankByte;
  classes['\n'] = kLineFeedByte;
  for (int c = 'a'; c <= 'z'; ++c) classes[static_cast<std::size_t>(c)] = kWordStartByte;
  for (int c = 'A'; c <= 'Z'; ++c) classes[static_cast<std::size_t>(c)] = kWordStartByte;
  classes['_'] = kWordStartByte;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = kDigitByte;
  classes['$'] = kDollarByte;
  // Bytes that may open a comment, an attribute, a string, a directive or
  // an escaped identifier.
  for (const char c : std::string_view("/(\"`\\")) classes[static_cast<unsigned char>(c)] = kSpecialByte;
  return classes;
}();

ByteClass ClassOf(char c) {
  return kByteClasses[static_cast<unsigned char>(c)];
}

constexpr ByteSet kWordBytes = [] {
  ByteSet set{};
  for (std::size_t c = 0; c < set.size(); ++c) {
    set[c] = kByteClasses[c] == kWordStartByte || kByteClasses[c] == kDigitByte || kByteClasses[c] == kDollarByte;
  }
  return set;
}();

constexpr ByteSet kBlankBytes = [] {
  ByteSet set{};
  for (std::size_t c = 0; c < set.size(); ++c) set[c] = kByteClasses[c] == kBlankByte;
  return set;
}();

// Inside a statement only these bytes can change what the scan records: a
// line feed, a comment, an attribute, a string, an escaped identifier, the
// ";" that ends the statement and the "e" that may begin an end keyword.
constexpr ByteSet kStatementStops = [] {
  ByteSet set{};
  for (const char c : std::string_view("\n/(\"\\;e")) set[static_cast<unsigned char>(c)] = true;
  return set;
}();

bool IsBlank(char c) {
  return kBlankBytes[static_cast<unsigned char>(c)];
}

// Keywords that close a design unit: a new unit may follow them directly.
constexpr std::array<std::string_view, 8> kUnitEnds = {"endmodule", "endprimitive", "endinterface", "endpackage",
                                                       "endprogram", "endconfig",    "endclass",     "endchecker"};

// Keywords that open a design unit linted on its own.
constexpr std::array<std::string_view, 5> kUnitStarts = {"module", "macromodule", "interface", "program", "package"};

bool StartsUnit(std::string_view word) {
  for (std::string_view start : kUnitStarts) {
    if (word == start) return true;
  }
  return false;
}

bool ClosesUnit(std::string_view word) {
  if (!word.starts_with("end")) return false;
  for (std::string_view end : kUnitEnds) {
    if (word == end) return true;
  }
  return false;
}

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {}

  SourceScan Run() {
    while (pos_ < text_.size()) {
      if (!atStatementStart_ && !pendingInterface_ && !inDirective_ && lineHasCode_) {
        SkipInsideStatement();
        if (pos_ >= text_.size()) break;
      }
      Step();
    }
    return std::move(scan_);
  }

 private:
  char At(std::size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  void Step() {
    const char c = text_[pos_];
    switch (ClassOf(c)) {
      case kLineFeedByte:
        // A directive ends at the end of its line (a backslash continues it).
        if (inDirective_ && !(pos_ > 0 && text_[pos_ - 1] == '\\')) {
          inDirective_ = false;
          atStatementStart_ = true;
        }
        lineHasCode_ = false;
        ++pos_;
        return;
      case kBlankByte:
        pos_ = SkipBytesIn(text_, pos_, kBlankBytes);
        return;
      case kWordStartByte:
        lineHasCode_ = true;
        return TakeWord();
      case kDigitByte:
        lineHasCode_ = true;
        pendingInterface_ = false;
        pos_ = SkipBytesIn(text_, pos_, kWordBytes);
        if (!inDirective_) atStatementStart_ = false;
        return;
      case kSpecialByte:
        return StepSpecial(c);
      case kPlainByte:
      case kDollarByte:
        break;
    }
    lineHasCode_ = true;
    pendingInterface_ = false;
    if (!inDirective_) atStatementStart_ = c == ';';
    ++pos_;
  }

  // Within a statement, past its line's code, every word, number and symbol
  // but ";" and an end keyword leaves the state as it is: the scan passes
  // over them to the next byte of kStatementStops that matters. A line that
  // starts with anything but a comment or a directive has code too, so the
  // scan passes into it as well.
  void SkipInsideStatement() {
    const char* const begin = text_.data();
    const char* const end = begin + text_.size();
    const char* p = begin + pos_;
    for (;;) {
      p = FindInSet(p, end, kStatementStops);
      if (p == end) break;
      if (*p == '\n') {
        const char* const first = SkipRun(p + 1, end, kBlankBytes);
        if (first == end || *first == '/' || *first == '`') break;
        p = first;
        continue;
      }
      if (*p != 'e' || StartsToken(begin, p)) break;
      ++p;
    }
    pos_ = static_cast<std::size_t>(p - begin);
  }

  // True when the word byte at `p` starts a token: a run of word bytes is one
  // word or number, after any "$" bytes it starts with (each a symbol).
  static bool StartsToken(const char* begin, const char* p) {
    while (p != begin && p[-1] == '$') --p;
    return p == begin || !kWordBytes[static_cast<unsigned char>(p[-1])];
  }

  void TakeWord() {
    const std::size_t start = pos_;
    pos_ = SkipBytesIn(text_, pos_, kWordBytes);
    if (inDirective_) return;
    const std::string_view word = text_.substr(start, pos_ - start);
    // "interface class" declares a class, which may sit inside a package:
    // only the interface that follows a statement boundary starts a unit.
    if (pendingInterface_ && word == "class") scan_.unitStarts.pop_back();
    pendingInterface_ = false;
    if (atStatementStart_ && StartsUnit(word)) {
      scan_.unitStarts.push_back(start);
      pendingInterface_ = word == "interface";
    }
    atStatementStart_ = ClosesUnit(word);
  }

  // A comment, an attribute, a string, a directive, an escaped identifier,
  // or else a plain symbol.
  void StepSpecial(char c) {
    if (c == '/' && At(pos_ + 1) == '/') {
      const std::size_t newline = text_.find('\n', pos_);
      const std::size_t end = newline == std::string_view::npos ? text_.size() : newline;
      AddComment(pos_, pos_ + 2, end, end);
      return;
    }
    if (c == '/' && At(pos_ + 1) == '*') {
      const std::size_t close = text_.find("*/", pos_ + 2);
      if (close == std::string_view::npos) {
        AddComment(pos_, pos_ + 2, text_.size(), text_.size());
      } else {
        AddComment(pos_, pos_ + 2, close, close + 2);
      }
      return;
    }
    // An attribute, (* ... *), leaves the statement state as it was; "(*)"
    // is the sensitivity list of @(*).
    if (c == '(' && At(pos_ + 1) == '*' && At(pos_ + 2) != ')') {
      const std::size_t close = text_.find("*)", pos_ + 2);
      pos_ = close == std::string_view::npos ? text_.size() : close + 2;
      lineHasCode_ = true;
      return;
    }
    const bool firstOnLine = !lineHasCode_;
    lineHasCode_ = true;
    if (c == '"') {
      SkipString();
      atStatementStart_ = false;
      return;
    }
    if (c == '`' && firstOnLine) {
      inDirective_ = true;
      ++pos_;
      return;
    }
    if (c == '\\') {
      while (pos_ < text_.size() && !IsBlank(text_[pos_]) && text_[pos_] != '\n') ++pos_;
      atStatementStart_ = false;
      return;
    }
    pendingInterface_ = false;
    if (!inDirective_) atStatementStart_ = c == ';';
    ++pos_;
  }

  void AddComment(std::size_t begin, std::size_t bodyBegin, std::size_t bodyEnd, std::size_t end) {
    scan_.comments.push_back(Comment{begin, end, text_.substr(bodyBegin, bodyEnd - bodyBegin)});
    pos_ = end;
  }

  // A string ends at its closing quote or, unterminated, at the end of the
  // line; a backslash escapes the next byte.
  void SkipString() {
    ++pos_;
    while (pos_ < text_.size()) {
      const char c = text_[pos_];
      if (c == '\\') {
        pos_ += 2;
        continue;
      }
      if (c == '\n') return;
      ++pos_;
      if (c == '"') return;
    }
    pos_ = text_.size();
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  bool atStatementStart_ = true;
  bool inDirective_ = false;
  bool lineHasCode_ = false;
  bool pendingInterface_ = false;  // the last word started a unit with "interface"
  SourceScan scan_;
};

}  // namespace

SourceScan ScanSource(std::string_view text) {
  return Scanner(text).Run();
}

}  // namespace quill::cli
