#include "format/passes/align_instances.h"
#include "support/corpus_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace quill {
namespace {

struct AlignCase {
  const char* name;
  std::string input;
  std::string expected;
};

std::ostream& operator<<(std::ostream& out, const AlignCase& c) {
  return out << c.name;
}

std::size_t CountLines(const std::string& text) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1;
}

const std::vector<AlignCase>& Cases() {
  static const std::vector<AlignCase> cases = {
      // The example table: indentation 2, portWidth 5, signalWidth 7.
      {"ExampleTable",
       "  fifo   u_fifo(\n"
       "    .clk(clk),\n"
       "    .din( data_in ), // data\n"
       "    .dout(q)\n"
       "  );",
       "  fifo u_fifo (\n"
       "      .clk  (clk     ),\n"
       "      .din  (data_in ),   // data\n"
       "      .dout (q       )\n"
       "  );"},
      {"TwoInstancesShareColumns",
       "a u1 (\n"
       ".x(s),\n"
       ".y(t)\n"
       ");\n"
       "long_type u2 (\n"
       ".long_port(long_signal)\n"
       ");",
       "a u1 (\n"
       "    .x         (s           ),\n"
       "    .y         (t           )\n"
       ");\n"
       "long_type u2 (\n"
       "    .long_port (long_signal )\n"
       ");"},
      {"LastConnectionWithoutCommaEndsInParenthesis",
       "u a (\n"
       ".p(x), // one\n"
       ".q(y) // two\n"
       ");",
       "u a (\n"
       "    .p (x ),   // one\n"
       "    .q (y )    // two\n"
       ");"},
      {"PositionalConnectionsUntouched",
       "sub u0 (a, b);\n"
       "sub u1 (\n"
       "  a,\n"
       "  b\n"
       ");\n",
       "sub u0 (a, b);\n"
       "sub u1 (\n"
       "  a,\n"
       "  b\n"
       ");\n"},
      {"IfLineIsNeverAHeader",
       "if x (\n"
       "  .a(b)\n"
       ");",
       "if x (\n"
       "  .a(b)\n"
       ");"},
      {"IfParenthesisLineIsNeverAHeader",
       "if (en)\n"
       "  sub u0 (\n"
       "  .a(b)\n"
       "  );",
       "if (en)\n"
       "  sub u0 (\n"
       "      .a (b )\n"
       "  );"},
      {"AssignLineIsNeverAHeader",
       "ASSIGN w (\n"
       "  .a(b)\n"
       ");\n"
       "assign\n"
       "u0 (\n"
       "  .a(b)\n"
       ");",
       "ASSIGN w (\n"
       "  .a(b)\n"
       ");\n"
       "assign\n"
       "u0 (\n"
       "  .a(b)\n"
       ");"},
      {"ShrunkPortListLeavesEmptyLineAfterClose",
       "u a (\n"
       "\n"
       ".p(x)\n"
       ");\n"
       "next",
       "u a (\n"
       "    .p (x )\n"
       ");\n"
       "\n"
       "next"},
      // A single connection on the header line keeps the port list's ")" in
      // its signal, and the rebuilt lines overwrite the lines after it.
      {"OneLineInstanceWithOneConnection",
       "sub u0 (.a(b))\n"
       "x\n"
       "y\n"
       "z",
       "sub u0 (\n"
       "    .a (b) )\n"
       ");\n"
       "z"},
      {"CrowdedOneLineInstanceUntouched", "sub u0 (.a(x), .b(y));\n", "sub u0 (.a(x), .b(y));\n"},
      {"TabIndentationBecomesSpaces",
       "\t\tsub u0 (\n"
       "\t\t\t.a(x)\n"
       "\t\t);",
       "  sub u0 (\n"
       "      .a (x )\n"
       "  );"},
      {"OtherEntriesTrimmedBlankEntriesEmpty",
       "sub u0 (\n"
       " .a(x),\n"
       "\t \n"
       "   // mid  \n"
       " .b(y)\n"
       ");",
       "sub u0 (\n"
       "    .a (x ),\n"
       "\n"
       "    // mid\n"
       "    .b (y )\n"
       ");"},
      {"CloseLineCommentKept",
       "sub u0 (\n"
       "  .a(x)\n"
       "); // done",
       "sub u0 (\n"
       "    .a (x )\n"
       "); // done"},
      // The close line's entry ends at the ")" that balances the port list,
      // not at a later ")" in its comment.
      {"CloseLineEntryEndsAtBalancingParenthesis",
       "sub u0 (\n"
       "  .a(x)\n"
       "); // closes )",
       "sub u0 (\n"
       "    .a (x )\n"
       "); // closes )"},
      {"ConnectionOnCloseLine",
       "sub u0 (\n"
       "  .a(x),\n"
       "  .b(y));\n"
       "next\n"
       "after",
       "sub u0 (\n"
       "    .a (x ),\n"
       "    .b (y )\n"
       ");\n"
       "after"},
      // Both tests on the open line's remainder are made after TrimLeft.
      {"OpenLineCommentMovesToHeader",
       "sub u0 (   // ports\n"
       "  .a(x)\n"
       ");",
       "sub u0 ( // ports\n"
       "    .a (x )\n"
       ");"},
      {"OpenLineBlankRemainderDropped",
       "sub u0 ( \t \n"
       "  .a(x)\n"
       ");",
       "sub u0 (\n"
       "    .a (x )\n"
       ");"},
      {"ConnectionOnHeaderLineOverwritesFollowingLine",
       "sub u0 ( .a(x),\n"
       "  .b(y)\n"
       ");\n"
       "endmodule",
       "sub u0 (\n"
       "    .a (x ),\n"
       "    .b (y )\n"
       ");"},
      {"ParamBlockOnHeaderLineStaysInHeader",
       "fifo   #(.W(8))  u_fifo(\n"
       "  .clk(clk)\n"
       ");",
       "fifo #(.W(8)) u_fifo (\n"
       "    .clk (clk )\n"
       ");"},
      {"ParamBlockOnHeaderLineKeepsPortComment",
       "fifo #( .W(8),\t.D(2) )u_fifo( // main\n"
       "  .clk(clk)\n"
       ");",
       "fifo #( .W(8), .D(2) )u_fifo ( // main\n"
       "    .clk (clk )\n"
       ");"},
      {"ParamBlockOverLines",
       "  fifo #(\n"
       "    .W(8),\n"
       "    .D(16)\n"
       "  ) u_fifo (\n"
       "    .clk(clk),\n"
       "    .rst(rst)\n"
       "  );",
       "  fifo #(\n"
       "      .W(8),\n"
       "      .D(16)\n"
       "  ) u_fifo (\n"
       "      .clk (clk ),\n"
       "      .rst (rst )\n"
       "  );"},
      {"ParamBlockHeaderCommentStaysOnHeaderLine",
       "fifo  #(   // sizes\n"
       "  .W(8)\n"
       ") u0 (\n"
       "  .a(b)\n"
       ");",
       "fifo #( // sizes\n"
       "    .W(8)\n"
       ") u0 (\n"
       "    .a (b )\n"
       ");"},
      {"CommentsInsideParamBlock",
       "fifo #( // params\n"
       "  // width\n"
       "  .W(8),\n"
       "\n"
       "  .D(2) // depth\n"
       ")   u0( // ports\n"
       "  .a(b)\n"
       "); // end",
       "fifo #( // params\n"
       "    // width\n"
       "    .W(8),\n"
       "    \n"
       "    .D(2) // depth\n"
       ") u0 ( // ports\n"
       "    .a (b )\n"
       "); // end"},
      {"LoneTypeWordHeader",
       "  fifo\n"
       "  u_fifo (\n"
       "    .clk(clk)\n"
       "  );",
       "  fifo u_fifo (\n"
       "      .clk (clk )\n"
       "  );\n"},
      {"LoneTypeWordHeaderKeepsComment",
       "fifo\n"
       "u0( // c\n"
       ".a(b)\n"
       ");",
       "fifo u0 ( // c\n"
       "    .a (b )\n"
       ");\n"},
      {"LoneTypeWordNeedsNameOnNextLine",
       "fifo\n"
       "\n"
       "u0 (\n"
       ".a(b)\n"
       ");",
       "fifo\n"
       "\n"
       "u0 (\n"
       ".a(b)\n"
       ");"},
      {"LoneTypeWordNeedsNameOnTheVeryNextLine",
       "fifo\n"
       "// c\n"
       "u0 (\n"
       ".a(b)\n"
       ");",
       "fifo\n"
       "// c\n"
       "u0 (\n"
       ".a(b)\n"
       ");"},
      {"TypeAndNameThenParenthesisLine",
       "fifo   u_fifo\n"
       "(\n"
       "  .clk(clk)\n"
       ");",
       "fifo u_fifo (\n"
       "    .clk (clk )\n"
       ");\n"},
      {"TypeAndNameSkipsBlankAndCommentLines",
       "fifo u_fifo\n"
       "// note\n"
       "\n"
       "  ( .a(b),\n"
       ".c(d)\n"
       ");",
       "fifo u_fifo (\n"
       "    .a (b ),\n"
       "    .c (d )\n"
       ");\n"
       "\n"},
      // A positional instance is skipped whole, so a header inside it is not
      // looked at.
      {"InstanceWithoutConnectionsSkippedWhole",
       "sub u0 (\n"
       "other u1 (\n"
       "  .p(q)), z\n"
       ");",
       "sub u0 (\n"
       "other u1 (\n"
       "  .p(q)), z\n"
       ");"},
      {"RebuiltLinesPastEndDropped",
       "sub u0 (.a(x)\n"
       ");",
       "sub u0 (\n"
       "    .a (x )"},
      {"HeaderWithoutCloseIsNoInstance",
       "sub u0 (\n"
       "  .a(x)\n",
       "sub u0 (\n"
       "  .a(x)\n"},
      {"NothingToDoKeepsBytes", "module m;\r\n  wire a;\r\n\tfoo bar;\r\nendmodule\r\n",
       "module m;\r\n  wire a;\r\n\tfoo bar;\r\nendmodule\r\n"},
  };
  return cases;
}

