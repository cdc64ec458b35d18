#include <gtest/gtest.h>

#include <string>

#include "lint/lint_text.h"

namespace quill {
namespace {

std::string Finding(const std::string& severity, int line, const std::string& check, const std::string& message) {
  return "{\"severity\":\"" + severity + "\",\"line\":" + std::to_string(line) + ",\"check\":\"" + check +
         "\",\"message\":\"" + message + "\"}";
}

std::string Report(std::initializer_list<std::string> findings) {
  std::string report = "[";
  for (const std::string& finding : findings) {
    if (report.size() > 1) report += ",";
    report += finding;
  }
  return report + "]";
}

struct EndToEndCase {
  const char* name;
  std::string text;
  std::string expected;
};

class LintChecksEndToEndTest : public ::testing::TestWithParam<EndToEndCase> {};

TEST_P(LintChecksEndToEndTest, Reports) {
  EXPECT_EQ(LintText(GetParam().text), GetParam().expected);
}

const EndToEndCase kCases[] = {
    {"LatchInCombinationalBlock",
     "module m(input a, en, output reg y);\n"
     "always @(*) begin\n"
     "  if (en) y = a;\n"
     "end\n"
     "endmodule\n",
     Report({Finding("warning", 1, "latch", "if without else (if:1 else:0)")})},

    {"CheckOrderInOneModule",
     "module top (\n"                   // 0
     "  input clk,\n"                   // 1
     "  input [3:0] a,\n"               // 2
     "  output q\n"                     // 3
     ");\n"                             // 4
     "wire [7:0] w;\n"                  // 5
     "wire w;\n"                        // 6
     "reg r;\n"                         // 7
     "assign w = a;\n"                  // 8
     "assign r = 1'b0;\n"               // 9
     "assign s = s + 1;\n"              // 10
     "assign s = a;\n"                  // 11
     "always @(posedge clk) begin\n"    // 12
     "  q = a;\n"                       // 13
     "  w <= 0;\n"                      // 14
     "end\n"                            // 15
     "always @(posedge clk) q <= 1;\n"  // 16
     "always @(*) begin\n"              // 17
     "  case (a)\n"                     // 18
     "    0: t = t + 1;\n"              // 19
     "  endcase\n"                      // 20
     "end\n"                            // 21
     "sub u0 (.x(n));\n"                // 22
     "sub u0 (.x(n));\n"                // 23
     "wire n;\n"                        // 24
     "endmodule\n",                     // 25
     Report({
         Finding("warning", 17, "latch", "case without default"),
         Finding("error", 8, "multi-driver", "signal 'w' driven by both assign and always"),
         Finding("error", 12, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 12, 16)"),
         Finding("warning", 8, "width-mismatch", "assign 'w' LHS=8bit RHS=4bit"),
         Finding("warning", 12, "blocking-assign", "sequential always uses '=' (1x), suggest '<='"),
         Finding("warning", 6, "dupli-define", "signal 'w' defined 2 times"),
         Finding("warning", 10, "repeated-assig", "signal 's' assigned 2 times by assign"),
         Finding("warning", 22, "used-bef-declare", "signal 'n' used at line 23 before declaration at line 25"),
         Finding("warning", 10, "comb-loop", "assign 's' feeds back to itself"),
         Finding("warning", 19, "comb-loop", "signal 't' feeds back to itself in always"),
         Finding("error", 23, "dupli-inst", "instance 'u0' instantiated 2 times (lines: 23, 24)"),
         Finding("error", 9, "reg-assign",
                 "reg signal 'r' cannot be assigned by continuous assignment (use wire instead)"),
         Finding("error", 12, "wire-always", "wire signal 'w' cannot be assigned in always block (use reg instead)"),
         Finding("error", 12, "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)"),
         Finding("error", 16, "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)"),
     })},

    {"AlwaysCombTakesTheNextBlocksListAndBody",
     "module m;\n"
     "logic y, a, q, d, clk;\n"
     "always_comb begin\n"
     "  y = a;\n"
     "end\n"
     "always_ff @(posedge clk) q <= d;\n"
     "endmodule\n",
     Report({Finding("error", 2, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 2, 5)"),
             Finding("warning", 2, "blocking-assign", "combinational always uses '<=' (1x), suggest '='")})},

    {"AlwaysCombWithoutLaterListIsIgnored",
     "module m;\n"
     "logic y, a;\n"
     "always_comb begin\n"
     "  if (a) y <= y;\n"
     "end\n"
     "endmodule\n",
     "[]"},

    {"MultiDriverKeepsTheAssignSpelling",
     "module m;\n"
     "wire a;\n"
     "assign Y = a;\n"
     "always @(*) y = a;\n"
     "endmodule\n",
     Report({Finding("error", 2, "multi-driver", "signal 'Y' driven by both assign and always")})},

    {"AssignmentAfterTwoLineConditionReportedOneLineEarly",
     "module m;\n"
     "reg y;\n"
     "wire a, b;\n"
     "always @(*) begin\n"
     "  if (a &&\n"
     "      b)\n"
     "    y = y + 1;\n"
     "  else\n"
     "    y = 0;\n"
     "end\n"
     "endmodule\n",
     Report({Finding("warning", 5, "comb-loop", "signal 'y' feeds back to itself in always")})},

    {"UsesBeforeDeclarationsOrderedByLineThenName",
     "module m;\n"
     "always @(posedge clk)\n"
     "  q <= d;\n"
     "reg q;\n"
     "wire d, clk;\n"
     "endmodule\n",
     Report({Finding("warning", 1, "used-bef-declare", "signal 'clk' used at line 2 before declaration at line 5"),
             Finding("warning", 2, "used-bef-declare", "signal 'd' used at line 3 before declaration at line 5"),
             Finding("warning", 2, "used-bef-declare", "signal 'q' used at line 3 before declaration at line 4")})},

    {"DuplicateDefinitionsSignalsThenParameters",
     "module m(a, b);\n"
     "input a;\n"
     "wire a;\n"
     "output b;\n"
     "reg b;\n"
     "parameter N = 1;\n"
     "parameter N = 2;\n"
     "endmodule\n",
     Report({Finding("warning", 4, "dupli-define", "signal 'b' defined 2 times"),
             Finding("warning", 6, "dupli-define", "parameter 'N' defined 2 times")})},

    {"UpperCaseBeginBodyEndsAtFirstSemicolon",
     "module m;\n"
     "reg y, z;\n"
     "always @(posedge clk) BEGIN\n"
     "  y = 1;\n"
     "  z = z;\n"
     "END\n"
     "endmodule\n",
     Report({Finding("warning", 2, "blocking-assign", "sequential always uses '=' (1x), suggest '<='")})},

    {"NestedCaseDefaultFoundAfterOuterEndcase",
     "module m;\n"
     "reg y;\n"
     "always @(*) begin\n"
     "  case (a)\n"
     "    0: case (b)\n"
     "         0: y = 1;\n"
     "       endcase\n"
     "  endcase\n"
     "  case (c)\n"
     "    default: y = 1;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     Report({Finding("warning", 2, "latch", "case without default")})},

    {"CommentsAndTabsAreBlanks",
     "module m;\n"
     "reg\ty;\n"
     "// always @(*) y <= y;\n"
     "/* always @(*)\n"
     "   y <= y; */\n"
     "always @(*)\ty = a;\n"
     "endmodule\n",
     "[]"},

    {"InstancesOfDifferentModulesWithOneName",
     "module m;\n"
     "wire a, b;\n"
     "fifo u0 (.d(a));\n"
     "\n"
     "ram u0 (.d(b));\n"
     "endmodule\n",
     Report({Finding("error", 4, "dupli-inst", "instance 'u0' instantiated 2 times (lines: 3, 5)")})},

    {"WidthOfSizedLiteralAgainstOneBit",
     "module m;\n"
     "wire a;\n"
     "wire [7:0] b;\n"
     "assign a = 8'hFF;\n"
     "assign b = 8'hFF;\n"
     "assign b = a;\n"
     "assign b[0] = a;\n"
     "endmodule\n",
     Report({Finding("warning", 3, "width-mismatch", "assign 'a' LHS=1bit RHS=8bit"),
             Finding("warning", 5, "width-mismatch", "assign 'b' LHS=8bit RHS=1bit"),
             Finding("warning", 4, "repeated-assig", "signal 'b' assigned 2 times by assign")})},

    {"NoModuleAndNoDeclarationsIsNotChecked", "always @(*) y <= y;\nassign a = a;\n", "[]"},

    {"DeclarationWithoutModuleIsChecked",
     "wire w;\n"
     "always @(*) w <= w;\n",
     Report(
         {Finding("warning", 1, "blocking-assign", "combinational always uses '<=' (1x), suggest '='"),
          Finding("warning", 1, "comb-loop", "signal 'w' feeds back to itself in always"),
          Finding("error", 1, "wire-always", "wire signal 'w' cannot be assigned in always block (use reg instead)")})},

    // The connections run up to and including the first ");", whose ")" closes
    // a last connection that lacks its own.
    {"ClosingParenthesisEndsTheOnlyConnection",
     "a a(.y(W);\nlogic W;\n",
     Report({Finding("warning", 0, "used-bef-declare", "signal 'W' used at line 1 before declaration at line 2")})},

    {"ClosingParenthesisEndsTheLastOfTwoConnections",
     "sub u1 (.a(x), .b(y);\nwire x;\nwire y;\n",
     Report({Finding("warning", 0, "used-bef-declare", "signal 'x' used at line 1 before declaration at line 2"),
             Finding("warning", 0, "used-bef-declare", "signal 'y' used at line 1 before declaration at line 3")})},

    {"ClosingParenthesisEndsAConnectionOnItsOwnLine",
     "sub u1 (\n  .a(x),\n  .b(y);\nwire x;\nwire y;\n",
     Report({Finding("warning", 1, "used-bef-declare", "signal 'x' used at line 2 before declaration at line 4"),
             Finding("warning", 2, "used-bef-declare", "signal 'y' used at line 3 before declaration at line 5")})},

    {"ConnectionIsTheEarliestUse",
     "a a(.y(W);\nassign z = W;\nlogic W;\n",
     Report({Finding("warning", 0, "used-bef-declare", "signal 'W' used at line 1 before declaration at line 3")})},
};

INSTANTIATE_TEST_SUITE_P(Cases, LintChecksEndToEndTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<EndToEndCase>& param) {
                           return std::string(param.param.name);
                         });

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

bool StartsWith(const std::string& text, std::string_view prefix) {
  return text.compare(0, prefix.size(), prefix) == 0;
}

bool IsJsonArray(const std::string& report) {
  return report.size() >= 2 && report.front() == '[' && report.back() == ']';
}

TEST(LintChecksEndToEndPathologicalTest, TenThousandNestedCaseStatements) {
  std::string text = "module m;\nreg y;\nalways @(*) begin\n" + Repeat("case (s) 0: ", 10000) + "y = 1;\n" +
                     Repeat("endcase\n", 10000) + "end\nendmodule\n";
  std::string expectedReason = "case without default";
  for (int i = 1; i < 10000; ++i) expectedReason += "; case without default";
  EXPECT_EQ(LintText(text), Report({Finding("warning", 2, "latch", expectedReason)}));
}

TEST(LintChecksEndToEndPathologicalTest, HundredThousandAlwaysBlocks) {
  std::string report = LintText("module m;\nreg q;\n" + Repeat("always @(posedge clk) q <= d;\n", 100000));
  ASSERT_TRUE(IsJsonArray(report));
  EXPECT_TRUE(StartsWith(report,
                         "[{\"severity\":\"error\",\"line\":2,\"check\":\"multi-driver\",\"message\":\"signal 'q' "
                         "driven in 100000 always blocks (lines: 2, 3, 4, "));
}

TEST(LintChecksEndToEndPathologicalTest, BodyThatNeverEnds) {
  EXPECT_EQ(LintText("module m;\nreg x;\nalways @(*) " + Repeat("begin\n", 200000) + "x = 1;\n"), "[]");
}

TEST(LintChecksEndToEndPathologicalTest, AlwaysCombWithNoAtAfterIt) {
  EXPECT_EQ(LintText("module m;\nreg y;\n" + Repeat("always_comb begin y = y; end\n", 100000)), "[]");
}

TEST(LintChecksEndToEndPathologicalTest, HundredThousandAlwaysCombBeforeOneAt) {
  std::string report = LintText("module m;\nreg y;\n" + Repeat("always_comb\n", 100000) + "always @(a) y = a;\n");
  ASSERT_TRUE(IsJsonArray(report));
  EXPECT_TRUE(StartsWith(report,
                         "[{\"severity\":\"error\",\"line\":2,\"check\":\"multi-driver\",\"message\":\"signal 'y' "
                         "driven in 100001 always blocks (lines: 2, 3, 4, "));
}

TEST(LintChecksEndToEndPathologicalTest, ManyUnterminatedBlocks) {
  EXPECT_EQ(LintText("module m;\n" + Repeat("always @(", 100000)), "[]");
  EXPECT_EQ(LintText("module m;\n" + Repeat("always @(a) b ", 100000)), "[]");
}

}  // namespace
}  // namespace quill
