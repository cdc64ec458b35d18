#include "format/scan/find_instance.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "format/reference_patterns.h"
#include "format/short_texts.h"

namespace quill {
namespace {

// The ")" balancing the "(" at `open`, found by counting forward through the
// lines joined with LF.
std::optional<TextPosition> CountForward(const TextLines& lines, TextPosition open) {
  int depth = 0;
  for (std::size_t line = open.line; line < lines.size(); ++line) {
    for (std::size_t column = line == open.line ? open.column : 0; column < lines[line].size(); ++column) {
      if (lines[line][column] == '(') ++depth;
      if (lines[line][column] == ')' && --depth == 0) return TextPosition{line, column};
    }
  }
  return std::nullopt;
}

TEST(CollapseBlankRuns, ExactTexts) {
  struct Case {
    const char* text;
    const char* expected;
  };
  const Case cases[] = {
      {"", ""},
      {"fifo   #(.W(8))\t u", "fifo #(.W(8)) u"},
      {" \t\v\f\r\n x  ", " x "},
      {"a\x85" "b\xa0" " c", "a\x85" "b\xa0" " c"},
      {"no_blanks", "no_blanks"},
  };
  for (const Case& c : cases) EXPECT_EQ(CollapseBlankRuns(c.text), c.expected) << c.text;
}

// The hand scan agrees with replacing every match of "\s+" by one space.
TEST(CollapseBlankRuns, AgreesWithThePatternOnEveryShortText) {
  const Pattern& pattern = ReferencePatterns().kBlankRunPattern;
  const std::string alphabet = "a \t\n\v\f\r\x85";
  const std::vector<std::string> texts = EveryShortText(alphabet, 5);
  for (const std::string& text : texts) ASSERT_EQ(CollapseBlankRuns(text), pattern.ReplaceAll(text, " ")) << text;
}

// The keyword test agrees with kBlockKeywordPattern on every keyword in
// three letter cases, the keywords with a byte more or less, and a few
// other words.
TEST(StartsWithBlockKeyword, AgreesWithThePattern) {
  const std::vector<std::string> words = {
      "module", "function", "task",        "if",       "else",        "case",    "casex",      "casez",
      "for",    "while",    "forever",     "assign",   "always",      "always_ff", "always_comb", "initial",
      "generate", "endgenerate", "specify", "endspecify", "fifo", "end", "begin", "wire", "x", ""};
  std::vector<std::string> texts;
  for (const std::string& word : words) {
    std::string upper = word;
    for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    for (const std::string& form : {word, upper, word + "s", word.empty() ? word : word.substr(1),
                                    word.empty() ? word : upper.substr(0, 1) + word.substr(1)}) {
      for (const std::string& text : {form, form + " (a)", form + "(", "\v" + form, form + "_1 u ("}) {
        texts.push_back(text);
      }
    }
  }
  const Pattern& pattern = ReferencePatterns().kBlockKeywordPattern;
  for (const std::string& text : texts) EXPECT_EQ(StartsWithBlockKeyword(text), pattern.Search(text)) << text;
}

TEST(ParenthesisMatches, BalancesAcrossLines) {
  TextLines lines = {"a (b (c", "d) e", ") f"};
  ParenthesisMatches parens(lines);
  auto close = parens.FindClose({0, 2});
  ASSERT_TRUE(close);
  EXPECT_EQ(close->line, 2u);
  EXPECT_EQ(close->column, 0u);
  close = parens.FindClose({0, 5});
  ASSERT_TRUE(close);
  EXPECT_EQ(close->line, 1u);
  EXPECT_EQ(close->column, 1u);
}

TEST(ParenthesisMatches, StrayCloseBeforeDoesNotCount) {
  TextLines lines = {") ) (", "x)"};
  auto close = ParenthesisMatches(lines).FindClose({0, 4});
  ASSERT_TRUE(close);
  EXPECT_EQ(close->line, 1u);
  EXPECT_EQ(close->column, 1u);
}

TEST(ParenthesisMatches, UnbalancedOpenHasNoClose) {
  TextLines lines = {"((", ")"};
  ParenthesisMatches parens(lines);
  EXPECT_FALSE(parens.FindClose({0, 0}));
  EXPECT_TRUE(parens.FindClose({0, 1}));
}

TEST(ParenthesisMatches, NoOpenParenthesisThere) {
  TextLines lines = {"a(b)"};
  ParenthesisMatches parens(lines);
  EXPECT_FALSE(parens.FindClose({0, 0}));
  EXPECT_FALSE(parens.FindClose({0, 3}));
  EXPECT_FALSE(parens.FindClose({0, 99}));
  EXPECT_FALSE(parens.FindClose({5, 0}));
}

TEST(ParenthesisMatches, AgreesWithCountingForward) {
  std::mt19937 random(7);
  // Dense parentheses on short lines, and sparse ones on long lines among
  // bytes that differ from them in one bit, so that runs of eight bytes
  // with and without one both occur.
  const std::string dense = "(()) x\n";
  const std::string sparse = std::string("()") + "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxx*+'\xa8\xa9\x08\x09 \n";
  for (int round = 0; round < 400; ++round) {
    const std::string& alphabet = round % 2 == 0 ? dense : sparse;
    std::string text;
    for (int i = 0; i < 120; ++i) text += alphabet[random() % alphabet.size()];
    TextLines lines = SplitLines(text);
    ParenthesisMatches parens(lines);
    for (std::size_t line = 0; line < lines.size(); ++line) {
      for (std::size_t column = 0; column < lines[line].size(); ++column) {
        if (lines[line][column] != '(') continue;
        auto expected = CountForward(lines, {line, column});
        auto actual = parens.FindClose({line, column});
        ASSERT_EQ(actual.has_value(), expected.has_value()) << text;
        if (expected) {
          EXPECT_EQ(actual->line, expected->line) << text;
          EXPECT_EQ(actual->column, expected->column) << text;
        }
      }
    }
  }
}

struct SpanCase {
  const char* name;
  TextLines lines;
  std::size_t start;
  InstanceSpan expected;
};

std::ostream& operator<<(std::ostream& out, const SpanCase& c) {
  return out << c.name;
}

InstanceSpan Span(std::size_t start, std::size_t open, std::size_t close, std::size_t indent, std::string header,
                  std::size_t openColumn, std::size_t closeColumn, TextLines paramLines = {},
                  std::string nameLine = "") {
  InstanceSpan span;
  span.startLine = start;
  span.openLine = open;
  span.closeLine = close;
  span.endLine = close;
  span.indent = indent;
  span.header = std::move(header);
  span.paramLines = std::move(paramLines);
  span.nameLine = std::move(nameLine);
  span.openColumn = openColumn;
  span.closeColumn = closeColumn;
  return span;
}

const std::vector<SpanCase>& SpanCases() {
  static const std::vector<SpanCase> cases = {
      {"TypeNameOnOneLine", {"  fifo   u_fifo(", "    .clk(clk)", "  );"}, 0, Span(0, 0, 2, 2, "fifo u_fifo (", 15, 2)},
      {"HeaderCommentAfterParenthesis",
       {"sub u0 ( // ports  ", ".a(b)", ")"},
       0,
       Span(0, 0, 2, 0, "sub u0 ( // ports", 7, 0)},
      {"TabsCountAsIndent", {"\t \tsub u0 (.a(b))"}, 0, Span(0, 0, 0, 3, "sub u0 (", 10, 16)},
      {"StartsLater", {"", "x", "sub u0 (", ")"}, 2, Span(2, 2, 3, 0, "sub u0 (", 7, 0)},
      {"ParamBlockOnHeaderLine",
       {"fifo   #(.W(8))  u_fifo(", ")"},
       0,
       Span(0, 0, 1, 0, "fifo #(.W(8)) u_fifo (", 23, 0)},
      {"ParamBlockOnHeaderLineWithComment",
       {" fifo #( .W(8) )u0 ( // c", ")"},
       0,
       Span(0, 0, 1, 1, "fifo #( .W(8) )u0 ( // c", 19, 0)},
      {"ParamBlockOverLines",
       {"fifo #( // params", "  .W(8),", "", "  ) u0  ( // ports", ".a(b)", ");"},
       0,
       Span(0, 3, 5, 0, "fifo #( // params", 8, 0, {".W(8),", ""}, ") u0 ( // ports")},
      {"ParamBlockClosedOnNextLine", {"fifo #(", ") u0 (", ");"}, 0, Span(0, 1, 2, 0, "fifo #(", 5, 0, {}, ") u0 (")},
      {"TypeAndNameThenParenthesisLine",
       {"fifo  u0", "", "  // c", "  ( // x", ".a(b)", ");"},
       0,
       Span(0, 3, 5, 0, "fifo u0 (", 2, 0)},
      {"LoneTypeWord", {"  fifo", "    u0( // c", ")"}, 0, Span(0, 1, 2, 2, "fifo u0 ( // c", 6, 0)},
  };
  return cases;
}

class FindInstanceTest : public testing::TestWithParam<SpanCase> {};

TEST_P(FindInstanceTest, FindsSpan) {
  const SpanCase& c = GetParam();
  std::optional<InstanceSpan> span = FindInstance(c.lines, c.start);
  ASSERT_TRUE(span);
  EXPECT_EQ(span->startLine, c.expected.startLine);
  EXPECT_EQ(span->openLine, c.expected.openLine);
  EXPECT_EQ(span->closeLine, c.expected.closeLine);
  EXPECT_EQ(span->endLine, c.expected.endLine);
  EXPECT_EQ(span->indent, c.expected.indent);
  EXPECT_EQ(span->header, c.expected.header);
  EXPECT_EQ(span->paramLines, c.expected.paramLines);
  EXPECT_EQ(span->nameLine, c.expected.nameLine);
  EXPECT_EQ(span->openColumn, c.expected.openColumn);
  EXPECT_EQ(span->closeColumn, c.expected.closeColumn);
}

INSTANTIATE_TEST_SUITE_P(Forms, FindInstanceTest, testing::ValuesIn(SpanCases()),
                         [](const testing::TestParamInfo<SpanCase>& param) { return std::string(param.param.name); });

struct MissCase {
  const char* name;
  TextLines lines;
  std::size_t start;
};

std::ostream& operator<<(std::ostream& out, const MissCase& c) {
  return out << c.name;
}

const std::vector<MissCase>& MissCases() {
  static const std::vector<MissCase> cases = {
      {"EmptyLine", {"", "sub u0 (", ")"}, 0},
      {"BlankLine", {" \t\r", ")"}, 0},
      {"CommentLine", {"  // sub u0 (", ")"}, 0},
      {"StartPastEnd", {"sub u0 (", ")"}, 2},
      {"ModuleLine", {"module top (", ");"}, 0},
      {"IfLine", {"if x (", ");"}, 0},
      {"ElseLine", {"else x (", ");"}, 0},
      {"CaseLine", {"casez x (", ");"}, 0},
      {"AssignUpperCase", {"ASSIGN x (", ");"}, 0},
      {"AlwaysFfLine", {"always_ff x (", ");"}, 0},
      {"FunctionLine", {"function f (", ");"}, 0},
      {"GenerateWord", {"generate", "u0 (", ");"}, 0},
      {"ForeverWord", {"forever", "u0 (", ");"}, 0},
      {"NoMatchingClose", {"sub u0 (", ".a(b)", ""}, 0},
      {"ParamBlockNeverCloses", {"fifo #(", ".W(8)"}, 0},
      {"ParamBlockWithoutName", {"fifo #(", ".W(8)", ")", "u0 (", ");"}, 0},
      {"ParamBlockNamedWithoutParenthesis", {"fifo #(.W(8)) u0", "(", ");"}, 0},
      {"TypeAndNameAtEnd", {"fifo u0", "", "// c"}, 0},
      {"TypeAndNameWithoutParenthesisLine", {"fifo u0", "x (", ");"}, 0},
      {"TypeAndNameParenthesisNeverCloses", {"fifo u0", "( .a(b)"}, 0},
      {"LoneWordAtEnd", {"fifo"}, 0},
      {"LoneWordNextLineBlank", {"fifo", "", "u0 (", ");"}, 0},
      {"LoneWordNextLineTypeAndName", {"fifo", "x u0 (", ");"}, 0},
      {"PortListWordsOnly", {"fifo u0 x (", ");"}, 0},
      {"NamedConnectionLine", {".a(b),", ");"}, 0},
  };
  return cases;
}

class FindInstanceMissTest : public testing::TestWithParam<MissCase> {};

TEST_P(FindInstanceMissTest, FindsNothing) {
  const MissCase& c = GetParam();
  EXPECT_FALSE(FindInstance(c.lines, c.start));
}

INSTANTIATE_TEST_SUITE_P(Misses, FindInstanceMissTest, testing::ValuesIn(MissCases()),
                         [](const testing::TestParamInfo<MissCase>& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace quill
