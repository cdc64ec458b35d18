#include <gtest/gtest.h>

#include <cctype>
#include <string>
#include <string_view>
#include <vector>

#include "lint/always_analysis.h"
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
        Finding(CheckId::kCombLoop, 3, "assign '" + GetParam().lhsNames.front() + "' feeds back to itself"));
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
            (std::vector<Diagnostic>{Finding(CheckId::kCombLoop, 1, "assign 's' feeds back to itself"),
                                     Finding(CheckId::kCombLoop, 2, "assign '' feeds back to itself"),
                                     Finding(CheckId::kCombLoop, 2, "assign 'c' feeds back to itself")}));
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
            (std::vector<Diagnostic>{Finding(CheckId::kCombLoop, 9, "assign 'n' feeds back to itself"),
                                     Finding(CheckId::kCombLoop, 2, "signal 'x' feeds back to itself in always"),
                                     Finding(CheckId::kCombLoop, 4, "signal 'X' feeds back to itself in always")}));
}

struct ExtractedCase {
  const char* name;
  std::string text;
  std::vector<Diagnostic> expected;
};

class CheckCombLoopExtractedTest : public ::testing::TestWithParam<ExtractedCase> {};

TEST_P(CheckCombLoopExtractedTest, Reports) {
  ModuleModel model;
  test::AddAlwaysBlocks(GetParam().text, model);
  EXPECT_EQ(CheckCombLoop(model), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CheckCombLoopExtractedTest,
    ::testing::Values(ExtractedCase{"XorWithItself",
                                    "\nalways @(*) x = x ^ y;",
                                    {Finding(CheckId::kCombLoop, 1, "signal 'x' feeds back to itself in always")}},
                      ExtractedCase{"SequentialCounter", "always @(posedge clk) cnt <= cnt + 1;", {}},
                      ExtractedCase{"IfElseWithoutFeedback", "always @(*) begin if (s) y = a; else y = b; end", {}},
                      ExtractedCase{"OnlyTheFirstLineOfTheRightHandSide", "always @(*) y = a +\n y;", {}},
                      ExtractedCase{"NonBlockingRecordsFirst",
                                    "always @(*) begin\n a = a + 1;\n b <= b;\nend",
                                    {Finding(CheckId::kCombLoop, 2, "signal 'b' feeds back to itself in always"),
                                     Finding(CheckId::kCombLoop, 1, "signal 'a' feeds back to itself in always")}}),
    [](const ::testing::TestParamInfo<ExtractedCase>& param) { return std::string(param.param.name); });

// Whether `name` stands in `text` as a whole word, ignoring ASCII case: the
// plain reading of the check, for comparison.
bool HasWholeWord(std::string_view text, std::string_view name) {
  auto isWord = [](char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_'; };
  auto fold = [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); };
  for (std::size_t pos = 0; pos + name.size() <= text.size(); ++pos) {
    if (pos > 0 && isWord(text[pos - 1])) continue;
    if (pos + name.size() < text.size() && isWord(text[pos + name.size()])) continue;
    bool same = true;
    for (std::size_t i = 0; i < name.size() && same; ++i) same = fold(text[pos + i]) == fold(name[i]);
    if (same) return true;
  }
  return false;
}

// Long chains, whose right-hand sides share their end, against the plain
// reading of every record.
TEST(CheckCombLoopChainTest, LinksSharingAnEndAgreeWithAPlainSearch) {
  const char* const kWords[] = {"a", "A", "b", "ab", "a_b", "1a", "B", "x"};
  unsigned state = 12345;
  auto next = [&state] {
    state = state * 1103515245u + 12345u;
    return (state >> 16) & 0x7fffu;
  };
  for (int round = 0; round < 40; ++round) {
    std::string body;
    const unsigned links = 20 + next() % 200;
    for (unsigned i = 0; i < links; ++i) {
      body += kWords[next() % 8];
      body += next() % 5 == 0 ? " + " : " = ";
      if (next() % 7 == 0) body += std::string(next() % 40, ' ');
    }
    body += "x;";
    ModuleModel model;
    AlwaysBlock block;
    block.isCombinational = true;
    AnalyzeAlwaysBody(body, block, 0, model.firstUseLine);
    std::vector<Diagnostic> expected;
    for (const AssignmentRecord& record : block.assignments) {
      if (!HasWholeWord(record.rhs.View(), record.target)) continue;
      expected.push_back(Finding(CheckId::kCombLoop, 0, "signal '" + record.target + "' feeds back to itself in always"));
    }
    model.alwaysBlocks.push_back(block);
    EXPECT_EQ(CheckCombLoop(model), expected) << body;
  }
}

TEST(CheckCombLoopChainTest, TargetOnlyBeforeItsOwnRightHandSide) {
  ModuleModel model;
  AlwaysBlock block;
  block.isCombinational = true;
  std::string filler;
  for (int i = 0; i < 300; ++i) filler += "w ";
  AnalyzeAlwaysBody("Q = x = q = " + filler + ";", block, 4, model.firstUseLine);
  model.alwaysBlocks.push_back(block);
  EXPECT_EQ(CheckCombLoop(model),
            std::vector<Diagnostic>{Finding(CheckId::kCombLoop, 4, "signal 'Q' feeds back to itself in always")});
}

}  // namespace
}  // namespace quill
