#include "format/passes/layout_port_list.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quill {
namespace {

std::size_t LineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

struct LayoutCase {
  const char* name;
  std::string input;
  std::string expected;
};

class LayoutPortListCaseTest : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutPortListCaseTest, GivesExpectedBytes) {
  const LayoutCase& c = GetParam();
  const std::string output = LayoutPortList(c.input);
  EXPECT_EQ(output, c.expected);
  EXPECT_EQ(LineCount(output), LineCount(c.input));
}

const LayoutCase kLayoutCases[] = {
    {"MissingColumnsBecomeSpaces",
     "module m (\n"
     "input a,\n"
     "output reg signed [3:0] b // x\n"
     ");\n",
     "module m (\n"
     "    input                    a ,\n"
     "    output reg signed  [3:0] b  // x\n"
     ");\n"},
    {"ParameterListOnHeaderIsSkipped",
     "module m #(parameter W = 8) (\n"
     "  input  wire [W-1:0] d,\n"
     "  output q\n"
     ");\n",
     "module m #(parameter W = 8) (\n"
     "    input  wire [W-1:0] d ,\n"
     "    output              q\n"
     ");\n"},
    {"ParameterListOnFollowingLinesIsSkipped",
     "module m\n"
     "  #(parameter W = 8,\n"
     "    parameter D = (W * 2))\n"
     "  (input a,\n"
     "   output bb\n"
     "  );\n",
     "module m\n"
     "  #(parameter W = 8,\n"
     "    parameter D = (W * 2))\n"
     "  (input a,\n"
     "    output bb\n"
     ");\n"},
    {"OnlyFirstModuleChanges",
     "module a (\n"
     "input x,\n"
     "output yy\n"
     ");\n"
     "endmodule\n"
     "module b (\n"
     "input p,\n"
     "output qq\n"
     ");\n"
     "endmodule\n",
     "module a (\n"
     "    input  x  ,\n"
     "    output yy\n"
     ");\n"
     "endmodule\n"
     "module b (\n"
     "input p,\n"
     "output qq\n"
     ");\n"
     "endmodule\n"},
    {"CloseFollowedByCommentIsNotTheEnd",
     "module m (\n"
     "  input a,\n"
     "  output b\n"
     ") // end of ports\n"
     ";\n"
     "wire w;\n"
     "sub u (\n"
     "  .x(w)\n"
     ");\n",
     "module m (\n"
     "    input  a ,\n"
     "    output b\n"
     "    ) // end of ports\n"
     "    ;\n"
     "    wire w;\n"
     "    sub u (\n"
     "    .x(w)\n"
     ");\n"},
    {"SignedColumnKeepsItsTrailingSpace",
     "module m (\n"
     "input signed [7:0] a,\n"
     "output b\n"
     ");\n",
     "module m (\n"
     "    input  signed  [7:0] a ,\n"
     "    output               b\n"
     ");\n"},
    {"SignedColumnKeepsAllItsTrailingBlanks",
     "module m (\n"
     "input signed\t\t[7:0] a,\n"
     "input signed b\n"
     ");\n",
     "module m (\n"
     "    input signed\t\t [7:0] a ,\n"
     "    input signed         b\n"
     ");\n"},
    {"PortsOnHeaderAndCloseLinesStay",
     "module m (input a,\n"
     "  input  wire b,\n"
     "  output c);\n",
     "module m (input a,\n"
     "    input wire b ,\n"
     "  output c);\n"},
    {"OtherLinesAreOnlyReindented",
     "module m (\n"
     "// clocks\n"
     "  input clk,\n"
     "   \t\n"
     "`ifdef DEBUG\n"
     "  input dbg,\n"
     "`endif\n"
     "  // last  \n"
     "  output q\n"
     "  );\n",
     "module m (\n"
     "    // clocks\n"
     "    input  clk ,\n"
     "\n"
     "    `ifdef DEBUG\n"
     "    input  dbg ,\n"
     "    `endif\n"
     "    // last  \n"
     "    output q\n"
     ");\n"},
    {"InitialiserAndArrayCells",
     "module m (\n"
     "output reg q = 1'b0 ,\n"
     "input [7:0] mem [0:3], // table\n"
     "inout io\n"
     ");\n",
     "module m (\n"
     "    output reg       q = 1'b0       ,\n"
     "    input      [7:0] mem      [0:3] , // table\n"
     "    inout            io\n"
     ");\n"},
    {"InitialiserTakesCommaWrittenAgainstIt",
     "module m (\n"
     "output reg q = 1'b0 ,\n"
     "output r = 1,\n"
     "inout io\n"
     ");\n",
     "module m (\n"
     "    output reg q = 1'b0 ,\n"
     "    output     r = 1,\n"
     "    inout      io\n"
     ");\n"},
    {"DirectionKeepsItsCase",
     "module m (\n"
     "INPUT A,\n"
     "Output Logic [1:0] B\n"
     ");\n",
     "module m (\n"
     "    INPUT              A ,\n"
     "    Output Logic [1:0] B\n"
     ");\n"},
    {"CloseLineLosesLeadingBlanksOnly",
     "module m (\n"
     "input a\n"
     "\t  ) ;  // done\n",
     "module m (\n"
     "    input a\n"
     ") ;  // done\n"},
    {"CrLfLinesComeBackWithLf",
     "module m (\r\n"
     "input a\r\n"
     ");\r\n",
     "module m (\n"
     "    input a\n"
     ");\n"},
    {"SpacesOnlyBeforeSemicolon",
     "module m (\n"
     "input a\n"
     ")\t;\n"
     "foo f (\n"
     "  .a(b)\n"
     ")   ;\n",
     "module m (\n"
     "    input a\n"
     "    )\t;\n"
     "    foo f (\n"
     "    .a(b)\n"
     ")   ;\n"},
    {"HeaderInsideLaterLine",
     "// top level\n"
     "  Module top(\n"
     "input a, input b,\n"
     "output c);\n",
     "// top level\n"
     "  Module top(\n"
     "    input a, input b,\n"
     "output c);\n"},
    {"HeaderWithoutPortListTakesNextParenthesis",
     "module m;\n"
     "  foo u (\n"
     "    .a(b)\n"
     "  );\n"
     "endmodule\n",
     "module m;\n"
     "  foo u (\n"
     "    .a(b)\n"
     ");\n"
     "endmodule\n"},
};

