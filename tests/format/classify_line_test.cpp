#include "format/scan/classify_line.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

struct ClassifyCase {
  const char* name;
  std::string line;
  std::string label;
};

class ClassifyLineTest : public testing::TestWithParam<ClassifyCase> {};

TEST_P(ClassifyLineTest, GivesTheLabel) {
  EXPECT_EQ(ClassifyLine(GetParam().line), GetParam().label);
}

const ClassifyCase kCases[] = {
    // Lines of no kind.
    {"EmptyLine", "", ""},
    {"BlankLine", " \t\r", ""},
    {"LineComment", "// wire x;", ""},
    {"IndentedLineCommentOfADeclaration", "  // wire x;", ""},
    {"BlockCommentStart", "/* wire x; */", ""},
    {"ModuleHeader", "module m (", ""},
    {"EndmoduleLine", "  endmodule", ""},
    {"ModuleInOtherCaseIsNotCaughtByTheModuleRule", "Module m;", ""},
    {"UpperCaseModuleWithParenIsAnInstance", "MODULE m (", "INST"},
    {"BeginLine", "begin", ""},
    {"EndLine", "end", ""},
    {"EndElseBegin", "end else begin", ""},
    {"EndcaseLine", "endcase", ""},
    {"EndgenerateLine", "endgenerate", ""},
    {"EndifLine", "endif", ""},
    {"ElseLine", "else x = 1;", ""},
    {"IfHeader", "if (a) x = b;", ""},
    {"CaseHeader", "case (s)", ""},
    {"CasezHeader", "casez (s)", ""},
    {"CasexHeader", "casex (s)", ""},
    {"ForLoop", "for (i = 0; i < 4; i = i + 1) begin", ""},
    {"ForeverLoop", "forever #5 clk = ~clk;", ""},
    {"WhileLoop", "while (x) y = y + 1;", ""},
    {"RepeatLoop", "repeat (3) @(posedge clk);", ""},
    {"UpperCaseBeginIsNotStructural", "BEGIN u (", "INST"},
    {"PortListClose", ");", ""},
    {"PortListCloseWithTrailingBlank", ");  ", ""},
    {"NamedConnection", "  .clk(clk),", ""},
    {"PlainStatement", "x = y;", ""},
    // Declaration kinds.
    {"InputPort", "  input wire clk,", "PORT"},
    {"OutputPort", "output reg [7:0] q", "PORT"},
    {"InoutPort", "inout  d", "PORT"},
    {"UpperCaseInput", "INPUT a", "PORT"},
    {"WordStartingWithInputIsNoPort", "inputs x;", ""},
    {"Wire", "wire a;", "SIGNAL"},
    {"UpperCaseWire", "WIRE x;", "SIGNAL"},
    {"Reg", "reg [3:0] r;", "SIGNAL"},
    {"Logic", "logic l;", "SIGNAL"},
    {"Parameter", "parameter W = 8;", "PARAM"},
    {"Localparam", "localparam D = 2;", "PARAM"},
    {"Integer", "integer i;", "INTEGER"},
    {"Genvar", "genvar g;", "INTEGER"},
    {"Assign", "assign x = a;", "ASSIGN"},
    {"Always", "always @(posedge clk) begin", "ALWAYS"},
    {"AlwaysFf", "always_ff @(posedge clk)", "ALWAYS"},
    {"AlwaysComb", "always_comb begin", "ALWAYS"},
    {"AlwaysLatch", "always_latch", "ALWAYS"},
    {"UpperCaseAlways", "ALWAYS @*", "ALWAYS"},
    {"Initial", "initial begin", "INITIAL"},
    {"Generate", "generate", "GENERATE"},
    {"Function", "function [7:0] f;", "FUNCTION"},
    {"Task", "task t;", "FUNCTION"},
    // Instances.
    {"Instance", "u_core core (", "INST"},
    {"InstanceWithParameterList", "fifo #(", "INST"},
    {"InstanceWithBlankBeforeHash", "fifo  #  (", "INST"},
    {"CallWithoutSecondWordIsNoInstance", "foo(", ""},
    {"TwoWordsWithoutParenIsNoInstance", "foo bar;", ""},
};

INSTANTIATE_TEST_SUITE_P(Lines, ClassifyLineTest, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<ClassifyCase>& param) { return param.param.name; });

TEST(ClassifyLineEdgeTest, LongLinesAreClassified) {
  EXPECT_EQ(ClassifyLine("wire " + std::string(1'000'000, 'a') + ";"), "SIGNAL");
  EXPECT_EQ(ClassifyLine(std::string(1'000'000, 'a')), "");
  EXPECT_EQ(ClassifyLine(std::string(1'000'000, ' ') + "u x ("), "INST");
}

TEST(ClassifyLineEdgeTest, NulAndHighBytesAreOrdinaryText) {
  EXPECT_EQ(ClassifyLine(std::string("wire\0x", 6)), "SIGNAL");
  EXPECT_EQ(ClassifyLine("\xff\xfe wire"), "");
}

}  // namespace
}  // namespace quill
