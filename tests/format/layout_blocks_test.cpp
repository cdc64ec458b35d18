#include "format/passes/layout_blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "common/pattern.h"
#include "common/text_utils.h"
#include "format/reference_patterns.h"
#include "format/scan/block_spans.h"
#include "format/scan/pattern_table.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// A line-by-line transcription of the block layout, rescanning from every
// block start, to check the indexed implementation against on small texts.
namespace reference {

std::string Code(std::string_view line) {
  static const Pattern lineComment("//[^\n]*");
  return lineComment.ReplaceAll(line, "");
}

int AlwaysEnd(const TextLines& lines, int start) {
  const PatternTable& p = Patterns();
  const int n = static_cast<int>(lines.size());
  if (start < 0 || start >= n) return n - 1;
  std::int64_t depth = 0;
  bool seenBegin = false;
  for (int i = start; i < n; ++i) {
    const std::string code = Code(lines[static_cast<std::size_t>(i)]);
    if (!seenBegin && p.kBeginPattern.Search(code)) seenBegin = true;
    depth += CountMatches(code, p.kBeginPattern) - CountMatches(code, ReferencePatterns().kEndPattern);
    if (seenBegin && depth == 0) return i;
    if (!seenBegin && i > start && ReferencePatterns().kStatementStartPattern.Search(Trim(lines[static_cast<std::size_t>(i)]))) {
      return i - 1;
    }
  }
  return n - 1;
}

int GenerateEnd(const TextLines& lines, int start) {
  const int n = static_cast<int>(lines.size());
  if (start < 0) return n - 1;
  std::int64_t depth = 0;
  for (int i = start; i < n; ++i) {
    const std::string code = Code(lines[static_cast<std::size_t>(i)]);
    depth += CountMatches(code, ReferencePatterns().kGeneratePattern) - CountMatches(code, ReferencePatterns().kEndgeneratePattern);
    if (depth == 0) return i;
  }
  return n - 1;
}

void IndentBody(TextLines* lines, int start, int end) {
  const PatternTable& p = Patterns();
  const int n = static_cast<int>(lines->size());
  auto line = [lines](int i) -> std::string& { return (*lines)[static_cast<std::size_t>(i)]; };
  bool hasBegin = p.kBeginPattern.Search(line(start));
  if (!hasBegin) {
    for (int k = start + 1; k < n; ++k) {
      const std::string t = Trim(line(k));
      if (!t.empty() && t.compare(0, 2, "//") != 0) {
        hasBegin = t == "begin";
        break;
      }
    }
  }
  std::int64_t depth = 0;
  std::int64_t caseDepth = 0;
  bool pendingIf = false;
  bool pendingLabel = false;
  for (int i = start; i <= std::min(end, n - 1); ++i) {
    const std::string t = Trim(line(i));
    if (t.empty()) continue;
    const std::string code = Code(t);
    const int b = CountMatches(code, p.kBeginPattern);
    const int e = CountMatches(code, ReferencePatterns().kEndPattern);
    const int c = CountMatches(code, ReferencePatterns().kCasePattern);
    const int ec = CountMatches(code, ReferencePatterns().kEndcasePattern);
    const std::int64_t level = depth - ec - e;
    const std::int64_t levels = (pendingIf ? 1 : 0) + (!hasBegin && i > start ? 1 : 0) + (pendingLabel ? 1 : 0) +
                                std::max<std::int64_t>(level, 0);
    line(i) = std::string(static_cast<std::size_t>(levels) * 4, ' ') + t;
    caseDepth += c - ec;
    Match label;
    pendingLabel = false;
    if (p.kLabelPattern.Search(t, &label) && caseDepth >= 1) {
      const std::string rest = Trim(label.Group(2));
      pendingLabel = rest.empty() || rest.compare(0, 2, "//") == 0;
    }
    pendingIf = ReferencePatterns().kIfHeaderPattern.Search(code);
    depth += b - e + c - ec;
  }
}

std::string Layout(std::string_view text) {
  TextLines lines = SplitLines(text);
  std::vector<std::pair<int, int>> spans;
  for (int i = 0; i < static_cast<int>(lines.size()); ++i) {
    const std::string& line = lines[static_cast<std::size_t>(i)];
    int end = i;
    if (ReferencePatterns().kAlwaysPattern.Search(line)) {
      end = AlwaysEnd(lines, i);
    } else if (ReferencePatterns().kGeneratePattern.Search(line)) {
      end = GenerateEnd(lines, i);
    }
    if (end > i) spans.emplace_back(i, end);
  }
  for (const auto& [first, last] : spans) IndentBody(&lines, first, last);
  for (std::string& line : lines) {
    if (ReferencePatterns().kAssignPattern.Search(line) || ReferencePatterns().kEndgeneratePattern.Search(line)) line = TrimLeft(line);
  }
  return JoinLines(lines, "\n");
}

}  // namespace reference

