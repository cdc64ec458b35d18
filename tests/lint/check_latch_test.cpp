#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"
#include "lint/steps.h"

namespace quill {
namespace {

using test::Block;
using test::Finding;

AlwaysBlock LatchBlock(std::uint32_t line, bool isSequential, bool isCombinational, bool latchRisk,
                       std::string reason) {
  AlwaysBlock block = Block(line, isSequential, isCombinational);
  block.latchRisk = latchRisk;
  block.latchReason = std::move(reason);
  return block;
}

TEST(CheckLatchTest, NoBlocksNoFindings) {
  EXPECT_TRUE(CheckLatch(ModuleModel{}).empty());
}

TEST(CheckLatchTest, ReportsTheReasonAtTheAlwaysLine) {
  ModuleModel model;
  model.alwaysBlocks.push_back(LatchBlock(12, false, true, true, "if without else (if:2 else:1)"));
  EXPECT_EQ(CheckLatch(model),
            (std::vector<Diagnostic>{Finding(CheckId::kLatch, 12, "if without else (if:2 else:1)")}));
}

TEST(CheckLatchTest, EmptyReasonGivesTheGeneralMessage) {
  ModuleModel model;
  model.alwaysBlocks.push_back(LatchBlock(3, false, true, true, ""));
  EXPECT_EQ(CheckLatch(model),
            (std::vector<Diagnostic>{Finding(CheckId::kLatch, 3, "potential latch in combinational always")}));
}

TEST(CheckLatchTest, OneFindingPerBlockWhateverTheCauses) {
  ModuleModel model;
  model.alwaysBlocks.push_back(
      LatchBlock(0, false, true, true, "if without else (if:1 else:0); case without default; case without default"));
  model.alwaysBlocks.push_back(LatchBlock(9, true, true, true, "case without default"));
  EXPECT_EQ(
      CheckLatch(model),
      (std::vector<Diagnostic>{
          Finding(CheckId::kLatch, 0, "if without else (if:1 else:0); case without default; case without default"),
          Finding(CheckId::kLatch, 9, "case without default")}));
}

TEST(CheckLatchTest, NeedsBothCombinationalAndRisk) {
  ModuleModel model;
  model.alwaysBlocks.push_back(LatchBlock(1, true, false, true, "if without else (if:1 else:0)"));
  model.alwaysBlocks.push_back(LatchBlock(2, false, true, false, ""));
  EXPECT_TRUE(CheckLatch(model).empty());
}

TEST(CheckLatchTest, BalancedBlockWithDefaultsHasNoFinding) {
  ModuleModel model;
  test::AddAlwaysBlocks(
      "always @(*) begin\n if (a) y = 1; else y = 0;\n case (s) 0: z = 1; default: z = 0; endcase\nend\n", model);
  EXPECT_TRUE(CheckLatch(model).empty());
}

TEST(CheckLatchTest, SequentialBlockNeverChecked) {
  ModuleModel model;
  test::AddAlwaysBlocks("always @(posedge clk) begin\n if (en) q <= d;\nend\n", model);
  EXPECT_TRUE(CheckLatch(model).empty());
}

TEST(CheckLatchTest, ExtractedCombinationalBlock) {
  ModuleModel model;
  test::AddAlwaysBlocks("\n\nalways @(*) begin\n if (en) y = a;\n case (s) 0: z = 1; endcase\nend\n", model);
  EXPECT_EQ(
      CheckLatch(model),
      (std::vector<Diagnostic>{Finding(CheckId::kLatch, 2, "if without else (if:1 else:0); case without default")}));
}

}  // namespace
}  // namespace quill
