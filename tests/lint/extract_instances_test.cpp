#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "common/pattern.h"
#include "lint/identifiers.h"
#include "lint/lint_text.h"
#include "lint/steps.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// An InstanceRecord as a comparable, printable value.
struct Instance {
  std::string name;
  std::uint32_t line = 0;

  friend bool operator==(const Instance&, const Instance&) = default;
  friend void PrintTo(const Instance& r, std::ostream* out) { *out << "{" << r.name << ", line " << r.line << "}"; }
};

using Instances = std::vector<Instance>;

struct Extracted {
  Instances instances;
  NameMap firstUseLine;
};

Extracted Extract(std::string_view source) {
  Extracted extracted;
  for (const InstanceRecord& r : ExtractInstances(PrepareText(source), extracted.firstUseLine)) {
    extracted.instances.push_back({r.name, r.line});
  }
  return extracted;
}

struct InstanceCase {
  const char* name;
  const char* source;
  Instances instances;
  NameMap uses;  // first-use line of every used identifier
};

class ExtractInstancesTest : public testing::TestWithParam<InstanceCase> {};

TEST_P(ExtractInstancesTest, RecordsInstancesAndUses) {
  const Extracted model = Extract(GetParam().source);
  EXPECT_EQ(model.instances, GetParam().instances);
  EXPECT_EQ(model.firstUseLine, GetParam().uses);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractInstancesTest,
    testing::Values(
        InstanceCase{"SingleLine", "fifo u1 (.a(b), .c(d));", {{"u1", 0}}, {{"b", 0}, {"d", 0}}},
        InstanceCase{"MultiLine",
                     "fifo u_fifo (\n  .clk(clk),\n  .din(data_in)\n);",
                     {{"u_fifo", 0}},
                     {{"clk", 1}, {"data_in", 2}}},
        InstanceCase{"IndentedAfterOtherLines",
                     "module top;\n  wire w;\n\n  counter c0 (.clk(clk));\nendmodule",
                     {{"c0", 3}},
                     {{"clk", 3}}},
        InstanceCase{"OverrideOnTheHeadLine", "fifo #(.W(WIDTH)) u1 (.a(x));", {{"u1", 0}}, {{"x", 0}}},
        InstanceCase{
            "OverrideOverLines", "fifo #(\n  .W(WIDTH),\n  .D(f(2))\n) u2 (\n  .a(x)\n);", {{"u2", 0}}, {{"x", 4}}},
        InstanceCase{"OverrideAfterLinesWithOtherHashes",
                     "x #5 y;\nm #1 (a);\nfifo #(.W(1)) u1 (.a(b)); // #\nfifo #(.W(2)) u2 (.a(c));",
                     {{"u1", 2}, {"u2", 3}},
                     {{"b", 2}, {"c", 3}}},
        InstanceCase{"NameOnTheLineAfterTheOverride", "fifo #(.W(8))\n  u3 (.a(y));", {{"u3", 0}}, {{"y", 1}}},
        InstanceCase{"OverrideNotFollowedByNameUsesTheLineForm", "foo #(a) (b) u1 (.x(y));", {{"u1", 0}}, {{"y", 0}}},
        InstanceCase{"GatePrimitivesGiveNoRecord", "and g1 (y, a, b);\nbuf b1 (o, i);\nnand (x, y, z);", {}, {}},
        InstanceCase{"KeywordTypeGivesNoRecord", "always_ff u (.a(b));\nor #(1) g (.a(c));", {}, {}},
        InstanceCase{"KeywordNameGivesNoRecord", "mymod input (.a(b));", {}, {}},
        InstanceCase{"KeywordStatementDoesNotSkipLines", "and g1 (y,\n  foo u1 (.a(b));", {{"u1", 1}}, {{"b", 1}}},
        InstanceCase{"NonInstanceLines",
                     "module m (.a(b));\n  input x (.a(b));\nwire w (.a(b));\nassign y = f(.a(b));\n"
                     "always @(x) g (.a(b));\ninitial foo (.a(b));\nend foo (.a(b));\nendmodule e (.a(b));\n"
                     "output o (.a(b));\ninout io (.a(b));\nreg r (.a(b));",
                     {},
                     {}},
        InstanceCase{"CapitalisedNetWordIsAKeywordType", "Wire w (.a(b));", {}, {}},
        InstanceCase{"NonInstanceWordMustEndThere", "endx e (.a(b));", {{"e", 0}}, {{"b", 0}}},
        InstanceCase{"ControlStatementsAreNoInstances", "if (a) begin\nelse if (x) y = 1;\ncase (s)\n", {}, {}},
        InstanceCase{"ExpressionsAreUses",
                     "m u (.a(b + c), .d( e ), .f(8'hFF), .g(sig[3:0]), .h());",
                     {{"u", 0}},
                     {{"b", 0}, {"c", 0}, {"e", 0}, {"sig", 0}}},
        InstanceCase{"NestedCallExpression", "m u (.a(f(x)));", {{"u", 0}}, {{"f", 0}, {"x", 0}}},
        InstanceCase{"PositionalConnectionsRecordNoUses", "m u (p, q);", {{"u", 0}}, {}},
        InstanceCase{"CloseAndSemicolonCloseTheLastConnection", "m u (.a(b);", {{"u", 0}}, {{"b", 0}}},
        InstanceCase{"StatementRunsToItsCloseAndSemicolon",
                     "foo u (.a(b)\nbar v (.c(d));\nbaz w (.e(f));",
                     {{"u", 0}, {"w", 2}},
                     {{"b", 0}, {"d", 1}, {"f", 2}}},
        InstanceCase{"NoCloseAndSemicolonEndsTheWalk", "foo u (.a(b)\nbar v (.c(d))", {{"u", 0}}, {{"b", 0}, {"d", 1}}},
        InstanceCase{"ExpressionLineIsWhereItBegins", "m u (.a(\n\n  x\n));", {{"u", 0}}, {{"x", 2}}},
        InstanceCase{"BlankExpression", "m u (.a( ), .b(c));", {{"u", 0}}, {{"c", 0}}},
        InstanceCase{"NoSpaceBeforeParenthesis", "m u(.a(b));", {{"u", 0}}, {{"b", 0}}},
        InstanceCase{"SpacesInsideConnection", "m u ( .a ( b ) );", {{"u", 0}}, {{"b", 0}}},
        InstanceCase{"InstancesInTextOrder",
                     "a_t x1 (.p(q));\nb_t x2 (.p(r));\na_t x1 (.p(s));",
                     {{"x1", 0}, {"x2", 1}, {"x1", 2}},
                     {{"q", 0}, {"r", 1}, {"s", 2}}},
        InstanceCase{"TypeAndNameOnSeparateLinesAreNotSeen", "fifo\n  u1 (.a(b));", {}, {}},
        InstanceCase{"CommentsAreBlanks", "// fifo u0 (.a(z));\nfifo u1 (.a(b)); // .c(d)", {{"u1", 1}}, {{"b", 1}}},
        InstanceCase{"UnbalancedOverrideFallsBackToTheLineForm", "m #(.W(8) u1 (.a(b));", {{"u1", 0}}, {{"b", 0}}},
        InstanceCase{
            "HierarchicalExpression", "m u (.a(top.sub.sig));", {{"u", 0}}, {{"top", 0}, {"sub", 0}, {"sig", 0}}}),
    [](const testing::TestParamInfo<InstanceCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(ExtractInstancesTest, FirstUseKeepsTheSmallestLine) {
  NameMap uses;
  RecordFirstUse(uses, "x", 0);
  ExtractInstances("m u (.a(x), .b(y));", uses);
  RecordFirstUse(uses, "y", 5);
  EXPECT_EQ(uses, (NameMap{{"x", 0}, {"y", 0}}));
}

// The named-connection expressions of one stretch must be what iterating
// "\.\w+\s*\(\s*([^)]+?)\s*\)" over it gives.
TEST(ExtractInstancesAgreementTest, NamedConnectionsMatchThePattern) {
  static const Pattern kNamedConnectionPattern(R"(\.\w+\s*\(\s*([^)]+?)\s*\))");
  const std::vector<std::string> tokens = {".",  "a",  "b1", "(",  ")",    " ", "\n",
                                           "\r", "\v", ",",  "_c", "8'h1", "+", "."};
  std::mt19937 random(99);
  for (int round = 0; round < 20000; ++round) {
    std::string stretch;
    const std::size_t count = random() % 20;
    for (std::size_t i = 0; i < count; ++i) stretch += tokens[random() % tokens.size()];
    if (stretch.find(");") != std::string::npos) continue;
    const std::string text = "m u (" + stretch + ");";
    // The stretch runs up to and including the closing ");".
    const std::string searched = stretch + ");";

    NameMap expected;
    kNamedConnectionPattern.ForEachMatch(searched, [&](const Match& match) {
      const auto line =
          std::count(searched.begin(), searched.begin() + static_cast<std::ptrdiff_t>(match.Begin(1)), '\n');
      RecordUses(match.Group(1), static_cast<std::int32_t>(line), expected);
    });
    NameMap actual;
    ExtractInstances(text, actual);
    ASSERT_EQ(actual, expected) << testing::PrintToString(stretch);
  }
}

// The instance walk written plainly with the statement patterns: slow on
// hostile text, but a direct reading of the rules.
Extracted ExtractWithPatterns(std::string_view text) {
  static const Pattern kNoInstancePattern(
      R"(^\s*(module|input|output|inout|wire|reg|assign|always|initial|end|endmodule)\b)");
  static const Pattern kOverrideHeadPattern(R"(^(\w+)\s+#\s*\()");
  static const Pattern kNameAfterOverridePattern(R"(\s*(\w+)\s*\()");
  static const Pattern kInstanceHeadPattern(R"(^(\w+)\s+(?:#\s*\(.*?\)\s+)?(\w+)\s*\(\s*(.*))");
  static const Pattern kNamedConnectionPattern(R"(\.\w+\s*\(\s*([^)]+?)\s*\))");
  const auto lineOf = [text](std::size_t pos) {
    return static_cast<std::uint32_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(pos), '\n'));
  };
  std::vector<std::size_t> lineStarts = {0};
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') lineStarts.push_back(i + 1);
  }
  Extracted extracted;
  std::size_t k = 0;
  while (k < lineStarts.size()) {
    const std::size_t start = lineStarts[k];
    const std::size_t end = k + 1 < lineStarts.size() ? lineStarts[k + 1] - 1 : text.size();
    const std::string_view line = text.substr(start, end - start);
    if (kNoInstancePattern.Search(line)) {
      ++k;
      continue;
    }
    const std::size_t offset = std::min(line.find_first_not_of(" \t\r\n"), line.size());
    const std::string_view trimmed = line.substr(offset);
    std::string type;
    std::string name;
    std::size_t connections = std::string_view::npos;
    Match match;
    if (kOverrideHeadPattern.Search(trimmed, &match)) {
      int depth = 0;
      std::size_t i = start + offset + match.End() - 1;
      for (; i < text.size(); ++i) {
        if (text[i] == '(') ++depth;
        if (text[i] == ')' && --depth == 0) break;
      }
      Match after;
      if (i < text.size() && kNameAfterOverridePattern.Search(text, &after, i + 1) && after.Begin() == i + 1) {
        type = match.Str(1);
        name = after.Str(1);
        connections = after.End();
      }
    }
    if (connections == std::string_view::npos && kInstanceHeadPattern.Search(trimmed, &match)) {
      type = match.Str(1);
      name = match.Str(2);
      connections = start + offset + match.Begin(3);
    }
    if (connections == std::string_view::npos || IsKeyword(type) || IsKeyword(name)) {
      ++k;
      continue;
    }
    extracted.instances.push_back({name, static_cast<std::uint32_t>(k)});
    const std::size_t close = text.find(");", connections);
    const std::string_view stretch =
        text.substr(connections, (close == std::string_view::npos ? text.size() : close + 2) - connections);
    kNamedConnectionPattern.ForEachMatch(stretch, [&](const Match& connection) {
      RecordUses(connection.Group(1), static_cast<std::int32_t>(lineOf(connections + connection.Begin(1))),
                 extracted.firstUseLine);
    });
    if (close == std::string_view::npos) break;
    k = lineOf(close) + 1;
  }
  return extracted;
}