std::string Lines(std::initializer_list<std::string_view> lines) {
  return JoinLines(TextLines(lines.begin(), lines.end()), "\n");
}

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text.append(piece);
  return text;
}

// Compares long texts without printing a diff of them: reports where they
// first differ.
testing::AssertionResult SameText(const std::string& actual, const std::string& expected) {
  if (actual == expected) return testing::AssertionSuccess();
  const auto at = static_cast<std::size_t>(
      std::mismatch(actual.begin(),
                    actual.begin() + static_cast<std::ptrdiff_t>(std::min(actual.size(), expected.size())),
                    expected.begin())
          .first -
      actual.begin());
  return testing::AssertionFailure() << "sizes " << actual.size() << " and " << expected.size()
                                     << ", first difference at byte " << at << ": "
                                     << testing::PrintToString(actual.substr(at, 40)) << " vs "
                                     << testing::PrintToString(expected.substr(at, 40));
}

// --- IndentBlockBody ---

TEST(IndentBlockBodyTest, ExampleSpanOfFiveLines) {
  TextLines lines = {"  always @(posedge clk) begin", "if (rst)", "q <= 0;", "else q <= d;", "  end"};
  IndentBlockBody(&lines, 0, 4);
  EXPECT_EQ(lines,
            (TextLines{"always @(posedge clk) begin", "    if (rst)", "        q <= 0;", "    else q <= d;", "end"}));
}

TEST(IndentBlockBodyTest, BeginOnTheNextSignificantLine) {
  TextLines lines = {"always @(posedge clk)", "  // c", "", "  begin", "q <= d;", "  end"};
  IndentBlockBody(&lines, 0, 5);
  EXPECT_EQ(lines, (TextLines{"always @(posedge clk)", "// c", "", "begin", "    q <= d;", "end"}));
}

TEST(IndentBlockBodyTest, BeginInACommentOfTheStartLineCounts) {
  TextLines lines = {"always @* // begin", "x = 1;"};
  IndentBlockBody(&lines, 0, 1);
  EXPECT_EQ(lines, (TextLines{"always @* // begin", "x = 1;"}));
}

TEST(IndentBlockBodyTest, NextLineStartingWithBeginAndMoreIsNoBegin) {
  TextLines lines = {"always @*", "begin x = 1;", "end"};
  IndentBlockBody(&lines, 0, 2);
  EXPECT_EQ(lines, (TextLines{"always @*", "    begin x = 1;", "    end"}));
}

TEST(IndentBlockBodyTest, NestedIfHeadersAddOneStepEach) {
  TextLines lines = {"always @(*) begin", "if (a)", "if (b)", "x = 1;", "end"};
  IndentBlockBody(&lines, 0, 4);
  EXPECT_EQ(lines, (TextLines{"always @(*) begin", "    if (a)", "        if (b)", "        x = 1;", "end"}));
}

TEST(IndentBlockBodyTest, IfHeaderFollowedByCommentIsStillPending) {
  TextLines lines = {"always @(*) begin", "if (a) // c", "x = 1;", "end"};
  IndentBlockBody(&lines, 0, 3);
  EXPECT_EQ(lines, (TextLines{"always @(*) begin", "    if (a) // c", "        x = 1;", "end"}));
}

TEST(IndentBlockBodyTest, PendingIfSkipsBlankLines) {
  TextLines lines = {"always @(*) begin", "if (a)", "  \t", "x = 1;", "end"};
  IndentBlockBody(&lines, 0, 4);
  EXPECT_EQ(lines, (TextLines{"always @(*) begin", "    if (a)", "  \t", "        x = 1;", "end"}));
}

