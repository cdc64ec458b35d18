#include "format/passes/align_declarations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quill {
namespace {

std::size_t LineCount(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

struct DeclCase {
  const char* name;
  std::string input;
  std::string expected;
};

class AlignDeclarationsCaseTest : public testing::TestWithParam<DeclCase> {};

TEST_P(AlignDeclarationsCaseTest, GivesExpectedBytes) {
  const DeclCase& c = GetParam();
  const std::string output = AlignDeclarations(c.input);
  EXPECT_EQ(output, c.expected);
  EXPECT_EQ(LineCount(output), LineCount(c.input));
}

const DeclCase kDeclCases[] = {
    {"ExampleGroupOfThree",
     "wire a;\n"
     "reg signed [15:0] counter; // c\n"
     "logic [3:0] st = 4'd0;",
     "wire                a         ;\n"
     "reg   signed [15:0] counter   ; // c\n"
     "logic        [3:0]  st = 4'd0 ;"},
    {"LoneDeclarationIsNormalised", "wire   [7:0]   data;", "wire [7:0] data ;"},
    {"LeadingBlanksAreDropped", "    reg r;", "reg r ;"},
    {"CommaLinesStayAndSplitGroups",
     "wire a;\n"
     "wire a, b;\n"
     "reg bb;\n"
     "wire c; // c, d\n"
     "logic ccc;",
     "wire a ;\n"
     "wire a, b;\n"
     "reg bb ;\n"
     "wire c; // c, d\n"
     "logic ccc ;"},
    {"BlankAndCommentLinesKeepOneGroup",
     "wire a;\n"
     "\n"
     "// note\n"
     "reg [1:0] bb;",
     "wire       a  ;\n"
     "\n"
     "// note\n"
     "reg  [1:0] bb ;"},
    {"StatementSplitsIntoIndependentGroups",
     "wire a;\n"
     "assign x = y;\n"
     "reg [1:0] bb;",
     "wire a ;\n"
     "assign x = y;\n"
     "reg [1:0] bb ;"},
    {"CapitalsAreKept", "WIRE A;", "WIRE A ;"},
    {"InitialiserIsOneNameCell", "wire a = b;", "wire a = b ;"},
    {"InitialiserWithoutSpacesIsKept", "wire a=b;", "wire a=b ;"},
    {"NoRangeNoRangeColumn",
     "wire a;\n"
     "reg bb;",
     "wire a  ;\n"
     "reg  bb ;"},
    {"OneRangeGivesEveryLineTheColumn",
     "wire a;\n"
     "wire [3:0] b;",
     "wire       a ;\n"
     "wire [3:0] b ;"},
    {"BlanksAfterSemicolonAreDropped", "wire a;   \t", "wire a ;"},
    {"PortDeclarationIsNotSelected", "input wire a;", "input wire a;"},
    {"ArrayColumn",
     "reg [7:0] mem [0:255];\n"
     "reg x;",
     "reg [7:0] mem [0:255] ;\n"
     "reg       x           ;"},
    {"SignedColumnIsTheWordAlone",
     "reg signed\t[15:0] c;\n"
     "wire d;",
     "reg  signed [15:0] c ;\n"
     "wire               d ;"},
    {"InnerSpacesOfCellsAreKept",
     "logic [ 7 : 0 ] count = 4'd0;\n"
     "logic b;",
     "logic [ 7 : 0 ] count = 4'd0 ;\n"
     "logic           b            ;"},
    {"TabCountsAsOneByte",
     "wire [1:\t0] a;\n"
     "wire [1:0] b;",
     "wire [1:\t0] a ;\n"
     "wire [1:0]  b ;"},
    {"CommentsStartInOneColumn",
     "wire a; // first\n"
     "reg long_name;  // second",
     "wire a         ; // first\n"
     "reg  long_name ; // second"},
    {"GroupsHaveIndependentWidths",
     "wire a;\n"
     "reg bb;\n"
     "always @(*) x = y;\n"
     "logic [1:0] ccc;\n"
     "wire d;",
     "wire a  ;\n"
     "reg  bb ;\n"
     "always @(*) x = y;\n"
     "logic [1:0] ccc ;\n"
     "wire        d   ;"},
    {"CarriageReturnsBeforeLineFeedsGo",
     "wire a;\r\n"
     "reg b;\r\r\n"
     "assign c = d;\r\n",
     "wire a ;\n"
     "reg  b ;\n"
     "assign c = d;\n"},
    {"PlaceholderLineSplitsGroups",
     "wire a;\n"
     "__BLKCMT_0__\n"
     "reg bb;",
     "wire a ;\n"
     "__BLKCMT_0__\n"
     "reg bb ;"},
    {"WordGluedToKeywordIsTheName", "wireless;", "wire less ;"},
};

INSTANTIATE_TEST_SUITE_P(Cases, AlignDeclarationsCaseTest, testing::ValuesIn(kDeclCases),
                         [](const testing::TestParamInfo<DeclCase>& param) { return std::string(param.param.name); });

TEST(AlignDeclarationsTest, NothingToDoReturnsInputByteForByte) {
  const std::vector<std::string> inputs = {
      "", "\r\n\r\n", "assign a = b;\r\nwire a, b;\r\n", "input wire a;\r\r\n", "wire a; // a, b\r\n", "wire a\r\n",
  };
  for (const std::string& input : inputs) EXPECT_EQ(AlignDeclarations(input), input);
}

TEST(AlignDeclarationsTest, AlignedGroupStaysAsItIs) {
  const std::string input =
      "wire [7:0] a   ;\n"
      "reg        bcd ; // x\n";
  EXPECT_EQ(AlignDeclarations(input), input);
}

TEST(AlignDeclarationsTest, HundredThousandDeclarationsInOneGroup) {
  constexpr int kCount = 100000;
  std::string input;
  std::string expected;
  for (int i = 0; i < kCount; ++i) {
    const std::string name = "n" + std::to_string(i);
    input += (i % 2 == 0 ? "wire " : "reg ") + name + ";\n";
    expected += (i % 2 == 0 ? "wire " : "reg  ") + name + std::string(6 - name.size(), ' ') + " ;\n";
  }
  const std::string output = AlignDeclarations(input);
  EXPECT_EQ(output, expected);
  EXPECT_EQ(LineCount(output), LineCount(input));
}

TEST(AlignDeclarationsTest, MegabyteNameWidensTheGroup) {
  const std::string name(1 << 20, 'n');
  const std::string input = "wire " + name + ";\nreg b;";
  const std::string expected = "wire " + name + " ;\nreg  b" + std::string(name.size() - 1, ' ') + " ;";
  EXPECT_EQ(AlignDeclarations(input), expected);
}

TEST(AlignDeclarationsTest, MegabyteLinesThatAreNoDeclarations) {
  const std::string brackets = "wire a = " + std::string(1 << 20, '[') + " ;x";
  const std::string spaces = "wire a" + std::string(1 << 20, ' ') + "x;";
  const std::string input = brackets + "\n" + spaces + "\nwire  b;";
  EXPECT_EQ(AlignDeclarations(input), brackets + "\n" + spaces + "\nwire b ;");
}

}  // namespace
}  // namespace quill
