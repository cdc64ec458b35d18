#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "precision/finding_filters.h"

namespace quill::cli {
namespace {

struct FilterCase {
  const char* name;
  std::string text;
  std::uint32_t line;
  const char* check;
  const char* message;
  std::optional<LintFilter> expected;
};

class FilterThatDropsTest : public ::testing::TestWithParam<FilterCase> {};

TEST_P(FilterThatDropsTest, DropsOnlyWhatTheStructureDisproves) {
  const FilterCase& c = GetParam();
  const GenerateScopes scopes(c.text);
  const auto dropped = FilterThatDrops(scopes, {c.line, c.check, c.message}, LintFilterSet::All());
  EXPECT_EQ(dropped, c.expected);
}

constexpr auto kKept = std::nullopt;

const FilterCase kCases[] = {
    // Generate branches and named blocks.
    {"DeclarationsInIfAndElseBranches",
     "module m;\n"
     "if (W > 1) begin : g_wide\n"
     "  wire [W-1:0] x;\n"
     "end else begin : g_narrow\n"
     "  wire x;\n"
     "end\n"
     "endmodule\n",
     4, "dupli-define", "signal 'x' defined 2 times", LintFilter::kGenerateScope},
    {"DeclarationsInUnnamedIfAndElseBranches",
     "module m;\n"
     "generate\n"
     "if (P)\n"
     "  wire x;\n"
     "else\n"
     "  wire x;\n"
     "endgenerate\n"
     "endmodule\n",
     5, "dupli-define", "signal 'x' defined 2 times", LintFilter::kGenerateScope},
    {"DeclarationsInOneBranchAreDuplicates",
     "module m;\n"
     "if (P) begin : g\n"
     "  wire x;\n"
     "  wire x;\n"
     "end\n"
     "endmodule\n",
     3, "dupli-define", "signal 'x' defined 2 times", kKept},
    {"DeclarationsAtModuleLevelAreDuplicates", "module m;\nwire x;\nwire x;\nendmodule\n", 2, "dupli-define",
     "signal 'x' defined 2 times", kKept},
    {"DeclarationInsideAndOutsideABranchIsKept",
     "module m;\n"
     "wire x;\n"
     "if (P) begin : g\n"
     "  wire x;\n"
     "end\n"
     "endmodule\n",
     3, "dupli-define", "signal 'x' defined 2 times", kKept},
    {"CountThatDoesNotMatchIsKept",
     "module m;\n"
     "if (P) begin : a\n"
     "  wire x;\n"
     "end else begin : b\n"
     "  wire x;\n"
     "end\n"
     "endmodule\n",
     4, "dupli-define", "signal 'x' defined 3 times", kKept},
    {"DeclarationsInSeparateNamedBlocks",
     "module m;\n"
     "begin : first\n"
     "  reg r;\n"
     "end\n"
     "begin : second\n"
     "  reg r;\n"
     "end\n"
     "endmodule\n",
     5, "dupli-define", "signal 'r' defined 2 times", LintFilter::kGenerateScope},
    {"CaseItemsAreBranches",
     "module m;\n"
     "case (MODE)\n"
     "  0: begin : a\n"
     "    sub u0 (.x(x));\n"
     "  end\n"
     "  default: begin : b\n"
     "    sub u0 (.x(y));\n"
     "  end\n"
     "endcase\n"
     "endmodule\n",
     6, "dupli-inst", "instance 'u0' instantiated 2 times (lines: 4, 7)", LintFilter::kGenerateScope},
    {"InstancesAtModuleLevelAreDuplicates", "module m;\nsub u0 ();\nsub u0 ();\nendmodule\n", 2, "dupli-inst",
     "instance 'u0' instantiated 2 times (lines: 2, 3)", kKept},
    {"AlwaysBlocksInExclusiveBranches",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  always @(posedge clk) q <= a;\n"
     "end else begin : g_b\n"
     "  always @(posedge clk) q <= b;\n"
     "end\n"
     "endmodule\n",
     2, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 2, 4)", LintFilter::kGenerateScope},
    {"DriversInExclusiveBranchesBesideReaders",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  reg q;\n"
     "  always @(*) case (q) 0: d = 1; endcase\n"
     "  always @(posedge clk) q <= a;\n"
     "end else begin : g_b\n"
     "  reg q;\n"
     "  always @(*) d = q;\n"
     "  always @(posedge clk) q <= b;\n"
     "end\n"
     "endmodule\n",
     3, "multi-driver", "signal 'q' driven in 4 always blocks (lines: 3, 4, 7, 8)", LintFilter::kGenerateScope},
    {"DriversInOneBranchBesideAReaderAreKept",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  reg q;\n"
     "  always @(*) d = q;\n"
     "  always @(posedge clk) q <= a;\n"
     "  always @(posedge clk) q <= b;\n"
     "end else begin : g_b\n"
     "  always @(*) e = q;\n"
     "end\n"
     "endmodule\n",
     3, "multi-driver", "signal 'q' driven in 4 always blocks (lines: 3, 4, 5, 7)", kKept},
    {"UnplacedListedLineKeepsTheFinding",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  always @(posedge clk) q <= a;\n"
     "end else begin : g_b\n"
     "  always @(posedge clk) q <= b;\n"
     "end\n"
     "endmodule\n",
     2, "multi-driver", "signal 'q' driven in 3 always blocks (lines: 2, 4, 5)", kKept},
    {"AlwaysBlocksInNamedBlocksDrivingAnOuterSignalAreKept",
     "module m;\n"
     "reg q;\n"
     "begin : g_a\n"
     "  always @(posedge clk) q <= a;\n"
     "end\n"
     "begin : g_b\n"
     "  always @(posedge clk) q <= b;\n"
     "end\n"
     "endmodule\n",
     3, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 3, 6)", kKept},
    {"AlwaysBlocksInNamedBlocksDrivingTheirOwnSignal",
     "module m;\n"
     "begin : g_a\n"
     "  reg q;\n"
     "  always @(posedge clk) q <= a;\n"
     "end\n"
     "begin : g_b\n"
     "  reg q;\n"
     "  always @(posedge clk) q <= b;\n"
     "end\n"
     "endmodule\n",
     3, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 3, 7)", LintFilter::kGenerateScope},
    {"AssignsInExclusiveBranches",
     "module m;\n"
     "if (P) begin\n"
     "  assign y = a;\n"
     "end else begin\n"
     "  assign y = b;\n"
     "end\n"
     "endmodule\n",
     2, "repeated-assig", "signal 'y' assigned 2 times by assign", LintFilter::kGenerateScope},
    {"AssignsTogetherAreKept", "module m;\nassign y = a;\nassign y = b;\nendmodule\n", 1, "repeated-assig",
     "signal 'y' assigned 2 times by assign", kKept},
    {"ProceduralIfIsNotAGenerateBranch",
     "module m;\n"
     "always @(*) begin\n"
     "  if (s) begin : a\n"
     "  end\n"
     "end\n"
     "wire x;\n"
     "wire x;\n"
     "endmodule\n",
     6, "dupli-define", "signal 'x' defined 2 times", kKept},
    // Drivers that only read.
    {"BlockThatOnlyComparesIsNoDriver",
     "module m;\n"
     "always @(posedge clk) cnt <= cnt + 1;\n"
     "always @(posedge clk) if (cnt <= limit) done <= 1'b1;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'cnt' driven in 2 always blocks (lines: 1, 2)", LintFilter::kReadOnlyDriver},
    {"BothBlocksAssign",
     "module m;\n"
     "always @(posedge clk) q <= a;\n"
     "always @(posedge clk) q <= b;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 1, 2)", kKept},
    {"ConcatenationIsADrive",
     "module m;\n"
     "always @(*) {c, q} = a + b;\n"
     "always @(posedge clk) q <= d;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 1, 2)", kKept},
    {"TaskArgumentMayDrive",
     "module m;\n"
     "always @(posedge clk) update(q);\n"
     "always @(posedge clk) q <= d;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'q' driven in 2 always blocks (lines: 1, 2)", kKept},
    {"AssignAndAReadingBlock",
     "module m;\n"
     "assign y = a;\n"
     "always @(posedge clk) if (y <= 3) z <= 1;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'y' driven by both assign and always", LintFilter::kReadOnlyDriver},
    {"AssignAndADrivingBlock",
     "module m;\n"
     "assign y = a;\n"
     "always @(posedge clk) y <= 1;\n"
     "endmodule\n",
     1, "multi-driver", "signal 'y' driven by both assign and always", kKept},
    // Empty names.
    {"EmptyName", "module m;\nendmodule\n", 0, "comb-loop", "signal '' feeds back to itself in always",
     LintFilter::kEmptyName},
    // Defaults before the branch.
    {"DefaultsBeforeIf",
     "module m;\n"
     "always @(*) begin\n"
     "  y = 1'b0;\n"
     "  z = 1'b0;\n"
     "  if (en) begin\n"
     "    y = a;\n"
     "    z = b;\n"
     "  end\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", LintFilter::kDefaultBeforeBranch},
    {"DefaultsBeforeCase",
     "module m;\n"
     "always @* begin\n"
     "  next = state;\n"
     "  case (state)\n"
     "    IDLE: if (go) next = RUN;\n"
     "    RUN: next = IDLE;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     1, "latch", "case without default", LintFilter::kDefaultBeforeBranch},
    {"MissingDefaultIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  y = 1'b0;\n"
     "  if (en) begin\n"
     "    y = a;\n"
     "    z = b;\n"
     "  end\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"DefaultAfterTheBranchStillAssignsEveryPath",
     "module m;\n"
     "always @(*) begin\n"
     "  if (en) y = a;\n"
     "  y = 1'b0;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", LintFilter::kCompletePaths},
    {"PartSelectDefaultIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  y[0] = 1'b0;\n"
     "  if (en) y = a;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"BlockWithoutBeginIsKept", "module m;\nalways @(*) if (en) y = a;\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", kKept},
    {"TaskCallInTheBranchIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  y = 0;\n"
     "  if (en) fill(y);\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    // Every path assigns every target.
    {"IfElseChainEndingInElse",
     "module m;\n"
     "always @(*) begin\n"
     "  if (a) {t, d} = 2'b01;\n"
     "  else if (b) {t, d} = f(x);\n"
     "  else {t, d} = 2'b00;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"IfElseChainEndingInElseWithAnInputPassed",
     "module m(\n"
     "  input x, y);\n"
     "always @(*) begin\n"
     "  if (a) {t, d} = 2'b01;\n"
     "  else if (b) {t, d} = f(x);\n"
     "  else {t, d} = 2'b00;\n"
     "end\n"
     "endmodule\n",
     2, "latch", "if without else (if:1 else:0)", LintFilter::kCompletePaths},
    {"IfElseChainWithoutFinalElseIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  if (a) y = 1;\n"
     "  else if (b) y = 0;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"BranchAssigningAPartIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  if (a) y = 1;\n"
     "  else y[0] = 0;\n"
     "  if (b) y = 2;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:2 else:1)", kKept},
    {"DefaultsBeforeAForLoop",
     "module m;\n"
     "always @(*) begin\n"
     "  n = '0;\n"
     "  for (int i = 0; i < 4; i += 1) begin\n"
     "    if (v[i]) begin n = n + 1; break; end\n"
     "  end\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", LintFilter::kCompletePaths},
    {"ForLoopWithoutDefaultsIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  for (i = 0; i < 4; i = i + 1) if (v[i]) n = i;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"WhileLoopIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  n = 0;\n"
     "  while (n < 4) if (v) n = n + 1;\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"CaseWithMacroLabelsAndDefault",
     "module m;\n"
     "always @(*) begin\n"
     "  case (s)\n"
     "    `A: y = a;\n"
     "    default: begin y = b; if (e) y = c; end\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", LintFilter::kCompletePaths},
    {"MacroStatementIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  y = 0;\n"
     "  if (e) `SET(y);\n"
     "end\n"
     "endmodule\n",
     1, "latch", "if without else (if:1 else:0)", kKept},
    {"FullCaseOverADeclaredSelector",
     "module m;\n"
     "wire [1:0] s = i[1:0];\n"
     "wire t = (s == 2'd0);\n"
     "always @(*) begin\n"
     "  case (s)\n"
     "    2'b00, 2'b01: y = a;\n"
     "    2'd2: y = b;\n"
     "    2'h3: y = c;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     3, "latch", "case without default", LintFilter::kCompletePaths},
    {"FullCaseOverOneBitOfASelector",
     "module m;\n"
     "reg [3:0] s;\n"
     "always @(*) begin\n"
     "  case (s[2])\n"
     "    1'b0: y = a;\n"
     "    1'b1: y = b;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     2, "latch", "case without default", LintFilter::kCompletePaths},
    {"CaseMissingAValueIsKept",
     "module m;\n"
     "wire [1:0] s;\n"
     "always @(*) begin\n"
     "  case (s)\n"
     "    2'b00, 2'b01: y = a;\n"
     "    2'd2: y = b;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     2, "latch", "case without default", kKept},
    {"CasezIsKept",
     "module m;\n"
     "wire [0:0] s;\n"
     "always @(*) begin\n"
     "  casez (s)\n"
     "    1'b0: y = a;\n"
     "    1'b1: y = b;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     2, "latch", "case without default", kKept},
    {"ParameterizedSelectorIsKept",
     "module m;\n"
     "wire [W-1:0] s;\n"
     "always @(*) begin\n"
     "  case (s)\n"
     "    1'b0: y = a;\n"
     "    1'b1: y = b;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     2, "latch", "case without default", kKept},
    {"LabelWithUnknownBitsIsKept",
     "module m;\n"
     "wire s;\n"
     "always @(*) begin\n"
     "  case (s)\n"
     "    1'b0: y = a;\n"
     "    1'bx: y = b;\n"
     "  endcase\n"
     "end\n"
     "endmodule\n",
     2, "latch", "case without default", kKept},
    // Variables assigned whole before they are read.
    {"AssignedBeforeTheUpdate",
     "module m;\n"
     "always @(*) begin\n"
     "  c = 0;\n"
     "  s = q;\n"
     "  if (e) s[1] = s[0];\n"
     "end\n"
     "endmodule\n",
     4, "comb-loop", "signal 's' feeds back to itself in always", LintFilter::kAssignedFirst},
    {"ReadBeforeTheAssignmentIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  c = s;\n"
     "  s = q;\n"
     "  s = s + c;\n"
     "end\n"
     "endmodule\n",
     4, "comb-loop", "signal 's' feeds back to itself in always", kKept},
    {"SelfReadingFirstAssignmentIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  s = s + 1;\n"
     "end\n"
     "endmodule\n",
     2, "comb-loop", "signal 's' feeds back to itself in always", kKept},
    {"NonBlockingFirstAssignmentIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  s <= q;\n"
     "  s <= s + 1;\n"
     "end\n"
     "endmodule\n",
     3, "comb-loop", "signal 's' feeds back to itself in always", kKept},
    {"AssignmentInsideABranchIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  if (e) s = q;\n"
     "  s = s + 1;\n"
     "end\n"
     "endmodule\n",
     3, "comb-loop", "signal 's' feeds back to itself in always", kKept},
    {"CallBeforeTheAssignmentIsKept",
     "module m;\n"
     "always @(*) begin\n"
     "  c = f(a);\n"
     "  s = q;\n"
     "  s = s + c;\n"
     "end\n"
     "endmodule\n",
     4, "comb-loop", "signal 's' feeds back to itself in always", kKept},
    // Assignments the block does not hold.
    {"NonBlockingWarningOnABlockWithoutOne",
     "module m;\n"
     "always_comb begin\n"
     "  d = q;\n"
     "end\n"
     "always_ff @(posedge clk) q <= d;\n"
     "endmodule\n",
     1, "blocking-assign", "combinational always uses '<=' (1x), suggest '='", LintFilter::kAbsentAssignment},
    {"NonBlockingWarningOnABlockWithOne", "module m;\nalways @(*) y <= a;\nendmodule\n", 1, "blocking-assign",
     "combinational always uses '<=' (1x), suggest '='", kKept},
    {"ComparisonIsNotANonBlockingAssignment", "module m;\nalways @(*) y = (a <= b);\nendmodule\n", 1, "blocking-assign",
     "combinational always uses '<=' (1x), suggest '='", LintFilter::kAbsentAssignment},
    {"BlockingWarningOnABlockWithOne", "module m;\nalways @(posedge clk) q = d;\nendmodule\n", 1, "blocking-assign",
     "sequential always uses '=' (1x), suggest '<='", kKept},
    // Blocking assigns to a clocked block's own variables.
    {"BlockingAssignsToBlockLocals",
     "module m;\nalways @(posedge c) begin : g\n  reg [3:0] n;\n  n = n + 1;\n  n[0] = a;\n  q <= n;\nend\nendmodule\n",
     1, "blocking-assign", "sequential always uses '=' (2x), suggest '<='", LintFilter::kBlockLocals},
    {"BlockingAssignToAModuleVariableIsKept",
     "module m;\nreg [3:0] n;\nalways @(posedge c) begin\n  n = n + 1;\nend\nendmodule\n", 2, "blocking-assign",
     "sequential always uses '=' (1x), suggest '<='", kKept},
    {"LocalOfAnInnerBlockWrittenOutsideItIsKept",
     "module m;\nalways @(posedge c) begin\n  if (a) begin\n    int x;\n    x = 1;\n  end\n  x = 2;\nend\nendmodule\n",
     1, "blocking-assign", "sequential always uses '=' (2x), suggest '<='", kKept},
    {"BlockingAssignThroughAMacroIsKept",
     "module m;\nalways @(posedge c) begin : g\n  reg n;\n  n = 1;\n  `X = 2;\nend\nendmodule\n", 1, "blocking-assign",
     "sequential always uses '=' (2x), suggest '<='", kKept},
    // Ports declared by direction, then by type.
    {"OutputThenReg", "module m(q);\noutput [7:0] q;\nreg [7:0] q;\nendmodule\n", 2, "dupli-define",
     "signal 'q' defined 2 times", LintFilter::kPortRedeclaration},
    {"OutputRegThenRegIsKept", "module m(q);\noutput reg q;\nreg q;\nendmodule\n", 2, "dupli-define",
     "signal 'q' defined 2 times", kKept},
    {"WireAlwaysOnAPortDeclaredReg", "module m(q);\noutput q;\nreg q;\nalways @(posedge clk) q <= d;\nendmodule\n", 3,
     "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)",
     LintFilter::kPortRedeclaration},
    {"WireAlwaysOnAPortDeclaredWire", "module m(q);\noutput q;\nwire q;\nalways @(posedge clk) q <= d;\nendmodule\n", 3,
     "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)", kKept},
    {"TwoRegsAreKept", "module m;\nreg q;\nreg q;\nendmodule\n", 2, "dupli-define", "signal 'q' defined 2 times",
     kKept},
    // Modport and clocking items.
    {"ModportItemsAreNoDeclarations",
     "interface bus;\n"
     "logic valid;\n"
     "modport master (\n"
     "  output valid\n"
     ");\n"
     "modport slave (\n"
     "  input valid\n"
     ");\n"
     "endinterface\n",
     3, "dupli-define", "signal 'valid' defined 3 times", LintFilter::kInterfaceItems},
    {"ClockingItemTakenForTheDeclaration",
     "interface probe (input clk);\n"
     "assign x = state;\n"
     "clocking cb @(posedge clk);\n"
     "  input state;\n"
     "endclocking\n"
     "endinterface\n",
     1, "used-bef-declare", "signal 'state' used at line 2 before declaration at line 4", LintFilter::kInterfaceItems},
    {"SecondDeclarationInAContinuedModportList",
     "interface bus;\n"
     "logic valid;\n"
     "logic ready;\n"
     "modport a (output valid, input ready);\n"
     "modport m (\n"
     "  input valid,\n"
     "        ready\n"
     ");\n"
     "endinterface\n",
     5, "dupli-define", "signal 'ready' defined 2 times", LintFilter::kInterfaceItems},
    {"NameOnAContinuedDeclarationLineAndInModports",
     "interface bus;\n"
     "logic [1:0] a_ptr,\n"
     "            c_ptr;\n"
     "modport m (\n"
     "  output a_ptr, c_ptr, input x,\n"
     "  input y);\n"
     "modport s (\n"
     "  input a_ptr, c_ptr, output x,\n"
     "  output y);\n"
     "endinterface\n",
     4, "dupli-define", "signal 'c_ptr' defined 3 times", LintFilter::kInterfaceItems},
    {"SecondDeclarationOutsideModportsIsKept",
     "interface bus;\nlogic valid;\nmodport a (output valid);\nlogic valid;\nendinterface\n", 3, "dupli-define",
     "signal 'valid' defined 2 times", kKept},
    {"DeclarationsOutsideModportsAreKept",
     "interface bus;\nlogic valid;\nlogic valid;\nmodport m (\n  input valid\n);\nendinterface\n", 2, "dupli-define",
     "signal 'valid' defined 3 times", kKept},
    {"MembersOfTwoStructsNamedInAParameter",
     "module m;\n"
     "typedef struct packed {\n"
     "  logic a;\n"
     "} s_t;\n"
     "typedef struct packed {\n"
     "  logic a;\n"
     "  logic b;\n"
     "} t_t;\n"
     "localparam t_t P = '{a: 1'b1, b: 1'b0};\n"
     "endmodule\n",
     5, "dupli-define", "signal 'a' defined 2 times", LintFilter::kMemberScopes},
    {"LocalsOfFunctionsAfterALabelledEnd",
     "package p;\n"
     "function automatic logic t(logic v);\n"
     "  return v;\n"
     "endfunction : t\n"
     "function automatic logic f(logic a);\n"
     "  logic [3:0] x;\n"
     "  x = a;\n"
     "endfunction : f\n"
     "function automatic logic g(logic a);\n"
     "  logic [3:0] x;\n"
     "  x = a;\n"
     "endfunction : g\n"
     "endpackage\n",
     9, "dupli-define", "signal 'x' defined 2 times", LintFilter::kGenerateScope},
    {"LocalsOfTwoFunctions",
     "module m;\n"
     "function f;\n"
     "  input a;\n"
     "  reg t;\n"
     "  f = a;\n"
     "endfunction\n"
     "function g;\n"
     "  input a;\n"
     "  reg t;\n"
     "  g = a;\n"
     "endfunction\n"
     "endmodule\n",
     8, "dupli-define", "signal 't' defined 2 times", LintFilter::kGenerateScope},
    {"OtherChecksAreNeverDropped", "module m;\nassign a = a;\nendmodule\n", 1, "comb-loop",
     "assign 'a' feeds back to itself", kKept},
    // Struct members, routine locals and member paths.
    {"FieldsOfTwoStructs",
     "package p;\n"
     "typedef struct packed {\n"
     "  logic a;\n"
     "} s_t;\n"
     "typedef struct packed {\n"
     "  logic a;\n"
     "} t_t;\n"
     "endpackage\n",
     5, "dupli-define", "signal 'a' defined 2 times", LintFilter::kMemberScopes},
    {"TwoFieldsOfOneStructAreKept",
     "package p;\n"
     "typedef struct packed {\n"
     "  logic a;\n"
     "  logic a;\n"
     "} s_t;\n"
     "endpackage\n",
     3, "dupli-define", "signal 'a' defined 2 times", kKept},
    {"RoutineLocalAndModuleSignal",
     "module m;\n"
     "wire e;\n"
     "function automatic f(input x);\n"
     "  logic e;\n"
     "  f = x;\n"
     "endfunction\n"
     "endmodule\n",
     3, "dupli-define", "signal 'e' defined 2 times", LintFilter::kMemberScopes},
    {"ParameterOfAPackageAndOfAClass",
     "package p;\n"
     "parameter int W = 1;\n"
     "virtual class b #(\n"
     "  parameter int W = 2\n"
     ");\n"
     "endclass\n"
     "endpackage\n",
     3, "dupli-define", "parameter 'W' defined 2 times", LintFilter::kMemberScopes},
    {"ArgumentsOfTasksOutsideAnyModule",
     "task t1;\n"
     "  input [4:0] rd;\n"
     "endtask\n"
     "task t2;\n"
     "  input [4:0] rd;\n"
     "endtask\n",
     4, "dupli-define", "signal 'rd' defined 2 times", LintFilter::kMemberScopes},
    {"TwoLocalsOfOneClassAreKept",
     "package p;\n"
     "class a;\n"
     "  logic q;\n"
     "  logic q;\n"
     "endclass\n"
     "endpackage\n",
     3, "dupli-define", "signal 'q' defined 2 times", kKept},
    {"AssignsToDisjointMembers", "module m;\nassign s.a.x = 1;\nassign s.a.y = 0;\nassign s.b = 1;\nendmodule\n", 1,
     "repeated-assig", "signal 's' assigned 3 times by assign", LintFilter::kMemberScopes},
    {"SelectedMembersUncountedByTheLinter",
     "module m;\nassign s.a = 1;\nassign s.b[1:0] = 2;\nassign s.c = 3;\nendmodule\n", 1, "repeated-assig",
     "signal 's' assigned 2 times by assign", LintFilter::kMemberScopes},
    {"UncountedAssignThatMeetsAnotherIsKept",
     "module m;\nassign s.a = 1;\nassign s.a[1:0] = 2;\nassign s.c = 3;\nendmodule\n", 1, "repeated-assig",
     "signal 's' assigned 2 times by assign", kKept},
    {"AssignsToAMemberAndItsPrefixAreKept", "module m;\nassign s.a.x = 1;\nassign s.a = 0;\nendmodule\n", 1,
     "repeated-assig", "signal 's' assigned 2 times by assign", kKept},
    {"WholeSignalInOneBranchMembersInTheOther",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  assign s = t;\n"
     "end else begin : g_b\n"
     "  assign s.a = 1;\n"
     "  assign s.b = 0;\n"
     "end\n"
     "endmodule\n",
     2, "repeated-assig", "signal 's' assigned 3 times by assign", LintFilter::kMemberScopes},
    {"AssignsToTheWholeSignalAreKept", "module m;\nassign s.a = 1;\nassign s = 0;\nendmodule\n", 1, "repeated-assig",
     "signal 's' assigned 2 times by assign", kKept},
    {"AssignsToSelectsThatMayMeetAreKept", "module m;\nassign s[i] = 1;\nassign s[0] = 0;\nendmodule\n", 1,
     "repeated-assig", "signal 's' assigned 2 times by assign", kKept},
    {"AssignsToDifferentConstantSelects", "module m;\nassign s[1].v = 1;\nassign s[0].v = 0;\nendmodule\n", 1,
     "repeated-assig", "signal 's' assigned 2 times by assign", LintFilter::kMemberScopes},
    // Initializers.
    {"NameReadInAnInitializer", "module m;\nreg q;\nwire [2:0] r = {a, q, b};\nendmodule\n", 2, "dupli-define",
     "signal 'q' defined 2 times", LintFilter::kInitializerNames},
    {"NamesInAnInitializerOverLines",
     "module m;\nwire [3:0] a;\nwire [3:0] s = f ?\n  {a[0], a[1],\n   a[2]} : a;\nendmodule\n", 2, "dupli-define",
     "signal 'a' defined 2 times", LintFilter::kInitializerNames},
    {"DeclaredAfterAnInitializerOverLinesIsKept",
     "module m;\nwire [3:0] a;\nwire [3:0] s = {a[0],\n  a[1]}, a;\nendmodule\n", 2, "dupli-define",
     "signal 'a' defined 2 times", kKept},
    {"SecondDeclaredNameAfterAnInitializerIsKept", "module m;\nreg q;\nwire r = 1, q = 0;\nendmodule\n", 2,
     "dupli-define", "signal 'q' defined 2 times", kKept},
    {"WireOnlyInAnInitializerOfAReg", "module m;\nreg q;\nwire r = q;\nalways @(posedge c) q <= 1;\nendmodule\n", 3,
     "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)",
     LintFilter::kInitializerNames},
    {"RealWireDriveIsKept", "module m;\nwire q;\nwire r = q;\nalways @(posedge c) q <= 1;\nendmodule\n", 3,
     "wire-always", "wire signal 'q' cannot be assigned in always block (use reg instead)", kKept},
    // Uses that are not in the text.
    {"NoUseBeforeTheDeclaration", "module m;\nalways @* y = a;\nsub u (.late(x));\nreg late;\nendmodule\n", 1,
     "used-bef-declare", "signal 'late' used at line 2 before declaration at line 4", LintFilter::kAbsentUse},
    {"RealUseIsKept", "module m;\nassign y = late;\nreg late;\nendmodule\n", 1, "used-bef-declare",
     "signal 'late' used at line 2 before declaration at line 3", kKept},
    {"WildcardConnectionIsKept", "module m;\nsub u (.*);\nreg late;\nendmodule\n", 1, "used-bef-declare",
     "signal 'late' used at line 2 before declaration at line 3", kKept},
    // Latches asked for.
    {"AlwaysLatch", "module m;\nalways_latch\n  if (en) q = d;\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", LintFilter::kIntendedLatch},
    {"AlwaysCombLatchIsKept", "module m;\nalways_comb\n  if (en) q = d;\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", kKept},
    // Hierarchical paths.
    {"DisjointPathsUnderOneRoot", "module m;\nassign d.a.b = d.c.e;\nendmodule\n", 1, "comb-loop",
     "assign 'd' feeds back to itself", LintFilter::kHierarchicalPaths},
    {"PathReadingItsOwnTargetIsKept", "module m;\nassign d.a.b = d.a;\nendmodule\n", 1, "comb-loop",
     "assign 'd' feeds back to itself", kKept},
    {"WholeRootOnTheRightIsKept", "module m;\nassign d.a = d;\nendmodule\n", 1, "comb-loop",
     "assign 'd' feeds back to itself", kKept},
    {"TargetReadOnlyAsAMemberOfAnotherObject", "module m;\nassign x[7:0] = pkt.x[7:0];\nendmodule\n", 1, "comb-loop",
     "assign 'x' feeds back to itself", LintFilter::kHierarchicalPaths},
    {"TargetReadAlsoItselfIsKept", "module m;\nassign x = pkt.x | x;\nendmodule\n", 1, "comb-loop",
     "assign 'x' feeds back to itself", kKept},
    {"TargetInItsOwnSelectIsKept", "module m;\nassign x[x] = u.x;\nendmodule\n", 1, "comb-loop",
     "assign 'x' feeds back to itself", kKept},
    {"OffsetSelectsOfOneName", "module m;\nassign s[l][n] = |s[l-1][n*2+1:n*2];\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", LintFilter::kHierarchicalPaths},
    {"DecimalSelectsApart", "module m;\nassign s[0] = s[1] & a;\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", LintFilter::kHierarchicalPaths},
    {"SameSelectIsKept", "module m;\nassign s[l] = s[l+0] | a;\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", kKept},
    {"SelectsByDifferentNamesAreKept", "module m;\nassign s[i] = s[j];\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", kKept},
    {"WholeSignalReadBySelectedTargetIsKept", "module m;\nassign s[l] = ^s;\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", kKept},
    {"PartSelectsAreKept", "module m;\nassign s[3:0] = s[7:4];\nendmodule\n", 1, "comb-loop",
     "assign 's' feeds back to itself", kKept},
    {"SecondAssignOnTheLineIsKept", "module m;\nassign x = u.x; assign x = x;\nendmodule\n", 1, "comb-loop",
     "assign 'x' feeds back to itself", kKept},
    // Latches on blocks without the branch named.
    {"LatchOnABlockWithoutIf", "module m;\nalways_comb begin\n  y = s ? a : b;\nend\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", LintFilter::kAbsentBranch},
    {"LatchOnABlockWithIfIsKept", "module m;\nalways_comb begin\n  if (s) y = a;\nend\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", kKept},
    {"LatchOnABlockWithAMacroIsKept", "module m;\nalways_comb begin\n  `PICK(y, a)\nend\nendmodule\n", 1, "latch",
     "if without else (if:1 else:0)", kKept},
    {"CaseWithoutDefaultOnABlockWithCaseIsKept",
     "module m;\nalways_comb begin\n  case (s)\n    0: y = a;\n  endcase\nend\nendmodule\n", 1, "latch",
     "case without default", kKept},
    // Letter case.
    {"LoopThroughAnotherSpelling", "module m;\nassign OUT = out;\nendmodule\n", 1, "comb-loop",
     "assign 'OUT' feeds back to itself", LintFilter::kLetterCase},
    {"LoopThroughTheSameSpellingIsKept", "module m;\nassign OUT = out ^ OUT;\nendmodule\n", 1, "comb-loop",
     "assign 'OUT' feeds back to itself", kKept},
    {"BlockLoopThroughAFunctionSpeltOtherwise",
     "module m;\nalways @(a or b) begin\n  sum = Sum(a, b);\nend\nendmodule\n", 2, "comb-loop",
     "signal 'sum' feeds back to itself in always", LintFilter::kLetterCase},
    {"BlockLoopThroughTheSameSpellingIsKept",
     "module m;\nalways @(a or b) begin\n  sum = Sum(a, b) + sum;\nend\nendmodule\n", 2, "comb-loop",
     "signal 'sum' feeds back to itself in always", kKept},
    {"BlockLoopOverTwoLinesIsKept",
     "module m;\nalways @(a or b) begin\n  sum = Sum(a, b)\n    + sum;\nend\nendmodule\n", 2, "comb-loop",
     "signal 'sum' feeds back to itself in always", kKept},
    {"AssignsToTwoSpellings", "module m;\nassign OUT = a;\nassign out = b;\nendmodule\n", 1, "repeated-assig",
     "signal 'OUT' assigned 2 times by assign", LintFilter::kLetterCase},
    {"AssignsToOneSpellingAreKept", "module m;\nassign OUT = a;\nassign out = b;\nassign out = c;\nendmodule\n", 1,
     "repeated-assig", "signal 'OUT' assigned 3 times by assign", kKept},
    {"AssignAndAlwaysDriveTwoSpellings", "module m;\nassign OUT = out;\nalways @(posedge c) out <= d;\nendmodule\n", 1,
     "multi-driver", "signal 'OUT' driven by both assign and always", LintFilter::kLetterCase},
    {"AssignAndAlwaysDriveOneSpellingAreKept",
     "module m;\nassign OUT = out;\nalways @(posedge c) OUT <= d;\nendmodule\n", 1, "multi-driver",
     "signal 'OUT' driven by both assign and always", kKept},
    {"WireSpeltOtherwiseThanTheReg", "module m(output wire OUT);\nreg out;\nalways @(posedge c) out <= d;\nendmodule\n",
     2, "wire-always", "wire signal 'out' cannot be assigned in always block (use reg instead)",
     LintFilter::kLetterCase},
    // Assertions read as instances.
    {"AssertPropertyIsNoInstance",
     "module m;\nalways @(posedge c) begin\n  assert property (a);\n  assert property (b);\nend\nendmodule\n", 3,
     "dupli-inst", "instance 'property' instantiated 2 times (lines: 3, 4)", LintFilter::kAssertionItems},
    {"InstancesNamedPropertyAreKept", "module m;\nsub property (.a(a));\nsub property (.a(b));\nendmodule\n", 2,
     "dupli-inst", "instance 'property' instantiated 2 times (lines: 2, 3)", kKept},
    // A macro call without its ";" ends at its ")".
    {"GenerateBranchesAfterAMacroCall",
     "module m;\n"
     "`CHECK(a, b)\n"
     "if (P) begin : g_a\n"
     "  assign y = 1;\n"
     "end else begin : g_b\n"
     "  assign y = 0;\n"
     "end\n"
     "endmodule\n",
     3, "repeated-assig", "signal 'y' assigned 2 times by assign", LintFilter::kGenerateScope},
    {"GenerateBranchesAfterAnUndef",
     "module m;\n"
     "`undef N\n"
     "if (P) begin : g_a\n"
     "  assign y = 1;\n"
     "end else begin : g_b\n"
     "  assign y = 0;\n"
     "end\n"
     "endmodule\n",
     3, "repeated-assig", "signal 'y' assigned 2 times by assign", LintFilter::kGenerateScope},
    // An instance named after its parameter list.
    {"InstanceNamedBelowItsModuleLine",
     "module m;\n"
     "if (P) begin : g_a\n"
     "  sub #(\n"
     "    .W(1)\n"
     "  ) u (.x(x));\n"
     "end else begin : g_b\n"
     "  sub #(.W(2))\n"
     "    u (.x(x));\n"
     "end\n"
     "endmodule\n",
     6, "dupli-inst", "instance 'u' instantiated 2 times (lines: 3, 7)", LintFilter::kGenerateScope},
};

INSTANTIATE_TEST_SUITE_P(Cases, FilterThatDropsTest, ::testing::ValuesIn(kCases),
                         [](const ::testing::TestParamInfo<FilterCase>& param) {
                           return std::string(param.param.name);
                         });

TEST(FilterThatDropsTest, DisabledFilterKeepsTheFinding) {
  const GenerateScopes scopes("module m;\nendmodule\n");
  LintFilterSet enabled = LintFilterSet::All();
  enabled.Disable(LintFilter::kEmptyName);
  EXPECT_EQ(FilterThatDrops(scopes, {0, "comb-loop", "signal '' feeds back to itself in always"}, enabled),
            std::nullopt);
}

TEST(FilterThatDropsTest, TooDeepANestingProvesNothing) {
  std::string text = "module m;\n";
  for (int i = 0; i < 5000; ++i) text += "if (a) begin : b\n";
  text += "wire x;\n";
  const GenerateScopes scopes(text);
  EXPECT_FALSE(scopes.Complete());
  EXPECT_EQ(FilterThatDrops(scopes, {0, "comb-loop", "signal '' feeds back"}, LintFilterSet::All()), std::nullopt);
}

TEST(FilterThatDropsTest, AnyBytesReadAsStatementsGiveAnAnswer) {
  unsigned state = 7;
  const std::string pieces[] = {"module m;", "endmodule", "always @(*)", "begin",    "end",      "if (a)",
                                "else",      "case (x)",  "endcase",     "default:", "1:",       "for (i = 0;",
                                "i < 4;",    "i++)",      "x = f(y);",   "y = `M;",  "{a, b} =", "break;",
                                "(",         ")",         "[",           "]",        ";",        "\n"};
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int i = 0; i < 40; ++i) {
      state = state * 1103515245u + 12345u;
      text += pieces[(state >> 16) % std::size(pieces)];
      text += ' ';
    }
    const GenerateScopes scopes(text);
    for (std::uint32_t line = 0; line < 8; ++line) {
      FilterThatDrops(scopes, {line, "latch", "if without else (if:1 else:0)"}, LintFilterSet::All());
      FilterThatDrops(scopes, {line, "comb-loop", "signal 'x' feeds back to itself in always"}, LintFilterSet::All());
    }
  }
}

TEST(GenerateScopesTest, FindsWordsByLineAcrossLinesWithoutTokens) {
  const GenerateScopes scopes("a\n\n // c\n b c\n\n");
  EXPECT_EQ(scopes.FindOnLine(0, "a", false), std::optional<std::size_t>(0));
  EXPECT_EQ(scopes.FindOnLine(1, "b", false), std::nullopt);
  EXPECT_EQ(scopes.FindOnLine(2, "b", false), std::nullopt);
  EXPECT_EQ(scopes.FindOnLine(3, "B", true), std::optional<std::size_t>(1));
  EXPECT_EQ(scopes.FindOnLine(3, "c", false), std::optional<std::size_t>(2));
  EXPECT_EQ(scopes.FindOnLine(4, "c", false), std::nullopt);
  EXPECT_EQ(scopes.FindOnLine(99, "c", false), std::nullopt);
}

TEST(GenerateScopesTest, AnyBytesGiveANodePerToken) {
  unsigned state = 11;
  const std::string pieces[] = {"module m;", "endmodule", "if (a)",  "else", "begin",       ": n",
                                "end",       "case (x)",  "endcase", "1:",   "always @(*)", "x = 1;",
                                "(",         ")",         "{",       "}",    ";",           "\n"};
  for (int round = 0; round < 3000; ++round) {
    std::string text;
    for (int i = 0; i < 40; ++i) {
      state = state * 1103515245u + 12345u;
      text += pieces[(state >> 16) % std::size(pieces)];
      text += ' ';
    }
    const GenerateScopes scopes(text);
    for (std::size_t t = 0; t < scopes.Tokens().size(); ++t)
      ASSERT_LT(scopes.NodeOfToken(t), scopes.Tokens().size() + 2);
    for (const ProceduralBlock& block : scopes.Blocks()) ASSERT_LE(block.end, scopes.Tokens().size());
  }
}

}  // namespace
}  // namespace quill::cli
