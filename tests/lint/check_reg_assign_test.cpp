#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Assign;
using test::Finding;
using test::Signal;

std::string Message(const std::string& name) {
  return "reg signal '" + name + "' cannot be assigned by continuous assignment (use wire instead)";
}

TEST(CheckRegAssignTest, EmptyModel) {
  EXPECT_TRUE(CheckRegAssign(ModuleModel{}).empty());
}

TEST(CheckRegAssignTest, RegDrivenByAssign) {
  ModuleModel model;
  model.signals.push_back(Signal("r", SignalKind::kReg, 0));
  model.assigns.push_back(Assign(1, "r", "1'b0"));
  EXPECT_EQ(CheckRegAssign(model), (std::vector<Diagnostic>{Finding(CheckId::kRegAssign, 1, Message("r"))}));
}

TEST(CheckRegAssignTest, LogicNeverReported) {
  ModuleModel model;
  model.signals.push_back(Signal("r", SignalKind::kLogic, 0));
  model.signals.push_back(Signal("o", SignalKind::kOutput, 1, "", /*isReg=*/true, /*isLogic=*/true));
  model.assigns.push_back(Assign(2, "r", "1'b0"));
  model.assigns.push_back(Assign(3, "o", "1'b0"));
  EXPECT_TRUE(CheckRegAssign(model).empty());
}

TEST(CheckRegAssignTest, OutputRegReported) {
  ModuleModel model;
  model.signals.push_back(Signal("q", SignalKind::kOutput, 0, "", /*isReg=*/true));
  model.assigns.push_back(Assign(4, "q", "d"));
  EXPECT_EQ(CheckRegAssign(model), (std::vector<Diagnostic>{Finding(CheckId::kRegAssign, 4, Message("q"))}));
}

TEST(CheckRegAssignTest, UndeclaredAndWiresNotReported) {
  ModuleModel model;
  model.signals.push_back(Signal("w", SignalKind::kWire, 0));
  model.assigns.push_back(Assign(1, "w", "a"));
  model.assigns.push_back(Assign(2, "u", "a"));
  EXPECT_TRUE(CheckRegAssign(model).empty());
}

TEST(CheckRegAssignTest, FirstDeclarationWinsIgnoringCase) {
  ModuleModel model;
  model.signals.push_back(Signal("X", SignalKind::kWire, 0));
  model.signals.push_back(Signal("x", SignalKind::kReg, 1));
  model.signals.push_back(Signal("R", SignalKind::kReg, 2));
  model.assigns.push_back(Assign(3, "x", "a"));
  model.assigns.push_back(Assign(4, "r", "a"));
  EXPECT_EQ(CheckRegAssign(model), (std::vector<Diagnostic>{Finding(CheckId::kRegAssign, 4, Message("r"))}));
}

TEST(CheckRegAssignTest, EveryNameOfEveryAssignInOrder) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kReg, 0));
  model.signals.push_back(Signal("b", SignalKind::kReg, 0));
  model.assigns.push_back(Assign(5, "{b, a}", {"b", "a"}, "x"));
  model.assigns.push_back(Assign(2, "a", "y"));
  EXPECT_EQ(CheckRegAssign(model), (std::vector<Diagnostic>{Finding(CheckId::kRegAssign, 5, Message("b")),
                                                            Finding(CheckId::kRegAssign, 5, Message("a")),
                                                            Finding(CheckId::kRegAssign, 2, Message("a"))}));
}

}  // namespace
}  // namespace quill
