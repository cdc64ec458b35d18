#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "common/pattern.h"
#include "common/text_utils.h"
#include "lint/line_cursor.h"
#include "lint/lint_text.h"
#include "lint/steps.h"
#include "lint/word_scan.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// The pattern-based reading of declarations that the hand scan replaced,
// kept as the reference it must agree with.
namespace reference {

struct DeclarationPatterns {
  Pattern kDeclLinePattern{R"(^\s*(input|output|inout|wire|reg|logic)\b\s+(.+))", CaseMode::kIgnoreCase};
  Pattern kDeclTypePattern{R"(^(wire|reg|logic)\s+)", CaseMode::kIgnoreCase};
  Pattern kDeclSignPattern{R"(^(signed|unsigned)\s+)", CaseMode::kIgnoreCase};
  Pattern kDeclRangePattern{R"(^(\[[^\]]*\])\s*)"};
  Pattern kDeclKeywordStartPattern{R"(^(input|output|inout|wire|reg|logic)\b)", CaseMode::kIgnoreCase};
};

const DeclarationPatterns& CompiledPatterns() {
  static const DeclarationPatterns patterns;
  return patterns;
}

constexpr std::string_view kTrimmed = " \t\r";

std::string_view TrimLeftOf(std::string_view s, std::string_view chars) {
  const std::size_t start = s.find_first_not_of(chars);
  return start == std::string_view::npos ? std::string_view() : s.substr(start);
}

std::string_view TrimOf(std::string_view s, std::string_view chars) {
  return TrimRightOf(TrimLeftOf(s, chars), chars);
}

bool HasTerminator(std::string_view s) {
  return s.find_first_of(";)") != std::string_view::npos;
}


// Whether the whole text is a simple identifier ("^[a-zA-Z_]\w*$").
bool IsSimpleIdentifier(std::string_view s) {
  if (s.empty() || (s[0] >= '0' && s[0] <= '9') || !IsWordByte(s[0])) return false;
  for (char c : s) {
    if (!IsWordByte(c)) return false;
  }
  return true;
}

// The text without its bracket groups ("[" up to the next "]"), such as
// unpacked dimensions.
std::string RemoveBracketGroups(std::string_view s) {
  std::string kept;
  std::size_t pos = 0;
  for (;;) {
    const std::size_t open = s.find('[', pos);
    const std::size_t close = open == std::string_view::npos ? open : s.find(']', open + 1);
    if (close == std::string_view::npos) {
      kept.append(s.substr(pos));
      return kept;
    }
    kept.append(s.substr(pos, open - pos));
    pos = close + 1;
  }
}

// Whether the first byte after leading white space can begin one of the
// declaration keywords; the line pattern is only tried where it can.
bool MayStartDeclaration(std::string_view line) {
  std::size_t i = 0;
  while (i < line.size() && IsSpaceByte(line[i])) ++i;
  if (i == line.size()) return false;
  switch (FoldAscii(line[i])) {
    case 'i': case 'o': case 'w': case 'r': case 'l': return true;
    default: return false;
  }
}

SignalKind KindOf(std::string_view keyword, std::string_view type) {
  if (keyword == "input") return SignalKind::kInput;
  if (keyword == "output") return SignalKind::kOutput;
  if (keyword == "inout") return SignalKind::kInout;
  // Without a direction, a type word decides over the keyword.
  if (type == "reg") return SignalKind::kReg;
  if (type == "logic") return SignalKind::kLogic;
  if (keyword == "reg") return SignalKind::kReg;
  if (keyword == "logic") return SignalKind::kLogic;
  return SignalKind::kWire;
}

std::vector<SignalDecl> ReferenceDeclarations(std::string_view text) {
  std::vector<SignalDecl> signals;
  const DeclarationPatterns& patterns = CompiledPatterns();
  LineCursor lines(text);
  std::string_view line;
  Match match;
  while (lines.Next(&line)) {
    if (!MayStartDeclaration(line) || !patterns.kDeclLinePattern.Search(line, &match)) continue;
    const std::string keyword = ToLowerAscii(match.Group(1));
    std::string_view rest = TrimRightOf(match.Group(2), " \r\t");
    const auto declLine = static_cast<std::uint32_t>(lines.Number());

    std::string type;
    if (patterns.kDeclTypePattern.Search(rest, &match)) {
      type = ToLowerAscii(match.Group(1));
      rest = TrimLeftOf(rest.substr(match.End()), kTrimmed);
    }
    if (patterns.kDeclSignPattern.Search(rest, &match)) rest = rest.substr(match.End());
    std::string range;
    if (patterns.kDeclRangePattern.Search(rest, &match)) {
      range = match.Str(1);
      rest = rest.substr(match.End());
    }

    // A declaration without ";" or ")" continues on the following lines
    // until one of them starts a new declaration.
    std::string names(rest);
    bool closed = HasTerminator(names);
    std::string_view following;
    while (!closed && lines.Next(&following)) {
      const std::string_view next = TrimOf(following, kTrimmed);
      if (patterns.kDeclKeywordStartPattern.Search(next)) {
        lines.Unread();
        break;
      }
      names += ' ';
      names += next;
      closed = HasTerminator(next);
    }
    const std::string_view list = TrimRightOf(names, ";), \t\r");

    const SignalKind kind = KindOf(keyword, type);
    const bool isReg = keyword == "reg" || type == "reg";
    const bool isLogic = keyword == "logic" || type == "logic";
    std::size_t pieceStart = 0;
    for (;;) {
      const std::size_t comma = list.find(',', pieceStart);
      std::string_view piece =
          list.substr(pieceStart, comma == std::string_view::npos ? list.size() - pieceStart : comma - pieceStart);
      piece = piece.substr(0, piece.find('='));
      const std::string withoutBrackets = RemoveBracketGroups(piece);
      const std::string_view name = TrimOf(withoutBrackets, kTrimmed);
      if (IsSimpleIdentifier(name)) {
        signals.push_back(SignalDecl{std::string(name), range, declLine, kind, isReg, isLogic});
      }
      if (comma == std::string_view::npos) break;
      pieceStart = comma + 1;
    }
  }
  return signals;
}

}  // namespace reference

