#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Assign;
using test::Finding;

TEST(CheckRepeatedAssignTest, EmptyModel) {
  EXPECT_TRUE(CheckRepeatedAssign(ModuleModel{}).empty());
}

TEST(CheckRepeatedAssignTest, TwiceAtTheFirstLine) {
  ModuleModel model;
  model.assigns.push_back(Assign(3, "y", "a"));
  model.assigns.push_back(Assign(8, "y", "b"));
  EXPECT_EQ(CheckRepeatedAssign(model),
            (std::vector<Diagnostic>{Finding(CheckId::kRepeatedAssign, 3, "signal 'y' assigned 2 times by assign")}));
}

TEST(CheckRepeatedAssignTest, ConcatenationsAndSelectsSkipped) {
  ModuleModel model;
  model.assigns.push_back(Assign(1, "{a, b}", {"a", "b"}, "c"));
  model.assigns.push_back(Assign(2, "{a, b}", {"a", "b"}, "d"));
  model.assigns.push_back(Assign(3, "bus[0]", {"bus"}, "x"));
  model.assigns.push_back(Assign(4, "bus[1]", {"bus"}, "y"));
  model.assigns.push_back(Assign(5, "a", "z"));
  EXPECT_TRUE(CheckRepeatedAssign(model).empty());
}

TEST(CheckRepeatedAssignTest, RepeatsOnOneLineCount) {
  ModuleModel model;
  model.assigns.push_back(Assign(6, "y", "a"));
  model.assigns.push_back(Assign(6, "y", "b"));
  model.assigns.push_back(Assign(6, "y", "c"));
  EXPECT_EQ(CheckRepeatedAssign(model),
            (std::vector<Diagnostic>{Finding(CheckId::kRepeatedAssign, 6, "signal 'y' assigned 3 times by assign")}));
}

TEST(CheckRepeatedAssignTest, NamesMatchIgnoringCaseWithTheFirstSpelling) {
  ModuleModel model;
  model.assigns.push_back(Assign(1, "Y", "a"));
  model.assigns.push_back(Assign(2, "y", "b"));
  EXPECT_EQ(CheckRepeatedAssign(model),
            (std::vector<Diagnostic>{Finding(CheckId::kRepeatedAssign, 1, "signal 'Y' assigned 2 times by assign")}));
}

TEST(CheckRepeatedAssignTest, NamesOrderedByFirstLineThenName) {
  ModuleModel model;
  model.assigns.push_back(Assign(1, "b", "x"));
  model.assigns.push_back(Assign(1, "a", "x"));
  model.assigns.push_back(Assign(0, "z", "x"));
  model.assigns.push_back(Assign(4, "a", "x"));
  model.assigns.push_back(Assign(5, "b", "x"));
  model.assigns.push_back(Assign(6, "z", "x"));
  model.assigns.push_back(Assign(1, "B", "x"));
  EXPECT_EQ(CheckRepeatedAssign(model),
            (std::vector<Diagnostic>{Finding(CheckId::kRepeatedAssign, 0, "signal 'z' assigned 2 times by assign"),
                                     Finding(CheckId::kRepeatedAssign, 1, "signal 'a' assigned 2 times by assign"),
                                     Finding(CheckId::kRepeatedAssign, 1, "signal 'b' assigned 3 times by assign")}));
}

}  // namespace
}  // namespace quill
