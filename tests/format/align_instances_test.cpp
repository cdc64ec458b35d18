#include "format/align_instances.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
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
       "fifo #( .W(8), .D(2) ) u_fifo ( // main\n"
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

}  // namespace
}  // namespace quill