TEST(IndentBlockBodyTest, LabelWithCommentIsBare) {
  TextLines lines = {"always @(*) begin", "case (s)", "IDLE: // wait", "y = 0;", "endcase", "end"};
  IndentBlockBody(&lines, 0, 5);
  EXPECT_EQ(lines, (TextLines{"always @(*) begin", "    case (s)", "        IDLE: // wait", "            y = 0;",
                              "    endcase", "end"}));
}

TEST(IndentBlockBodyTest, NumberBeforeColonIsNoLabel) {
  TextLines lines = {"always @(*) begin", "case (s)", "2'b01:", "y = 0;", "endcase", "end"};
  IndentBlockBody(&lines, 0, 5);
  EXPECT_EQ(lines,
            (TextLines{"always @(*) begin", "    case (s)", "        2'b01:", "        y = 0;", "    endcase", "end"}));
}

TEST(IndentBlockBodyTest, LabelOutsideCaseIsNotPending) {
  TextLines lines = {"always @(*) begin", "lbl:", "x = 1;", "end"};
  IndentBlockBody(&lines, 0, 3);
  EXPECT_EQ(lines, (TextLines{"always @(*) begin", "    lbl:", "    x = 1;", "end"}));
}

TEST(IndentBlockBodyTest, OnlyTheGivenLinesChange) {
  TextLines lines = {"  a", "always begin", "  x;", "  end", "  b"};
  IndentBlockBody(&lines, 1, 2);
  EXPECT_EQ(lines, (TextLines{"  a", "always begin", "    x;", "  end", "  b"}));
}

TEST(IndentBlockBodyTest, OutOfRangeArgumentsAreSafe) {
  TextLines lines = {"always begin", "x;"};
  IndentBlockBody(&lines, 5, 9);
  IndentBlockBody(&lines, -1, 1);
  IndentBlockBody(&lines, 1, 0);
  EXPECT_EQ(lines, (TextLines{"always begin", "x;"}));
  IndentBlockBody(&lines, 0, 99);
  EXPECT_EQ(lines, (TextLines{"always begin", "    x;"}));
  IndentBlockBody(nullptr, 0, 1);
  TextLines none;
  IndentBlockBody(&none, 0, 0);
  EXPECT_TRUE(none.empty());
}

// --- FindAlwaysEnd and FindGenerateEnd ---

TEST(FindAlwaysEndTest, EndsWhereTheBeginsAreClosed) {
  const TextLines lines = {"always @(posedge clk) begin", "if (a) begin", "x <= 1;", "end", "end", "assign y = x;"};
  EXPECT_EQ(FindAlwaysEnd(lines, 0), 4);
}

TEST(FindAlwaysEndTest, BlockOnItsStartLine) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*) begin y = a; end", "x;"}, 0), 0);
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @* y = a & b;", "assign z = y;"}, 0), 0);
}

TEST(FindAlwaysEndTest, WithoutBeginRunsUpToTheNextStatement) {
  const TextLines lines = {"always @(posedge clk)", "", "if (a) q <= 1;", "// note", "else q <= 0;", "wire w;"};
  EXPECT_EQ(FindAlwaysEnd(lines, 0), 4);
}

TEST(FindAlwaysEndTest, AlwaysFfIsNoStatementStart) {
  const TextLines lines = {"always @* a = b;", "", "x = 1;", "always_ff @(posedge clk) q <= d;"};
  EXPECT_EQ(FindAlwaysEnd(lines, 0), 3);
}

TEST(FindAlwaysEndTest, UpperCaseStatementStartsCount) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @* a = b;", "  REG r;"}, 0), 0);
}

TEST(FindAlwaysEndTest, StatementStartOnTheBeginLineDoesNotEndIt) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @*", "assign begin", "end", "x;"}, 0), 2);
}

TEST(FindAlwaysEndTest, DepthMustBeExactlyZero) {
  // An "end" before the first "begin" lowers the depth; the block then ends
  // where the running count is back at 0.
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*)", "end", "begin", "end", "x;"}, 0), 2);
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always begin", "end end", "begin", "end"}, 0), 2);
}

TEST(FindAlwaysEndTest, EndInCommentDoesNotCountButEndWithCommentDoes) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*) begin", "// end", "x = 1;", "end // comment", "y;"}, 0), 3);
}

