// Whole modules through the formatter: parameter lists, port lists,
// declarations and localparams with comments between them. Each expected
// text follows from every pass of the pipeline; the comments say what the
// passes other than the alignment passes do to it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "common/text_utils.h"
#include "format/format_text.h"
#include "format/passes/align_declarations.h"
#include "format/passes/align_parameters.h"
#include "format/passes/layout_port_list.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

struct PipelineCase {
  const char* name;
  std::string input;
  std::string expected;
};

class AlignmentPipelineTest : public testing::TestWithParam<PipelineCase> {};

TEST_P(AlignmentPipelineTest, FormatsWholeModule) {
  const PipelineCase& c = GetParam();
  EXPECT_EQ(FormatText(c.input), c.expected);
}

// Formatting the result again changes nothing.
TEST_P(AlignmentPipelineTest, ResultIsStable) {
  const PipelineCase& c = GetParam();
  EXPECT_EQ(FormatText(c.expected), c.expected);
}

const PipelineCase kPipelineCases[] = {
    // Section spacing puts an empty line between the parameter items and
    // the ports (the ") (" line between them is no separator) and between
    // the declarations and the localparams. Nothing else moves: no block,
    // no instance, and the module-level lines already start at column 0.
    {"ParametersPortsDeclarationsLocalparams",
     "module top #(\n"
     "  parameter WIDTH = 8,\n"
     "  parameter DEPTH = 16\n"
     ") (\n"
     "  input  wire [WIDTH-1:0] din,\n"
     "  input clk,\n"
     "  output reg  [WIDTH-1:0] dout\n"
     ");\n"
     "// state\n"
     "wire   [3:0] count;\n"
     "reg    busy;\n"
     "localparam IDLE = 0;\n"
     "localparam RUN = 1;\n"
     "endmodule\n",
     "module top #(\n"
     "    parameter WIDTH = 8  ,\n"
     "    parameter DEPTH = 16\n"
     ") (\n"
     "\n"
     "    input  wire [WIDTH-1:0] din  ,\n"
     "    input                   clk  ,\n"
     "    output reg  [WIDTH-1:0] dout\n"
     ");\n"
     "// state\n"
     "wire [3:0] count ;\n"
     "reg        busy  ;\n"
     "\n"
     "localparam IDLE = 0 ;\n"
     "localparam RUN  = 1 ;\n"
     "endmodule\n"},
    // One section of declarations: nothing is inserted.
    {"DeclarationsAcrossBlankAndCommentLines",
     "module m;\n"
     "// signals\n"
     "wire a;\n"
     "\n"
     "// the counter\n"
     "  reg [7:0] count;\n"
     "logic    busy;\n"
     "endmodule\n",
     "module m;\n"
     "// signals\n"
     "wire        a     ;\n"
     "\n"
     "// the counter\n"
     "reg   [7:0] count ;\n"
     "logic       busy  ;\n"
     "endmodule\n"},
    // The lone port line is no declaration section, so section spacing puts
    // an empty line after ");". The continuation line keeps its place: its
    // first word is no declaration keyword.
    {"LocalparamsWithContinuationAndComment",
     "module m (\n"
     "  input a\n"
     ");\n"
     "localparam A = 1,\n"
     "  BB = 2;\n"
     "// widths\n"
     "localparam [3:0] C = 4'h3; // c\n"
     "endmodule\n",
     "module m (\n"
     "    input a\n"
     ");\n"
     "\n"
     "localparam       A  = 1    ,\n"
     "                 BB = 2    ;\n"
     "// widths\n"
     "localparam [3:0] C  = 4'h3 ; // c\n"
     "endmodule\n"},
    // The crowded port line is split first; its comment goes to both lines.
    {"CrowdedPortLineWithComment",
     "module m (\n"
     "  input a, output [1:0] b // ports\n"
     ");\n"
     "endmodule\n",
     "module m (\n"
     "    input        a , // ports\n"
     "    output [1:0] b  // ports\n"
     ");\n"
     "endmodule\n"},
    // The block comment's placeholder line parts the declarations into two
    // groups; the comment comes back as it was written.
    {"BlockCommentBetweenDeclarations",
     "module m;\n"
     "wire a;\n"
     "/* the\n"
     "   counter */\n"
     "reg [7:0] count;\n"
     "endmodule\n",
     "module m;\n"
     "wire a ;\n"
     "/* the\n"
     "   counter */\n"
     "reg [7:0] count ;\n"
     "endmodule\n"},
    // Comma lines stay as written and part the groups around them.
    {"CommaDeclarationsStay",
     "module m;\n"
     "wire a;\n"
     "wire b, c;\n"
     "wire dd; // dd, e\n"
     "reg  [1:0] f;\n"
     "endmodule",
     "module m;\n"
     "wire a ;\n"
     "wire b, c;\n"
     "wire dd; // dd, e\n"
     "reg [1:0] f ;\n"
     "endmodule\n"},
};

INSTANTIATE_TEST_SUITE_P(Modules, AlignmentPipelineTest, testing::ValuesIn(kPipelineCases),
                         [](const testing::TestParamInfo<PipelineCase>& param) {
                           return std::string(param.param.name);
                         });

std::vector<std::string> CorpusTexts() {
  std::vector<std::string> texts;
  for (CorpusSource& source : CorpusSources({".v", ".sv"})) texts.push_back(std::move(source.text));
  return texts;
}

// Real sources keep their line count through each alignment pass, and the
// declaration and parameter passes change nothing on a second run. (The
// port-list pass may: a "signed " cell keeps its space and gains the joining
// one on every run.)
TEST(AlignmentPassProperties, CorpusSourcesKeepLineCountAndSettle) {
  const std::vector<std::string> sources = CorpusTexts();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const std::string& text : sources) {
    const std::size_t lineCount = SplitLines(text).size();
    const std::string ports = LayoutPortList(text);
    const std::string declarations = AlignDeclarations(text);
    const std::string parameters = AlignParameters(text);
    EXPECT_EQ(SplitLines(ports).size(), lineCount);
    EXPECT_EQ(SplitLines(declarations).size(), lineCount);
    EXPECT_EQ(SplitLines(parameters).size(), lineCount);
    EXPECT_EQ(AlignDeclarations(declarations), declarations);
    EXPECT_EQ(AlignParameters(parameters), parameters);
  }
}

// Token soups with stray bytes keep their line count through each pass.
TEST(AlignmentPassProperties, RandomTextsKeepLineCount) {
  const std::vector<std::string> pieces = {"module m ",   "#(",     "(",           ")",       ");",
                                           ") (",         ";",      ",",           "\n",      "\r\n",
                                           "\r",          " ",      "\t",          "input ",  "output reg ",
                                           "wire ",       "logic ", "signed ",     "[7:0] ",  "[",
                                           "]",           "a",      "b = 1",       "= ",      "parameter ",
                                           "localparam ", "// c",   "x = 2",       "assign ", std::string(1, '\0'),
                                           "\xff",        "\v",     "__BLKCMT_0__"};
  std::mt19937 random(7);
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int i = 0; i < 40; ++i) text += pieces[random() % pieces.size()];
    const std::size_t lineCount = SplitLines(text).size();
    ASSERT_EQ(SplitLines(LayoutPortList(text)).size(), lineCount) << text;
    ASSERT_EQ(SplitLines(AlignDeclarations(text)).size(), lineCount) << text;
    ASSERT_EQ(SplitLines(AlignParameters(text)).size(), lineCount) << text;
  }
}

}  // namespace
}  // namespace quill
