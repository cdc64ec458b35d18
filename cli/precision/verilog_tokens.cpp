#include "precision/verilog_tokens.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "byte_runs.h"

namespace quill::cli {
namespace {

// What a byte can be: one table lookup instead of a chain of comparisons.
enum ByteClass : std::uint8_t { kSymbolByte, kBlankByte, kWordStartByte, kDigitByte };

constexpr std::array<ByteClass, 256> kByteClasses = [] {
  std::array<ByteClass, 256> classes{};
  for (const char c : std::string_view(" \t\r\n\f\v")) classes[static_cast<unsigned char>(c)] = kBlankByte;
  for (int c = 'a'; c <= 'z'; ++c) classes[static_cast<std::size_t>(c)] = kWordStartByte;
  for (int c = 'A'; c <= 'Z'; ++c) classes[static_cast<std::size_t>(c)] = kWordStartByte;
  classes['_'] = kWordStartByte;
  classes['$'] = kWordStartByte;
  for (int c = '0'; c <= '9'; ++c) classes[static_cast<std::size_t>(c)] = kDigitByte;
  return classes;
}();

ByteClass ClassOf(char c) {
  return kByteClasses[static_cast<unsigned char>(c)];
}
bool IsWordByte(char c) {
  return ClassOf(c) >= kWordStartByte;
}
bool IsBlank(char c) {
  return ClassOf(c) == kBlankByte;
}

constexpr ByteSet kWordBytes = [] {
  ByteSet set{};
  for (std::size_t c = 0; c < set.size(); ++c) set[c] = kByteClasses[c] >= kWordStartByte;
  return set;
}();

// A number's bytes: "8'hFF", "1.5e3", "'0".
constexpr ByteSet kNumberBytes = [] {
  ByteSet set = kWordBytes;
  set['\''] = true;
  set['.'] = true;
  return set;
}();

struct KeywordSpelling {
  std::string_view word;
  Keyword keyword;
};

// In byte order, so that the words of one first letter stand together.
constexpr std::array<KeywordSpelling, 85> kKeywordSpellings = {{
    {"always", Keyword::kAlways},
    {"always_comb", Keyword::kAlwaysComb},
    {"always_ff", Keyword::kAlwaysFf},
    {"always_latch", Keyword::kAlwaysLatch},
    {"assign", Keyword::kAssign},
    {"begin", Keyword::kBegin},
    {"bit", Keyword::kBit},
    {"byte", Keyword::kByte},
    {"case", Keyword::kCase},
    {"casex", Keyword::kCasex},
    {"casez", Keyword::kCasez},
    {"checker", Keyword::kChecker},
    {"class", Keyword::kClass},
    {"clocking", Keyword::kClocking},
    {"default", Keyword::kDefault},
    {"else", Keyword::kElse},
    {"end", Keyword::kEnd},
    {"endcase", Keyword::kEndcase},
    {"endchecker", Keyword::kEndchecker},
    {"endclass", Keyword::kEndclass},
    {"endclocking", Keyword::kEndclocking},
    {"endfunction", Keyword::kEndfunction},
    {"endgenerate", Keyword::kEndgenerate},
    {"endinterface", Keyword::kEndinterface},
    {"endmodule", Keyword::kEndmodule},
    {"endpackage", Keyword::kEndpackage},
    {"endprogram", Keyword::kEndprogram},
    {"endtask", Keyword::kEndtask},
    {"final", Keyword::kFinal},
    {"for", Keyword::kFor},
    {"foreach", Keyword::kForeach},
    {"forever", Keyword::kForever},
    {"fork", Keyword::kFork},
    {"function", Keyword::kFunction},
    {"generate", Keyword::kGenerate},
    {"genvar", Keyword::kGenvar},
    {"global", Keyword::kGlobal},
    {"if", Keyword::kIf},
    {"initial", Keyword::kInitial},
    {"inout", Keyword::kInout},
    {"input", Keyword::kInput},
    {"int", Keyword::kInt},
    {"integer", Keyword::kInteger},
    {"interface", Keyword::kInterface},
    {"join", Keyword::kJoin},
    {"join_any", Keyword::kJoinAny},
    {"join_none", Keyword::kJoinNone},
    {"localparam", Keyword::kLocalparam},
    {"logic", Keyword::kLogic},
    {"longint", Keyword::kLongint},
    {"macromodule", Keyword::kMacromodule},
    {"modport", Keyword::kModport},
    {"module", Keyword::kModule},
    {"output", Keyword::kOutput},
    {"package", Keyword::kPackage},
    {"packed", Keyword::kPacked},
    {"parameter", Keyword::kParameter},
    {"priority", Keyword::kPriority},
    {"program", Keyword::kProgram},
    {"randcase", Keyword::kRandcase},
    {"real", Keyword::kReal},
    {"reg", Keyword::kReg},
    {"repeat", Keyword::kRepeat},
    {"shortint", Keyword::kShortint},
    {"signed", Keyword::kSigned},
    {"soft", Keyword::kSoft},
    {"struct", Keyword::kStruct},
    {"supply0", Keyword::kSupply0},
    {"supply1", Keyword::kSupply1},
    {"tagged", Keyword::kTagged},
    {"task", Keyword::kTask},
    {"time", Keyword::kTime},
    {"tri", Keyword::kTri},
    {"tri0", Keyword::kTri0},
    {"tri1", Keyword::kTri1},
    {"union", Keyword::kUnion},
    {"unique", Keyword::kUnique},
    {"unique0", Keyword::kUnique0},
    {"unsigned", Keyword::kUnsigned},
    {"var", Keyword::kVar},
    {"virtual", Keyword::kVirtual},
    {"wand", Keyword::kWand},
    {"while", Keyword::kWhile},
    {"wire", Keyword::kWire},
    {"wor", Keyword::kWor},
}};

// The longest keyword, "endinterface", has 12 bytes.
constexpr std::size_t kLongestKeyword = 12;

static_assert([] {
  for (const KeywordSpelling& spelling : kKeywordSpellings) {
    const std::string_view word = spelling.word;
    if (word.size() < 2 || word.size() > kLongestKeyword || word.front() < 'a' || word.front() > 'z') return false;
  }
  return true;
}());

// The spellings ordered by first letter and length, so that the words of one
// first letter and one length stand together.
constexpr std::array<KeywordSpelling, kKeywordSpellings.size()> kSpellingsByLength = [] {
  std::array<KeywordSpelling, kKeywordSpellings.size()> sorted = kKeywordSpellings;
  std::sort(sorted.begin(), sorted.end(), [](const KeywordSpelling& a, const KeywordSpelling& b) {
    if (a.word.front() != b.word.front()) return a.word.front() < b.word.front();
    if (a.word.size() != b.word.size()) return a.word.size() < b.word.size();
    return a.word < b.word;
  });
  return sorted;
}();

// For each lower-case first letter and length, the range of
// kSpellingsByLength with both.
struct SpellingRange {
  std::uint8_t begin = 0;
  std::uint8_t end = 0;
};

constexpr std::size_t SpellingSlot(char first, std::size_t length) {
  return static_cast<std::size_t>(first - 'a') * (kLongestKeyword + 1) + length;
}

constexpr std::array<SpellingRange, 26 * (kLongestKeyword + 1)> kSpellingRanges = [] {
  std::array<SpellingRange, 26 * (kLongestKeyword + 1)> ranges{};
  for (std::size_t i = 0; i < kSpellingsByLength.size(); ++i) {
    const std::string_view word = kSpellingsByLength[i].word;
    SpellingRange& range = ranges[SpellingSlot(word.front(), word.size())];
    if (range.begin == range.end) range.begin = static_cast<std::uint8_t>(i);
    range.end = static_cast<std::uint8_t>(i + 1);
  }
  return ranges;
}();

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

// The bytes that StepSpecial reads: those that may open a comment, a
// string, a directive or macro, an escaped name or a number.
constexpr ByteSet kOpensSomething = [] {
  ByteSet set{};
  for (const char c : std::string_view("/\"`\\'")) set[static_cast<unsigned char>(c)] = true;
  return set;
}();

class Tokenizer {
 public:
  // A Verilog text holds about one token per six bytes; reserving that many
  // spares most of the vector's regrowth.
  explicit Tokenizer(std::string_view text) : text_(text) { tokens_.reserve(text.size() / 6 + 16); }

