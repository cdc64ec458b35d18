#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lint/always_analysis.h"
#include "lint/check_test_support.h"

namespace quill {
namespace {

struct StripCase {
  const char* name;
  std::string text;
  std::string withoutParentheses;
  std::string withoutBrackets;
};

class StripNestedTest : public ::testing::TestWithParam<StripCase> {};

TEST_P(StripNestedTest, KeepsOnlyDepthZero) {
  EXPECT_EQ(StripParenthesized(GetParam().text), GetParam().withoutParentheses);
  EXPECT_EQ(StripBracketed(GetParam().text), GetParam().withoutBrackets);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, StripNestedTest,
    ::testing::Values(StripCase{"Empty", "", "", ""}, StripCase{"NoBrackets", "a = b;", "a = b;", "a = b;"},
                      StripCase{"Simple", "if (a <= b) x[3] = 1;", "if  x[3] = 1;", "if (a <= b) x = 1;"},
                      StripCase{"Nested", "f(g(h)) + m[a[1]]", "f + m[a[1]]", "f(g(h)) + m"},
                      StripCase{"UnmatchedCloserHoldsBelowZero", "a)b(c", "ac", "a)b(c"},
                      StripCase{"UnmatchedCloserThenPair", "a)b(c)d", "ac", "a)b(c)d"},
                      StripCase{"UnmatchedOpenerRunsToEnd", "x(yz", "x", "x(yz"},
                      StripCase{"LineFeedsInsideRemoved", "(a\nb)\nc", "\nc", "(a\nb)\nc"},
                      StripCase{"BracketsOnly", "]]][[", "]]][[", ""}),
    [](const ::testing::TestParamInfo<StripCase>& param) { return std::string(param.param.name); });

struct ExpectedRecord {
  std::string target;
  std::string rhs;
  std::uint32_t line;
  bool indexed;
};

std::vector<ExpectedRecord> Records(const AlwaysBlock& block) {
  std::vector<ExpectedRecord> records;
  for (const AssignmentRecord& record : block.assignments) {
    records.push_back({record.target, std::string(record.rhs.View()), record.line, record.indexed});
  }
  return records;
}

bool operator==(const ExpectedRecord& a, const ExpectedRecord& b) {
  return a.target == b.target && a.rhs == b.rhs && a.line == b.line && a.indexed == b.indexed;
}

void PrintTo(const ExpectedRecord& r, std::ostream* os) {
  *os << "{" << r.target << ", \"" << r.rhs << "\", " << r.line << ", " << r.indexed << "}";
}

struct ScanCase {
  const char* name;
  std::string text;
  std::string op;
  std::uint32_t startLine;
  std::vector<ExpectedRecord> expected;
};

class ScanAssignmentsTest : public ::testing::TestWithParam<ScanCase> {};

TEST_P(ScanAssignmentsTest, RecordsAssignments) {
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>(GetParam().text), GetParam().op, GetParam().startLine, uses,
                  block);
  EXPECT_EQ(Records(block), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ScanAssignmentsTest,
    ::testing::Values(
        ScanCase{"NonBlocking", "q <= d;", "<=", 0, {{"q", "d", 0, false}}},
        ScanCase{"EqualOfNonBlockingHasNoTarget", "q <= d;", "=", 0, {}},
        ScanCase{"Blocking", "y = a & b;", "=", 4, {{"y", "a & b", 4, false}}},
        ScanCase{"DoubleEqualSkipped", "a = b == c;", "=", 0, {{"a", "b == c", 0, false}}},
        ScanCase{"NotEqualAndGreaterEqualHaveNoTarget", "x != y; z >= w;", "=", 0, {}},
        ScanCase{"IndexedTarget", "q[3] <= d;", "<=", 0, {{"q", "d", 0, true}}},
        ScanCase{"BlanksAroundSelect", "q  [i + 1]  = d;", "=", 0, {{"q", "d", 0, true}}},
        ScanCase{"NestedSelect", "m[a[1]] = d;", "=", 0, {{"m", "d", 0, true}}},
        ScanCase{"OnlyOneSelectIsWalkedOver", "mem[i][j] = x;", "=", 0, {}},
        ScanCase{"UnmatchedSelectGivesNoTarget", "x] = 1; y = 2;", "=", 0, {{"y", "2", 0, false}}},
        ScanCase{"KeywordTargetSkipped", "begin = 1; else = 2;", "=", 0, {}},
        ScanCase{"NumberTargetSkipped", "3 = x;", "=", 0, {}},
        ScanCase{"RightHandSideEndsAtLineFeed", "y = a +\n  b;", "=", 0, {{"y", "a +", 0, false}}},
        ScanCase{
            "RightHandSideTrimmedOfCr", "y =  a \r\nz = b\t;", "=", 2, {{"y", "a", 2, false}, {"z", "b", 3, false}}},
        ScanCase{"RightHandSideToEndOfText", "y = a", "=", 0, {{"y", "a", 0, false}}},
        ScanCase{"EmptyRightHandSide", "y =;", "=", 0, {{"y", "", 0, false}}},
        ScanCase{
            "LinesCountedFromStart", "\n\na = 1;\n\nb = 2;", "=", 10, {{"a", "1", 12, false}, {"b", "2", 14, false}}},
        ScanCase{"SeveralOnOneLine", "a = b = c;", "=", 0, {{"a", "b = c", 0, false}, {"b", "c", 0, false}}},
        ScanCase{"TargetAtTextStartWithoutBlank", "a=1", "=", 0, {{"a", "1", 0, false}}},
        ScanCase{
            "ChainTrimsItsSharedTail", "x = y = z  \t\r;", "=", 0, {{"x", "y = z", 0, false}, {"y", "z", 0, false}}},
        ScanCase{"ChainEndingInBlanks", "p = q =   ;", "=", 0, {{"p", "q =", 0, false}, {"q", "", 0, false}}},
        ScanCase{"ChainsOnTwoLines",
                 "a = b = c\nd = e = f",
                 "=",
                 2,
                 {{"a", "b = c", 2, false}, {"b", "c", 2, false}, {"d", "e = f", 3, false}, {"e", "f", 3, false}}},
        ScanCase{"EmptyText", "", "=", 0, {}}),
    [](const ::testing::TestParamInfo<ScanCase>& param) { return std::string(param.param.name); });

TEST(ScanAssignmentsTest, RecordsRightHandSideUsesAtTheRecordLine) {
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>("\ny = en ? 8'hFF : data;"), "=", 3, uses, block);
  EXPECT_EQ(uses.count("en"), 1u);
  EXPECT_EQ(uses.count("data"), 1u);
  EXPECT_EQ(uses.count("y"), 0u);
  EXPECT_EQ(uses.count("hFF"), 0u);
  EXPECT_EQ(uses.at("data"), 4);
}

TEST(ScanAssignmentsTest, EveryLinkOfAChainRecordsTheUsesOfItsRightHandSide) {
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>("a = b = 4'b1 + c;\nd = e;"), "=", 6, uses, block);
  EXPECT_EQ(test::NamesOf(uses), (NameSet{"b", "c", "e"}));
  EXPECT_EQ(uses, (NameMap{{"b", 6}, {"c", 6}, {"e", 7}}));
}

