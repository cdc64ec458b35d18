#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Finding;

TEST(CheckDuplicateInstanceTest, EmptyModel) {
  EXPECT_TRUE(CheckDuplicateInstance(ModuleModel{}).empty());
}

TEST(CheckDuplicateInstanceTest, TwiceReportedAtTheSecond) {
  ModuleModel model;
  model.instances = {{"u0", 10}, {"u1", 12}, {"u0", 14}};
  EXPECT_EQ(CheckDuplicateInstance(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kDuplicateInstance, 14, "instance 'u0' instantiated 2 times (lines: 11, 15)")}));
}

TEST(CheckDuplicateInstanceTest, AllLinesInListOrder) {
  ModuleModel model;
  model.instances = {{"u", 9}, {"u", 3}, {"u", 3}, {"u", 0}};
  EXPECT_EQ(CheckDuplicateInstance(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kDuplicateInstance, 3, "instance 'u' instantiated 4 times (lines: 10, 4, 4, 1)")}));
}

TEST(CheckDuplicateInstanceTest, GroupedByExactSpelling) {
  ModuleModel model;
  model.instances = {{"u0", 1}, {"U0", 2}};
  EXPECT_TRUE(CheckDuplicateInstance(model).empty());
}

TEST(CheckDuplicateInstanceTest, OrderedBySecondLineThenName) {
  ModuleModel model;
  model.instances = {{"c", 0}, {"b", 1}, {"a", 2}, {"c", 5}, {"b", 5}, {"a", 3}};
  EXPECT_EQ(CheckDuplicateInstance(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kDuplicateInstance, 3, "instance 'a' instantiated 2 times (lines: 3, 4)"),
                Finding(CheckId::kDuplicateInstance, 5, "instance 'b' instantiated 2 times (lines: 2, 6)"),
                Finding(CheckId::kDuplicateInstance, 5, "instance 'c' instantiated 2 times (lines: 1, 6)")}));
}

}  // namespace
}  // namespace quill