void ExpectSameAsPatterns(std::string_view prepared, const std::string& context) {
  NameMap uses;
  const std::vector<InstanceRecord> records = ExtractInstances(prepared, uses);
  const Extracted expected = ExtractWithPatterns(prepared);
  Instances instances;
  for (const InstanceRecord& r : records) instances.push_back({r.name, r.line});
  ASSERT_EQ(instances, expected.instances) << context;
  ASSERT_EQ(uses, expected.firstUseLine) << context;
}

TEST(ExtractInstancesAgreementTest, WalkMatchesThePatternsOnRandomText) {
  const std::vector<std::string> heads = {"m u1 (",  "  m u1(",  "m #(", "m #(.W(8)) u1 (",    ") u2 (",
                                          "and g (", "wire w (", "m\n",  "  x_ #(a) (b) u3 (", "end e (",
                                          "m u1\r(", ""};
  const std::vector<std::string> pieces = {".a(b)", ".a( b )", ".a(f(x))", ".a()", ".a(",        "b",    ",", ")", ");",
                                           "\n",    " ",       "(",        "#(",   ".a(\n c\n)", "\r\n", ".", "\t"};
  std::mt19937 random(31);
  std::size_t withUses = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const std::size_t statements = 1 + random() % 4;
    for (std::size_t s = 0; s < statements; ++s) {
      text += heads[random() % heads.size()];
      const std::size_t count = random() % 8;
      for (std::size_t i = 0; i < count; ++i) text += pieces[random() % pieces.size()];
      if (random() % 2 == 0) text += "\n";
    }
    ExpectSameAsPatterns(text, testing::PrintToString(text));
    if (!ExtractWithPatterns(text).firstUseLine.empty()) ++withUses;
  }
  EXPECT_GT(withUses, 1000u);
}

