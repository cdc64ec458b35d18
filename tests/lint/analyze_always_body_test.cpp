#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lint/always_analysis.h"

namespace quill {
namespace {

struct BodyCase {
  const char* name;
  std::string body;
  bool isCombinational;
  std::vector<std::string> assignedSignals;
  std::uint32_t blockingCount;
  std::uint32_t nonBlockingCount;
  std::string latchReason;  // "" for no latch risk
};

class AnalyzeAlwaysBodyTest : public ::testing::TestWithParam<BodyCase> {};

TEST_P(AnalyzeAlwaysBodyTest, FillsTheBlock) {
  const BodyCase& c = GetParam();
  NameMap uses;
  AlwaysBlock block;
  block.isCombinational = c.isCombinational;
  block.isSequential = !c.isCombinational;
  AnalyzeAlwaysBody(c.body, block, 0, uses);
  EXPECT_EQ(block.assignedSignals, c.assignedSignals);
  EXPECT_EQ(block.blockingCount, c.blockingCount);
  EXPECT_EQ(block.nonBlockingCount, c.nonBlockingCount);
  EXPECT_EQ(block.latchRisk, !c.latchReason.empty());
  EXPECT_EQ(block.latchReason, c.latchReason);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, AnalyzeAlwaysBodyTest,
    ::testing::Values(
        BodyCase{"SingleNonBlocking", "q <= d;", false, {"q"}, 0, 1, ""},
        BodyCase{"IfWithoutElse", "begin if (en) y = a; end", true, {"y"}, 1, 0, "if without else (if:1 else:0)"},
        BodyCase{
            "ElseIfChainWithElse", "begin if (a) x = 1; else if (b) x = 2; else x = 3; end", true, {"x"}, 3, 0, ""},
        BodyCase{"ElseIfRemovedBeforeCounting",
                 "begin if (a) x = 1; else if (b) x = 2; end",
                 true,
                 {"x"},
                 2,
                 0,
                 "if without else (if:1 else:0)"},
        BodyCase{"ElseIfAcrossLinesAndCase",
                 "begin IF (a) x = 1; ELSE\n If (b) x = 2; end",
                 true,
                 {"x"},
                 2,
                 0,
                 "if without else (if:1 else:0)"},
        BodyCase{"NestedIfCounts",
                 "begin if (a) if (b) x = 1; else x = 2; end",
                 true,
                 {"x"},
                 2,
                 0,
                 "if without else (if:2 else:1)"},
        BodyCase{"IfInsideLongerWordsNotCounted",
                 "begin iff = 1; if_x = 2; elsewhere = 3; end",
                 true,
                 {"iff", "if_x", "elsewhere"},
                 3,
                 0,
                 ""},
        BodyCase{"SequentialNeverChecked", "begin if (en) q <= d; end", false, {"q"}, 0, 1, ""},
        BodyCase{"CaseWithDefault", "begin case (s) 0: y = a; default: y = b; endcase end", true, {"y"}, 2, 0, ""},
        BodyCase{"DefaultWithBlankBeforeColon",
                 "begin case (s) 0: y = a; DEFAULT : y = b; endcase end",
                 true,
                 {"y"},
                 2,
                 0,
                 ""},
        BodyCase{"DefaultWithoutColon",
                 "begin case (s) 0: y = a; default y = b; endcase end",
                 true,
                 {"y"},
                 2,
                 0,
                 "case without default"},
        BodyCase{"DefaultAfterEndcaseNotSeen",
                 "begin case (s) 0: y = a; endcase default: y = b; end",
                 true,
                 {"y"},
                 2,
                 0,
                 "case without default"},
        BodyCase{"NestedCaseRunsToBodyEnd",
                 "begin\n case (a)\n 1: case (b)\n 0: y = 1;\n endcase\n endcase\n case (c)\n default: y = 0;\n "
                 "endcase\nend",
                 true,
                 {"y"},
                 2,
                 0,
                 "case without default"},
        BodyCase{"NestedCaseWithoutAnyDefault",
                 "begin case (a) 0: case (b) 0: y = 1; endcase endcase end",
                 true,
                 {"y"},
                 1,
                 0,
                 "case without default; case without default"},
        BodyCase{"UpperCaseEndcaseEndsNestedCase",
                 "begin case (a) 0: case (b) 0: y = 1; ENDCASE ENDCASE default: y = 0; end",
                 true,
                 {"y"},
                 2,
                 0,
                 "case without default; case without default"},
        BodyCase{"LowerCaseEndcaseKeepsNestedCaseOpen",
                 "begin case (a) 0: case (b) 0: y = 1; endcase endcase default: y = 0; end",
                 true,
                 {"y"},
                 2,
                 0,
                 "case without default"},
        BodyCase{"UpperCaseCaseRunsToBodyEnd",
                 "begin CASE (a) 0: y = 1; endcase y = 2; default: y = 3; end",
                 true,
                 {"y"},
                 3,
                 0,
                 ""},
        BodyCase{"CasezAndCasexNotExamined",
                 "begin casez (a) 0: y = 1; endcase casex (b) 1: y = 2; endcase end",
                 true,
                 {"y"},
                 2,
                 0,
                 ""},
        BodyCase{"IfAndCaseReasonsJoined",
                 "begin if (e) y = 1; case (s) 0: y = 2; endcase end",
                 true,
                 {"y"},
                 2,
                 0,
                 "if without else (if:1 else:0); case without default"},
        BodyCase{"ComparisonInConditionIsNoTarget", "begin if (a <= b) x = 1; else x = 0; end", true, {"x"}, 2, 0, ""},
        BodyCase{
            "NonBlockingTargetsFirst", "begin a = 1; b <= 2; a <= 3; c = 4; end", false, {"b", "a", "c"}, 2, 2, ""},
        BodyCase{"ExactComparisonForDistinctTargets", "begin a <= 1; A <= 2; a <= 3; end", false, {"a", "A"}, 0, 3, ""},
        BodyCase{
            "LoopHeaderInsideParentheses", "begin for (i = 0; i < 4; i = i + 1) x[i] = 0; end", true, {"x"}, 1, 0, ""},
        BodyCase{"KeywordTargetsIgnored", "begin begin = 1; end", true, {}, 0, 0, ""},
        BodyCase{"EqualFollowedByEqualIsNoTarget", "begin a = = b; c =\n= d; end", true, {}, 0, 0, ""},
        BodyCase{"EmptyBody", "", true, {}, 0, 0, ""}),
    [](const ::testing::TestParamInfo<BodyCase>& param) { return std::string(param.param.name); });

// Past sixteen distinct targets the listed names move to a hash set; names
// met again on either side of the move are listed once, in first order.
TEST(AnalyzeAlwaysBodyTest, ManyTargetsListedOnceInFirstOrder) {
  std::string body = "begin\n";
  std::vector<std::string> expected;
  for (int k = 0; k < 40; ++k) {
    const std::string name = "t" + std::to_string(k);
    body += name + " <= d;\n";
    if (k % 3 == 0) body += "t0 <= e;\nT0 <= f;\n" + name + " <= g;\n";
    expected.push_back(name);
    if (k == 0) expected.push_back("T0");
  }
  body += "end";
  NameMap uses;
  AlwaysBlock block;
  block.isSequential = true;
  AnalyzeAlwaysBody(body, block, 0, uses);
  EXPECT_EQ(block.assignedSignals, expected);
  EXPECT_EQ(block.nonBlockingCount, 40u + 14u * 3u);
}

TEST(AnalyzeAlwaysBodyTest, IndexedNonBlockingRecord) {
  NameMap uses;
  AlwaysBlock block;
  block.isSequential = true;
  AnalyzeAlwaysBody("begin q[3] <= d; end", block, 2, uses);
  ASSERT_EQ(block.assignments.size(), 1u);
  EXPECT_EQ(block.assignments[0].target, "q");
  EXPECT_EQ(block.assignments[0].rhs, "d");
  EXPECT_EQ(block.assignments[0].line, 2u);
  EXPECT_TRUE(block.assignments[0].indexed);
  EXPECT_EQ(block.assignedSignals, std::vector<std::string>{"q"});
}

TEST(AnalyzeAlwaysBodyTest, RecordsAllNonBlockingThenAllBlocking) {
  NameMap uses;
  AlwaysBlock block;
  AnalyzeAlwaysBody("begin\n a = 1;\n b <= 2;\n c = 3;\nend", block, 7, uses);
  ASSERT_EQ(block.assignments.size(), 3u);
  EXPECT_EQ(block.assignments[0].target, "b");
  EXPECT_EQ(block.assignments[0].line, 9u);
  EXPECT_EQ(block.assignments[1].target, "a");
  EXPECT_EQ(block.assignments[1].line, 8u);
  EXPECT_EQ(block.assignments[2].target, "c");
  EXPECT_EQ(block.assignments[2].line, 10u);
}

TEST(AnalyzeAlwaysBodyTest, AssignmentAfterTwoLineConditionDriftsUp) {
  NameMap uses;
  AlwaysBlock block;
  block.isCombinational = true;
  AnalyzeAlwaysBody("begin\n  if (a &&\n      b)\n    y = c;\n  else\n    y = d;\nend", block, 0, uses);
  ASSERT_EQ(block.assignments.size(), 2u);
  EXPECT_EQ(block.assignments[0].target, "y");
  EXPECT_EQ(block.assignments[0].line, 2u);  // written on line 3
  EXPECT_EQ(block.assignments[1].line, 4u);  // written on line 5
}

TEST(AnalyzeAlwaysBodyTest, SecondEqualWithBlankIsStillScanned) {
  // The target scan rejects "a = = b", the operator scan does not.
  NameMap uses;
  AlwaysBlock block;
  AnalyzeAlwaysBody("a = = b;", block, 0, uses);
  EXPECT_TRUE(block.assignedSignals.empty());
  EXPECT_EQ(block.blockingCount, 0u);
  ASSERT_EQ(block.assignments.size(), 1u);
  EXPECT_EQ(block.assignments[0].target, "a");
  EXPECT_EQ(block.assignments[0].rhs, "= b");
}

TEST(AnalyzeAlwaysBodyTest, EveryBodyIdentifierIsUsedAtTheBodyLine) {
  NameMap uses;
  AlwaysBlock block;
  AnalyzeAlwaysBody("BEGIN\n\n y = a + 4'b1010;\n END", block, 5, uses);
  EXPECT_EQ(uses.size(), 2u);
  EXPECT_EQ(uses.at("y"), 5);
  EXPECT_EQ(uses.at("a"), 5);
  EXPECT_EQ(uses.count("b1010"), 0u);
}

TEST(AnalyzeAlwaysBodyTest, OnlyOneLeadingBeginAndTrailingEndAreCut) {
  NameMap uses;
  AlwaysBlock block;
  AnalyzeAlwaysBody("  begin\n  beginner = 1; ender = 2; end  \n end \n", block, 0, uses);
  EXPECT_EQ(block.assignedSignals, (std::vector<std::string>{"beginner", "ender"}));
}

TEST(AnalyzeAlwaysBodyTest, TenThousandNestedCaseStatementsFinish) {
  std::string body = "begin\n";
  for (int i = 0; i < 10000; ++i) body += "case (s) 0: ";
  body += "y = 1;\n";
  for (int i = 0; i < 10000; ++i) body += "endcase\n";
  body += "end";
  NameMap uses;
  AlwaysBlock block;
  block.isCombinational = true;
  AnalyzeAlwaysBody(body, block, 0, uses);
  EXPECT_TRUE(block.latchRisk);
  // Each nested statement runs to the end of the body; only the innermost
  // one ends at its own endcase. None has a default.
  std::string expected = "case without default";
  for (int i = 1; i < 10000; ++i) expected += "; case without default";
  EXPECT_EQ(block.latchReason, expected);
}

TEST(AnalyzeAlwaysBodyTest, NestedCaseWithDefaultAtEndCoversAllButInnermost) {
  std::string body = "begin\n";
  for (int i = 0; i < 10000; ++i) body += "case (s) 0: ";
  body += "y = 1;\n";
  for (int i = 0; i < 10000; ++i) body += "endcase\n";
  body += "default: y = 0;\nend";
  NameMap uses;
  AlwaysBlock block;
  block.isCombinational = true;
  AnalyzeAlwaysBody(body, block, 0, uses);
  EXPECT_EQ(block.latchReason, "case without default");
}

TEST(AnalyzeAlwaysBodyTest, ExtraEndcaseDoesNotExtendSingleCase) {
  // "endcase endcase" after a single case: the first ends it.
  NameMap uses;
  AlwaysBlock block;
  block.isCombinational = true;
  AnalyzeAlwaysBody("begin case (a) 0: y = 1; endcase endcase default: y = 2; end", block, 0, uses);
  EXPECT_EQ(block.latchReason, "case without default");
}

}  // namespace
}  // namespace quill