TEST(FindAlwaysEndTest, EndcaseIsNoEnd) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*) begin", "case (s)", "endcase", "end", "y;"}, 0), 3);
}

TEST(FindAlwaysEndTest, NeverEndingBlockRunsToTheLastLine) {
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*) begin", "begin", "end", "x;"}, 0), 3);
  EXPECT_EQ(FindAlwaysEnd(TextLines{"always @(*)", "x = 1;"}, 0), 1);
}

TEST(FindAlwaysEndTest, StartOutOfRangeGivesTheLastLine) {
  const TextLines lines = {"always begin", "end", "x;"};
  EXPECT_EQ(FindAlwaysEnd(lines, -1), 2);
  EXPECT_EQ(FindAlwaysEnd(lines, 3), 2);
  EXPECT_EQ(FindAlwaysEnd(TextLines{}, 0), -1);
}

TEST(FindGenerateEndTest, NestedGenerateBlocks) {
  const TextLines lines = {"generate", "generate", "endgenerate", "x;", "endgenerate", "y;"};
  EXPECT_EQ(FindGenerateEnd(lines, 0), 4);
  EXPECT_EQ(FindGenerateEnd(lines, 1), 2);
}

TEST(FindGenerateEndTest, EndgenerateInCommentDoesNotCount) {
  EXPECT_EQ(FindGenerateEnd(TextLines{"generate", "// endgenerate", "x; // endgenerate", "  endgenerate", "y;"}, 0), 3);
}

TEST(FindGenerateEndTest, WithoutEndgenerateRunsToTheLastLine) {
  EXPECT_EQ(FindGenerateEnd(TextLines{"generate", "always @(*) y = a;", ""}, 0), 2);
}

TEST(FindGenerateEndTest, LineThatOpensNothingEndsAtItself) {
  EXPECT_EQ(FindGenerateEnd(TextLines{"generate", "x;", "endgenerate"}, 1), 1);
}

TEST(FindGenerateEndTest, StartOutOfRangeGivesTheLastLine) {
  EXPECT_EQ(FindGenerateEnd(TextLines{"generate", "x;"}, 2), 1);
  EXPECT_EQ(FindGenerateEnd(TextLines{"generate", "x;"}, -1), 1);
}

// --- LayoutBlocks ---

struct LayoutCase {
  const char* name;
  std::string input;
  std::string expected;
};

class LayoutBlocksTest : public testing::TestWithParam<LayoutCase> {};

TEST_P(LayoutBlocksTest, ReindentsBlocks) {
  EXPECT_EQ(LayoutBlocks(GetParam().input), GetParam().expected);
  EXPECT_EQ(reference::Layout(GetParam().input), GetParam().expected);
}

