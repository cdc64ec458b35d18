#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Block;
using test::Finding;
using test::Signal;

std::string Message(const std::string& name) {
  return "wire signal '" + name + "' cannot be assigned in always block (use reg instead)";
}

TEST(CheckWireAlwaysTest, EmptyModel) {
  EXPECT_TRUE(CheckWireAlways(ModuleModel{}).empty());
}

TEST(CheckWireAlwaysTest, KindsThatAreReported) {
  ModuleModel model;
  model.signals.push_back(Signal("w", SignalKind::kWire, 0));
  model.signals.push_back(Signal("i", SignalKind::kInput, 0));
  model.signals.push_back(Signal("io", SignalKind::kInout, 0));
  model.signals.push_back(Signal("o", SignalKind::kOutput, 0));
  model.signals.push_back(Signal("oreg", SignalKind::kOutput, 0, "", /*isReg=*/true));
  model.signals.push_back(Signal("ologic", SignalKind::kOutput, 0, "", false, /*isLogic=*/true));
  model.signals.push_back(Signal("r", SignalKind::kReg, 0));
  model.signals.push_back(Signal("l", SignalKind::kLogic, 0));
  model.signals.push_back(Signal("wl", SignalKind::kWire, 0, "", false, /*isLogic=*/true));
  model.alwaysBlocks.push_back(Block(7, false, true, {"w", "i", "io", "o", "oreg", "ologic", "r", "l", "wl", "u"}));
  EXPECT_EQ(CheckWireAlways(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kWireAlways, 7, Message("w")), Finding(CheckId::kWireAlways, 7, Message("i")),
                Finding(CheckId::kWireAlways, 7, Message("io")), Finding(CheckId::kWireAlways, 7, Message("o"))}));
}

TEST(CheckWireAlwaysTest, SpellingOfTheBodyAndFirstDeclaration) {
  ModuleModel model;
  model.signals.push_back(Signal("W", SignalKind::kWire, 0));
  model.signals.push_back(Signal("w", SignalKind::kReg, 1));
  model.signals.push_back(Signal("R", SignalKind::kReg, 2));
  model.signals.push_back(Signal("r", SignalKind::kWire, 3));
  model.alwaysBlocks.push_back(Block(4, true, false, {"w", "r"}));
  model.alwaysBlocks.push_back(Block(9, false, true, {"W"}));
  EXPECT_EQ(CheckWireAlways(model), (std::vector<Diagnostic>{Finding(CheckId::kWireAlways, 4, Message("w")),
                                                             Finding(CheckId::kWireAlways, 9, Message("W"))}));
}

}  // namespace
}  // namespace quill
