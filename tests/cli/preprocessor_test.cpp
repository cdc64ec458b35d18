#include <gtest/gtest.h>

#include <string>

#include "precision/preprocessor.h"

namespace quill::cli {
namespace {

struct BranchCase {
  const char* name;
  std::string text;
  DefineSet defines;
  std::string expected;
};

class BlankInactiveBranchesTest : public ::testing::TestWithParam<BranchCase> {};

TEST_P(BlankInactiveBranchesTest, KeepsOnlyCompiledText) {
  const PreprocessedText result = BlankInactiveBranches(GetParam().text, GetParam().defines);
  EXPECT_FALSE(result.problemLine) << result.problem;
  EXPECT_EQ(result.text, GetParam().expected);
  EXPECT_EQ(result.changed, result.text != GetParam().text);
}

const BranchCase kBranchCases[] = {
    {"NoDirectives", "wire a;\nassign a = b;\n", {}, "wire a;\nassign a = b;\n"},
    {"IfdefUndefinedTakesElse",
     "`ifdef FAST\nwire [7:0] d;\n`else\nwire [3:0] d;\n`endif\n",
     {},
     "\n\n\nwire [3:0] d;\n\n"},
    {"IfdefDefinedOnTheCommandLine",
     "`ifdef FAST\nwire [7:0] d;\n`else\nwire [3:0] d;\n`endif\n",
     {"FAST"},
     "\nwire [7:0] d;\n\n\n\n"},
    {"IfndefIsTheOpposite", "`ifndef SIM\nassign x = 1;\n`endif\n", {"SIM"}, "\n\n\n"},
    {"DefineInTheFileTakesEffectBelow",
     "`define FAST\n`ifdef FAST\nwire a;\n`endif\n",
     {},
     "`define FAST\n\nwire a;\n\n"},
    {"UndefRemovesADefine",
     "`undef FAST\n`ifdef FAST\nwire a;\n`endif\n",
     {"FAST"},
     "`undef FAST\n\n\n\n"},
    {"DefineInAnInactiveBranchDoesNothing",
     "`ifdef X\n`define Y\n`endif\n`ifdef Y\nwire y;\n`endif\n",
     {},
     "\n\n\n\n\n\n"},
    {"ElsifChainTakesTheFirstDefined",
     "`ifdef A\na1;\n`elsif B\nb1;\n`elsif C\nc1;\n`else\nd1;\n`endif\n",
     {"B", "C"},
     "\n\n\nb1;\n\n\n\n\n\n"},
    {"NestedInsideAnInactiveBranchStaysInactive",
     "`ifdef A\n`ifdef B\nx;\n`else\ny;\n`endif\n`endif\n",
     {"B"},
     "\n\n\n\n\n\n\n"},
    {"NestedElseInsideAnActiveBranch",
     "`ifdef A\n`ifdef B\nx;\n`else\ny;\n`endif\n`endif\n",
     {"A"},
     "\n\n\n\ny;\n\n\n"},
    {"DirectivesInCommentsAndStringsAreText",
     "// `ifdef A\n/* `else */\n$display(\"`endif\");\n",
     {},
     "// `ifdef A\n/* `else */\n$display(\"`endif\");\n"},
    {"CommentInAnInactiveBranchHidesADirective",
     "`ifdef A\n/* `endif */\nx;\n`endif\ny;\n",
     {},
     "\n\n\n\ny;\n"},
    {"DirectivesWithinOneLine", "wire `ifdef A a `else b `endif ;\n", {"A"}, "wire  a  ;\n"},
    {"DefineBodyIsNotSearched", "`define M(x) `ifdef x\nwire a;\n", {}, "`define M(x) `ifdef x\nwire a;\n"},
    {"DefineBodyContinuesAfterABackslash",
     "`define M \\\n  `endif\nwire a;\n",
     {},
     "`define M \\\n  `endif\nwire a;\n"},
    {"OtherDirectivesStay", "`timescale 1ns/1ps\n`include \"a.vh\"\n", {}, "`timescale 1ns/1ps\n`include \"a.vh\"\n"},
    {"WordStartingWithADirectiveNameIsNotOne", "`ifdefX\n", {}, "`ifdefX\n"},
    {"DefinesAndMacrosWithoutConditionalsStay", "`define W 8\n`undef W\nwire [`N-1:0] a; // `x\n", {},
     "`define W 8\n`undef W\nwire [`N-1:0] a; // `x\n"},
    {"ConditionalAfterOtherBackquotes", "`define A\nwire `M a;\n`ifndef A\nx;\n`endif\n", {},
     "`define A\nwire `M a;\n\n\n\n"},
    {"CrLfLinesKeepTheirLineFeeds", "`ifdef A\r\nx;\r\n`endif\r\n", {}, "\n\n\r\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, BlankInactiveBranchesTest, ::testing::ValuesIn(kBranchCases),
                         [](const ::testing::TestParamInfo<BranchCase>& param) { return std::string(param.param.name); });

struct ProblemCase {
  const char* name;
  std::string text;
  std::uint32_t line;
  std::string problem;
};

class UnbalancedDirectivesTest : public ::testing::TestWithParam<ProblemCase> {};

TEST_P(UnbalancedDirectivesTest, LeaveTheTextAsItIsAndSayWhere) {
  const PreprocessedText result = BlankInactiveBranches(GetParam().text, {});
  EXPECT_EQ(result.text, GetParam().text);
  EXPECT_FALSE(result.changed);
  ASSERT_TRUE(result.problemLine);
  EXPECT_EQ(*result.problemLine, GetParam().line);
  EXPECT_EQ(result.problem, GetParam().problem);
}

const ProblemCase kProblemCases[] = {
    {"IfdefWithoutEndif", "wire a;\n`ifdef A\nx;\n", 1, "`ifdef without `endif"},
    {"EndifWithoutIfdef", "x;\n\n`endif\n", 2, "`endif without `ifdef"},
    {"ElseWithoutIfdef", "`else\n", 0, "`else without `ifdef"},
    {"ElsifWithoutIfdef", "`elsif A\n", 0, "`elsif without `ifdef"},
    {"ElsifAfterElse", "`ifdef A\n`else\n`elsif B\n`endif\n", 2, "`elsif after `else"},
    {"SecondElse", "`ifdef A\n`else\n`else\n`endif\n", 2, "second `else of one `ifdef"},
    {"IfdefWithoutName", "`ifdef\nx;\n`endif\n", 0, "`ifdef without a macro name"},
    {"LineCountedOverCommentsAndBranches", "/* a\nb */ x;\n`ifdef A\ny;\n`else\nz;\n`else\n`endif\n", 6,
     "second `else of one `ifdef"},
    {"OpenIfdefLineAfterAnInactiveBranch", "`ifdef A\n\n`endif\n// c\n`ifndef B\nx;\n", 4, "`ifdef without `endif"},
};

INSTANTIATE_TEST_SUITE_P(Cases, UnbalancedDirectivesTest, ::testing::ValuesIn(kProblemCases),
                         [](const ::testing::TestParamInfo<ProblemCase>& param) { return std::string(param.param.name); });

TEST(BlankInactiveBranchesTest, KeepsTheLineCountOnAnyBytes) {
  std::string text;
  unsigned state = 7;
  const std::string pieces[] = {"`ifdef A", "`ifndef B", "`else", "`endif", "`elsif A", "`define A", "`undef A",
                                "\n",       "/*",        "*/",    "//",     "\"",       "x",         "\\"};
  for (int round = 0; round < 2000; ++round) {
    text.clear();
    for (int i = 0; i < 30; ++i) {
      state = state * 1103515245u + 12345u;
      text += pieces[(state >> 16) % std::size(pieces)];
      text += ' ';
    }
    const PreprocessedText result = BlankInactiveBranches(text, {"A"});
    ASSERT_EQ(std::count(result.text.begin(), result.text.end(), '\n'), std::count(text.begin(), text.end(), '\n'))
        << text;
  }
}

TEST(DefineNameTest, TakesTheNameBeforeTheValue) {
  EXPECT_EQ(DefineName("SIM"), "SIM");
  EXPECT_EQ(DefineName("WIDTH=8"), "WIDTH");
  EXPECT_EQ(DefineName("_x$1=a=b"), "_x$1");
  EXPECT_FALSE(DefineName(""));
  EXPECT_FALSE(DefineName("=1"));
  EXPECT_FALSE(DefineName("1A"));
  EXPECT_FALSE(DefineName("A-B"));
}

}  // namespace
}  // namespace quill::cli
