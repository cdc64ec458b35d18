#include "format/passes/split_crowded_lines.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace quill {
namespace {

struct SplitCase {
  const char* name;
  std::string_view input;
  std::string_view expected;
};

class SplitCrowdedLinesTest : public ::testing::TestWithParam<SplitCase> {};

TEST_P(SplitCrowdedLinesTest, GivesExactLines) {
  EXPECT_EQ(SplitCrowdedLines(GetParam().input), GetParam().expected);
}

// Port lines: "input", "inout" or "output" at the start of the rest (a plain,
// case-insensitive prefix test), cut at each port keyword of the code part.
const SplitCase kPortLineCases[] = {
    {"ThreePorts", "  input a, output b, inout c", "  input a,\n  output b,\n  inout c"},
    {"CommentOnFirstAndLastLine", "  input a, output b // ports", "  input a, // ports\n  output b // ports"},
    {"OnePortKeywordStaysOneLine", "input a, b;", "input a, b;"},
    {"KeywordInsideAWordIsNoSecondPort", "inputs output b", "inputs output b"},
    {"SecondKeywordInUpperCase", "input a, OUTPUT b", "input a,\nOUTPUT b"},
    {"TwoDotsOneConnectionStaysOneLine", ".a(x.y)", ".a(x.y)"},
    {"TwoConnectionsSplit", ".a(x), .b(y)", ".a(x),\n.b(y)"},
    {"CaseInsensitive", "INPUT a, Output b", "INPUT a,\nOutput b"},
    {"TypesAndRanges", "output reg [3:0] q, input wire clk", "output reg [3:0] q,\ninput wire clk"},
    {"TabIndent", "\t input a, output b", "\t input a,\n\t output b"},
    {"VerticalTabIsPartOfTheIndent", "\v input a, output b", "\v input a,\n\v output b"},
    {"PieceLosesTrailingBlanks", "input a ,\toutput b \t", "input a ,\noutput b"},
    {"KeywordInCommentDoesNotCount", "input a // output b", "input a // output b"},
    {"KeywordInCommentStaysInLastPiece", "input a, output b // inout c", "input a, // inout c\noutput b // inout c"},
    {"KeywordNeedsWordBoundary", "input a, inputb", "input a, inputb"},
    {"UnderscoreIsAWordByte", "output_enable, input a", "output_enable, input a"},
    {"TextBeforeTheFirstKeywordIsDropped", "inputs a, output b, inout c", "output b,\ninout c"},
    {"PrefixTestOnly", "inputs a, output b", "inputs a, output b"},
    {"CommentNeedsToReachTheEnd", "input a, output b // c\rd", "input a,\noutput b // c\rd"},
    {"TrailingCrsRemovedBeforeTheComment", "input a, output b // c\r\r", "input a, // c\noutput b // c"},
    {"KeptLineKeepsTrailingSpaces", "input a;   ", "input a;   "},
    {"NotAtTheStartOfTheRest", "wire input a, output b", "wire input a, output b"},
    {"EmptyComment", "input a, output b //", "input a, //\noutput b //"},
    {"AdjacentKeywords", "input output", "input\noutput"},
};
INSTANTIATE_TEST_SUITE_P(PortLines, SplitCrowdedLinesTest, ::testing::ValuesIn(kPortLineCases),
                         [](const ::testing::TestParamInfo<SplitCase>& param) { return param.param.name; });

// Connection lines: the rest begins with "."; each named connection becomes a
// line, text outside them is dropped.
const SplitCase kConnectionLineCases[] = {
    {"ThreeConnections", "  .a(x), .b(y), .c(z)", "  .a(x),\n  .b(y),\n  .c(z)"},
    {"SingleConnectionUntouched", ".clk(clk)", ".clk(clk)"},
    {"CommentOnFirstLineOnly", "  .a(x), .b(y) // conn", "  .a(x), // conn\n  .b(y)"},
    {"TextBetweenIsDropped", ".a(x) junk .b(y)", ".a(x)\n.b(y)"},
    {"NestedParenthesesCutShort", ".a(f(x)), .b(y)", ".a(f(x)\n.b(y)"},
    {"NoSpaces", ".a(x),.b(y),", ".a(x),\n.b(y),"},
    {"SpacesInside", ".a ( x ) , .b (y)", ".a ( x ) ,\n.b (y)"},
    {"ConnectionInACommentCounts", ".a(x), // .b(y)", ".a(x), // .b(y)\n.b(y)"},
    {"DotNotFollowedByAWord", ". a(x), .b(y)", ". a(x), .b(y)"},
    {"CaseSensitiveOnlyInName", ".A(x), .B(y)", ".A(x),\n.B(y)"},
    {"TrailingCrsRemoved", "  .a(x), .b(y)\r", "  .a(x),\n  .b(y)"},
    {"SingleConnectionKeepsItsText", ".a(x) // c", ".a(x) // c"},
};
INSTANTIATE_TEST_SUITE_P(ConnectionLines, SplitCrowdedLinesTest, ::testing::ValuesIn(kConnectionLineCases),
                         [](const ::testing::TestParamInfo<SplitCase>& param) { return param.param.name; });

// Every other line is kept after its trailing CRs are removed, so no CR is
// left before an LF.
const SplitCase kKeptLineCases[] = {
    {"Empty", "", ""},
    {"OnlyLineFeeds", "\n\n", "\n\n"},
    {"CrLf", "module m;\r\nendmodule\r\n", "module m;\nendmodule\n"},
    {"SeveralTrailingCrs", "module m;\r\r\nendmodule\r", "module m;\nendmodule"},
    {"OnlyCrs", "\r\r\r", ""},
    {"InnerCrKept", "a\rb\r\n", "a\rb\n"},
    {"CrLfEndingInFinalLines", "module m;\r\nendmodule\r\n\r\n\r\n", "module m;\nendmodule\n\n\n"},
    {"OtherLinesUntouched", "  wire a, b;  \n\tassign x = y;", "  wire a, b;  \n\tassign x = y;"},
    {"MixedLines", "module m(\n  input a, input b\r\n);\nfoo u(.a(x), .b(y));",
     "module m(\n  input a,\n  input b\n);\nfoo u(.a(x), .b(y));"},
    {"CrLfWithSplits", "  input a, output b\r\n.x(1), .y(2)\r\n", "  input a,\n  output b\n.x(1),\n.y(2)\n"},
    {"BlankLineWithCr", " \t\r\n", " \t\n"},
};
INSTANTIATE_TEST_SUITE_P(KeptLines, SplitCrowdedLinesTest, ::testing::ValuesIn(kKeptLineCases),
                         [](const ::testing::TestParamInfo<SplitCase>& param) { return param.param.name; });

TEST(SplitCrowdedLinesLargeTest, OneEndlessPortLineFinishes) {
  std::string line;
  for (int i = 0; i < 100'000; ++i) line += "input a" + std::to_string(i) + ", ";
  const std::string result = SplitCrowdedLines(line);
  EXPECT_EQ(std::count(result.begin(), result.end(), '\n'), 99'999);
  EXPECT_EQ(result.substr(0, 18), "input a0,\ninput a1");
}

TEST(SplitCrowdedLinesLargeTest, ManyLinesFinish) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "  .a(x), .b(y)\r\n";
  const std::string result = SplitCrowdedLines(text);
  EXPECT_EQ(std::count(result.begin(), result.end(), '\n'), 200'000);
  EXPECT_EQ(result.find('\r'), std::string::npos);
}

TEST(SplitCrowdedLinesLargeTest, OneEndlessConnectionLineFinishes) {
  const std::string line = ".a(" + std::string(4u << 20, 'x') + ", .b(y)";
  EXPECT_EQ(SplitCrowdedLines(line), line);
}

}  // namespace
}  // namespace quill
