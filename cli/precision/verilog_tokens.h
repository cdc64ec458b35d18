// The words and symbols of a Verilog text, with comments, strings and
// compiler directives left out, for the structure the lint filters read.
#ifndef QUILL_CLI_PRECISION_VERILOG_TOKENS_H_
#define QUILL_CLI_PRECISION_VERILOG_TOKENS_H_

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace quill::cli {

// The keywords the structure scans tell apart, each found once per word by
// the tokenizer so that the scans compare numbers, not text.
enum class Keyword : std::uint8_t {
  kNone,
  kAlways, kAlwaysComb, kAlwaysFf, kAlwaysLatch, kAssign,
  kBegin, kBit, kByte,
  kCase, kCasex, kCasez, kChecker, kClass, kClocking,
  kDefault,
  kElse, kEnd, kEndcase, kEndchecker, kEndclass, kEndclocking, kEndfunction, kEndgenerate, kEndinterface,
  kEndmodule, kEndpackage, kEndprogram, kEndtask,
  kFinal, kFor, kForeach, kForever, kFork, kFunction,
  kGenerate, kGenvar, kGlobal,
  kIf, kInitial, kInout, kInput, kInt, kInteger, kInterface,
  kJoin, kJoinAny, kJoinNone,
  kLocalparam, kLogic, kLongint,
  kMacromodule, kModport, kModule,
  kOutput,
  kPackage, kPacked, kParameter, kPriority, kProgram,
  kRandcase, kReal, kReg, kRepeat,
  kShortint, kSigned, kSoft, kStruct, kSupply0, kSupply1,
  kTagged, kTask, kTime, kTri, kTri0, kTri1,
  kUnion, kUnique, kUnique0, kUnsigned,
  kVar, kVirtual,
  kWand, kWhile, kWire, kWor,
};

// The keyword a word spells (exact letter case), or kNone.
Keyword KeywordOf(std::string_view word);

struct Token {
  enum class Kind : std::uint8_t { kWord, kNumber, kSymbol, kMacro };
  std::string_view text;  // a view into the tokenized text
  std::size_t offset = 0;
  std::uint32_t line = 0;  // zero-based
  Kind kind = Kind::kSymbol;
  Keyword keyword = Keyword::kNone;  // set on words only

  bool Is(std::string_view s) const { return text == s; }
  bool Is(Keyword k) const { return keyword == k; }
  // A one-byte symbol such as "(" or ";".
  bool IsSymbol(char c) const { return text.size() == 1 && text.front() == c; }
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
