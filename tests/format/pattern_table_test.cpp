#include "format/scan/pattern_table.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "format/reference_patterns.h"

namespace quill {
namespace {

using Groups = std::vector<std::optional<std::string_view>>;

// One subject searched with an entry: whether it matches and, if so, the
// expected captures 1, 2, ... (nullopt for a group that takes no part).
struct Sample {
  std::string_view subject;
  bool matches;
  Groups groups = {};
};

struct Entry {
  const char* name;
  const Pattern* pattern;  // an entry of the table or a reference pattern of the tests
  std::string_view source;
  // A subject that matches; with its ASCII letter case swapped it matches
  // again only if the entry is case-insensitive. Empty for entries without
  // literal letters, which match the same either way.
  std::string_view caseProbe;
  bool icase;
  std::vector<Sample> samples;
};

std::string SwapCase(std::string_view s) {
  std::string swapped(s);
  for (char& c : swapped) {
    if (c >= 'a' && c <= 'z') {
      c = static_cast<char>(c - 'a' + 'A');
    } else if (c >= 'A' && c <= 'Z') {
      c = static_cast<char>(c - 'A' + 'a');
    }
  }
  return swapped;
}

const std::vector<Entry>& Entries() {
  static const std::vector<Entry> entries = {
      {"kBeginPattern",
       &Patterns().kBeginPattern,
       R"(\bbegin\b)",
       "end else begin",
       false,
       {
           {"begin", true},
           {"end else begin // x", true},
           {"begin:label", true},
           {"\303begin\303", true},
           {"beginning", false},
           {"_begin", false},
           {"begin1", false},
           {"BEGIN", false},
       }},
      {"kEndPattern",
       &ReferencePatterns().kEndPattern,
       R"(\bend\b)",
       "  end // x",
       false,
       {
           {"end", true},
           {"end else begin", true},
           {"end;", true},
           {"endmodule", false},
           {"endcase", false},
           {"backend", false},
           {"end_", false},
           {"END", false},
       }},
      {"kCasePattern",
       &ReferencePatterns().kCasePattern,
       R"(\bcase[zx]?\b)",
       "case (sel)",
       false,
       {
           {"case (sel)", true},
           {"casez(sel)", true},
           {"  casex (sel)", true},
           {"unique case (x)", true},
           {"endcase", false},
           {"casey", false},
           {"casezz", false},
           {"case_", false},
           {"CASE (x)", false},
       }},
      {"kEndcasePattern",
       &ReferencePatterns().kEndcasePattern,
       R"(\bendcase\b)",
       "  endcase // x",
       false,
       {
           {"endcase", true},
           {"endcase;", true},
           {"endcases", false},
           {"case", false},
           {"ENDCASE", false},
       }},
      {"kModulePattern",
       &ReferencePatterns().kModulePattern,
       R"(^\s*module\b)",
       "module m;",
       true,
       {
           {"module m;", true},
           {"  MODULE m", true},
           {"\tModule(", true},
           {"\vmodule", true},
           {"module", true},
           {"endmodule", false},
           {"modules", false},
           {"x module", false},
           {"// module", false},
       }},
      {"kEndmodulePattern",
       &ReferencePatterns().kEndmodulePattern,
       R"(^\s*endmodule\b)",
       "endmodule",
       true,
       {
           {"endmodule", true},
           {" EndModule // x", true},
           {"endmodule:top", true},
           {"endmodules", false},
           {"x endmodule", false},
           {"module", false},
       }},
      {"kLineCommentStartPattern",
       &ReferencePatterns().kLineCommentStartPattern,
       R"(^\s*//)",
       "",
       false,
       {
           {"// x", true},
           {"   //", true},
           {"\t//wire a;", true},
           {"a // b", false},
           {"/ /", false},
           {"/* x */", false},
       }},
      {"kForeignSourcePattern",
       &Patterns().kForeignSourcePattern,
       R"(^\s*(def |class |import |from \w+ import|#!.*python))",
       "import os",
       true,
       {
           {"def main():", true, {"def "}},
           {"class A:", true, {"class "}},
           {"import os", true, {"import "}},
           {"IMPORT os", true, {"IMPORT "}},
           {"from x import y", true, {"from x import"}},
           {"FROM pkg IMPORT y", true, {"FROM pkg IMPORT"}},
           {"#!/usr/bin/env python3\nprint(1)", true, {"#!/usr/bin/env python"}},
           {"#!/usr/bin/PYTHON", true, {"#!/usr/bin/PYTHON"}},
           {"\n  \r\n\t import os", true, {"import "}},
           {"important = 1", false},
           {"define", false},
           {"classy", false},
           {"def\tf():", false},
           {"import\tos", false},
           {"from x  import y", false},
           {"from . import x", false},
           {"#!/bin/sh\npython", false},
           {"#!/bin/sh\rpython", false},
           {"module m;\nimport os", false},
           {"// header\nimport os", false},
           {"x def f", false},
       }},
      {"kPortDeclPattern",
       &ReferencePatterns().kPortDeclPattern,
       R"(^\s*(input|output|inout)\s*(wire|reg|logic)?\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*(,?)\s*(//.*)?$)",
       "input wire clk,",
       true,
       {
           {"input wire [7:0] data_in,",
            true,
            {"input", "wire", std::nullopt, "[7:0]", "data_in", std::nullopt, ",", std::nullopt}},
           {"  output reg signed [3:0] q // result",
            true,
            {"output", "reg", "signed ", "[3:0]", "q", std::nullopt, "", "// result"}},
           {"inout x", true, {"inout", std::nullopt, std::nullopt, std::nullopt, "x", std::nullopt, "", std::nullopt}},
           {"INPUT Logic CLK ,",
            true,
            {"INPUT", "Logic", std::nullopt, std::nullopt, "CLK", std::nullopt, ",", std::nullopt}},
           {"input [7:0] mem [0:3],",
            true,
            {"input", std::nullopt, std::nullopt, "[7:0]", "mem", "[0:3]", ",", std::nullopt}},
           // "\S+" is greedy and takes the comma.
           {"output logic a = 1'b0,",
            true,
            {"output", "logic", std::nullopt, std::nullopt, "a = 1'b0,", std::nullopt, "", std::nullopt}},
           // A plain prefix: "inputs" is "input" and the name "s".
           {"inputs", true, {"input", std::nullopt, std::nullopt, std::nullopt, "s", std::nullopt, "", std::nullopt}},
           {"input a, b;", false},
           {"input a;", false},
           {"input a // c\rd", false},
           {"wire a,", false},
           {"x input a", false},
           {"input", false},
       }},
      {"kModuleHeaderPattern",
       &ReferencePatterns().kModuleHeaderPattern,
       R"(^\s*module\s+(.+?)\s*(?=[#(\n\r]|$))",
       "module top (",
       true,
       {
           {"module top (", true, {"top"}},
           {"module top#(", true, {"top"}},
           {"  module  top  (a, b);", true, {"top"}},
           {"MODULE Top(", true, {"Top"}},
           {"module top", true, {"top"}},
           {"module top;", true, {"top;"}},
           {"module m // c", true, {"m // c"}},
           {"module m\r", true, {"m"}},
           {"module m\nx", true, {"m"}},
           {"module(", false},
           {"module", false},
           {"module ", false},
           {"module \n", false},
           {"modulex y", false},
           {"endmodule x", false},
       }},
      {"kNetDeclPattern",
       &ReferencePatterns().kNetDeclPattern,
       R"(^\s*(wire|reg|logic)\s*(signed\s+)?(\[[^\]]*\])?\s*(\w+(?:\s*=\s*\S+)?)\s*(\[[^\]]*\])?\s*;\s*(//.*)?$)",
       "wire a;",
       true,
       {
           {"wire a;", true, {"wire", std::nullopt, std::nullopt, "a", std::nullopt, std::nullopt}},
           {"  reg [7:0] count; // c", true, {"reg", std::nullopt, "[7:0]", "count", std::nullopt, "// c"}},
           {"logic signed [3:0] x = 4'd0;",
            true,
            {"logic", "signed ", "[3:0]", "x = 4'd0", std::nullopt, std::nullopt}},
           {"wire [1:0] mem [0:3] ;", true, {"wire", std::nullopt, "[1:0]", "mem", "[0:3]", std::nullopt}},
           {"WIRE A;", true, {"WIRE", std::nullopt, std::nullopt, "A", std::nullopt, std::nullopt}},
           {"wirex;", true, {"wire", std::nullopt, std::nullopt, "x", std::nullopt, std::nullopt}},
           {"wire a, b;", false},
           {"wire a", false},
           {"wire a; b", false},
           {"input a;", false},
           {"wire [WIDTH-1:0] a; // c\r", false},
       }},
      {"kParamDeclPattern",
       &ReferencePatterns().kParamDeclPattern,
       R"(^\s*(parameter|localparam)?\s*(\[[^\]]*\])?\s*(\w+)\s*(=\s*.+?)\s*([,;])?\s*(//.*)?$)",
       "parameter W = 8;",
       true,
       {
           {"parameter WIDTH = 8;", true, {"parameter", std::nullopt, "WIDTH", "= 8", ";", std::nullopt}},
           {"  localparam [3:0] S0 = 4'd0, // idle", true, {"localparam", "[3:0]", "S0", "= 4'd0", ",", "// idle"}},
           {"WIDTH = 8,", true, {std::nullopt, std::nullopt, "WIDTH", "= 8", ",", std::nullopt}},
           {"parameter W = 8", true, {"parameter", std::nullopt, "W", "= 8", std::nullopt, std::nullopt}},
           {"PARAMETER W=8;", true, {"PARAMETER", std::nullopt, "W", "=8", ";", std::nullopt}},
           {"W = a // b", true, {std::nullopt, std::nullopt, "W", "= a", std::nullopt, "// b"}},
           {"a = b + c;", true, {std::nullopt, std::nullopt, "a", "= b + c", ";", std::nullopt}},
           {"parameter integer W = 8;", false},
           {"parameter W;", false},
           {"= 8;", false},
           {"parameter W =", false},
       }},
      {"kAlwaysPattern",
       &ReferencePatterns().kAlwaysPattern,
       R"(^\s*(always_ff|always_comb|always)\b)",
       "always @(posedge clk)",
       true,
       {
           {"always @(posedge clk)", true, {"always"}},
           {"always_ff @(posedge clk)", true, {"always_ff"}},
           {"  always_comb begin", true, {"always_comb"}},
           {"ALWAYS @*", true, {"ALWAYS"}},
           {"always@(*)", true, {"always"}},
           {"always_latch", false},
           {"alwaysx", false},
           {"x always", false},
       }},
      {"kGeneratePattern",
       &ReferencePatterns().kGeneratePattern,
       R"(^\s*generate\b)",
       "generate",
       true,
       {
           {"generate", true},
           {"  GENERATE // x", true},
           {"endgenerate", false},
           {"generated", false},
       }},
      {"kEndgeneratePattern",
       &ReferencePatterns().kEndgeneratePattern,
       R"(^\s*endgenerate\b)",
       "endgenerate",
       true,
       {
           {"endgenerate", true},
           {"\tEndGenerate", true},
           {"endgenerates", false},
           {"x endgenerate", false},
           {"generate", false},
       }},
      {"kAssignPattern",
       &ReferencePatterns().kAssignPattern,
       R"(^\s*assign\b)",
       "assign a = b;",
       true,
       {
           {"assign a = b;", true},
           {"  ASSIGN x", true},
           {"assign", true},
           {"assigned = 1;", false},
           {"x = assign", false},
       }},
      {"kLabelPattern",
       &Patterns().kLabelPattern,
       R"(^\s*(\w+)\s*:\s*(.*))",
       "",
       false,
       {
           {"  S0: state <= S1;", true, {"S0", "state <= S1;"}},
           {"default : x = 0;", true, {"default", "x = 0;"}},
           {"a:", true, {"a", ""}},
           {"a::b", true, {"a", ":b"}},
           {"x : y\rz", true, {"x", "y"}},
           {": x", false},
           {"a b: c", false},
           {"case (x)", false},
       }},
      {"kIfHeaderPattern",
       &ReferencePatterns().kIfHeaderPattern,
       R"(\bif\b\s*\(.+?\)\s*$)",
       "if (a)",
       false,
       {
           {"if (a)", true},
           {"else if (a && b)  ", true},
           {"if(x)\n", true},
           {"if (a) b = (c)", true},
           {"  if(x) // c", false},
           {"if (a) begin", false},
           {"if ()", false},
           {"iff (a)", false},
           {"endif (a)", false},
           {"IF (a)", false},
       }},
      {"kStatementStartPattern",
       &ReferencePatterns().kStatementStartPattern,
       R"(^\s*(always|initial|module|endmodule|assign|wire|reg|logic)\b)",
       "always @*",
       true,
       {
           {"always @*", true, {"always"}},
           {"initial begin", true, {"initial"}},
           {"module m", true, {"module"}},
           {"endmodule", true, {"endmodule"}},
           {"assign a = b;", true, {"assign"}},
           {"wire a;", true, {"wire"}},
           {"reg b;", true, {"reg"}},
           {"logic c;", true, {"logic"}},
           {"  WIRE x;", true, {"WIRE"}},
           {"always_ff @(posedge clk)", false},
           {"integer i;", false},
           {"wires", false},
           {"x wire", false},
       }},
      {"kNamedConnectionPattern",
       &Patterns().kNamedConnectionPattern,
       R"(^(\s*)\.(\w+)\s*\(\s*(.+?)\s*\)\s*(,?)\s*(//.*)?$)",
       "",
       false,
       {
           {"    .clk(clk),", true, {"    ", "clk", "clk", ",", std::nullopt}},
           {".data ( d[7:0] )", true, {"", "data", "d[7:0]", "", std::nullopt}},
           {"\t.a(f(x)), // c", true, {"\t", "a", "f(x)", ",", "// c"}},
           {".a(x), .b(y)", true, {"", "a", "x), .b(y", "", std::nullopt}},
           {".a()", false},
           {"a(x)", false},
           {".a(x) y", false},
           {". a(x)", false},
       }},
      {"kBlockKeywordPattern",
       &ReferencePatterns().kBlockKeywordPattern,
       R"(^\s*(module|function|task|if|else|case|casex|casez|for|while|forever|assign|always|always_ff|always_comb|initial|generate|endgenerate|specify|endspecify)\b)",
       "function f;",
       true,
       {
           {"module m", true, {"module"}},
           {"function f;", true, {"function"}},
           {"  TASK t;", true, {"TASK"}},
           {"if (x)", true, {"if"}},
           {"else", true, {"else"}},
           {"case (x)", true, {"case"}},
           {"casex (x)", true, {"casex"}},
           {"casez(y)", true, {"casez"}},
           {"for (i = 0;", true, {"for"}},
           {"while (x)", true, {"while"}},
           {"forever #5 clk = ~clk;", true, {"forever"}},
           {"assign a = b;", true, {"assign"}},
           {"always @(*)", true, {"always"}},
           {"always_ff @(posedge clk)", true, {"always_ff"}},
           {"always_comb", true, {"always_comb"}},
           {"initial begin", true, {"initial"}},
           {"generate", true, {"generate"}},
           {"endgenerate", true, {"endgenerate"}},
           {"specify", true, {"specify"}},
           {"endspecify", true, {"endspecify"}},
           {"endmodule", false},
           {"end", false},
           {"begin", false},
           {"iff", false},
           {"casey", false},
           {"always_latch", false},
           {"x if (a)", false},
       }},
      {"kInstanceHeadPattern",
       &ReferencePatterns().kInstanceHeadPattern,
       R"(^(\w+)\s+(\w+)\s*\()",
       "",
       false,
       {
           {"fifo u_fifo (", true, {"fifo", "u_fifo"}},
           {"and g1(a, b, c);", true, {"and", "g1"}},
           {"A\tB  (", true, {"A", "B"}},
           {"  fifo u_fifo (", false},
           {"fifo #(", false},
           {"fifo u_fifo", false},
           {"fifo(", false},
       }},
      {"kParamInstanceHeadPattern",
       &ReferencePatterns().kParamInstanceHeadPattern,
       R"(^(\w+)\s+#\s*\()",
       "",
       false,
       {
           {"fifo #(", true, {"fifo"}},
           {"fifo # (.W(8)) u (", true, {"fifo"}},
           {"fifo#(", false},
           {" fifo #(", false},
           {"fifo u (", false},
       }},
      {"kTypeAndNamePattern",
       &ReferencePatterns().kTypeAndNamePattern,
       R"(^(\w+)\s+(\w+)$)",
       "",
       false,
       {
           {"fifo u_fifo", true, {"fifo", "u_fifo"}},
           {"a\tb", true, {"a", "b"}},
           {"fifo u_fifo (", false},
           {"fifo", false},
           {"a b c", false},
           {"a b\n", false},
           {" a b", false},
       }},
      {"kSingleWordPattern",
       &ReferencePatterns().kSingleWordPattern,
       R"(^(\w+)$)",
       "",
       false,
       {
           {"fifo", true, {"fifo"}},
           {"_1", true, {"_1"}},
           {"fifo ", false},
           {"a\n", false},
           {"", false},
           {"a-b", false},
       }},
      {"kCallHeadPattern",
       &ReferencePatterns().kCallHeadPattern,
       R"(^(\w+)\s*\()",
       "",
       false,
       {
           {"foo(", true, {"foo"}},
           {"foo (x)", true, {"foo"}},
           {" foo(", false},
           {"foo bar(", false},
       }},
      {"kBlockCommentPattern",
       &ReferencePatterns().kBlockCommentPattern,
       R"(/\*[\s\S]*?\*/)",
       "",
       false,
       {
           {"/* a */", true},
           {"x /* a\n b */ y", true},
           {"/**/", true},
           {"/*/", false},
           {"/* a", false},
           {"* a */", false},
       }},
      {"kLineCommentPattern",
       &ReferencePatterns().kLineCommentPattern,
       R"(//[^\n]*)",
       "",
       false,
       {
           {"a // b", true},
           {"//", true},
           {"/ /", false},
       }},
  };
  return entries;
}

std::string DescribeGroup(const std::optional<std::string_view>& group) {
  return group ? "\"" + std::string(*group) + "\"" : "(unset)";
}

TEST(PatternTableTest, EveryEntryHoldsItsSource) {
  for (const Entry& entry : Entries()) {
    EXPECT_EQ(entry.pattern->source(), entry.source) << entry.name;
  }
}

TEST(PatternTableTest, EveryEntryIsTested) {
  EXPECT_EQ(Entries().size(), 28u);
}

TEST(PatternTableTest, EveryEntryMatchesAsQuoted) {
  for (const Entry& entry : Entries()) {
    const Pattern& pattern = *entry.pattern;
    for (const Sample& sample : entry.samples) {
      SCOPED_TRACE(std::string(entry.name) + " on \"" + std::string(sample.subject) + "\"");
      Match m;
      ASSERT_EQ(pattern.Search(sample.subject, &m), sample.matches);
      for (std::size_t i = 0; i < sample.groups.size(); ++i) {
        const int group = static_cast<int>(i + 1);
        const std::optional<std::string_view> actual =
            m.Matched(group) ? std::optional<std::string_view>(m.Group(group)) : std::nullopt;
        EXPECT_EQ(DescribeGroup(actual), DescribeGroup(sample.groups[i])) << "group " << group;
      }
    }
  }
}

TEST(PatternTableTest, CaseSensitivityIsAsEachEntrySays) {
  for (const Entry& entry : Entries()) {
    if (entry.caseProbe.empty()) continue;
    const Pattern& pattern = *entry.pattern;
    EXPECT_TRUE(pattern.Search(entry.caseProbe)) << entry.name;
    EXPECT_EQ(pattern.Search(SwapCase(entry.caseProbe)), entry.icase) << entry.name;
  }
}

TEST(PatternTableTest, ForeignSourceEdgeCases) {
  const Pattern& p = Patterns().kForeignSourcePattern;
  EXPECT_TRUE(p.Search("IMPORT os"));
  EXPECT_FALSE(p.Search("important = 1"));
  // Searched without multiline matching: only the first non-blank line counts.
  EXPECT_TRUE(p.Search("\n\n   import os\nmodule m;"));
  EXPECT_FALSE(p.Search("module m;\nimport os\n"));
  EXPECT_FALSE(p.Search("module m;\nclass A:\n"));
  EXPECT_FALSE(p.Search("wire a;\r\ndef f():\r\n"));
}

TEST(PatternTableTest, BlockCommentPatternIsLazy) {
  Match m;
  ASSERT_TRUE(ReferencePatterns().kBlockCommentPattern.Search("/* a */ b /* c */", &m));
  EXPECT_EQ(m.Group(), "/* a */");
  EXPECT_EQ(ReferencePatterns().kBlockCommentPattern.Count("/* a */ b /* c\n */ /*/"), 2);
  EXPECT_EQ(ReferencePatterns().kLineCommentPattern.Count("// a\n// b\r\nc"), 2);
  ASSERT_TRUE(ReferencePatterns().kLineCommentPattern.Search("x //\r\ny", &m));
  EXPECT_EQ(m.Group(), "//\r");
}

TEST(PatternTableTest, EntriesAreLaidOutInConstructionOrder) {
  const PatternTable& t = Patterns();
  const std::vector<const void*> order = {
      &t.kBeginPattern,  &t.kForeignSourcePattern,   &t.kCoreKeywords,
      &t.kLabelPattern,  &t.kNamedConnectionPattern, &t.kDeclKeywords,
  };
  for (std::size_t i = 1; i < order.size(); ++i) EXPECT_TRUE(std::less<const void*>()(order[i - 1], order[i])) << i;
}

TEST(PatternTableTest, CoreKeywordsAreExactlyTheSeventeenWords) {
  const NameSet expected = {"parameter", "localparam", "input",  "output", "inout", "wire", "reg", "logic", "module",
                            "endmodule", "always",     "assign", "begin",  "end",   "case", "if",  "else"};
  EXPECT_EQ(Patterns().kCoreKeywords.size(), 17u);
  EXPECT_EQ(Patterns().kCoreKeywords, expected);
  EXPECT_EQ(Patterns().kCoreKeywords.count("WIRE"), 1u);
  EXPECT_EQ(Patterns().kCoreKeywords.count("always_ff"), 0u);
}

TEST(PatternTableTest, DeclKeywordsAreExactlyTheTwentyWords) {
  const NameSet expected = {"wire",      "reg",         "logic",   "parameter", "localparam", "assign",  "always",
                            "always_ff", "always_comb", "initial", "generate",  "genvar",     "integer", "input",
                            "output",    "inout",       "module",  "endmodule", "function",   "task"};
  EXPECT_EQ(Patterns().kDeclKeywords.size(), 20u);
  EXPECT_EQ(Patterns().kDeclKeywords, expected);
  EXPECT_EQ(Patterns().kDeclKeywords.count("Wire"), 1u);
  EXPECT_EQ(Patterns().kDeclKeywords.count("begin"), 0u);
}

TEST(PatternTableTest, StartsWithDeclKeyword) {
  const std::vector<std::pair<std::string_view, bool>> cases = {
      {"WIRE [3:0] a;", true},
      {"wire;", false},
      {" wire a;", false},
      {"\twire a;", false},
      {"wire", true},
      {"wire\ta;", true},
      {"wirE x", true},
      {"wire\va;", false},
      {"wire\r", false},
      {"wire,", false},
      {"always_ff @(posedge clk)", true},
      {"Always_Comb", true},
      {"integer i;", true},
      {"genvar g;", true},
      {"task t;", true},
      {"function f;", true},
      {"endmodule", true},
      {"initial begin", true},
      {"generate", true},
      {"localparam W = 1;", true},
      {"input a,", true},
      {"output b", true},
      {"inout c", true},
      {"module m;", true},
      {"assign a = b;", true},
      {"begin", false},
      {"end", false},
      {"always_latch", false},
      {"endgenerate", false},
      {"", false},
      {"wires a;", false},
  };
  for (const auto& [line, expected] : cases) EXPECT_EQ(StartsWithDeclKeyword(line), expected) << "\"" << line << "\"";
}

TEST(PatternTableTest, TableIsOneObject) {
  EXPECT_EQ(&Patterns(), &Patterns());
}

}  // namespace
}  // namespace quill