INSTANTIATE_TEST_SUITE_P(Cases, LayoutPortListCaseTest, testing::ValuesIn(kLayoutCases),
                         [](const testing::TestParamInfo<LayoutCase>& param) { return std::string(param.param.name); });

// Inputs the pass has nothing to do with come back byte for byte, even with
// CR LF line ends that a split and join would change.
const std::vector<std::string> kUnchangedInputs = {
    "",
    "wire a;\r\nassign b = c;\r\n",
    "module m;\r\nwire a;\r\nendmodule\r\n",
    "module m (\r\n  input a,\r\n  output b\r\n",
    "module m (input a, output b);\r\nendmodule\r\n",
    "module m #(parameter W = 8\r\n  input a\r\n",
    "module m (\r\n  input a\r\n) // no semicolon\r\nendmodule\r\n",
    "modulex (\r\n input a\r\n);\r\n",
    "module\r\n(\r\n input a\r\n);\r\n",
};

TEST(LayoutPortListTest, NothingToDoReturnsInputByteForByte) {
  for (const std::string& input : kUnchangedInputs) EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, NoHeaderComesBackUnchanged) {
  const std::string input = "wire a;\ninput b;\n";
  EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, HeaderWithoutParenthesisComesBackUnchanged) {
  const std::string input = "module m;\n  wire a;\nendmodule";
  EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, AlignedListStaysAsItIs) {
  const std::string input =
      "module m (\n"
      "    input  wire [7:0] data ,\n"
      "    output            q\n"
      ");\n";
  EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, UnbalancedParameterListComesBackUnchanged) {
  const std::string input = "module m #(" + std::string(1 << 20, '(') + "\ninput a,\n);\n";
  EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, UnclosedPortListComesBackUnchanged) {
  const std::string input = "module m (\n" + std::string(1 << 20, ')') + "\ninput a\n";
  EXPECT_EQ(LayoutPortList(input), input);
}

TEST(LayoutPortListTest, MegabyteNameWidensEveryLine) {
  const std::string name(1 << 20, 'n');
  const std::string input = "module m (\ninput " + name + ",\noutput b\n);";
  const std::string expected = "module m (\n    input  " + name + " ,\n    output b\n);";
  const std::string output = LayoutPortList(input);
  EXPECT_EQ(output, expected);
  EXPECT_EQ(LineCount(output), LineCount(input));
}

TEST(LayoutPortListTest, MegabyteLineOfSpacesInHeader) {
  const std::string input = "module m" + std::string(1 << 20, ' ') + "(\ninput a,\noutput b\n);";
  const std::string expected = "module m" + std::string(1 << 20, ' ') + "(\n    input  a ,\n    output b\n);";
  EXPECT_EQ(LayoutPortList(input), expected);
}

TEST(LayoutPortListTest, MegabyteLineOfBracketsInPortList) {
  const std::string odd = "input a = " + std::string(1 << 20, '[') + " x";
  const std::string input = "module m (\ninput a,\n" + odd + "\n);";
  const std::string expected = "module m (\n    input a ,\n    " + odd + "\n);";
  EXPECT_EQ(LayoutPortList(input), expected);
}

TEST(LayoutPortListTest, HundredThousandPorts) {
  std::string input = "module m (\n";
  std::string expected = "module m (\n";
  constexpr int kPorts = 100000;
  for (int i = 0; i < kPorts; ++i) {
    const std::string name = "p" + std::to_string(i);
    input += "input " + name + ",\n";
    expected += "    input " + name + std::string(6 - name.size(), ' ') + " ,\n";
  }
  input += ");\n";
  expected += ");\n";
  const std::string output = LayoutPortList(input);
  EXPECT_EQ(output, expected);
  EXPECT_EQ(LineCount(output), LineCount(input));
}

}  // namespace
}  // namespace quill