TEST(ExtractInstancesAgreementTest, WalkMatchesThePatternsOnTheCorpus) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  std::size_t instances = 0;
  for (const CorpusSource& source : sources) {
    const std::string prepared = PrepareText(source.text);
    ExpectSameAsPatterns(prepared, source.path);
    NameMap uses;
    instances += ExtractInstances(prepared, uses).size();
  }
  EXPECT_GT(instances, 0u);
}

TEST(ExtractInstancesPathologicalTest, ManyUnclosedConnections) {
  std::string text = "m u (";
  for (int i = 0; i < 200'000; ++i) text += ".a(b ";
  const Extracted model = Extract(text);
  EXPECT_EQ(model.instances, (Instances{{"u", 0}}));
  EXPECT_TRUE(model.firstUseLine.empty());
}

TEST(ExtractInstancesPathologicalTest, ManyUnclosedOverrides) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "foo #(\n";
  const Extracted model = Extract(text);
  EXPECT_TRUE(model.instances.empty());
}

TEST(ExtractInstancesPathologicalTest, ManyNestedOverridesClosedAtTheEnd) {
  std::string text;
  for (int i = 0; i < 50'000; ++i) text += "foo #(\n";
  text += std::string(50'000, ')') + " u (.a(b));";
  const Extracted model = Extract(text);
  EXPECT_EQ(model.instances, (Instances{{"u", 0}}));
  EXPECT_EQ(model.firstUseLine, (NameMap{{"b", 50'000}}));
}

TEST(ExtractInstancesPathologicalTest, ManyInstances) {
  std::string text;
  for (int i = 0; i < 100'000; ++i) text += "m u (.a(b));\n";
  const Extracted model = Extract(text);
  EXPECT_EQ(model.instances.size(), 100'000u);
  EXPECT_EQ(model.instances.back().line, 99'999u);
}

TEST(ExtractInstancesPathologicalTest, OneLongLineOfParentheses) {
  const std::string text = "m u " + std::string(200'000, '(') + std::string(200'000, ')') + ";";
  const Extracted model = Extract(text);
  EXPECT_EQ(model.instances, (Instances{{"u", 0}}));
}

}  // namespace
}  // namespace quill
