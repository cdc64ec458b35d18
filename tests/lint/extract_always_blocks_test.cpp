#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

#include "lint/check_test_support.h"
#include "lint/steps.h"

namespace quill {
namespace {

struct ExpectedBlock {
  std::uint32_t startLine;
  std::uint32_t endLine;
  std::string sensitivity;
  bool isSequential;
  bool isCombinational;
  std::vector<std::string> assignedSignals;
  std::uint32_t blockingCount;
  std::uint32_t nonBlockingCount;
  std::string latchReason;
};

bool operator==(const ExpectedBlock& a, const ExpectedBlock& b) {
  return a.startLine == b.startLine && a.endLine == b.endLine && a.sensitivity == b.sensitivity &&
         a.isSequential == b.isSequential && a.isCombinational == b.isCombinational &&
         a.assignedSignals == b.assignedSignals && a.blockingCount == b.blockingCount &&
         a.nonBlockingCount == b.nonBlockingCount && a.latchReason == b.latchReason;
}

void PrintTo(const ExpectedBlock& b, std::ostream* os) {
  *os << "{lines " << b.startLine << "-" << b.endLine << ", \"" << b.sensitivity << "\", seq " << b.isSequential
      << ", comb " << b.isCombinational << ", [";
  for (const std::string& name : b.assignedSignals) *os << name << " ";
  *os << "], =" << b.blockingCount << ", <=" << b.nonBlockingCount << ", \"" << b.latchReason << "\"}";
}

std::vector<ExpectedBlock> Summaries(const ModuleModel& model) {
  std::vector<ExpectedBlock> blocks;
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    blocks.push_back({block.startLine, block.endLine, block.sensitivity, block.isSequential, block.isCombinational,
                      block.assignedSignals, block.blockingCount, block.nonBlockingCount, block.latchReason});
    EXPECT_EQ(block.latchRisk, !block.latchReason.empty());
  }
  return blocks;
}

struct ExtractCase {
  const char* name;
  std::string text;
  std::vector<ExpectedBlock> expected;
};

class ExtractAlwaysBlocksTest : public ::testing::TestWithParam<ExtractCase> {};

TEST_P(ExtractAlwaysBlocksTest, FindsBlocks) {
  ModuleModel model;
  test::AddAlwaysBlocks(GetParam().text, model);
  EXPECT_EQ(Summaries(model), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractAlwaysBlocksTest,
    ::testing::Values(
        ExtractCase{"SequentialOneStatement",
                    "always @(posedge clk) q <= d;",
                    {{0, 0, "@(posedge clk)", true, false, {"q"}, 0, 1, ""}}},
        ExtractCase{"CombinationalIfWithoutElse",
                    "always @(*) begin if (en) y = a; end",
                    {{0, 0, "@(*)", false, true, {"y"}, 1, 0, "if without else (if:1 else:0)"}}},
        ExtractCase{"PlainListIsCombinational",
                    "\n\nalways @(a or b)\n  y = a | b;\n",
                    {{2, 3, "@(a or b)", false, true, {"y"}, 1, 0, ""}}},
        ExtractCase{"ListSoughtPastTheStatement",
                    "always\n\n  @(a or b)\n y = a;",
                    {{0, 3, "@(a or b)", false, true, {"y"}, 1, 0, ""}}},
        ExtractCase{"AlwaysCombWithoutLaterAtIsNotRecorded", "always_comb begin\n  y = a;\nend\n", {}},
        ExtractCase{"AlwaysCombTakesTheNextList",
                    "always_comb begin\n  y = a;\nend\nalways @(posedge clk) q <= d;\n",
                    {{0, 3, "@(posedge clk)", true, true, {"q"}, 0, 1, ""},
                     {3, 3, "@(posedge clk)", true, false, {"q"}, 0, 1, ""}}},
        ExtractCase{"UpperCaseBeginEndsAtFirstSemicolon",
                    "always @(*) BEGIN\n y = a;\n z = b;\nEND\n",
                    {{0, 1, "@(*)", false, true, {"y"}, 1, 0, ""}}},
        ExtractCase{"UpperCaseEndCountsAsEnd",
                    "always @(a) begin\n if (a) begin\n x = 1;\n END\n y = 2;\nend\nz = 3;\n",
                    {{0, 5, "@(a)", false, true, {"x", "y"}, 2, 0, "if without else (if:1 else:0)"}}},
        ExtractCase{"MixedCaseBeginCountsAsEnd",
                    "always @(a) begin\n x = 1;\n bEgin\n y = 2;\nend\n",
                    {{0, 2, "@(a)", false, true, {"x"}, 1, 0, ""}}},
        ExtractCase{"CapitalisedBeginCountsUp",
                    "always @(a) begin\n Begin x = 1; END\n y = 2;\nend\n",
                    {{0, 3, "@(a)", false, true, {"x", "y"}, 2, 0, ""}}},
        ExtractCase{"BodyThatNeverEndsRunsToTextEnd",
                    "always @(*) begin\n x = 1;\n",
                    {{0, 2, "@(*)", false, true, {"x"}, 1, 0, ""}}},
        ExtractCase{"BeginPrefixOfLongerWord",
                    "always @(*) beginx = 1; end\nfoo",
                    {{0, 1, "@(*)", false, true, {"beginx"}, 1, 0, ""}}},
        ExtractCase{"StatementWithoutSemicolonIsNotRecorded", "always @(*) y = a", {}},
        ExtractCase{"AtWithoutParenthesisIsNotRecorded", "always @ clk q <= d;", {}},
        ExtractCase{"NoAtIsNotRecorded", "always begin #5 clk = ~clk; end", {}},
        ExtractCase{
            "UnclosedListEndsAtItsParenthesis", "always @(a q = 1;", {{0, 0, "@(", false, true, {"q"}, 1, 0, ""}}},
        ExtractCase{"ColonAfterListSkipped", "always @(*) :\n  y = a;", {{0, 1, "@(*)", false, true, {"y"}, 1, 0, ""}}},
        ExtractCase{"ClockAndStarIsBoth",
                    "always @(posedge clk or *) begin a = 1; b <= 2; end",
                    {{0, 0, "@(posedge clk or *)", true, true, {"b", "a"}, 1, 1, ""}}},
        ExtractCase{
            "AlwaysFfHeadIsSequential", "always_ff @(clk) q <= d;", {{0, 0, "@(clk)", true, false, {"q"}, 0, 1, ""}}},
        ExtractCase{
            "HeadTestIsCaseSensitive", "ALWAYS_FF @(clk) q <= d;", {{0, 0, "@(clk)", false, true, {"q"}, 0, 1, ""}}},
        ExtractCase{"NegedgeIsSequential",
                    "Always @(negedge rst_n) q <= 0;",
                    {{0, 0, "@(negedge rst_n)", true, false, {"q"}, 0, 1, ""}}},
        ExtractCase{"AlwaysLatchIsCombinational",
                    "always_latch @(posedge en) if (en) q <= d;",
                    {{0, 0, "@(posedge en)", true, true, {"q"}, 0, 1, "if without else (if:1 else:0)"}}},
        ExtractCase{"NestedParenthesesInList",
                    "always @(posedge (clk)) q <= d;",
                    {{0, 0, "@(posedge (clk))", true, false, {"q"}, 0, 1, ""}}},
        ExtractCase{"AlwaysInsideABodyIsExaminedOnItsOwn",
                    "always @(a) begin\n always @(b) x = 1;\nend\n",
                    {{0, 2, "@(a)", false, true, {"x"}, 1, 0, ""}, {1, 1, "@(b)", false, true, {"x"}, 1, 0, ""}}},
        ExtractCase{"LongerWordsAreNotAlways", "always_x @(a) y = 1; my_always @(b) z = 2;", {}},
        ExtractCase{"TwoBlocks",
                    "module m;\nalways @(posedge clk)\n  q <= d;\n\nalways @(*) begin\n  case (s)\n    0: y = a;\n  "
                    "endcase\nend\nendmodule\n",
                    {{1, 2, "@(posedge clk)", true, false, {"q"}, 0, 1, ""},
                     {4, 8, "@(*)", false, true, {"y"}, 1, 0, "case without default"}}},
        ExtractCase{"EmptyText", "", {}}),
    [](const ::testing::TestParamInfo<ExtractCase>& param) { return std::string(param.param.name); });

TEST(ExtractAlwaysBlocksTest, RecordsAssignmentsAndUses) {
  ModuleModel model;
  test::AddAlwaysBlocks("\nalways @(posedge clk) q <= d;", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 1u);
  const AlwaysBlock& block = model.alwaysBlocks[0];
  ASSERT_EQ(block.assignments.size(), 1u);
  EXPECT_EQ(block.assignments[0].target, "q");
  EXPECT_EQ(block.assignments[0].rhs, "d");
  EXPECT_EQ(block.assignments[0].line, 1u);
  EXPECT_FALSE(block.assignments[0].indexed);
  EXPECT_EQ(model.firstUseLine.count("q"), 1u);
  EXPECT_EQ(model.firstUseLine.count("d"), 1u);
  // The sensitivity list is left to the usage-collection step.
  EXPECT_EQ(model.firstUseLine.count("clk"), 0u);
  EXPECT_EQ(model.firstUseLine.at("d"), 1);
}

TEST(ExtractAlwaysBlocksTest, BodyStartLineIsTheLineAfterTheList) {
  ModuleModel model;
  test::AddAlwaysBlocks("always @(a or\n b)\n\n  y = a;", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 1u);
  EXPECT_EQ(model.alwaysBlocks[0].startLine, 0u);
  EXPECT_EQ(model.alwaysBlocks[0].endLine, 3u);
  ASSERT_EQ(model.alwaysBlocks[0].assignments.size(), 1u);
  EXPECT_EQ(model.alwaysBlocks[0].assignments[0].line, 3u);
  EXPECT_EQ(model.firstUseLine.at("y"), 3);
}

TEST(ExtractAlwaysBlocksTest, AlwaysCombBlocksShareTheLaterBody) {
  ModuleModel model;
  test::AddAlwaysBlocks("always_comb\nalways_comb\nalways @(a) begin y = y + a; end", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 3u);
  for (std::size_t i = 0; i < 3; ++i) {
    const AlwaysBlock& block = model.alwaysBlocks[i];
    EXPECT_EQ(block.startLine, i);
    EXPECT_EQ(block.endLine, 2u);
    ASSERT_EQ(block.assignments.size(), 1u);
    EXPECT_EQ(block.assignments[0].target, "y");
    EXPECT_EQ(block.assignments[0].rhs, "y + a");
    EXPECT_EQ(block.assignments[0].line, 2u);
  }
}

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

TEST(ExtractAlwaysBlocksTest, HundredThousandBlocks) {
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always @(posedge clk) q <= d;\n", 100000), model);
  ASSERT_EQ(model.alwaysBlocks.size(), 100000u);
  EXPECT_EQ(model.alwaysBlocks.back().startLine, 99999u);
  EXPECT_EQ(model.alwaysBlocks.back().endLine, 99999u);
}

TEST(ExtractAlwaysBlocksTest, HundredThousandBeginEndBlocks) {
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always @(*) begin\n  if (a) begin y = b; end\nend\n", 100000), model);
  ASSERT_EQ(model.alwaysBlocks.size(), 100000u);
  EXPECT_EQ(model.alwaysBlocks.back().startLine, 299997u);
  EXPECT_EQ(model.alwaysBlocks.back().endLine, 299999u);
  EXPECT_EQ(model.alwaysBlocks.back().latchReason, "if without else (if:1 else:0)");
}

TEST(ExtractAlwaysBlocksTest, BodyThatNeverEnds) {
  ModuleModel model;
  test::AddAlwaysBlocks("always @(*) " + Repeat("begin\n", 200000) + "x = 1;\n", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 1u);
  EXPECT_EQ(model.alwaysBlocks[0].endLine, 200001u);
  EXPECT_EQ(model.alwaysBlocks[0].assignedSignals, std::vector<std::string>{"x"});
}

TEST(ExtractAlwaysBlocksTest, ManyBlocksWithUnterminatedStatements) {
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always @(a) b ", 100000), model);
  EXPECT_TRUE(model.alwaysBlocks.empty());
}

TEST(ExtractAlwaysBlocksTest, ManyUnclosedLists) {
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always @(", 100000), model);
  EXPECT_TRUE(model.alwaysBlocks.empty());
}

TEST(ExtractAlwaysBlocksTest, AlwaysCombWithNoAtAnywhereAfterIt) {
  ModuleModel model;
  test::AddAlwaysBlocks("always @(a) x = 1;\n" + Repeat("always_comb begin y = 1; end\n", 100000), model);
  ASSERT_EQ(model.alwaysBlocks.size(), 1u);
}

TEST(ExtractAlwaysBlocksTest, HundredThousandAlwaysCombBeforeOneAt) {
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always_comb\n", 100000) + "always @(a) begin y = y & a; end", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 100001u);
  EXPECT_EQ(model.alwaysBlocks.front().sensitivity, "@(a)");
  EXPECT_EQ(model.alwaysBlocks.front().endLine, 100000u);
  EXPECT_EQ(model.alwaysBlocks[99999].startLine, 99999u);
  EXPECT_EQ(model.alwaysBlocks.back().startLine, 100000u);
  EXPECT_EQ(model.alwaysBlocks.back().assignments.size(), 1u);
}

TEST(ExtractAlwaysBlocksTest, AlwaysCombBlocksSharingALongLaterBodyAreAllRecorded) {
  // The shared body is analysed once; the blocks that reuse it cost only the
  // copy of its records, so none is left out however long the body is.
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always_comb\n", 1000) + "always @(a) begin\n  if (a) y = 1;\n" +
                          std::string(80000, ' ') + "\nend\n",
                      model);
  ASSERT_EQ(model.alwaysBlocks.size(), 1001u);
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    EXPECT_EQ(block.latchReason, "if without else (if:1 else:0)");
    EXPECT_EQ(block.assignedSignals, std::vector<std::string>{"y"});
  }
}

TEST(ExtractAlwaysBlocksTest, ManyListsInsideOneList) {
  // Each "(" is closed by its own ")" far later; the lists themselves grow
  // with the nesting, so the count stays moderate.
  ModuleModel model;
  test::AddAlwaysBlocks(Repeat("always @(", 3000) + Repeat(")", 3000) + " y = 1;", model);
  ASSERT_EQ(model.alwaysBlocks.size(), 3000u);
  EXPECT_EQ(model.alwaysBlocks.back().sensitivity, "@()");
  EXPECT_EQ(model.alwaysBlocks.front().assignedSignals, std::vector<std::string>{"y"});
}

}  // namespace
}  // namespace quill