  // Blanks, words, numbers and plain symbols, most of any text, are read
  // here with the position and line in locals; comments, strings,
  // directives and escaped names go through StepSpecial.
  std::vector<Token> Run() {
    const char* const begin = text_.data();
    const char* const end = begin + text_.size();
    const char* p = begin;
    std::uint32_t line = 0;
    while (p != end) {
      const char c = *p;
      const ByteClass byteClass = ClassOf(c);
      if (byteClass == kBlankByte) {
        do {
          line += *p == '\n' ? 1u : 0u;
          ++p;
        } while (p != end && IsBlank(*p));
        continue;
      }
      const auto offset = static_cast<std::size_t>(p - begin);
      if (byteClass == kWordStartByte) {
        const char* const wordEnd = SkipRun(p + 1, end, kWordBytes);
        const std::string_view word(p, static_cast<std::size_t>(wordEnd - p));
        tokens_.push_back({word, offset, line, Token::Kind::kWord, KeywordOf(word)});
        p = wordEnd;
        continue;
      }
      if (byteClass == kDigitByte) {
        const char* const numberEnd = SkipRun(p + 1, end, kNumberBytes);
        tokens_.push_back({std::string_view(p, static_cast<std::size_t>(numberEnd - p)), offset, line,
                           Token::Kind::kNumber, Keyword::kNone});
        p = numberEnd;
        continue;
      }
      if (!kOpensSomething[static_cast<unsigned char>(c)]) {
        pos_ = offset;
        const std::size_t length = LongSymbolLength();
        tokens_.push_back({std::string_view(p, length), offset, line, Token::Kind::kSymbol, Keyword::kNone});
        p += length;
        continue;
      }
      pos_ = offset;
      line_ = line;
      StepSpecial(c);
      p = begin + pos_;
      line = line_;
    }
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

  // A token never holds a line feed, so pushing one leaves the line as it is.
  void Push(Token::Kind kind, std::size_t end) {
    tokens_.push_back({text_.substr(pos_, end - pos_), pos_, line_, kind, Keyword::kNone});
    pos_ = end;
  }

  void PushWord(std::size_t end) {
    const std::string_view word = text_.substr(pos_, end - pos_);
    tokens_.push_back({word, pos_, line_, Token::Kind::kWord, KeywordOf(word)});
    pos_ = end;
  }

  // A comment, a string, a directive or macro, an escaped name or a number
  // that starts with "'"; anything else is a symbol.
  void StepSpecial(char c) {
    const char next = pos_ + 1 < text_.size() ? text_[pos_ + 1] : '\0';
    if (c == '/' && next == '/') {  // up to its line feed, which the blank run then counts
      pos_ = Find("\n", pos_);
      return;
    }
    if (c == '/' && next == '*') {
      const std::size_t close = Find("*/", pos_ + 2);
      return Advance(close < text_.size() ? close + 2 : close);
    }
    if (c == '"') return SkipString();
    if (c == '`') return SkipDirective();
    if (c == '\\') {  // escaped identifier: up to the next blank
      std::size_t end = pos_ + 1;
      while (end < text_.size() && !IsBlank(text_[end])) ++end;
      return PushWord(end);
    }
    if (c == '\'') return Push(Token::Kind::kNumber, SkipBytesIn(text_, pos_ + 1, kNumberBytes));
    Push(Token::Kind::kSymbol, pos_ + LongSymbolLength());
  }

  // The length of the longest symbol at pos_ of "===", "!==", "<=", "==",
  // "!=", ">=", "+=", "-=", "*=", "/=", "|=", "&=", "^=", "++", "--", "->"
  // and "::", or 1.
  std::size_t LongSymbolLength() const {
    const char first = text_[pos_];
    const char second = pos_ + 1 < text_.size() ? text_[pos_ + 1] : '\0';
    if (second == '=') {
      if (first == '=' || first == '!') return pos_ + 2 < text_.size() && text_[pos_ + 2] == '=' ? 3 : 2;
      return std::string_view("<>+-*/|&^").find(first) == std::string_view::npos ? 1 : 2;
    }
    if ((first == '+' && second == '+') || (first == '-' && (second == '-' || second == '>')) ||
        (first == ':' && second == ':')) {
      return 2;
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

Keyword KeywordOf(std::string_view word) {
  if (word.size() < 2 || word.size() > kLongestKeyword || word.front() < 'a' || word.front() > 'z') {
    return Keyword::kNone;
  }
  const SpellingRange range = kSpellingRanges[SpellingSlot(word.front(), word.size())];
  for (std::size_t i = range.begin; i < range.end; ++i) {
    const std::string_view spelling = kSpellingsByLength[i].word;
    std::size_t at = 1;  // the first letters are equal
    while (at < word.size() && spelling[at] == word[at]) ++at;
    if (at == word.size()) return kSpellingsByLength[i].keyword;
  }
  return Keyword::kNone;
}

std::vector<Token> TokenizeVerilog(std::string_view text) {
  return Tokenizer(text).Run();
}

}  // namespace quill::cli
