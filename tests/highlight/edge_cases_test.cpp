// The classifier's documented edge cases, each with the exact class of every
// byte (notation in class_notation.h).
#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

#include "class_notation.h"

namespace quill::test {
namespace {

struct ClassCase {
  const char* name;
  std::string_view text;
  std::string_view classes;
};

void PrintTo(const ClassCase& row, std::ostream* os) { *os << row.name; }

class EdgeCaseTest : public ::testing::TestWithParam<ClassCase> {};

TEST_P(EdgeCaseTest, ClassifiesEveryByte) {
  const ClassCase& c = GetParam();
  ASSERT_EQ(c.text.size(), c.classes.size()) << "malformed case";
  EXPECT_EQ(Classes(c.text), c.classes) << "text: " << c.text;
}

constexpr ClassCase kEdgeCases[] = {
    {"CreateClockPeriodNameAndBracketedPort",
     "create_clock -period 10.000 -name sys_clk [get_ports clk]",
     "KKKKKKKKKKKK.KKKKKKK........KKKKK..........KKKKKKKKK.ppp."},
    {"PackagePinWithBitSelectPortInBraces",
     "set_property PACKAGE_PIN W5 [get_ports {led[0]}]",
     "KKKKKKKKKKKK.PPPPPPPPPPP.NN..KKKKKKKKK.bppppppb."},
    {"IoStandardAndBracketStateUsedByFirstWord",
     "set_property IOSTANDARD LVCMOS33 [get_ports {a b}]",
     "KKKKKKKKKKKK.PPPPPPPPPP.IIIIIIII..KKKKKKKKK.bp..b."},
    {"GetPortsBracesWithoutBracket",
     "get_ports {a b c}",
     "KKKKKKKKK.bp.p.pb"},
    {"ListWordsIgnoreCase",
     "Create_Clock",
     "KKKKKKKKKKKK"},
    {"LowerCasePinIsNoPin",
     "pin_a5",
     "......"},
    {"CommentStopsBeforeLineFeed",
     "# comment\nx",
     "ccccccccc.."},
    {"EscapedQuoteDoesNotEndString",
     R"("a\"b" c "d")",
     R"(ssssss...sss)"},
    {"TwoByteUtf8SequenceIsPlain",
     "\xC3\xA9",
     ".."},
    {"DollarIsPlainAndWordAfterItIsClassified",
     "$run $clk",
     ".TTT....."},
    {"DollarWordAfterBracketGetPortsIsPort",
     "[get_ports $clk]",
     ".KKKKKKKKK..ppp."},
    {"MinusBeforeDigitIsPlainAndDigitsFormNumber",
     "-5 -10.5",
     "........"},
    {"MinusBeforeSpaceIsPlain",
     "- x -",
     "....."},
    {"MinusBeforeLetterStartsOption",
     "-period -PERIOD -_x",
     "KKKKKKK.KKKKKKK...."},
};

INSTANTIATE_TEST_SUITE_P(Classifier, EdgeCaseTest, ::testing::ValuesIn(kEdgeCases),
                         [](const ::testing::TestParamInfo<ClassCase>& row) { return row.param.name; });

}  // namespace
}  // namespace quill::test
