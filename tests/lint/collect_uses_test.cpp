#include <gtest/gtest.h>

#include <string>

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
  ExtractContinuousAssigns("\n\nassign y = en ? 8'hFF : data;", model);
  CollectUses(model);
  EXPECT_EQ(model.usedIdentifiers, (NameSet{"en", "data"}));
  EXPECT_EQ(model.firstUseLine, (NameMap{{"en", 2}, {"data", 2}}));
}

TEST(CollectUsesTest, SensitivityListsWithoutEdgeWords) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(10, "posedge clk or negedge rst_n"));
  CollectUses(model);
  EXPECT_EQ(model.usedIdentifiers, (NameSet{"clk", "rst_n"}));
  EXPECT_EQ(model.firstUseLine, (NameMap{{"clk", 10}, {"rst_n", 10}}));
}

TEST(CollectUsesTest, EdgeWordsInAnyCaseAreKeywords) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(1, "POSEDGE clk, NegEdge rst, *"));
  CollectUses(model);
  EXPECT_EQ(model.usedIdentifiers, (NameSet{"clk", "rst"}));
}

TEST(CollectUsesTest, FirstUseIsTheSmallestLine) {
  ModuleModel model;
  model.assigns.push_back(Assign(9, "a + b"));
  model.assigns.push_back(Assign(4, "A"));
  model.alwaysBlocks.push_back(Block(2, "b"));
  model.alwaysBlocks.push_back(Block(1, "c"));
  RecordFirstUse(model, "c", 0);
  CollectUses(model);
  EXPECT_EQ(model.firstUseLine, (NameMap{{"a", 4}, {"b", 2}, {"c", 0}}));
  EXPECT_EQ(model.firstUseLine.find("A")->first, "a");
}

TEST(CollectUsesTest, UnsizedBasedLiteralYieldsAName) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "x & 'hFF | 4'b1010 | 16 'h ff"));
  model.alwaysBlocks.push_back(Block(3, "2'b01 or 'd3"));
  CollectUses(model);
  EXPECT_EQ(model.usedIdentifiers, (NameSet{"x", "hFF", "d3"}));
}

TEST(CollectUsesTest, KeywordsAndSystemNames) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "$signed(a) + int'(b) + u1.q"));
  CollectUses(model);
  EXPECT_EQ(model.usedIdentifiers, (NameSet{"a", "b", "u1", "q"}));
}

TEST(CollectUsesTest, EmptyModel) {
  ModuleModel model;
  CollectUses(model);
  EXPECT_TRUE(model.usedIdentifiers.empty());
  EXPECT_TRUE(model.firstUseLine.empty());
}

}  // namespace
}  // namespace quill