const LayoutCase kLayoutCases[] = {
    {"ExampleBlock", Lines({"  always @(posedge clk) begin", "if (rst)", "q <= 0;", "else q <= d;", "  end"}),
     Lines({"always @(posedge clk) begin", "    if (rst)", "        q <= 0;", "    else q <= d;", "end"})},
    {"BlockEndingOnItsStartLineIsNotRecorded", Lines({"  always @* y = a & b;", "  assign z = y;"}),
     Lines({"  always @* y = a & b;", "assign z = y;"})},
    {"BlockWithoutBeginIndentsEveryBodyLine",
     Lines({"always @(posedge clk)", "if (rst)", "q <= 0;", "   ", "else", "q <= d;", "assign x = y;"}),
     Lines({"always @(posedge clk)", "    if (rst)", "        q <= 0;", "   ", "    else", "    q <= d;",
            "assign x = y;"})},
    {"CaseItemsAndBareDefaultLabel",
     Lines({"always @(*) begin", "case (s)", "IDLE: y = 0;", "default:", "y = 1;", "endcase", "end"}),
     Lines({"always @(*) begin", "    case (s)", "        IDLE: y = 0;", "        default:", "            y = 1;",
            "    endcase", "end"})},
    {"EndWithCommentCountsAndCommentedEndDoesNot",
     Lines({"always @(*) begin", "// end", "x = 1;", "end // comment", "  y = 2;"}),
     Lines({"always @(*) begin", "    // end", "    x = 1;", "end // comment", "  y = 2;"})},
    {"EndcaseIsNotAnEnd", Lines({"always @(*) begin", "case (s)", "endcase", "x = 1;", "end"}),
     Lines({"always @(*) begin", "    case (s)", "    endcase", "    x = 1;", "end"})},
    {"AlwaysInsideGenerateIsIndentedFromColumnZero",
     Lines({"generate", "if (G) begin", "always @(posedge clk) begin", "q <= d;", "end", "end", "endgenerate"}),
     Lines({"generate", "    if (G) begin", "always @(posedge clk) begin", "    q <= d;", "end", "    end",
            "endgenerate"})},
    {"AlwaysLatchIsNotReindented", Lines({"  always_latch begin", "q = d;", "  end"}),
     Lines({"  always_latch begin", "q = d;", "  end"})},
    {"AlwaysFfAndAlwaysCombAreReindented",
     Lines({"always_ff @(posedge clk) begin", "q <= d;", "end", "always_comb begin", "y = a;", "end"}),
     Lines({"always_ff @(posedge clk) begin", "    q <= d;", "end", "always_comb begin", "    y = a;", "end"})},
    {"UpperCaseAlwaysIsReindented", Lines({"ALWAYS @(*) begin", "y = a;", "end"}),
     Lines({"ALWAYS @(*) begin", "    y = a;", "end"})},
    {"AssignAndEndgenerateGoToColumnZeroKeepingTrailingBlanks", Lines({"\t assign a = b;  ", "   endgenerate "}),
     Lines({"assign a = b;  ", "endgenerate "})},
    {"AssignInsideABlockGoesToColumnZero", Lines({"always @(*) begin", "assign x = y;", "end"}),
     Lines({"always @(*) begin", "assign x = y;", "end"})},
    {"TrailingBlanksOfBodyLinesAreCut", Lines({"always @(*) begin  ", "\tx = 1;\t ", "end"}),
     Lines({"always @(*) begin", "    x = 1;", "end"})},
    {"LinesOutsideBlocksAreKept", Lines({"  wire a;  ", "\tx = 1;"}), Lines({"  wire a;  ", "\tx = 1;"})},
    {"SplitsAndRejoins", "  wire a;\r\n  x = 1;\r\n", "  wire a;\n  x = 1;\n"},
    {"EmptyText", "", ""},
    {"GenerateWithoutBeginIndentsItsBody", Lines({"generate", "genvar i;", "endgenerate"}),
     Lines({"generate", "    genvar i;", "endgenerate"})},
};

INSTANTIATE_TEST_SUITE_P(Texts, LayoutBlocksTest, testing::ValuesIn(kLayoutCases),
                         [](const testing::TestParamInfo<LayoutCase>& param) { return param.param.name; });

TEST(LayoutBlocksPropertyTest, KeepsTheLineCount) {
  for (const LayoutCase& c : kLayoutCases) {
    const std::string out = LayoutBlocks(c.input);
    EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), std::count(c.input.begin(), c.input.end(), '\n')) << c.name;
  }
}

TEST(LayoutBlocksPropertyTest, LayingOutTwiceChangesNothingMore) {
  const std::string once = LayoutBlocks(Lines({"always @(posedge clk) begin", "if (rst)", "q <= 0;", "end"}));
  EXPECT_EQ(LayoutBlocks(once), once);
}

// --- Against the transcription, on random texts ---

const char* const kTokens[] = {"always @(*) ",
                               "always_ff @(posedge clk) ",
                               "always_latch ",
                               "ALWAYS ",
                               "generate ",
                               "endgenerate ",
                               "begin ",
                               "end ",
                               "case (s) ",
                               "casez ",
                               "endcase ",
                               "if (a) ",
                               "if (",
                               ")",
                               "else ",
                               "IDLE:",
                               "default: ",
                               "2'b01: ",
                               "// c ",
                               "// end ",
                               "assign ",
                               "wire ",
                               "reg w; ",
                               "x = 1; ",
                               "\n",
                               "\n",
                               "\n",
                               "\n",
                               "  ",
                               "\t",
                               "\r",
                               "\r\n",
                               "\v",
                               ":",
                               "module m; ",
                               "endmodule ",
                               "initial ",
                               "logic ",
                               "begin",
                               "\nbegin\n"};