class AlignInstancesTest : public testing::TestWithParam<AlignCase> {};

TEST_P(AlignInstancesTest, GivesExactBytes) {
  const AlignCase& c = GetParam();
  EXPECT_EQ(AlignInstances(c.input), c.expected);
}

TEST_P(AlignInstancesTest, KeepsLineCount) {
  const AlignCase& c = GetParam();
  EXPECT_EQ(CountLines(AlignInstances(c.input)), CountLines(c.input));
}

INSTANTIATE_TEST_SUITE_P(Cases, AlignInstancesTest, testing::ValuesIn(Cases()),
                         [](const testing::TestParamInfo<AlignCase>& param) { return std::string(param.param.name); });

TEST(AlignInstances, EmptyText) {
  EXPECT_EQ(AlignInstances(""), "");
}

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

TEST(AlignInstancesLargeInput, FiftyThousandInstances) {
  const std::string text = Repeat("sub u (\n  .a(x),\n  .bb(yy)\n);\n", 50'000);
  const std::string aligned = AlignInstances(text);
  EXPECT_EQ(CountLines(aligned), CountLines(text));
  EXPECT_EQ(aligned, Repeat("sub u (\n    .a  (x  ),\n    .bb (yy )\n);\n", 50'000));
}

TEST(AlignInstancesLargeInput, ManyHeadersWithoutClose) {
  const std::string text = Repeat("sub u (\n", 100'000) + Repeat(".a(b),\n", 100'000);
  EXPECT_EQ(AlignInstances(text), text);
}

TEST(AlignInstancesLargeInput, ManyParamBlocksClosedFarAway) {
  const std::string text = Repeat("t #(\n", 50'000) + Repeat(")\n", 50'000);
  EXPECT_EQ(AlignInstances(text), text);
}

TEST(AlignInstancesLargeInput, ManyParamBlocksFollowedByNames) {
  const std::string text = Repeat("t #(\n", 50'000) + Repeat(") u (\n.a(b)\n", 50'000) + ");";
  EXPECT_EQ(CountLines(AlignInstances(text)), CountLines(text));
}

TEST(AlignInstancesLargeInput, MegabyteSignal) {
  const std::string signal(1 << 20, 'x');
  const std::string text = "sub u0 (\n.a(" + signal + "),\n.b(y)\n);\n";
  const std::string expected =
      "sub u0 (\n    .a (" + signal + " ),\n    .b (y" + std::string(signal.size() - 1, ' ') + " )\n);\n";
  EXPECT_EQ(AlignInstances(text), expected);
}

TEST(AlignInstancesLargeInput, MegabyteOfOpenParentheses) {
  const std::string text = "sub u0 " + std::string(1 << 20, '(') + "\n.a(b)\n);";
  EXPECT_EQ(AlignInstances(text), text);
}

TEST(AlignInstancesLargeInput, MegabyteLineOfHeaders) {
  const std::string text = Repeat("x y (", 200'000) + "\n" + Repeat(".a(b)", 200'000) + "\n" + Repeat(")", 400'000);
  EXPECT_EQ(CountLines(AlignInstances(text)), CountLines(text));
}

TEST(AlignInstancesLargeInput, MegabyteEntryThatBacktracks) {
  const std::string text = "sub u0 (\n.a(" + Repeat(")//", 350'000) + "\r\n.b(c)\n);";
  EXPECT_EQ(CountLines(AlignInstances(text)), CountLines(text));
}

TEST(AlignInstancesLargeInput, MegabyteGapBeforeParenthesisLine) {
  const std::string text = "fifo u0\n" + Repeat("\n", 1 << 20) + "(\n.a(b)\n);";
  const std::string aligned = AlignInstances(text);
  EXPECT_EQ(CountLines(aligned), CountLines(text));
  EXPECT_TRUE(aligned.starts_with("fifo u0 (\n    .a (b )\n);\n\n"));
}

TEST(AlignInstancesLargeInput, ManyLoneWords) {
  const std::string text = Repeat("w\n", 500'000) + "u (\n.a(b)\n);";
  const std::string aligned = AlignInstances(text);
  EXPECT_EQ(CountLines(aligned), CountLines(text));
  EXPECT_TRUE(aligned.ends_with("w\nw u (\n    .a (b )\n);\n"));
}

struct EndCase {
  const char* name;
  std::string input;
  std::string expected;
};

std::ostream& operator<<(std::ostream& out, const EndCase& c) {
  return out << c.name;
}

// Instance text cut off at the very end of the text.
const std::vector<EndCase>& EndCases() {
  static const std::vector<EndCase> cases = {
      {"OpenHeaderLast", "sub u0 (.a(x)", "sub u0 (.a(x)"},
      {"ParamHeaderLast", "x\nfifo #(", "x\nfifo #("},
      {"ParamBlockClosedLast", "fifo #(\n.W(8))", "fifo #(\n.W(8))"},
      {"LoneWordLast", "x\nfifo", "x\nfifo"},
      {"TypeAndNameLast", "x\nfifo u0", "x\nfifo u0"},
      {"CloseOnLastLineWithConnection", "sub u0 (\n.a(x),\n.b(y))", "sub u0 (\n    .a (x ),\n    .b (y )"},
      {"WholeInstanceOnLastLine", "x\nsub u0 (.a(x)", "x\nsub u0 (.a(x)"},
      {"LoneWordHeaderNearEnd", "fifo\nu0 (.a(b),\n.c(d))", "fifo u0 (\n    .a (b ),\n    .c (d )"},
      // The open line's entry runs to the end of that line, so the ")" of
      // the port list belongs to the signal.
      {"OneLineInstanceLast", "x\nsub u0 (.a(b))", "x\nsub u0 ("},
  };
  return cases;
}

class AlignInstancesAtEndTest : public testing::TestWithParam<EndCase> {};

TEST_P(AlignInstancesAtEndTest, StaysInsideTheText) {
  const EndCase& c = GetParam();
  const std::string aligned = AlignInstances(c.input);
  EXPECT_EQ(aligned, c.expected);
  EXPECT_EQ(CountLines(aligned), CountLines(c.input));
}

INSTANTIATE_TEST_SUITE_P(Cases, AlignInstancesAtEndTest, testing::ValuesIn(EndCases()),
                         [](const testing::TestParamInfo<EndCase>& param) { return std::string(param.param.name); });

TEST(AlignInstancesProperties, RandomTextsKeepLineCount) {
  const std::vector<std::string> pieces = {"sub", " u0", " (", "(",  ")", ");",   ".a", "(x)",   ",", " // c",
                                           "#(",  "\n",  "\n", "\t", " ", "fifo", "if", ".b(y)", "\r"};
  std::mt19937 random(11);
  for (int round = 0; round < 2000; ++round) {
    std::string text;
    for (int i = 0; i < 40; ++i) text += pieces[random() % pieces.size()];
    const std::string aligned = AlignInstances(text);
    ASSERT_EQ(CountLines(aligned), CountLines(text)) << text;
  }
}

// Real sources keep their line count, and a second run changes nothing.
TEST(AlignInstancesProperties, CorpusFilesKeepLineCountAndSettle) {
  const std::vector<CorpusSource> sources = CorpusSources({".v", ".sv"});
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const CorpusSource& source : sources) {
    const std::string once = AlignInstances(source.text);
    EXPECT_EQ(SplitLines(once).size(), SplitLines(source.text).size()) << source.path;
    EXPECT_EQ(AlignInstances(once), once) << source.path;
  }
}

}  // namespace
}  // namespace quill
