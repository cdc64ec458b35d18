#include "source_scan.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lint_file.h"

namespace quill::cli {
namespace {

struct ScanCase {
  const char* text;
  std::vector<std::size_t> unitStarts;
};

const ScanCase kScanCases[] = {
    {"module a; endmodule", {0}},
    {"module a; endmodule\nmodule b; endmodule\n", {0, 20}},
    {"macromodule a; endmodule module b; endmodule", {0, 25}},
    {"`timescale 1ns/1ps\nmodule a; endmodule", {19}},
    {"(* keep *) module a; endmodule", {11}},
    {"// module x\nmodule a;", {12}},
    {"/* module x */ module a;", {15}},
    {"assign s = \"module x\";", {}},
    {"`define M module\nmodule a;", {17}},
    {"`define M \\\nmodule\nmodule a;", {19}},
    {"module a; wire module_x; endmodule", {0}},
    {"foo module", {}},
    {"module a; always @(*) x = 1; endmodule module b;", {0, 39}},
    {"endinterface module a;", {13}},
    {"interface a; endinterface\ninterface b; endinterface", {0, 26}},
    {"package p; endpackage program t; endprogram", {0, 22}},
    {"package p; interface class c; endclass endpackage", {0}},
    {"module a (interface bus); endmodule", {0}},
    {"virtual interface x;", {}},
    {"$m module a;", {}},
    {"x $endmodule module a;", {13}},
    {"x a$endmodule module b; x = y.endmodule module c;", {40}},
    {"x 9endmodule module b;", {}},
    {"x = `M endmodule\n  module b;", {19}},
    {"wire a\n  = b;\n\n  module c;", {17}},
    {"wire a\n  `define M\nmodule c;", {19}},
    {"wire a\n /* c */ `define M\n;module c;", {27}},
    {"wire a\n\t// c\n endmodule module d;", {24}},
    {"x = 1'b0; \\esc module a; module b;", {25}},
    {"`ifdef A\n module a;\n`endif\nmodule b;", {10, 27}},
};

TEST(SourceScanTest, FindsUnitStartsOutsideCommentsAndStrings) {
  for (const ScanCase& c : kScanCases) {
    EXPECT_EQ(ScanSource(c.text).unitStarts, c.unitStarts) << c.text;
  }
}

TEST(SourceScanTest, ListsCommentsWithTheirBodies) {
  const SourceScan scan = ScanSource("a // one\n/* two\n */ \"// no\" /* open");
  ASSERT_EQ(scan.comments.size(), 3u);
  EXPECT_EQ(scan.comments[0].body, " one");
  EXPECT_EQ(scan.comments[1].body, " two\n ");
  EXPECT_EQ(scan.comments[2].body, " open");
}

TEST(SourceScanTest, StretchesStartAtTheSecondUnit) {
  EXPECT_EQ(UnitStretches({}), std::vector<std::size_t>{0});
  EXPECT_EQ(UnitStretches({5}), std::vector<std::size_t>{0});
  EXPECT_EQ(UnitStretches({5, 30, 60}), (std::vector<std::size_t>{0, 30, 60}));
}

}  // namespace
}  // namespace quill::cli