std::string RandomText(std::mt19937* random, std::size_t tokens) {
  std::string text;
  for (std::size_t i = 0; i < tokens; ++i) text += kTokens[(*random)() % std::size(kTokens)];
  return text;
}

TEST(LayoutBlocksReferenceTest, RandomTextsLayOutAsTheLineByLineAlgorithm) {
  std::mt19937 random(20261122);
  for (int round = 0; round < 3000; ++round) {
    const std::string text = RandomText(&random, 1 + random() % 60);
    ASSERT_EQ(LayoutBlocks(text), reference::Layout(text)) << testing::PrintToString(text);
  }
}

TEST(LayoutBlocksReferenceTest, RandomTextsFindTheSameBlockEnds) {
  std::mt19937 random(7);
  for (int round = 0; round < 1000; ++round) {
    const TextLines lines = SplitLines(RandomText(&random, 1 + random() % 60));
    const int n = static_cast<int>(lines.size());
    for (int start = -1; start <= n; ++start) {
      ASSERT_EQ(FindAlwaysEnd(lines, start), reference::AlwaysEnd(lines, start)) << start;
      ASSERT_EQ(FindGenerateEnd(lines, start), reference::GenerateEnd(lines, start)) << start;
    }
  }
}

TEST(LayoutBlocksReferenceTest, RandomSpansIndentAsTheLineByLineAlgorithm) {
  std::mt19937 random(11);
  for (int round = 0; round < 1000; ++round) {
    TextLines lines = SplitLines(RandomText(&random, 1 + random() % 60));
    TextLines expected = lines;
    const int n = static_cast<int>(lines.size());
    const int start = static_cast<int>(random() % static_cast<unsigned>(n));
    const int end = start + static_cast<int>(random() % static_cast<unsigned>(n));
    IndentBlockBody(&lines, start, end);
    reference::IndentBody(&expected, start, end);
    ASSERT_EQ(lines, expected) << start << " " << end;
  }
}

// Real sources, as the pipeline hands them on (block comments already out of
// the way is not needed here: the pass treats them as plain text).
TEST(LayoutBlocksReferenceTest, CorpusFilesLayOutAsTheLineByLineAlgorithm) {
  const std::vector<CorpusSource> sources = CorpusSources({".v", ".sv"});
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const CorpusSource& source : sources) {
    EXPECT_TRUE(SameText(LayoutBlocks(source.text), reference::Layout(source.text))) << source.path;
  }
}

// The "if (...)" header test on lines made of the bytes that matter to it.
TEST(LayoutBlocksReferenceTest, IfHeadersAreRecognisedAsByThePattern) {
  const char alphabet[] = {'i', 'f', '(', ')', ' ', '\r', '\v', 'x', '_', '/'};
  std::mt19937 random(3);
  for (int round = 0; round < 20000; ++round) {
    std::string line;
    const std::size_t length = 1 + random() % 12;
    for (std::size_t i = 0; i < length; ++i) line.push_back(alphabet[random() % std::size(alphabet)]);
    TextLines lines = {"always @(*) begin", "x" + line, "y;", "end"};
    TextLines expected = lines;
    IndentBlockBody(&lines, 0, 3);
    reference::IndentBody(&expected, 0, 3);
    ASSERT_EQ(lines, expected) << testing::PrintToString(line);
    lines = {"always @(*) begin", line, "y;", "end"};
    expected = lines;
    IndentBlockBody(&lines, 0, 3);
    reference::IndentBody(&expected, 0, 3);
    ASSERT_EQ(lines, expected) << testing::PrintToString(line);
  }
}

// --- Hostile inputs: no crash, the expected shape ---

