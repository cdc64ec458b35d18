#include "structure/structure.h"

#include <gtest/gtest.h>

#include <string>

#include "structure/describe_structure.h"

namespace quill::structure {
namespace {

struct Case {
  const char* name;
  const char* text;
  const char* expected;  // DescribeModules of the result
};

const Case kCases[] = {
    {"ansi header with parameters",
     "module top #(parameter W = 8, localparam D = W*2) (\n"
     "  input  wire clk,\n"
     "  input  [W-1:0] a, b,\n"
     "  output reg [3:0] q,\n"
     "  (* keep *) output logic done\n"
     ");\n"
     "endmodule\n",
     "module top 0:0-6:9\n"
     "  port input|wire||clk 1:14-1:17 sole\n"
     "  port input||[W-1:0]|a 2:17-2:18\n"
     "  port input||[W-1:0]|b 2:20-2:21\n"
     "  port output|reg|[3:0]|q 3:19-3:20 sole\n"
     "  port output|logic||done 4:26-4:30 sole\n"
     "  parameter W=8 0:23-0:24\n"
     "  localparam D=W*2 0:41-0:42\n"},
    {"non-ansi ports completed by the body",
     "module old(a, b, c);\n  input a;\n  output [1:0] b, c;\n  reg [1:0] b;\nendmodule\n",
     "module old 0:0-4:9\n"
     "  port input|||a 1:8-1:9 sole\n"
     "  port output||[1:0]|b 2:15-2:16\n"
     "  port output||[1:0]|c 2:18-2:19\n"
     "  signal reg|[1:0]|b 3:12-3:13 sole\n"},
    {"declarations with several names, arrays and user types",
     "module m;\n  wire x, y = 1'b0;\n  reg [7:0] mem [0:3];\n  my_t st;\n  integer i;\n  genvar g;\nendmodule\n",
     "module m 0:0-6:9\n"
     "  signal wire||x 1:7-1:8\n"
     "  signal wire||y 1:10-1:11\n"
     "  signal reg|[7:0]|mem 2:12-2:15 sole\n"
     "  signal my_t||st 3:7-3:9 sole\n"
     "  signal integer||i 4:10-4:11 sole\n"
     "  signal genvar||g 5:9-5:10 sole\n"},
    {"instances with parameters, lists and arrays",
     "module m;\n  sub #(.W(8)) u0 (.a(x)), u1 (.a(y));\n  sub u_arr[3:0] (.a(a));\n  and g1 (o, a, b);\nendmodule\n",
     "module m 0:0-4:9\n"
     "  instance sub u0 1:2-1:25\n"
     "  instance sub u1 1:2-1:37\n"
     "  instance sub u_arr 2:2-2:24\n"
     "  instance and g1 3:2-3:18\n"},
    {"processes, labels and generate",
     "module m;\n"
     "  always @(posedge clk) begin : seq\n    if (x) q <= 1;\n    else q <= 2;\n  end\n"
     "  always @* y = a;\n"
     "  always_ff @(posedge clk) if (a) b <= 1; else if (c) b <= 2; else b <= 3;\n"
     "  initial begin $display(\"module fake;\"); end\n"
     "  generate for (genvar i = 0; i < 2; i++) begin : g\n    sub u_g (.a(a));\n  end endgenerate\n"
     "endmodule\n",
     "module m 0:0-11:9\n"
     "  instance sub u_g 9:4-9:19\n"
     "  block always:seq 1:2-4:5\n"
     "  block always 5:2-5:18\n"
     "  block always_ff 6:2-6:74\n"
     "  block initial 7:2-7:45\n"
     "  block generate 8:2-10:17\n"
     "  block begin:g 8:42-10:5\n"},
    {"functions and tasks",
     "module m;\n  function automatic [3:0] f(input x); f = x; endfunction\n  task t; endtask\nendmodule\n",
     "module m 0:0-3:9\n"
     "  function f 1:2-1:57\n"
     "  task t 2:2-2:17\n"},
    {"comments, strings, attributes and directives are skipped",
     "// module a;\n/* module b; */\n`define M module c;\n`ifdef X\n"
     "module d(input a /* , input b */); // endmodule\n  (* full_case *) wire s = \"endmodule\";\nendmodule\n`endif\n",
     "module d 4:0-6:9\n"
     "  port input|||a 4:15-4:16 sole\n"
     "  signal wire||s 5:23-5:24 sole\n"},
    {"interface and package are containers",
     "interface bus_if; logic v; modport m(input v); endinterface\n"
     "package p; parameter P = 1; function int f(); return 1; endfunction endpackage\n"
     "module m(bus_if.m bus); endmodule\n",
     "interface bus_if 0:0-0:59\n"
     "  signal logic||v 0:24-0:25 sole\n"
     "package p 1:0-1:78\n"
     "  parameter P=1 1:21-1:22\n"
     "  function f 1:28-1:67\n"
     "module m 2:0-2:33\n"
     "  port |bus_if.m||bus 2:18-2:21 sole\n"},
    {"a module left open ends where the next begins",
     "module a(input x);\n  wire w;\nmodule b;\nendmodule\n",
     "module a 0:0-1:9\n"
     "  port input|||x 0:15-0:16 sole\n"
     "  signal wire||w 1:7-1:8 sole\n"
     "module b 2:0-3:9\n"},
    {"columns count UTF-8 bytes",
     "module m; // \xc3\xa9\xc3\xa9\n/* \xc3\xa9 */ wire w;\nendmodule\n",
     "module m 0:0-2:9\n"
     "  signal wire||w 1:14-1:15 sole\n"},
    {"unterminated text", "module m(input a,\n  wire [3:", "module m 0:0-1:10\n  port input|||a 0:15-0:16 sole\n"},
};

TEST(ScanStructureTest, RecordsOfEachCase) {
  for (const Case& c : kCases) {
    EXPECT_EQ(DescribeModules(ScanStructure(c.text)), c.expected) << c.name;
  }
}

TEST(ScanStructureTest, NothingInAnEmptyOrForeignText) {
  EXPECT_TRUE(ScanStructure("").modules.empty());
  EXPECT_TRUE(ScanStructure("set_property PACKAGE_PIN W5 [get_ports clk]\n").modules.empty());
  EXPECT_TRUE(ScanStructure(std::string("\0\xff\xfe module", 10)).modules.size() == 1);
}

// A declaration without its ";" ends before the next module's keyword, so
// it stays inside its own module (a case the structure fuzzer found).
TEST(ScanStructureTest, DeclarationCutShortByTheNextModuleStaysInside) {
  const FileStructure s = ScanStructure(std::string_view("module;tri a\x01module", 19));
  ASSERT_FALSE(s.modules.empty());
  for (const Module& m : s.modules) {
    for (const Signal& signal : m.signals) {
      EXPECT_GE(signal.declaration.begin, m.span.begin);
      EXPECT_LE(signal.declaration.end, m.span.end);
    }
  }
  ASSERT_EQ(s.modules.front().signals.size(), 1u);
  EXPECT_EQ(s.modules.front().signals.front().declaration.end, 13u);  // through the stray \x01 byte
}

// An import without its ";" runs to the end of the text, not past it.
TEST(ScanStructureTest, UnterminatedImportEndsWithTheText) {
  const std::string_view text("module\x01import", 13);
  const FileStructure s = ScanStructure(text);
  ASSERT_EQ(s.modules.size(), 1u);
  EXPECT_LE(s.modules.front().span.begin, s.modules.front().span.end);
  EXPECT_LE(s.modules.front().span.end, text.size());
  EXPECT_LE(s.modules.front().header.end, text.size());
}

// A process whose "@" or "#" is the text's last token ends with the text
// (a case the structure fuzzer found: the event was looked for one token
// past the end).
TEST(ScanStructureTest, ProcessEndingInItsTimingControlEndsWithTheText) {
  for (std::string_view text : {"module@always@", "module m; always #", "module m; initial @", "module m;always @ "}) {
    const FileStructure s = ScanStructure(text);
    ASSERT_EQ(s.modules.size(), 1u) << text;
    const Module& m = s.modules.front();
    EXPECT_LE(m.span.begin, m.span.end) << text;
    EXPECT_LE(m.span.end, text.size()) << text;
    ASSERT_EQ(m.blocks.size(), 1u) << text;
    EXPECT_LE(m.blocks.front().span.begin, m.blocks.front().span.end) << text;
    EXPECT_LE(m.blocks.front().span.end, m.span.end) << text;
  }
}

TEST(ScanStructureTest, FoldsOfBlocksAndComments) {
  const FileStructure s = ScanStructure(
      "// one\n// two\nmodule m;\n  always @* begin\n    case (a)\n      0: b = 1;\n    endcase\n  end\n"
      "  initial begin end\nendmodule\n");
  std::string folds;
  for (const Fold& f : s.folds) folds += (f.comment ? "comment " : "") + DescribeSpan(f.span) + "\n";
  EXPECT_EQ(folds, "4:4-6:11\n3:12-7:5\ncomment 0:0-1:6\n");
}

TEST(ScanStructureTest, DeepNestingStaysLinear) {
  std::string text = "module m;\ninitial ";
  for (int i = 0; i < 200000; ++i) text += "begin\n";
  text += "endmodule\nmodule n;\nendmodule\n";
  const FileStructure s = ScanStructure(text);
  ASSERT_EQ(s.modules.size(), 2u);
  EXPECT_EQ(s.modules[1].name, "n");
}

}  // namespace
}  // namespace quill::structure
