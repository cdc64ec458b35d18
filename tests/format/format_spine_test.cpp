#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"
#include "format/format_text.h"
#include "format/passes/block_comments.h"
#include "format/passes/split_crowded_lines.h"

namespace quill {
namespace {

struct SpineCase {
  const char* name;
  std::string_view input;
  std::string_view expected;
};

class FormatSpineTest : public ::testing::TestWithParam<SpineCase> {};

TEST_P(FormatSpineTest, GivesExactText) {
  EXPECT_EQ(FormatText(GetParam().input), GetParam().expected);
}

const SpineCase kSpineCases[] = {
    {"CrLfAndTrailingEmptyLines", "module m;\r\nendmodule\r\n\r\n\r\n", "module m;\nendmodule\n"},
    {"FinalLineFeedAdded", "module m;\nendmodule", "module m;\nendmodule\n"},
    {"FinalLineFeedsCollapsed", "module m;\nendmodule\n\n\n", "module m;\nendmodule\n"},
    {"FinalCrWithoutLineFeed", "module m;\nendmodule\r", "module m;\nendmodule\n"},
    {"SeveralTrailingCrs", "module m;\r\r\nendmodule\r\r\n", "module m;\nendmodule\n"},
    {"TrailingBlanksOfTheLastLineStay", "foo  \r\n\r\n", "foo  \n"},
    {"TrailingTabOfTheLastLineStays", "foo\t\n", "foo\t\n"},
    {"OnlyLineEnds", "\n\n", "\n"},
    {"OnlyCrLfs", "\r\n\r", "\n"},
    {"ThreeLineBlockComment", "/* a\n b\n c */\nmodule m;\nendmodule\n", "/* a\n b\n c */\nmodule m;\nendmodule\n"},
    {"BlockCommentAlone", "/* a\n b\n c */", "/* a\n b\n c */\n"},
    {"TwoBlockCommentsOnOneLine", "module m; /* a */ /* b */\nendmodule\n", "module m; /* a */ /* b */\nendmodule\n"},
    {"BlockCommentLosesCrBeforeLf", "/* a\r\n b */\r\nmodule m;\r\nendmodule\r\n",
     "/* a\n b */\nmodule m;\nendmodule\n"},
    {"UnterminatedBlockComment", "module m;\n/* a\nendmodule\n", "module m;\n/* a\nendmodule\n"},
    {"SourcePlaceholderIsRestoredLikeOne", "x __BLKCMT_0__ /* c */\n", "x /* c */ /* c */\n"},
    {"CommentHoldingALaterPlaceholder", "/* __BLKCMT_1__ */ x /* y */\n", "/* /* y */ */ x /* y */\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, FormatSpineTest, ::testing::ValuesIn(kSpineCases),
                         [](const ::testing::TestParamInfo<SpineCase>& param) { return param.param.name; });

// What the passes see: the split and joined text with comments lifted.
std::string BeforeThePasses(std::string_view text, BlockCommentList* comments) {
  return ProtectBlockComments(SplitCrowdedLines(text), comments);
}

TEST(FormatSpineStagesTest, ThreeLineCommentTravelsAsOneLineAndTwoEmptyLines) {
  BlockCommentList comments;
  const std::string text = BeforeThePasses("/* a\n b\n c */\nmodule m;\nendmodule\n", &comments);
  EXPECT_EQ(SplitLines(text), (TextLines{"__BLKCMT_0__", "", "", "module m;", "endmodule", ""}));
  EXPECT_EQ(comments, (BlockCommentList{"/* a\n b\n c */"}));
}

TEST(FormatSpineStagesTest, TwoCommentsOnOneLineGetNumbersInOrder) {
  BlockCommentList comments;
  EXPECT_EQ(BeforeThePasses("x /* a */ /* b */ y", &comments), "x __BLKCMT_0__ __BLKCMT_1__ y");
  EXPECT_EQ(comments, (BlockCommentList{"/* a */", "/* b */"}));
}

TEST(FormatSpineStagesTest, CrowdedLinesAreSplitBeforeCommentsAreLifted) {
  BlockCommentList comments;
  EXPECT_EQ(BeforeThePasses("  input a, /* x */ output b\r\n  .a(x), .b(y)\r\n", &comments),
            "  input a, __BLKCMT_0__\n  output b\n  .a(x),\n  .b(y)\n");
  EXPECT_EQ(comments, (BlockCommentList{"/* x */"}));
}

TEST(FormatSpineStagesTest, CommentsAreLiftedFromTextWithoutCrBeforeLf) {
  BlockCommentList comments;
  EXPECT_EQ(BeforeThePasses("/* a\r\n b */ x\r\n", &comments), "__BLKCMT_0__\n x\n");
  EXPECT_EQ(comments, (BlockCommentList{"/* a\n b */"}));
}

TEST(ForeignSourceTest, FirstNonBlankLineDecides) {
  EXPECT_TRUE(IsForeignSource("import os\n"));
  EXPECT_TRUE(IsForeignSource("IMPORT os"));
  EXPECT_TRUE(IsForeignSource("\n\n  def main():\n"));
  EXPECT_TRUE(IsForeignSource("class A:\n  pass\n"));
  EXPECT_TRUE(IsForeignSource("from os import path\n"));
  EXPECT_TRUE(IsForeignSource("#!/usr/bin/env python3\n"));
  EXPECT_FALSE(IsForeignSource("important = 1"));
  EXPECT_FALSE(IsForeignSource("module m;\nimport os\n"));
  EXPECT_FALSE(IsForeignSource("module m;\nclass A:\n"));
  EXPECT_FALSE(IsForeignSource("// import os\n"));
}

std::string RandomVerilogish(std::mt19937* rng) {
  static const std::vector<std::string_view> pieces = {"module m (",
                                                       "input a, output b",
                                                       ".a(x), .b(y)",
                                                       "wire [3:0] w;",
                                                       "reg r;",
                                                       "assign x = y;",
                                                       "always @(*) begin",
                                                       "end",
                                                       "endmodule",
                                                       "/* c */",
                                                       "/* c\n d */",
                                                       "// note",
                                                       "  ",
                                                       "\t",
                                                       "\r",
                                                       "\n",
                                                       "\r\n",
                                                       ");",
                                                       "u_x x (",
                                                       "parameter W = 8;",
                                                       "__BLKCMT_0__",
                                                       "__BLKCMT_1__\n",
                                                       "/*",
                                                       "*/",
                                                       "case (s)",
                                                       "endcase",
                                                       "if (a)",
                                                       "else"};
  std::string text;
  const std::size_t count = std::uniform_int_distribution<std::size_t>(1, 30)(*rng);
  for (std::size_t i = 0; i < count; ++i) {
    text += pieces[std::uniform_int_distribution<std::size_t>(0, pieces.size() - 1)(*rng)];
  }
  return text;
}

TEST(FormatSpinePropertyTest, EndsWithExactlyOneLineFeedAndNoCrBeforeLf) {
  std::mt19937 rng(3);
  for (int round = 0; round < 1'000; ++round) {
    const std::string input = RandomVerilogish(&rng);
    if (Trim(input).empty()) continue;
    const std::string output = FormatText(input);
    ASSERT_FALSE(output.empty()) << input;
    EXPECT_EQ(output.back(), '\n') << input;
    EXPECT_FALSE(output.size() >= 2 && (output[output.size() - 2] == '\n' || output[output.size() - 2] == '\r'))
        << input;
    EXPECT_EQ(output.find("\r\n"), std::string::npos) << input;
  }
}

TEST(FormatSpineLargeTest, MegabyteBlockCommentComesBack) {
  const std::string input = "/*" + std::string(1u << 20, 'x') + "\n*/\nmodule m;\nendmodule\n";
  EXPECT_EQ(FormatText(input), input);
}

}  // namespace
}  // namespace quill
