#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

#include "lint/lint_text.h"
#include "lint/steps.h"

namespace quill {
namespace {

using Names = std::vector<std::string>;

// A ContAssign as a comparable, printable value.
struct Assign {
  std::uint32_t line = 0;
  std::string target;
  std::string lhs;
  std::string rhs;
  Names lhsNames;

  friend bool operator==(const Assign&, const Assign&) = default;
  friend void PrintTo(const Assign& a, std::ostream* out) {
    *out << "{line " << a.line << ", target " << testing::PrintToString(a.target) << ", lhs "
         << testing::PrintToString(a.lhs) << ", rhs " << testing::PrintToString(a.rhs) << ", lhsNames "
         << testing::PrintToString(a.lhsNames) << "}";
  }
};

using Assigns = std::vector<Assign>;

Assigns Extract(std::string_view text) {
  Assigns assigns;
  for (const ContAssign& a : ExtractContinuousAssigns(text))
    assigns.push_back({a.line, a.target, a.lhs, a.rhs, a.lhsNames});
  return assigns;
}

struct AssignCase {
  const char* name;
  const char* text;
  Assigns expected;
};

class ExtractContinuousAssignsTest : public testing::TestWithParam<AssignCase> {};

TEST_P(ExtractContinuousAssignsTest, Records) {
  EXPECT_EQ(Extract(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractContinuousAssignsTest,
    testing::Values(
        AssignCase{"Simple", "assign a = b;", {{0, "a", "a", "b", {"a"}}}},
        AssignCase{"Concatenation", "assign {c, s} = x + y;", {{0, "c", "{c, s}", "x + y", {"c", "s"}}}},
        AssignCase{"NoSemicolonEndsTheStep", "assign x = y", {}},
        AssignCase{"EarlierAssignmentStays", "assign a = b;\nassign x = y", {{0, "a", "a", "b", {"a"}}}},
        AssignCase{"NoOperatorEndsTheStep", "assign a = b;\nassign x;\n", {{0, "a", "a", "b", {"a"}}}},
        AssignCase{
            "LongerWordsAreNotAssignments", "reassign a = b;\nassignment c = d;\nassign_en = 1;\ndeassign q;", {}},
        AssignCase{"TabAfterAssign", "assign\ta = b;", {{0, "a", "a", "b", {"a"}}}},
        AssignCase{"ParenthesisAfterAssign", "assign(a) = b;", {}},
        AssignCase{"EqualityIsSkipped", "assign y = a == b;", {{0, "y", "y", "a == b", {"y"}}}},
        AssignCase{"ComparisonsAreSkipped", "assign y = (a <= b) ? c : d;", {{0, "y", "y", "(a <= b) ? c : d", {"y"}}}},
        AssignCase{"OperatorFoundBeyondTheStatement",
                   "assign y <= a;\nassign z = 1;",
                   {{0, "y", "y <= a;\nassign z", "1", {"y"}}}},
        AssignCase{"CaseSensitive", "Assign y = 1;", {}}, AssignCase{"UnderscoreBefore", "x_assign a = b;", {}},
        AssignCase{"AssignAtEnd", "assign", {}}, AssignCase{"EmptyLeftAndRight", "assign =;", {{0, "", "", "", {}}}},
        AssignCase{"IndexedTarget", "assign a[3:0] = b;", {{0, "a", "a[3:0]", "b", {"a"}}}},
        AssignCase{"NestedConcatenation", "assign { {a, b}, c } = d;", {{0, "", "{ {a, b}, c }", "d", {"", "c"}}}},
        AssignCase{"LineNumbers",
                   "\n\nassign a = b;\n\nassign c = d;",
                   {{2, "a", "a", "b", {"a"}}, {4, "c", "c", "d", {"c"}}}},
        AssignCase{"RightSideSpansLines", "assign a = b\n + c;", {{0, "a", "a", "b\n + c", {"a"}}}},
        AssignCase{"RightSideTrimmed", "assign a =\t b \r;", {{0, "a", "a", "b", {"a"}}}},
        AssignCase{"TripleEquals", "assign a === b = c;", {{0, "a", "a === b", "c", {"a"}}}},
        AssignCase{"NotEqualSkipped", "assign a != b = c;", {{0, "a", "a != b", "c", {"a"}}}},
        AssignCase{"InsideStringLiteral", "$display(\"assign x = 1;\");", {{0, "x", "x", "1", {"x"}}}},
        AssignCase{"AssignmentOverLines",
                   "assign a = b;\nassign x\nassign c = d;",
                   {{0, "a", "a", "b", {"a"}}, {1, "x", "x\nassign c", "d", {"x"}}}},
        AssignCase{"FollowsPunctuation", "(assign a = b;", {{0, "a", "a", "b", {"a"}}}}),
    [](const testing::TestParamInfo<AssignCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(ExtractContinuousAssignsPreparationTest, TabsAreSpacesAfterPreparation) {
  EXPECT_EQ(Extract(PrepareText("assign\ty\t=\tx;")), (Assigns{{0, "y", "y", "x", {"y"}}}));
}

struct LhsCase {
  const char* name;
  const char* lhs;
  Names expected;
};

class LhsNamesTest : public testing::TestWithParam<LhsCase> {};

TEST_P(LhsNamesTest, Names) {
  EXPECT_EQ(LhsNames(GetParam().lhs), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LhsNamesTest,
    testing::Values(LhsCase{"Indexed", "data[7:0]", {"data"}}, LhsCase{"TwoIndices", "mem[i][3]", {"mem"}},
                    LhsCase{"Concatenation", "{carry, sum[3:0]}", {"carry", "sum"}},
                    LhsCase{"NestedMember", "{ {a, b}, c }", {"", "c"}}, LhsCase{"LoneBrace", "{", {}},
                    LhsCase{"Empty", "", {}}, LhsCase{"Blanks", " \t\r", {}}, LhsCase{"Unterminated", "{a, b", {"a"}},
                    LhsCase{"OneMember", "{a}", {"a"}}, LhsCase{"EmptyBraces", "{}", {""}},
                    LhsCase{"NestedLast", "{a, {b, c}}", {"a", "", "c"}}, LhsCase{"TrailingComma", "{a,}", {"a", ""}},
                    LhsCase{"TextAfterClose", "{a} , b", {"a"}}, LhsCase{"NoWord", "[3]", {}},
                    LhsCase{"DigitsCount", "3abc", {"3abc"}}, LhsCase{"Trimmed", "\t x ", {"x"}},
                    LhsCase{"LineFeedInsideMember", "{a,\n b}", {"a", ""}}),
    [](const testing::TestParamInfo<LhsCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(ExtractContinuousAssignsPathologicalTest, TenMegabytesOfAssignWords) {
  std::string glued;
  std::string spaced;
  while (glued.size() < 10'000'000) glued += "assign";
  while (spaced.size() < 10'000'000) spaced += "assign ";
  EXPECT_TRUE(Extract(glued).empty());
  EXPECT_TRUE(Extract(spaced).empty());
}

TEST(ExtractContinuousAssignsPathologicalTest, ManyAssignmentsWithoutSemicolon) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "assign a = b\n";
  EXPECT_TRUE(Extract(text).empty());
}

TEST(ExtractContinuousAssignsPathologicalTest, ManyAssignments) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "assign a = b;\n";
  const Assigns assigns = Extract(text);
  ASSERT_EQ(assigns.size(), 200'000u);
  EXPECT_EQ(assigns.back().line, 199'999u);
}

}  // namespace
}  // namespace quill
