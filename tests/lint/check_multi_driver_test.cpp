#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Assign;
using test::Block;
using test::Finding;

TEST(CheckMultiDriverTest, EmptyModel) {
  EXPECT_TRUE(CheckMultiDriver(ModuleModel{}).empty());
}

TEST(CheckMultiDriverTest, TwoAlwaysBlocks) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(4, true, false, {"q"}));
  model.alwaysBlocks.push_back(Block(9, true, false, {"q"}));
  EXPECT_EQ(CheckMultiDriver(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kMultiDriver, 4, "signal 'q' driven in 2 always blocks (lines: 4, 9)")}));
}

TEST(CheckMultiDriverTest, AssignAndAlways) {
  ModuleModel model;
  model.assigns.push_back(Assign(2, "y", "a"));
  model.alwaysBlocks.push_back(Block(5, false, true, {"y"}));
  EXPECT_EQ(
      CheckMultiDriver(model),
      (std::vector<Diagnostic>{Finding(CheckId::kMultiDriver, 2, "signal 'y' driven by both assign and always")}));
}

TEST(CheckMultiDriverTest, BothFindingLineIsTheSmallerFirstLine) {
  ModuleModel model;
  model.assigns.push_back(Assign(7, "y", "a"));
  model.assigns.push_back(Assign(6, "y", "b"));
  model.alwaysBlocks.push_back(Block(3, false, true, {"y"}));
  EXPECT_EQ(
      CheckMultiDriver(model),
      (std::vector<Diagnostic>{Finding(CheckId::kMultiDriver, 3, "signal 'y' driven by both assign and always")}));
}

TEST(CheckMultiDriverTest, SameStartLineCountsOnce) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(4, false, true, {"q"}));
  model.alwaysBlocks.push_back(Block(4, true, false, {"q"}));
  EXPECT_TRUE(CheckMultiDriver(model).empty());
}

TEST(CheckMultiDriverTest, AssignedTwiceInOneBlockIsNotMultiDriven) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(1, true, false, {"q", "r"}));
  model.assigns.push_back(Assign(0, "x", "a"));
  model.assigns.push_back(Assign(2, "x", "b"));
  EXPECT_TRUE(CheckMultiDriver(model).empty());
}

TEST(CheckMultiDriverTest, DistinctLinesAscending) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(10, true, false, {"q"}));
  model.alwaysBlocks.push_back(Block(2, true, false, {"q"}));
  model.alwaysBlocks.push_back(Block(10, true, false, {"q"}));
  model.alwaysBlocks.push_back(Block(7, true, false, {"q"}));
  EXPECT_EQ(CheckMultiDriver(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kMultiDriver, 2, "signal 'q' driven in 3 always blocks (lines: 2, 7, 10)")}));
}

TEST(CheckMultiDriverTest, BothFindingsOfOneNameInOrder) {
  ModuleModel model;
  model.assigns.push_back(Assign(2, "q", "a"));
  model.alwaysBlocks.push_back(Block(4, true, false, {"q"}));
  model.alwaysBlocks.push_back(Block(9, true, false, {"q"}));
  EXPECT_EQ(
      CheckMultiDriver(model),
      (std::vector<Diagnostic>{Finding(CheckId::kMultiDriver, 4, "signal 'q' driven in 2 always blocks (lines: 4, 9)"),
                               Finding(CheckId::kMultiDriver, 2, "signal 'q' driven by both assign and always")}));
}

TEST(CheckMultiDriverTest, NamesMatchIgnoringCaseWithTheAssignSpelling) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(1, false, true, {"y"}));
  model.alwaysBlocks.push_back(Block(3, false, true, {"Y"}));
  model.assigns.push_back(Assign(5, "Y", "a"));
  model.assigns.push_back(Assign(6, "y", "b"));
  EXPECT_EQ(
      CheckMultiDriver(model),
      (std::vector<Diagnostic>{Finding(CheckId::kMultiDriver, 1, "signal 'Y' driven in 2 always blocks (lines: 1, 3)"),
                               Finding(CheckId::kMultiDriver, 1, "signal 'Y' driven by both assign and always")}));
}

TEST(CheckMultiDriverTest, AlwaysSpellingWithoutAssign) {
  ModuleModel model;
  model.alwaysBlocks.push_back(Block(1, false, true, {"Data"}));
  model.alwaysBlocks.push_back(Block(3, false, true, {"DATA"}));
  EXPECT_EQ(CheckMultiDriver(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kMultiDriver, 1, "signal 'Data' driven in 2 always blocks (lines: 1, 3)")}));
}

TEST(CheckMultiDriverTest, NamesOrderedByFirstFindingLineThenName) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "{c, b}", {"c", "b"}, "x"));
  model.assigns.push_back(Assign(1, "a", "x"));
  model.assigns.push_back(Assign(1, "B2", "x"));
  model.alwaysBlocks.push_back(Block(3, false, true, {"b", "a", "c", "B2", "z"}));
  model.alwaysBlocks.push_back(Block(5, true, false, {"z", "a"}));
  EXPECT_EQ(CheckMultiDriver(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kMultiDriver, 0, "signal 'b' driven by both assign and always"),
                Finding(CheckId::kMultiDriver, 0, "signal 'c' driven by both assign and always"),
                Finding(CheckId::kMultiDriver, 1, "signal 'B2' driven by both assign and always"),
                Finding(CheckId::kMultiDriver, 3, "signal 'a' driven in 2 always blocks (lines: 3, 5)"),
                Finding(CheckId::kMultiDriver, 1, "signal 'a' driven by both assign and always"),
                Finding(CheckId::kMultiDriver, 3, "signal 'z' driven in 2 always blocks (lines: 3, 5)")}));
}

TEST(CheckMultiDriverTest, EmptyNameFromConcatenationIsNeverReported) {
  ModuleModel model;
  model.assigns.push_back(Assign(0, "{ {a, b}, c }", {"", "c"}, "x"));
  model.alwaysBlocks.push_back(Block(2, false, true, {"d"}));
  EXPECT_TRUE(CheckMultiDriver(model).empty());
}

}  // namespace
}  // namespace quill