TEST(ScanAssignmentsTest, LongChainOnOneLine) {
  std::string text = "x";
  for (int i = 0; i < 200000; ++i) text += " = x";
  text += std::string(100000, ' ') + ";";
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>(text), "=", 0, uses, block);
  ASSERT_EQ(block.assignments.size(), 200000u);
  EXPECT_EQ(block.assignments.front().rhs.size(), 200000u * 4 - 3);
  EXPECT_EQ(block.assignments.back().rhs, "x");
  EXPECT_EQ(test::NamesOf(uses), (NameSet{"x"}));
}

TEST(ScanAssignmentsTest, SkippedOccurrencesRecordNoUses) {
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>("a == b; c != d;"), "=", 0, uses, block);
  EXPECT_TRUE(block.assignments.empty());
  EXPECT_TRUE(uses.empty());
}

TEST(ScanAssignmentsTest, ManyUnmatchedSelectsFinish) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "x] = 1; ";
  text += "[ y] = 2;";
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>(text), "=", 0, uses, block);
  ASSERT_EQ(block.assignments.size(), 0u);
}

TEST(ScanAssignmentsTest, ManyNestedSelectsFinish) {
  std::string text;
  for (int i = 0; i < 50000; ++i) text += "[";
  for (int i = 0; i < 50000; ++i) text += "a] = 1;\n";
  NameMap uses;
  AlwaysBlock block;
  ScanAssignments(std::make_shared<const std::string>(text), "=", 0, uses, block);
  EXPECT_EQ(block.assignments.size(), 0u);
}

}  // namespace
}  // namespace quill
