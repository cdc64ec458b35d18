#include "format/passes/align_parameters.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quill {
namespace {

std::size_t LineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

struct ParamCase {
  const char* name;
  std::string input;
  std::string expected;
};

class AlignParametersCaseTest : public testing::TestWithParam<ParamCase> {};

TEST_P(AlignParametersCaseTest, GivesExpectedBytes) {
  const ParamCase& c = GetParam();
  const std::string output = AlignParameters(c.input);
  EXPECT_EQ(output, c.expected);
  EXPECT_EQ(LineCount(output), LineCount(c.input));
}

const ParamCase kParamCases[] = {
    {"ExampleHeaderList",
     "module m #(\n"
     "  parameter WIDTH = 8,\n"
     "parameter [3:0] MODE = 4'h2, // mode\n"
     "parameter DEPTH = 16\n"
     ") (\n"
     "  input a\n"
     ");",
     "module m #(\n"
     "    parameter       WIDTH = 8    ,\n"
     "    parameter [3:0] MODE  = 4'h2 , // mode\n"
     "    parameter       DEPTH = 16\n"
     ") (\n"
     "  input a\n"
     ");"},
    {"LocalparamInBodyStartsAtColumnZero", "  localparam N = 4;", "localparam N = 4 ;"},
    {"ListItemsGetExactlyFourSpaces",
     "module m #(\n"
     "\t\tparameter W = 8,\n"
     "        parameter D = 4\n"
     ") ();",
     "module m #(\n"
     "    parameter W = 8 ,\n"
     "    parameter D = 4\n"
     ") ();"},
    {"ItemClosingTheListIsNotIndented",
     "module m #(\n"
     "  parameter A = 1,\n"
     "  parameter BB = 2)\n"
     "  (input x);",
     "module m #(\n"
     "    parameter A  = 1  ,\n"
     "parameter BB = 2)\n"
     "  (input x);"},
    {"BodyItemsAreNeverTouched",
     "parameter A = 1;\n"
     "initial = 1;\n"
     "parameter B = 2;\n"
     "Always_FF = 3;\n"
     "parameter C = 3;\n"
     "assign x = y;\n"
     "// parameter D = 4;",
     "parameter A = 1 ;\n"
     "initial = 1;\n"
     "parameter B = 2 ;\n"
     "Always_FF = 3;\n"
     "parameter C = 3 ;\n"
     "assign x = y;\n"
     "// parameter D = 4;"},
    {"NonBlockingAssignmentIsNeverTouched",
     "parameter A = 1;\n"
     "q <= d;",
     "parameter A = 1 ;\n"
     "q <= d;"},
    {"ContinuationUnderAcceptedLine",
     "localparam A = 1;\n"
     "x = 2;",
     "localparam A = 1 ;\n"
     "           x = 2 ;"},
    {"ContinuationChain",
     "parameter A = 1,\n"
     "B = 22,\n"
     "C = 3;",
     "parameter A = 1  ,\n"
     "          B = 22 ,\n"
     "          C = 3  ;"},
    {"KeywordlessLineAtStartIsLeftAlone",
     "x = 2;\n"
     "parameter A = 1;",
     "x = 2;\n"
     "parameter A = 1 ;"},
    {"KeywordlessLineUnderCommentIsLeftAlone",
     "parameter A = 1;\n"
     "// c\n"
     "x = 2;",
     "parameter A = 1 ;\n"
     "// c\n"
     "x = 2;"},
    {"CoreKeywordNameIsSkipped",
     "parameter A = 1,\n"
     "ELSE = 1",
     "parameter A = 1 ,\n"
     "ELSE = 1"},
    {"CommaInsideValueIsAccepted", "parameter P = {a,b},", "parameter P = {a,b} ,"},
    {"NoRangeNoRangeColumn",
     "parameter A = 1;\n"
     "parameter BB = 2;",
     "parameter A  = 1 ;\n"
     "parameter BB = 2 ;"},
    {"OneBitRangeGivesFiveWideColumn",
     "parameter [0:0] A = 1;\n"
     "parameter B = 2;",
     "parameter [0:0] A = 1 ;\n"
     "parameter       B = 2 ;"},
    {"ValueSpacingIsKept",
     "parameter WIDTH=8;\n"
     "parameter N =   4;",
     "parameter WIDTH =8    ;\n"
     "parameter N     =   4 ;"},
    {"CommentWithoutSeparatorFollowsTwoSpaces",
     "parameter A = 1 // a\n"
     "parameter B = 22, // b",
     "parameter A = 1   // a\n"
     "parameter B = 22 , // b"},
    {"LineStartingWithHashOpensList",
     "sub\n"
     "  #(parameter A = 1,\n"
     "parameter BB = 2\n"
     "  ) u (.x(y));",
     "sub\n"
     "  #(parameter A = 1,\n"
     "    parameter BB = 2\n"
     "  ) u (.x(y));"},
    {"ListClosedByPortListOpenerStaysOpen",
     "fifo #(\n"
     "  parameter A = 1\n"
     ") (\n"
     "parameter B = 2\n"
     ");\n"
     "parameter C = 3",
     "fifo #(\n"
     "    parameter A = 1\n"
     ") (\n"
     "    parameter B = 2\n"
     ");\n"
     "parameter C = 3"},
    {"NegativeDepthKeepsListOpen",
     "x #(\n"
     "))\n"
     "((\n"
     "parameter A = 1,",
     "x #(\n"
     "))\n"
     "((\n"
     "    parameter A = 1 ,"},
    {"ListAndLocalparamsFormOneGroup",
     "module m #(\n"
     "  parameter W = 8,\n"
     "  parameter DEPTH = 2)\n"
     "\n"
     "// derived\n"
     "localparam HALF = 1;",
     "module m #(\n"
     "    parameter  W     = 8  ,\n"
     "parameter  DEPTH = 2)\n"
     "\n"
     "// derived\n"
     "localparam HALF  = 1  ;"},
    {"KeywordKeepsItsCase",
     "PARAMETER A = 1;\n"
     "LocalParam BB = 2;",
     "PARAMETER  A  = 1 ;\n"
     "LocalParam BB = 2 ;"},
    {"GluedKeywordSplitsFromName", "parameterX = 1;", "parameter X = 1 ;"},
    {"ParenthesesInCommentsCount",
     "parameter A = 1; // (\n"
     "x #( // (\n"
     "parameter B = 2)\n"
     ")\n"
     "parameter C = 3;",
     "parameter A = 1 ; // (\n"
     "x #( // (\n"
     "    parameter B = 2)\n"
     ")\n"
     "parameter C = 3 ;"},
    {"CarriageReturnsBeforeLineFeedsGo",
     "parameter A = 1;\r\n"
     "parameter BB = 2;\r\r\n",
     "parameter A  = 1 ;\n"
     "parameter BB = 2 ;\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, AlignParametersCaseTest, testing::ValuesIn(kParamCases),
                         [](const testing::TestParamInfo<ParamCase>& param) { return std::string(param.param.name); });

TEST(AlignParametersTest, NothingToDoReturnsInputByteForByte) {
  const std::vector<std::string> inputs = {
      "",
      "\r\n",
      "assign x = y;\r\n",
      "wire a;\r\r\n",
      "x = 2;\r\n",
      "// parameter A = 1\r\n",
      "parameter if = 1\r\n",
      "always @(*) a = 1;\r\nq <= d;\r\n",
      "fifo #(\r\n  W = 8,\r\n  D = 4\r\n) u_fifo (\r\n  .clk(clk)\r\n);\r\n",
  };
  for (const std::string& input : inputs) EXPECT_EQ(AlignParameters(input), input);
}

TEST(AlignParametersTest, AlignedGroupStaysAsItIs) {
  const std::string input =
      "module m #(\n"
      "    parameter       WIDTH = 8    ,\n"
      "    parameter [3:0] MODE  = 4'h2 , // mode\n"
      "    parameter       DEPTH = 16\n"
      ") ();\n"
      "localparam N = 4 ;\n";
  EXPECT_EQ(AlignParameters(input), input);
}

TEST(AlignParametersTest, HundredThousandParametersInOneGroup) {
  constexpr int kCount = 100000;
  std::string input;
  std::string expected;
  for (int i = 0; i < kCount; ++i) {
    const std::string name = "P" + std::to_string(i);
    const std::string value = "= " + std::to_string(i);
    input += "parameter " + name + " = " + std::to_string(i) + ";\n";
    expected += "parameter " + name + std::string(6 - name.size(), ' ') + " " + value +
                std::string(7 - value.size(), ' ') + " ;\n";
  }
  const std::string output = AlignParameters(input);
  EXPECT_EQ(output, expected);
  EXPECT_EQ(LineCount(output), LineCount(input));
}

TEST(AlignParametersTest, MegabyteValue) {
  const std::string value = "= " + std::string(1 << 20, 'v');
  EXPECT_EQ(AlignParameters("parameter A " + value + ";"), "parameter A " + value + " ;");
}

TEST(AlignParametersTest, MegabyteRunOfSpacesInsideValue) {
  const std::string value = "= x" + std::string(1 << 20, ' ') + "y";
  EXPECT_EQ(AlignParameters("parameter a " + value + ";"), "parameter a " + value + " ;");
}

TEST(AlignParametersTest, MegabyteWordBeforeListOpener) {
  const std::string opener = std::string(1 << 20, 'a') + " x #(";
  EXPECT_EQ(AlignParameters(opener + "\nparameter A = 1\n)"), opener + "\n    parameter A = 1\n)");
}

TEST(AlignParametersTest, ListThatNeverCloses) {
  const std::string opener = "module m #(" + std::string(1 << 20, '(');
  EXPECT_EQ(AlignParameters(opener + "\nparameter A = 1"), opener + "\n    parameter A = 1");
}

}  // namespace
}  // namespace quill