TEST(LayoutBlocksPathologicalTest, HundredThousandNestedBeginKeepTheirIndentation) {
  // Laid out, line k would gain 4k spaces (tens of gigabytes in all); past
  // the size bound the bodies are left as they are.
  const std::string text = "always @(*) begin\n" + Repeat("  begin\n", 100'000) + "x = 1;";
  EXPECT_TRUE(SameText(LayoutBlocks(text), text));
}

TEST(LayoutBlocksPathologicalTest, ThousandNestedBeginAreIndentedInFull) {
  std::string text = "always @(*) begin\n";
  std::string expected = text;
  for (int depth = 1; depth <= 1000; ++depth) {
    text += "begin\n";
    expected += std::string(static_cast<std::size_t>(depth) * 4, ' ') + "begin\n";
  }
  text += "x = 1;";
  expected += std::string(1001 * 4, ' ') + "x = 1;";
  EXPECT_TRUE(SameText(LayoutBlocks(text), expected));
}

TEST(LayoutBlocksPathologicalTest, HundredThousandBeginOnOneLine) {
  const std::string head = "always @(*) " + Repeat("begin ", 100'000);
  EXPECT_TRUE(SameText(LayoutBlocks(head + "\nx = 1;"), Trim(head) + "\n" + std::string(400'000, ' ') + "x = 1;"));
}

TEST(LayoutBlocksPathologicalTest, HundredThousandAlwaysWithoutEnd) {
  const std::string text = Repeat("  always @(posedge clk) begin\nq <= d;\n", 100'000);
  const std::string expected = Repeat("always @(posedge clk) begin\n    q <= d;\n", 100'000);
  EXPECT_TRUE(SameText(LayoutBlocks(text), expected));
}

TEST(LayoutBlocksPathologicalTest, GenerateWithoutEndgenerate) {
  // Each always block without begin runs up to the line before the next
  // always and so takes in the following "generate" line, but that line's own
  // span starts later and decides its indentation.
  const std::string text = Repeat("generate\nalways @(*) y = a;\n", 50'000);
  EXPECT_TRUE(SameText(LayoutBlocks(text), text));
  const std::string small = Repeat("generate\nalways @(*) y = a;\n", 300);
  EXPECT_TRUE(SameText(LayoutBlocks(small), reference::Layout(small)));
}

TEST(LayoutBlocksPathologicalTest, GenerateWithoutEndgenerateAroundIndentedLines) {
  const std::string text = Repeat("generate\n  x;\n", 50'000);
  EXPECT_TRUE(SameText(LayoutBlocks(text), Repeat("generate\n    x;\n", 50'000)));
}

TEST(LayoutBlocksPathologicalTest, HundredThousandNestedGenerate) {
  // Every generate line starts a span of its own that decides its line.
  const std::string text = Repeat("generate\n", 100'000) + "x;";
  EXPECT_TRUE(SameText(LayoutBlocks(text), Repeat("generate\n", 100'000) + "    x;"));
}

TEST(LayoutBlocksPathologicalTest, MegabyteLines) {
  const std::string body = Repeat("x = y; ", 150'000);
  EXPECT_TRUE(
      SameText(LayoutBlocks("always @(*) begin\n" + body + "\nend"), "always @(*) begin\n    " + Trim(body) + "\nend"));
  const std::string always = Repeat("always @(", 120'000);
  EXPECT_TRUE(SameText(LayoutBlocks(always), always));
}

TEST(LayoutBlocksPathologicalTest, LongLineOfIfHeadersBeforeACr) {
  // Every "if (" but the last meets a CR before the final ")": the header
  // is found by one scan, not one match attempt per "if".
  const std::string header = Repeat("if (", 250'000) + "\r if (x)";
  EXPECT_TRUE(SameText(LayoutBlocks("always @(*) begin\n" + header + "\ny = 1;\nend"),
                       "always @(*) begin\n    " + header + "\n        y = 1;\nend"));
  const std::string noHeader = Repeat("if (", 250'000) + "\r x)";
  EXPECT_TRUE(SameText(LayoutBlocks("always @(*) begin\n" + noHeader + "\ny = 1;\nend"),
                       "always @(*) begin\n    " + noHeader + "\n    y = 1;\nend"));
}

TEST(LayoutBlocksPathologicalTest, TenThousandNestedCaseStayWithinTheBound) {
  const std::string text = "always @(*) begin\n" + Repeat("case (s)\n", 10'000) + "endcase\nend";
  const std::string out = LayoutBlocks(text);
  EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), std::count(text.begin(), text.end(), '\n'));
}

TEST(LayoutBlocksPathologicalTest, NulAndHighBytes) {
  const std::string text = std::string("always @(*) begin\n\0x\xff;\nend", 26);
  EXPECT_EQ(LayoutBlocks(text), std::string("always @(*) begin\n    \0x\xff;\nend", 30));
}

}  // namespace
}  // namespace quill
