#include <gtest/gtest.h>

#include <string>

#include "lint/check_test_support.h"
#include "lint/identifiers.h"
#include "lint/lint_text.h"
#include "lint/steps.h"

namespace quill {
namespace {

ContAssign Assign(std::uint32_t line, std::string rhs) {
  ContAssign assign;
  assign.line = line;
  assign.rhs = std::move(rhs);
  return assign;
}

AlwaysBlock Block(std::uint32_t startLine, std::string sensitivity) {
  AlwaysBlock block;
  block.startLine = startLine;
  block.sensitivity = std::move(sensitivity);
  return block;
}

TEST(CollectUsesTest, RightSidesOfContinuousAssignments) {
  ModuleModel model;
  model.assigns = ExtractContinuousAssigns("\n\nassign y = en ? 8'hFF : data;");
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(test::NamesOf(model.firstUseLine), (NameSet{"en", "data"}));
  EXPECT_EQ(model.firstUseLine, (NameMap{{"en", 2}, {"data", 2}}));
}

TEST(CollectUsesTest, SensitivityListsWithoutEdgeWords) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(10, "posedge clk or negedge rst_n"));
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(test::NamesOf(model.firstUseLine), (NameSet{"clk", "rst_n"}));
  EXPECT_EQ(model.firstUseLine, (NameMap{{"clk", 10}, {"rst_n", 10}}));
}

TEST(CollectUsesTest, EdgeWordsInAnyCaseAreKeywords) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(1, "POSEDGE clk, NegEdge rst, *"));
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(test::NamesOf(model.firstUseLine), (NameSet{"clk", "rst"}));
}

TEST(CollectUsesTest, FirstUseIsTheSmallestLine) {
  ModuleModel model;
  model.assigns.push_back(Assign(9, "a + b"));
  model.assigns.push_back(Assign(4, "A"));
  model.alwaysBlocks.push_back(Block(2, "b"));
  model.alwaysBlocks.push_back(Block(1, "c"));
  RecordFirstUse(model.firstUseLine, "c", 0);
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(model.firstUseLine, (NameMap{{"a", 4}, {"b", 2}, {"c", 0}}));
  EXPECT_EQ(model.firstUseLine.find("A")->first, "a");
}

TEST(CollectUsesTest, UnsizedBasedLiteralYieldsAName) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "x & 'hFF | 4'b1010 | 16 'h ff"));
  model.alwaysBlocks.push_back(Block(3, "2'b01 or 'd3"));
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(test::NamesOf(model.firstUseLine), (NameSet{"x", "hFF", "d3"}));
}

TEST(CollectUsesTest, KeywordsAndSystemNames) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "$signed(a) + int'(b) + u1.q"));
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_EQ(test::NamesOf(model.firstUseLine), (NameSet{"a", "b", "u1", "q"}));
}

TEST(CollectUsesTest, EmptyModel) {
  ModuleModel model;
  CollectUses(model.assigns, model.alwaysBlocks, model.firstUseLine);
  EXPECT_TRUE(model.firstUseLine.empty());
}

}  // namespace
}  // namespace quill