// A SignalDecl as a comparable, printable value.
struct Signal {
  std::string name;
  std::string range;
  std::uint32_t line = 0;
  SignalKind kind = SignalKind::kWire;
  bool isReg = false;
  bool isLogic = false;

  friend bool operator==(const Signal&, const Signal&) = default;
  friend void PrintTo(const Signal& s, std::ostream* out) {
    *out << "{" << s.name << ", \"" << s.range << "\", line " << s.line << ", kind " << static_cast<int>(s.kind)
         << ", isReg " << s.isReg << ", isLogic " << s.isLogic << "}";
  }
};

using Signals = std::vector<Signal>;

struct Extracted {
  Signals signals;
};

Extracted Extract(std::string_view source) {
  Extracted extracted;
  for (const SignalDecl& s : ExtractDeclarations(PrepareText(source))) {
    extracted.signals.push_back({s.name, s.range, s.line, s.kind, s.isReg, s.isLogic});
  }
  return extracted;
}
constexpr SignalKind kWire = SignalKind::kWire;
constexpr SignalKind kReg = SignalKind::kReg;
constexpr SignalKind kLogic = SignalKind::kLogic;
constexpr SignalKind kInput = SignalKind::kInput;
constexpr SignalKind kOutput = SignalKind::kOutput;
constexpr SignalKind kInout = SignalKind::kInout;

struct DeclarationCase {
  const char* name;
  const char* source;
  Signals expected;
};

class ExtractDeclarationsTest : public testing::TestWithParam<DeclarationCase> {};

