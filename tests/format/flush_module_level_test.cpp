#include "format/passes/flush_module_level.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

struct FlushCase {
  const char* name;
  std::string input;
  std::string expected;
};

class FlushModuleLevelTest : public testing::TestWithParam<FlushCase> {};

TEST_P(FlushModuleLevelTest, PutsModuleLevelLinesAtTheMargin) {
  EXPECT_EQ(FlushModuleLevel(GetParam().input), GetParam().expected);
}

const FlushCase kCases[] = {
    {"EndmoduleWithLabelAndComment", "    endmodule : top   // end of top", "endmodule // end of top"},
    {"IndentedEndmodule", "  endmodule", "endmodule"},
    {"EndmoduleInUpperCase", "\tENDMODULE", "endmodule"},
    {"EndmoduleLabelIsDropped", "endmodule:top", "endmodule"},
    {"EndmoduleCommentBehindTheLastCr", "endmodule // a\rb // c", "endmodule // c"},
    {"DeclarationInsideAlwaysKeepsItsIndent",
     "module m (\n  input a\n);\n  always @(*) begin\n  reg x;\n  end\n  wire y;\nendmodule",
     "module m (\n  input a\n);\nalways @(*) begin\n  reg x;\n  end\nwire y;\nendmodule"},
    {"PortsInTheHeaderKeepTheirIndent", "module m (\n  input a,\n  output b\n);\n  wire c;\nendmodule",
     "module m (\n  input a,\n  output b\n);\nwire c;\nendmodule"},
    {"HeaderClosedWithCommentAfterIt", "module m (\n  input a\n  ); // ports\n  wire c;",
     "module m (\n  input a\n  ); // ports\nwire c;"},
    {"AlwaysHeaderGoesToTheMargin", "module m (\n);\n    always @(*) begin\n    reg x;\n    end",
     "module m (\n);\nalways @(*) begin\n    reg x;\n    end"},
    {"HeaderClosedOnTheModuleLineKeepsEverything", "module m;\n  wire a;\n  assign b = a;\nendmodule",
     "module m;\n  wire a;\n  assign b = a;\nendmodule"},
    {"HeaderWithPortsOnTheModuleLineKeepsEverything", "module m (input a);\n  wire a;\n    endmodule",
     "module m (input a);\n  wire a;\nendmodule"},
    {"EndmoduleEndsTheHeader", "module m;\n  wire a;\nendmodule\n  wire b;",
     "module m;\n  wire a;\nendmodule\nwire b;"},
    {"NoModuleLineMeansNoHeader", "  wire a;  \n  reg b; // r", "wire a;\nreg b; // r"},
    {"UpperCaseDeclarationWord", "  WIRE x;", "WIRE x;"},
    {"WordGluedToSemicolonIsNoDeclaration", "  wire;", "  wire;"},
    {"OtherStatementsKeepTheirIndent", "  x = 1;\n  foo u (.a(b));", "  x = 1;\n  foo u (.a(b));"},
    {"CommentLinesAreLeftAlone", "  // wire x;\n\t// endmodule", "  // wire x;\n\t// endmodule"},
    {"BlankLinesAreLeftAlone", "  \t\n  wire a;", "  \t\nwire a;"},
    {"CaseNestingCounts", "  always @(*)\n  case (s)\n  reg q;\n  endcase\n  wire w;",
     "always @(*)\n  case (s)\n  reg q;\n  endcase\nwire w;"},
    {"EndcaseIsNotCountedAsCase", "always @(*) begin\nendcase\n  reg q;\nend\n  reg r;",
     "always @(*) begin\nendcase\nreg q;\nend\nreg r;"},
    {"EndElseBeginKeepsTheDepth", "always @(*) begin\nif (a) begin\nend else begin\n  reg x;\nend\nend\n  wire z;",
     "always @(*) begin\nif (a) begin\nend else begin\n  reg x;\nend\nend\nwire z;"},
    {"ClosingLineIsMovedOut", "  initial begin\n  integer i;\n  end wire w;",
     "initial begin\n  integer i;\n  end wire w;"},
    {"BlockWordsInCommentsDoNotCount", "  always @(*) // begin\n  wire a;", "always @(*) // begin\nwire a;"},
    {"ExtraEndsDoNotMakeTheDepthNegative", "  end\n  end\n  always begin\n  reg a;",
     "  end\n  end\nalways begin\n  reg a;"},
    {"ModuleResetsTheDepth", "always begin\nmodule n;\nendmodule\n  wire a;",
     "always begin\nmodule n;\nendmodule\nwire a;"},
    {"CrLfLinesAreJoinedWithLf", "  wire a;\r\nendmodule\r\n", "wire a;\nendmodule\n"},
    {"EmptyText", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Texts, FlushModuleLevelTest, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<FlushCase>& param) { return param.param.name; });

TEST(FlushModuleLevelPathologicalTest, HundredThousandNestedBegin) {
  std::string input = "module m;\nendmodule\n  always @(*) ";
  std::string expected = "module m;\nendmodule\nalways @(*) ";
  for (int i = 0; i < 100'000; ++i) {
    input += "begin\n  reg r;\n";
    expected += "begin\n  reg r;\n";
  }
  input += "  wire w;";
  expected += "  wire w;";
  EXPECT_EQ(FlushModuleLevel(input), expected);
}

TEST(FlushModuleLevelPathologicalTest, MegabyteLine) {
  const std::string body(1'000'000, 'x');
  EXPECT_EQ(FlushModuleLevel("  wire " + body + "  "), "wire " + body);
  EXPECT_EQ(FlushModuleLevel("  endmodule " + std::string(500'000, '/') + "\r x"), "endmodule");
}

TEST(FlushModuleLevelPathologicalTest, ManyBlockWordsOnOneLine) {
  std::string line = "  always ";
  for (int i = 0; i < 100'000; ++i) line += "begin end case endcase ";
  EXPECT_EQ(FlushModuleLevel(line + "\n  wire a;"), line.substr(2, line.size() - 3) + "\nwire a;");
}

}  // namespace
}  // namespace quill
