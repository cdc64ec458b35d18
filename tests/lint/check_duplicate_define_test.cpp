#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Finding;
using test::Signal;

ParamDecl Parameter(std::string name, std::uint32_t line) {
  return ParamDecl{std::move(name), "1", line};
}

TEST(CheckDuplicateDefineTest, EmptyModel) {
  EXPECT_TRUE(CheckDuplicateDefine(ModuleModel{}).empty());
}

TEST(CheckDuplicateDefineTest, InputRedeclaredAsWireIsExempt) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kInput, 0));
  model.signals.push_back(Signal("a", SignalKind::kWire, 1));
  model.signals.push_back(Signal("b", SignalKind::kWire, 2));
  model.signals.push_back(Signal("b", SignalKind::kInput, 3));
  model.signals.push_back(Signal("b", SignalKind::kWire, 4));
  EXPECT_TRUE(CheckDuplicateDefine(model).empty());
}

TEST(CheckDuplicateDefineTest, SameKindTwice) {
  ModuleModel model;
  model.signals.push_back(Signal("w", SignalKind::kWire, 2));
  model.signals.push_back(Signal("w", SignalKind::kWire, 5));
  model.signals.push_back(Signal("i", SignalKind::kInput, 6));
  model.signals.push_back(Signal("i", SignalKind::kInput, 7));
  EXPECT_EQ(CheckDuplicateDefine(model),
            (std::vector<Diagnostic>{Finding(CheckId::kDuplicateDefine, 5, "signal 'w' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 7, "signal 'i' defined 2 times")}));
}

TEST(CheckDuplicateDefineTest, OtherPairsReported) {
  ModuleModel model;
  model.signals.push_back(Signal("q", SignalKind::kOutput, 0));
  model.signals.push_back(Signal("q", SignalKind::kReg, 1));
  model.signals.push_back(Signal("a", SignalKind::kInput, 2));
  model.signals.push_back(Signal("a", SignalKind::kReg, 3));
  model.signals.push_back(Signal("c", SignalKind::kInput, 4));
  model.signals.push_back(Signal("c", SignalKind::kWire, 5));
  model.signals.push_back(Signal("c", SignalKind::kLogic, 6));
  EXPECT_EQ(CheckDuplicateDefine(model),
            (std::vector<Diagnostic>{Finding(CheckId::kDuplicateDefine, 1, "signal 'q' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 3, "signal 'a' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 5, "signal 'c' defined 3 times")}));
}

TEST(CheckDuplicateDefineTest, GroupedByExactSpelling) {
  ModuleModel model;
  model.signals.push_back(Signal("w", SignalKind::kWire, 0));
  model.signals.push_back(Signal("W", SignalKind::kWire, 1));
  model.parameters.push_back(Parameter("N", 2));
  model.parameters.push_back(Parameter("n", 3));
  EXPECT_TRUE(CheckDuplicateDefine(model).empty());
}

TEST(CheckDuplicateDefineTest, EachSpellingOfANameCountsApart) {
  ModuleModel model;
  model.signals.push_back(Signal("w", SignalKind::kWire, 1));
  model.signals.push_back(Signal("W", SignalKind::kReg, 2));
  model.signals.push_back(Signal("w", SignalKind::kWire, 3));
  model.signals.push_back(Signal("Ww", SignalKind::kWire, 4));
  model.signals.push_back(Signal("wW", SignalKind::kWire, 5));
  model.signals.push_back(Signal("W", SignalKind::kReg, 6));
  model.signals.push_back(Signal("wW", SignalKind::kInput, 7));
  model.signals.push_back(Signal("w", SignalKind::kWire, 8));
  EXPECT_EQ(CheckDuplicateDefine(model),
            (std::vector<Diagnostic>{Finding(CheckId::kDuplicateDefine, 3, "signal 'w' defined 3 times"),
                                     Finding(CheckId::kDuplicateDefine, 6, "signal 'W' defined 2 times")}));
}

TEST(CheckDuplicateDefineTest, ParametersAfterSignals) {
  ModuleModel model;
  model.parameters.push_back(Parameter("N", 0));
  model.parameters.push_back(Parameter("N", 1));
  model.parameters.push_back(Parameter("N", 9));
  model.signals.push_back(Signal("x", SignalKind::kReg, 4));
  model.signals.push_back(Signal("x", SignalKind::kReg, 8));
  EXPECT_EQ(CheckDuplicateDefine(model),
            (std::vector<Diagnostic>{Finding(CheckId::kDuplicateDefine, 8, "signal 'x' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 1, "parameter 'N' defined 3 times")}));
}

TEST(CheckDuplicateDefineTest, EachPassOrderedBySecondLineThenName) {
  ModuleModel model;
  model.signals.push_back(Signal("b", SignalKind::kWire, 0));
  model.signals.push_back(Signal("a", SignalKind::kWire, 0));
  model.signals.push_back(Signal("z", SignalKind::kWire, 0));
  model.signals.push_back(Signal("z", SignalKind::kWire, 1));
  model.signals.push_back(Signal("b", SignalKind::kWire, 2));
  model.signals.push_back(Signal("a", SignalKind::kWire, 2));
  model.signals.push_back(Signal("B", SignalKind::kWire, 2));
  model.signals.push_back(Signal("B", SignalKind::kWire, 2));
  model.parameters.push_back(Parameter("Q", 5));
  model.parameters.push_back(Parameter("P", 5));
  model.parameters.push_back(Parameter("P", 6));
  model.parameters.push_back(Parameter("Q", 6));
  EXPECT_EQ(CheckDuplicateDefine(model),
            (std::vector<Diagnostic>{Finding(CheckId::kDuplicateDefine, 1, "signal 'z' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 2, "signal 'B' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 2, "signal 'a' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 2, "signal 'b' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 6, "parameter 'P' defined 2 times"),
                                     Finding(CheckId::kDuplicateDefine, 6, "parameter 'Q' defined 2 times")}));
}

}  // namespace
}  // namespace quill
