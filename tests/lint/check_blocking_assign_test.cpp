#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"
#include "lint/steps.h"

namespace quill {
namespace {

using test::Block;
using test::Finding;

AlwaysBlock Counted(std::uint32_t line, bool isSequential, bool isCombinational, std::uint32_t blocking,
                    std::uint32_t nonBlocking) {
  AlwaysBlock block = Block(line, isSequential, isCombinational);
  block.blockingCount = blocking;
  block.nonBlockingCount = nonBlocking;
  return block;
}

TEST(CheckBlockingAssignTest, NoBlocksNoFindings) {
  EXPECT_TRUE(CheckBlockingAssign(ModuleModel{}).empty());
}

TEST(CheckBlockingAssignTest, CountsAndOrderFromTheModel) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Counted(4, true, false, 2, 5));
  model.alwaysBlocks.push_back(Counted(8, false, true, 3, 1));
  model.alwaysBlocks.push_back(Counted(11, true, true, 1, 7));
  model.alwaysBlocks.push_back(Counted(15, true, true, 0, 0));
  EXPECT_EQ(CheckBlockingAssign(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kBlockingAssign, 4, "sequential always uses '=' (2x), suggest '<='"),
                Finding(CheckId::kBlockingAssign, 8, "combinational always uses '<=' (1x), suggest '='"),
                Finding(CheckId::kBlockingAssign, 11, "sequential always uses '=' (1x), suggest '<='"),
                Finding(CheckId::kBlockingAssign, 11, "combinational always uses '<=' (7x), suggest '='")}));
}

struct ExtractedCase {
  const char* name;
  std::string text;
  std::vector<Diagnostic> expected;
};

class CheckBlockingAssignExtractedTest : public ::testing::TestWithParam<ExtractedCase> {};

TEST_P(CheckBlockingAssignExtractedTest, Reports) {
  ModuleModel model;
  test::AddAlwaysBlocks(GetParam().text, model);
  EXPECT_EQ(CheckBlockingAssign(model), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CheckBlockingAssignExtractedTest,
    ::testing::Values(
        ExtractedCase{"BlockingInClockedBlock",
                      "\nalways @(posedge clk) begin a = 1; b <= 2; end",
                      {Finding(CheckId::kBlockingAssign, 1, "sequential always uses '=' (1x), suggest '<='")}},
        ExtractedCase{"NonBlockingInCombinationalBlock",
                      "always @(*) y <= a;",
                      {Finding(CheckId::kBlockingAssign, 0, "combinational always uses '<=' (1x), suggest '='")}},
        ExtractedCase{"BothKindsSequentialFirst",
                      "always @(posedge clk or *) begin a = 1; b <= 2; end",
                      {Finding(CheckId::kBlockingAssign, 0, "sequential always uses '=' (1x), suggest '<='"),
                       Finding(CheckId::kBlockingAssign, 0, "combinational always uses '<=' (1x), suggest '='")}},
        ExtractedCase{"DuplicatesCounted",
                      "always @(posedge clk) begin q = a; q = b; end",
                      {Finding(CheckId::kBlockingAssign, 0, "sequential always uses '=' (2x), suggest '<='")}},
        ExtractedCase{"CleanBlocks", "always @(posedge clk) q <= d;\nalways @(*) y = a;", {}},
        ExtractedCase{"NoBlocks", "assign y = a;", {}}),
    [](const ::testing::TestParamInfo<ExtractedCase>& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace quill
