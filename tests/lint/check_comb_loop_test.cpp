#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"
#include "lint/steps.h"

namespace quill {
namespace {

using test::Assign;
using test::Block;
using test::Finding;
using test::Record;

struct AssignLoopCase {
  const char* name;
  std::vector<std::string> lhsNames;
  std::string rhs;
  bool reported;
};

class CheckCombLoopAssignTest : public ::testing::TestWithParam<AssignLoopCase> {};

TEST_P(CheckCombLoopAssignTest, SearchesTheWholeWord) {
  ModuleModel model;
  model.assigns.push_back(Assign(3, "lhs", GetParam().lhsNames, GetParam().rhs));
  std::vector<Diagnostic> expected;
  if (GetParam().reported) {
    expected.push_back(
        Finding("warning", 3, "comb-loop", "assign '" + GetParam().lhsNames.front() + "' feeds back to itself"));
  }
  EXPECT_EQ(CheckCombLoop(model), expected);
}

INSTANTIATE_TEST_SUITE_P(Cases, CheckCombLoopAssignTest,
                         ::testing::Values(AssignLoopCase{"OtherName", {"a"}, "b", false},
                                           AssignLoopCase{"LongerWord", {"a"}, "a_next", false},
                                           AssignLoopCase{"WordBefore", {"a"}, "x_a + 1a", false},
                                           AssignLoopCase{"SelfIncrement", {"count"}, "count + 1", true},
                                           AssignLoopCase{"IgnoresCase", {"Y"}, "y & a", true},
                                           AssignLoopCase{"InsideSelect", {"q"}, "d[q]", true},
                                           AssignLoopCase{"HierarchicalPart", {"q"}, "u1.q", true},
                                           AssignLoopCase{"AfterDollar", {"q"}, "$q", true},
                                           AssignLoopCase{"WholeRightHandSide", {"q"}, "q", true},
                                           AssignLoopCase{"EmptyRightHandSide", {"q"}, "", false},
                                           AssignLoopCase{"EmptyNameAndWordByte", {""}, "~(x)", true},
                                           AssignLoopCase{"EmptyNameWithoutWordByte", {""}, "~(+)", false},
                                           AssignLoopCase{"EmptyNameAndEmptyRightHandSide", {""}, "", false}),
                         [](const ::testing::TestParamInfo<AssignLoopCase>& param) {
                           return std::string(param.param.name);
                         });

TEST(CheckCombLoopTest, EveryNameOfAConcatenation) {
  ModuleModel model;
  model.assigns.push_back(Assign(1, "{c, s}", {"c", "s"}, "s + c_in"));
  model.assigns.push_back(Assign(2, "{ {a, b}, c }", {"", "c"}, "c"));
  EXPECT_EQ(CheckCombLoop(model),
            (std::vector<Diagnostic>{Finding("warning", 1, "comb-loop", "assign 's' feeds back to itself"),
                                     Finding("warning", 2, "comb-loop", "assign '' feeds back to itself"),
                                     Finding("warning", 2, "comb-loop", "assign 'c' feeds back to itself")}));
}

TEST(CheckCombLoopTest, AlwaysRecordsOfNonSequentialBlocksAfterAssigns) {
  ModuleModel model;
  AlwaysBlock combinational = Block(0, false, true);
  combinational.assignments = {Record("x", "x ^ y", 2), Record("z", "a", 3), Record("X", "1 + x", 4)};
  AlwaysBlock sequential = Block(5, true, false);
  sequential.assignments = {Record("cnt", "cnt + 1", 6)};
  AlwaysBlock both = Block(7, true, true);
  both.assignments = {Record("w", "w", 8)};
  model.alwaysBlocks = {combinational, sequential, both};
  model.assigns.push_back(Assign(9, "n", "n"));
  EXPECT_EQ(CheckCombLoop(model),
            (std::vector<Diagnostic>{Finding("warning", 9, "comb-loop", "assign 'n' feeds back to itself"),
                                     Finding("warning", 2, "comb-loop", "signal 'x' feeds back to itself in always"),
                                     Finding("warning", 4, "comb-loop", "signal 'X' feeds back to itself in always")}));
}

struct ExtractedCase {
  const char* name;
  std::string text;
  std::vector<Diagnostic> expected;
};

class CheckCombLoopExtractedTest : public ::testing::TestWithParam<ExtractedCase> {};

TEST_P(CheckCombLoopExtractedTest, Reports) {
  ModuleModel model;
  ExtractAlwaysBlocks(GetParam().text, model);
  EXPECT_EQ(CheckCombLoop(model), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CheckCombLoopExtractedTest,
    ::testing::Values(ExtractedCase{"XorWithItself",
                                    "\nalways @(*) x = x ^ y;",
                                    {Finding("warning", 1, "comb-loop", "signal 'x' feeds back to itself in always")}},
                      ExtractedCase{"SequentialCounter", "always @(posedge clk) cnt <= cnt + 1;", {}},
                      ExtractedCase{"IfElseWithoutFeedback", "always @(*) begin if (s) y = a; else y = b; end", {}},
                      ExtractedCase{"OnlyTheFirstLineOfTheRightHandSide", "always @(*) y = a +\n y;", {}},
                      ExtractedCase{"NonBlockingRecordsFirst",
                                    "always @(*) begin\n a = a + 1;\n b <= b;\nend",
                                    {Finding("warning", 2, "comb-loop", "signal 'b' feeds back to itself in always"),
                                     Finding("warning", 1, "comb-loop", "signal 'a' feeds back to itself in always")}}),
    [](const ::testing::TestParamInfo<ExtractedCase>& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace quill