TEST_P(ExtractDeclarationsTest, Records) {
  const Extracted model = Extract(GetParam().source);
  EXPECT_EQ(model.signals, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractDeclarationsTest,
    testing::Values(
        DeclarationCase{"OutputRegWithRangeAndInitialValue",
                        "\n\n\n\n  output reg [7:0] q = 0;",
                        {{"q", "[7:0]", 4, kOutput, true, false}}},
        DeclarationCase{
            "UnpackedDimensionDropped", "wire [7:0] mem [0:255];", {{"mem", "[7:0]", 0, kWire, false, false}}},
        DeclarationCase{
            "ContinuedListKeepsFirstLine",
            "reg a, b,\n    c;",
            {{"a", "", 0, kReg, true, false}, {"b", "", 0, kReg, true, false}, {"c", "", 0, kReg, true, false}}},
        DeclarationCase{"UpperCaseKeywordKeepsNameSpelling", "INPUT Clk;", {{"Clk", "", 0, kInput, false, false}}},
        DeclarationCase{"EveryKeywordAfterAnyWhiteSpace",
                        "\v Wire a;\n\f\rReg b;\n  LOGIC c;\n\tInOut d;\nOutPut e;\n  xwire f;\n  nput g;",
                        {{"a", "", 0, kWire, false, false},
                         {"b", "", 1, kReg, true, false},
                         {"c", "", 2, kLogic, false, true},
                         {"d", "", 3, kInout, false, false},
                         {"e", "", 4, kOutput, false, false}}},
        DeclarationCase{"LogicSignedDropsSign", "logic signed [3:0] x;", {{"x", "[3:0]", 0, kLogic, false, true}}},
        DeclarationCase{"TypePatternNeedsWhiteSpace", "wire reg_x;", {{"reg_x", "", 0, kWire, false, false}}},
        DeclarationCase{"CommentsAreBlanks",
                        "wire a;\n// comment\nwire b;",
                        {{"a", "", 0, kWire, false, false}, {"b", "", 2, kWire, false, false}}},
        DeclarationCase{"AnsiHeaderOnOneLineGivesNone", "module m(input a, output b);", {}},
        DeclarationCase{"TwoDeclarationsOnOneLineGiveNone", "wire a; wire b;", {}},
        DeclarationCase{"DirectionWithoutSpaceBeforeRangeIsNone", "input[7:0] d;", {}},
        DeclarationCase{"AnsiPortPerLine",
                        "module m (\n  input wire clk,\n  output logic [3:0] y,\n  inout z\n);",
                        {{"clk", "", 1, kInput, false, false},
                         {"y", "[3:0]", 2, kOutput, false, true},
                         {"z", "", 3, kInout, false, false}}},
        DeclarationCase{"DirectionKeepsPortKindWithReg", "input reg x;", {{"x", "", 0, kInput, true, false}}},
        DeclarationCase{"WireRegBecomesReg", "wire reg x;", {{"x", "", 0, kReg, true, false}}},
        DeclarationCase{"RegLogicBecomesLogic", "reg logic x;", {{"x", "", 0, kLogic, true, true}}},
        DeclarationCase{"LogicRegBecomesReg", "logic reg x;", {{"x", "", 0, kReg, true, true}}},
        DeclarationCase{"LogicWireStaysLogic", "logic wire x;", {{"x", "", 0, kLogic, false, true}}},
        DeclarationCase{"NamesAreNotCheckedAgainstKeywords", "wire input;", {{"input", "", 0, kWire, false, false}}},
        DeclarationCase{"NewDeclarationStopsContinuation",
                        "wire a,\nWIRE b;",
                        {{"a", "", 0, kWire, false, false}, {"b", "", 1, kWire, false, false}}},
        DeclarationCase{"BlankLineDoesNotStopContinuation",
                        "wire a,\n\n b;",
                        {{"a", "", 0, kWire, false, false}, {"b", "", 0, kWire, false, false}}},
        DeclarationCase{
            "KeywordPrefixDoesNotStopContinuation", "wire a,\nwirex b;", {{"a", "", 0, kWire, false, false}}},
        DeclarationCase{"ConsumedLinesAreNotExaminedAgain",
                        "wire a,\n  b\n  reg_q c;\nreg d;",
                        {{"a", "", 0, kWire, false, false}, {"d", "", 3, kReg, true, false}}},
        DeclarationCase{"ClosingParenthesisEndsContinuation",
                        "input a\n)\nwire b;",
                        {{"a", "", 0, kInput, false, false}, {"b", "", 2, kWire, false, false}}},
        DeclarationCase{"InitialValuesDropped",
                        "wire a = b, c;",
                        {{"a", "", 0, kWire, false, false}, {"c", "", 0, kWire, false, false}}},
        DeclarationCase{"UnpackedDimensionsOnEachName",
                        "reg [7:0] mem [0:3], x;",
                        {{"mem", "[7:0]", 0, kReg, true, false}, {"x", "[7:0]", 0, kReg, true, false}}},
        DeclarationCase{"TrailingCarriageReturnsRemoved",
                        "wire a;\r\r\nwire b;\r\n",
                        {{"a", "", 0, kWire, false, false}, {"b", "", 1, kWire, false, false}}},
        DeclarationCase{"CarriageReturnInsideLineEndsIt", "wire a\r, b;", {{"a", "", 0, kWire, false, false}}},
        DeclarationCase{
            "KeywordFollowedOnlyByBlanksStillContinues", "input   \n a;", {{"a", "", 0, kInput, false, false}}},
        DeclarationCase{"KeywordAloneIsNoDeclaration", "input\n a;", {}},
        DeclarationCase{"LastLineWithoutTerminator", "wire a", {{"a", "", 0, kWire, false, false}}},
        DeclarationCase{"TypeSignAndRange", "input wire signed [7:0] a;", {{"a", "[7:0]", 0, kInput, false, false}}},
        DeclarationCase{"SignWithoutRange", "reg signed x;", {{"x", "", 0, kReg, true, false}}},
        DeclarationCase{"RangeWithoutSpaceBeforeName", "wire [3:0]x;", {{"x", "[3:0]", 0, kWire, false, false}}},
        DeclarationCase{"NestedBracketRangeEndsAtFirstClose", "wire [a[1]:0] x;", {}},
        DeclarationCase{"TabsSeparateNames",
                        "wire\ta,\tb;",
                        {{"a", "", 0, kWire, false, false}, {"b", "", 0, kWire, false, false}}},
        DeclarationCase{"NumberIsNoName", "wire 1a, b;", {{"b", "", 0, kWire, false, false}}},
        DeclarationCase{"MustStartTheLine", "x wire a;", {}},
        DeclarationCase{"UnclosedBracketKeepsPiece", "wire a[3;", {}}),
    [](const testing::TestParamInfo<DeclarationCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(ExtractDeclarationsNamesTest, KeepsEveryDeclarationInOrderRepeatsIncluded) {
  const Extracted model = Extract("input a;\noutput B;\ninout c;\nwire d;\nreg e;\nlogic f;\nwire A;");
  std::vector<std::string> names;
  for (const Signal& signal : model.signals) names.push_back(signal.name);
  EXPECT_EQ(names, (std::vector<std::string>{"a", "B", "c", "d", "e", "f", "A"}));
}

TEST(ExtractDeclarationsNamesTest, EmptyText) {
  const Extracted model = Extract("");
  EXPECT_TRUE(model.signals.empty());
}

TEST(ExtractDeclarationsPathologicalTest, ManyDeclarationsWithoutTerminators) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "input a\n";
  const Extracted model = Extract(text);
  EXPECT_EQ(model.signals.size(), 100'000u);
  EXPECT_EQ(model.signals.back().line, 99'999u);
}

TEST(ExtractDeclarationsPathologicalTest, OneDeclarationContinuedOverEveryLine) {
  std::string text = "wire a\n";
  for (int i = 0; i < 100'000; ++i) text += "b\n";
  const Extracted model = Extract(text);
  EXPECT_TRUE(model.signals.empty());
}

TEST(ExtractDeclarationsPathologicalTest, HundredThousandInputKeywordsOnOneLine) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "input ";
  const Extracted model = Extract(text);
  EXPECT_TRUE(model.signals.empty());
}

// The hand scan of the declaration heads gives what the patterns gave.
Signals AsSignals(const std::vector<SignalDecl>& decls) {
  Signals signals;
  for (const SignalDecl& s : decls) signals.push_back({s.name, s.range, s.line, s.kind, s.isReg, s.isLogic});
  return signals;
}

TEST(ExtractDeclarationsReferenceTest, AgreesWithThePatternsOnRandomLines) {
  const std::vector<std::string> pieces = {"input", "Output", "inout", "WIRE", "reg", "logic", "signed", "unsigned",
                                           "regx", "[3:0]", "[", "]", " ", "  ", "\t", "\v", "\r", "\n", ";", ")",
                                           ",", "a", "b_1", "=", "x", "7"};
  std::mt19937 random(23);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const std::size_t count = random() % 14;
    for (std::size_t i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
    ASSERT_EQ(AsSignals(ExtractDeclarations(text)), AsSignals(reference::ReferenceDeclarations(text))) << text;
  }
}

TEST(ExtractDeclarationsReferenceTest, AgreesWithThePatternsOnTheCorpus) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const CorpusSource& source : sources) {
    const std::string prepared = PrepareText(source.text);
    EXPECT_EQ(AsSignals(ExtractDeclarations(prepared)), AsSignals(reference::ReferenceDeclarations(prepared)))
        << source.path;
  }
}

}  // namespace
}  // namespace quill
