#include <gtest/gtest.h>

#include "lint/check_test_support.h"
#include "lint/checks/checks.h"

namespace quill {
namespace {

using test::Assign;
using test::Finding;
using test::Signal;

struct WidthCase {
  const char* name;
  std::string lhsRange;  // range of the target "a"
  std::string rhs;
  std::string message;  // "" for no finding
};

class CheckWidthMismatchTest : public ::testing::TestWithParam<WidthCase> {};

// "a" has the range under test; "b" is 4 bits, "c" 1 bit, "B8" 8 bits.
TEST_P(CheckWidthMismatchTest, ComparesWidths) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kWire, 0, GetParam().lhsRange));
  model.signals.push_back(Signal("b", SignalKind::kWire, 1, "[3:0]"));
  model.signals.push_back(Signal("c", SignalKind::kWire, 2));
  model.signals.push_back(Signal("B8", SignalKind::kWire, 3, "[7:0]"));
  model.assigns.push_back(Assign(6, "a", GetParam().rhs));
  std::vector<Diagnostic> expected;
  if (!GetParam().message.empty()) expected.push_back(Finding(CheckId::kWidthMismatch, 6, GetParam().message));
  EXPECT_EQ(CheckWidthMismatch(model), expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, CheckWidthMismatchTest,
    ::testing::Values(
        WidthCase{"SignalOfOtherWidth", "[7:0]", "b", "assign 'a' LHS=8bit RHS=4bit"},
        WidthCase{"SignalOfSameWidth", "[3:0]", "b", ""},
        WidthCase{"SizedLiteral", "[7:0]", "4'b1010", "assign 'a' LHS=8bit RHS=4bit"},
        WidthCase{"SizedLiteralOfSameWidth", "[7:0]", "8'hFF", ""},
        WidthCase{"SizedLiteralIntoOneBit", "", "8'hFF", "assign 'a' LHS=1bit RHS=8bit"},
        WidthCase{"BlanksInsideSizedLiteral", "", "16 'h ff", "assign 'a' LHS=1bit RHS=16bit"},
        WidthCase{"UpperCaseBase", "", "4'B1", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"LeadingZerosInSize", "", "004'd3", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"OnlyThePrefixOfTheRightHandSideCounts", "[7:0]", "4'b1 + b", "assign 'a' LHS=8bit RHS=4bit"},
        WidthCase{"SignedLiteralUnknown", "", "8'sh1", ""}, WidthCase{"ZeroSizeIgnored", "", "0'b0", ""},
        WidthCase{"OversizedLiteralUnknown", "", "99999999999'h0", ""},
        WidthCase{"LargestSize", "", "2147483647'h0", "assign 'a' LHS=1bit RHS=2147483647bit"},
        WidthCase{"PlainNumberUnknown", "[7:0]", "0", ""}, WidthCase{"ExpressionUnknown", "[7:0]", "b & c", ""},
        WidthCase{"SelectUnknown", "", "b[3:0]", ""}, WidthCase{"UndeclaredNameUnknown", "[7:0]", "zz", ""},
        WidthCase{"NameLookupIgnoresCase", "", "b8", "assign 'a' LHS=1bit RHS=8bit"},
        WidthCase{"LineFeedsAroundTrimmed", "", "\n  b \n", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"ReversedRange", "[0:7]", "b", "assign 'a' LHS=8bit RHS=4bit"},
        WidthCase{"BlanksInsideRange", "[ 7 : 0 ]", "b", "assign 'a' LHS=8bit RHS=4bit"},
        WidthCase{"SingleBitRange", "[3:3]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"ParameterRangeIsOneBit", "[WIDTH-1:0]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"TwoRangesAreOneBit", "[3:0][1:0]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"NegativeNumberIsOneBit", "[-1:0]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"HugeNumberIsOneBit", "[2147483648:0]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"HugeWidthIsOneBit", "[2147483647:0]", "b", "assign 'a' LHS=1bit RHS=4bit"},
        WidthCase{"LargestWidth", "[2147483646:0]", "b", "assign 'a' LHS=2147483647bit RHS=4bit"},
        WidthCase{"TextAfterRangeIsOneBit", "[7:0] x", "b", "assign 'a' LHS=1bit RHS=4bit"}),
    [](const ::testing::TestParamInfo<WidthCase>& param) { return std::string(param.param.name); });

TEST(CheckWidthMismatchSkipsTest, SelectsConcatenationsAndUndeclaredTargets) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kWire, 0, "[7:0]"));
  model.assigns.push_back(Assign(1, "a[3:0]", {"a"}, "4'b0"));
  model.assigns.push_back(Assign(2, "{a}", {"a"}, "4'b0"));
  model.assigns.push_back(Assign(3, "u", "4'b0"));
  EXPECT_TRUE(CheckWidthMismatch(model).empty());
}

TEST(CheckWidthMismatchSkipsTest, FirstDeclarationGivesTheWidth) {
  ModuleModel model;
  model.signals.push_back(Signal("a", SignalKind::kInput, 0));
  model.signals.push_back(Signal("A", SignalKind::kWire, 1, "[7:0]"));
  model.assigns.push_back(Assign(4, "A", "8'h0"));
  model.assigns.push_back(Assign(2, "a", "1'b0"));
  EXPECT_EQ(CheckWidthMismatch(model),
            (std::vector<Diagnostic>{Finding(CheckId::kWidthMismatch, 4, "assign 'A' LHS=1bit RHS=8bit")}));
}

}  // namespace
}  // namespace quill
