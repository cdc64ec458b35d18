#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "lint/lint_text.h"
#include "lint/steps.h"

namespace quill {
namespace {

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

}  // namespace
}  // namespace quill
