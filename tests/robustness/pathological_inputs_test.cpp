// Hostile inputs, generated here rather than stored, go through all three
// services; each must keep the contracts of the C interface. The test
// timeout of this binary bounds how long each may take.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>

#include "support/contracts.h"

namespace quill {
namespace {

#if defined(QUILL_SANITIZED)
// Sanitizer builds run the same shapes at a tenth of the size.
constexpr std::size_t kScale = 10;
#else
constexpr std::size_t kScale = 1;
#endif

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

std::string FillTo(std::string_view piece, std::size_t bytes) {
  return Repeat(piece, bytes / piece.size() + 1);
}

void ExpectContracts(const std::string& text) {
  const auto* data = reinterpret_cast<const std::uint8_t*>(text.data());
  EXPECT_EQ(fuzz::CheckFormatContract(data, text.size()), "");
  EXPECT_EQ(fuzz::CheckLintContract(data, text.size()), "");
  EXPECT_EQ(fuzz::CheckHighlightContract(data, text.size()), "");
}

struct PathologicalCase {
  const char* name;
  std::string (*make)();
};

const PathologicalCase kCases[] = {
    {"HundredMegabytesOnOneLine", [] { return FillTo("wire a; assign b = c & d; x <= y(z); ", 100'000'000 / kScale); }},
    {"TenMegabyteBlockComment",
     [] { return "module m;\n/*" + FillTo("comment text ", 10'000'000 / kScale) + "*/\nendmodule\n"; }},
    {"UnterminatedBlockComment", [] { return "module m;\n/*" + FillTo("x\n", 10'000'000 / kScale); }},
    {"TwoHundredThousandNestedBegin",
     [] { return "module m;\nalways @(*) " + Repeat("begin\n", 200'000 / kScale) + "x = 1;\nendmodule\n"; }},
    {"HundredThousandUnmatchedParens", [] { return "module m (\n" + Repeat("(", 100'000 / kScale) + "\nendmodule\n"; }},
    {"OneMegabyteOfAssign", [] { return FillTo("assign ", 1'000'000 / kScale); }},
    {"OneMegabyteOfAlways", [] { return FillTo("always @(", 1'000'000 / kScale); }},
    {"ModuleWithHundredThousandPorts",
     [] {
       std::string text = "module wide (\n";
       for (std::size_t i = 0; i < 100'000 / kScale; ++i)
         text += "  input wire [7:0] port_" + std::to_string(i) + ",\n";
       return text + "  output wire done\n);\nendmodule\n";
     }},
    {"HundredThousandAlwaysWithoutEnd",
     [] { return "module m;\n" + Repeat("always @(posedge clk) begin\nq <= d;\n", 100'000 / kScale); }},
    {"FiftyThousandInstances",
     [] { return "module top;\n" + Repeat("sub u (\n.a(x),\n.b(y)\n);\n", 50'000 / kScale) + "endmodule\n"; }},
    {"InstanceWhoseParenNeverCloses", [] { return "module top;\nsub u (\n" + Repeat(".a(x),\n", 100'000 / kScale); }},
    {"TenThousandNestedCase",
     [] {
       return "module m;\nalways @(*) begin\n" + Repeat("case (s)\n", 10'000 / kScale) + "endcase\nend\nendmodule\n";
     }},
    {"AlwaysCombWithoutAt", [] { return "module m;\n" + Repeat("always_comb begin y = a; end\n", 100'000 / kScale); }},
    {"ParameterValueRunningToTheEnd", [] { return "module m #(parameter W = " + FillTo("8 + ", 1'000'000 / kScale); }},
    {"OneIdentifierMillionTimes", [] { return "module m;\n" + Repeat("abc ", 1'000'000 / kScale); }},
    {"GenerateWithoutEndgenerate",
     [] { return "module m;\n" + Repeat("generate\nalways @(*) y = a;\n", 50'000 / kScale); }},
    {"LongConstraintLine",
     [] { return FillTo("set_property PACKAGE_PIN W5 [get_ports {led[0]}] ", 10'000'000 / kScale); }},
    {"NulBytes", [] { return std::string(1'000'000 / kScale, '\0'); }},
    {"RandomBytes",
     [] {
       std::mt19937 random(20261122);
       std::string text(4'000'000 / kScale, '\0');
       for (char& c : text) c = static_cast<char>(random() & 0xFF);
       return text;
     }},
    {"RandomVerilogTokens",
     [] {
       const char* tokens[] = {
           "module ", "endmodule", "begin ", "end ",    "case ",       "endcase ",     "always @(", "*) ",
           "if (",    ") ",        "else ",  "assign ", "= ",          "<= ",          ";",         "\n",
           "/*",      "*/",        "//",     "(",       ")",           "[7:0] ",       "wire ",     "reg ",
           "input ",  "output ",   ".p(",    "#(",      "generate ",   "endgenerate ", "x ",        "y ",
           "8'hFF ",  "\r\n",      "\t",     "\"",      "__BLKCMT_0__"};
       std::mt19937 random(7);
       std::string text;
       while (text.size() < 2'000'000 / kScale) text += tokens[random() % std::size(tokens)];
       return text;
     }},
};

class PathologicalInputTest : public testing::TestWithParam<PathologicalCase> {};

TEST_P(PathologicalInputTest, KeepsTheContracts) {
  ExpectContracts(GetParam().make());
}

INSTANTIATE_TEST_SUITE_P(Inputs, PathologicalInputTest, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<PathologicalCase>& param) { return param.param.name; });

}  // namespace
}  // namespace quill
