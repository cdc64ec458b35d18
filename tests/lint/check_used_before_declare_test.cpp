#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"
#include "lint/steps.h"

namespace quill {
namespace {

using test::Finding;
using test::Signal;

TEST(CheckUsedBeforeDeclareTest, EmptyModel) {
  EXPECT_TRUE(CheckUsedBeforeDeclare(ModuleModel{}).empty());
}

TEST(CheckUsedBeforeDeclareTest, OneBasedNumbersInTheMessage) {
  ModuleModel model;
  model.signals.push_back(Signal("x", SignalKind::kWire, 7));
  model.firstUseLine.emplace("x", 3);
  EXPECT_EQ(CheckUsedBeforeDeclare(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kUsedBeforeDeclare, 3, "signal 'x' used at line 4 before declaration at line 8")}));
}

TEST(CheckUsedBeforeDeclareTest, UseOnOrAfterDeclarationNotReported) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kWire, 4));
  model.signals.push_back(Signal("b", SignalKind::kWire, 4));
  model.firstUseLine.emplace("a", 4);
  model.firstUseLine.emplace("b", 9);
  EXPECT_TRUE(CheckUsedBeforeDeclare(model).empty());
}

TEST(CheckUsedBeforeDeclareTest, UndeclaredAndParametersNotReported) {
  ModuleModel model;
  model.parameters.push_back(ParamDecl{"N", "4", 9});
  model.firstUseLine.emplace("N", 1);
  model.firstUseLine.emplace("u", 1);
  EXPECT_TRUE(CheckUsedBeforeDeclare(model).empty());
}

TEST(CheckUsedBeforeDeclareTest, FirstDeclarationWinsIgnoringCase) {
  ModuleModel model;
  model.signals.push_back(Signal("d", SignalKind::kWire, 2));
  model.signals.push_back(Signal("D", SignalKind::kReg, 10));
  model.signals.push_back(Signal("e", SignalKind::kWire, 6));
  model.firstUseLine.emplace("D", 5);
  model.firstUseLine.emplace("E", 5);
  EXPECT_EQ(CheckUsedBeforeDeclare(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kUsedBeforeDeclare, 5, "signal 'E' used at line 6 before declaration at line 7")}));
}

TEST(CheckUsedBeforeDeclareTest, OrderedByUseLineThenName) {
  ModuleModel model;
  for (const char* name : {"c", "b", "a", "B"}) model.signals.push_back(Signal(name, SignalKind::kWire, 20));
  model.firstUseLine.emplace("c", 1);
  model.firstUseLine.emplace("b", 3);
  model.firstUseLine.emplace("a", 3);
  EXPECT_EQ(CheckUsedBeforeDeclare(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kUsedBeforeDeclare, 1, "signal 'c' used at line 2 before declaration at line 21"),
                Finding(CheckId::kUsedBeforeDeclare, 3, "signal 'a' used at line 4 before declaration at line 21"),
                Finding(CheckId::kUsedBeforeDeclare, 3, "signal 'b' used at line 4 before declaration at line 21")}));
}

TEST(CheckUsedBeforeDeclareTest, AlwaysBodyUseIsAtTheBodyLine) {
  ModuleModel model;
  test::AddAlwaysBlocks("always @(*)\n\n  begin\n    y = t;\n  end\nreg t;\n", model);
  model.signals.push_back(Signal("t", SignalKind::kReg, 5));
  EXPECT_EQ(CheckUsedBeforeDeclare(model),
            (std::vector<Diagnostic>{
                Finding(CheckId::kUsedBeforeDeclare, 2, "signal 't' used at line 3 before declaration at line 6")}));
}

}  // namespace
}  // namespace quill
