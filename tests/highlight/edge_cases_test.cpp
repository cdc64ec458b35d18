// The classifier's documented edge cases, each with the exact class of every
// byte (notation in class_notation.h).
#include <gtest/gtest.h>

#include "class_notation.h"

namespace quill::test {
namespace {

// Rows keep each text and its classes in aligned columns.
// clang-format off
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

INSTANTIATE_TEST_SUITE_P(EdgeCases, ClassTableTest, ::testing::ValuesIn(kEdgeCases), CaseName);

// clang-format on

}  // namespace
}  // namespace quill::test
