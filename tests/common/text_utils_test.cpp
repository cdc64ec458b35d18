#include "common/text_utils.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quill {
namespace {

// The patterns the comment scanners stand for.
const Pattern kBlockCommentPattern(R"(/\*[\s\S]*?\*/)", CaseMode::kSensitive, LimitPolicy::kNoMatch);
const Pattern kLineCommentPattern(R"(//[^\n]*)", CaseMode::kSensitive, LimitPolicy::kNoMatch);

using namespace std::string_literals;
using namespace std::string_view_literals;

std::string RandomText(std::mt19937* rng, std::string_view alphabet, std::size_t maxLength) {
  std::uniform_int_distribution<std::size_t> length(0, maxLength);
  std::uniform_int_distribution<std::size_t> pick(0, alphabet.size() - 1);
  std::string text(length(*rng), ' ');
  for (char& c : text) c = alphabet[pick(*rng)];
  return text;
}

TEST(TextUtilsTest, BlankBytesAreSpaceTabLfAndCrOnly) {
  for (int value = 0; value < 256; ++value) {
    const char c = static_cast<char>(value);
    EXPECT_EQ(IsBlankByte(c), value == ' ' || value == '\t' || value == '\n' || value == '\r') << value;
  }
}

struct TrimCase {
  std::string_view input;
  std::string_view trimmedLeft;
  std::string_view trimmed;
};

TEST(TextUtilsTest, TrimLeftAndTrim) {
  const std::vector<TrimCase> cases = {
      {"", "", ""},
      {"a", "a", "a"},
      {"\t a b \r\n", "a b \r\n", "a b"},
      {"\v", "\v", "\v"},
      {"\f", "\f", "\f"},
      {"   ", "", ""},
      {" \r\n\t", "", ""},
      {" \va\f ", "\va\f ", "\va\f"},
      {"\xA0x\xA0", "\xA0x\xA0", "\xA0x\xA0"},
      {" \0 "sv, "\0 "sv, "\0"sv},
      {"\r\na", "a", "a"},
      {"a\r", "a\r", "a"},
      {"a  b", "a  b", "a  b"},
  };
  for (const TrimCase& c : cases) {
    EXPECT_EQ(TrimLeft(c.input), c.trimmedLeft) << "\"" << c.input << "\"";
    EXPECT_EQ(Trim(c.input), c.trimmed) << "\"" << c.input << "\"";
  }
}

TEST(TextUtilsTest, TrimRightOf) {
  EXPECT_EQ(TrimRightOf("abc\r\n\t ", "\r\n\t "), "abc");
  EXPECT_EQ(TrimRightOf("   ", " "), "");
  EXPECT_EQ(TrimRightOf("", "x"), "");
  EXPECT_EQ(TrimRightOf("a\r\r", "\r"), "a");
  EXPECT_EQ(TrimRightOf("a\r \r", "\r"), "a\r ");
  EXPECT_EQ(TrimRightOf("a ", ""), "a ");
  EXPECT_EQ(TrimRightOf(" a", " "), " a");
  EXPECT_EQ(TrimRightOf("ab\0\0"sv, "\0"sv), "ab");
  const std::string_view text = "xy  ";
  EXPECT_EQ(TrimRightOf(text, " ").data(), text.data());
}

struct SplitCase {
  std::string_view text;
  TextLines lines;
};

TEST(TextUtilsTest, SplitLines) {
  const std::vector<SplitCase> cases = {
      {"", {""}},
      {"a", {"a"}},
      {"a\n", {"a", ""}},
      {"a\r\nb", {"a", "b"}},
      {"x\r\r\n", {"x\r", ""}},
      {"\n", {"", ""}},
      {"\r\n", {"", ""}},
      {"\n\n", {"", "", ""}},
      {"a\rb", {"a\rb"}},
      {"a\nb\r\nc", {"a", "b", "c"}},
      {"a\r\n\r\nb", {"a", "", "b"}},
      {"a\n\r", {"a", ""}},
      {"a\r", {"a"}},
      {"\r", {""}},
      {"\r\r", {"\r"}},
      {"\r\r\n\r\r", {"\r", "\r"}},
      {" a \n\tb\t", {" a ", "\tb\t"}},
      {"a\0\nb"sv, {"a\0"s, "b"}},
  };
  for (const SplitCase& c : cases) EXPECT_EQ(SplitLines(c.text), c.lines) << "\"" << c.text << "\"";
}

TEST(TextUtilsTest, SplitLinesGivesOneMoreLineThanLineFeeds) {
  std::mt19937 rng(7);
  for (int round = 0; round < 500; ++round) {
    const std::string text = RandomText(&rng, "a\r\n ", 40);
    const auto lineFeeds = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    EXPECT_EQ(SplitLines(text).size(), lineFeeds + 1) << text;
  }
}

struct JoinCase {
  TextLines lines;
  std::string_view separator;
  std::string_view text;
};

TEST(TextUtilsTest, EstimateLineCountIsExactUpTo64KiB) {
  EXPECT_EQ(EstimateLineCount(""), 1u);
  EXPECT_EQ(EstimateLineCount("a\nb\n"), 3u);
  const std::string sample(64 * 1024, '\n');
  EXPECT_EQ(EstimateLineCount(sample), sample.size() + 1);
}

TEST(TextUtilsTest, EstimateLineCountCoversTextsOfEvenLines) {
  for (std::size_t lineBytes : {1u, 7u, 24u, 300u}) {
    std::string line(lineBytes - 1, 'x');
    line += '\n';
    std::string text;
    while (text.size() < 3 * 1024 * 1024 + 17) text += line;
    const std::size_t lines = SplitLineViews(text).size();
    EXPECT_GE(EstimateLineCount(text), lines) << lineBytes;
    EXPECT_LE(EstimateLineCount(text), lines + lines / 4 + 1024) << lineBytes;
  }
}

TEST(TextUtilsTest, JoinLines) {
  const std::vector<JoinCase> cases = {
      {{}, "\n", ""},
      {{""}, "\n", ""},
      {{"", ""}, "\n", "\n"},
      {{"a"}, "\n", "a"},
      {{"a", "b"}, "\n", "a\nb"},
      {{"a", "", "b", ""}, "\n", "a\n\nb\n"},
      {{"a", "b", "c"}, ", ", "a, b, c"},
      {{"a", "b"}, "", "ab"},
  };
  for (const JoinCase& c : cases) EXPECT_EQ(JoinLines(c.lines, c.separator), c.text);
}

// The text with each CR removed that directly precedes an LF or ends the
// text (the last line loses its final CR like every other line).
std::string WithoutCrBeforeLineEnd(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool lineEndFollows = i + 1 == text.size() || text[i + 1] == '\n';
    if (text[i] == '\r' && lineEndFollows) continue;
    result.push_back(text[i]);
  }
  return result;
}

TEST(TextUtilsTest, JoiningSplitLinesRemovesOnlyCrBeforeLf) {
  EXPECT_EQ(JoinLines(SplitLines("a\r\nb\r\r\n\r\nc\rd\n"), "\n"), "a\nb\r\n\nc\rd\n");
  std::mt19937 rng(11);
  for (int round = 0; round < 2000; ++round) {
    const std::string text = RandomText(&rng, "a\r\n", 30);
    EXPECT_EQ(JoinLines(SplitLines(text), "\n"), WithoutCrBeforeLineEnd(text)) << text;
  }
}

TEST(TextUtilsTest, JoiningSplitLinesOfTextWithoutCrGivesItBack) {
  std::mt19937 rng(13);
  for (int round = 0; round < 500; ++round) {
    const std::string text = RandomText(&rng, "ab \t\n", 30);
    EXPECT_EQ(JoinLines(SplitLines(text), "\n"), text);
  }
}

// Reference: the matches of the block comment pattern, each replaced by the
// callback's result.
std::string ReplaceEachMatchByPattern(std::string_view text,
                                      const std::function<std::string(std::string_view)>& replace) {
  std::string result;
  std::size_t copied = 0;
  kBlockCommentPattern.ForEachMatch(text, [&](const Match& m) {
    result.append(text.substr(copied, m.Begin() - copied));
    result.append(replace(m.Group()));
    copied = m.End();
  });
  result.append(text.substr(copied));
  return result;
}

std::string Bracket(std::string_view comment) {
  return "[" + std::string(comment) + "]";
}

struct ReplaceCase {
  const char* name;
  std::string_view text;
  std::string_view replaced;
  std::vector<std::string> comments;
};

TEST(TextUtilsTest, ReplaceEachMatch) {
  const std::vector<ReplaceCase> cases = {
      {"NoComment", "a b", "a b", {}},
      {"Empty", "", "", {}},
      {"SlashStarSlashIsNoComment", "/*/", "/*/", {}},
      {"ShortestComment", "/**/", "[/**/]", {"/**/"}},
      {"StarSlashAfterSlashStarSlash", "/*/ a */", "[/*/ a */]", {"/*/ a */"}},
      {"Unterminated", "a /* b", "a /* b", {}},
      {"UnterminatedAfterAComment", "/* a */ b /* c", "[/* a */] b /* c", {"/* a */"}},
      {"SeveralComments", "a /* x */ b /* y\n z */ c", "a [/* x */] b [/* y\n z */] c", {"/* x */", "/* y\n z */"}},
      {"TwoOnOneLine", "/* a *//* b */", "[/* a */][/* b */]", {"/* a */", "/* b */"}},
      {"EndsAtTheFirstClose", "/* a */ b */", "[/* a */] b */", {"/* a */"}},
      {"NotNested", "/* /* a */ */", "[/* /* a */] */", {"/* /* a */"}},
      {"InsideALineComment", "// a /* b\n c */", "// a [/* b\n c */]", {"/* b\n c */"}},
      {"StarsAround", "/***/*/", "[/***/]*/", {"/***/"}},
  };
  for (const ReplaceCase& c : cases) {
    std::vector<std::string> seen;
    const std::string result = ReplaceEachMatch(c.text, [&seen](std::string_view comment) {
      seen.emplace_back(comment);
      return Bracket(comment);
    });
    EXPECT_EQ(result, c.replaced) << c.name;
    EXPECT_EQ(seen, c.comments) << c.name;
  }
}

TEST(TextUtilsTest, ReplaceEachMatchWithEmptyReplacement) {
  EXPECT_EQ(ReplaceEachMatch("a/* x */b/**/c", [](std::string_view) { return std::string(); }), "abc");
}

TEST(TextUtilsTest, ReplaceEachMatchAgreesWithThePattern) {
  std::mt19937 rng(17);
  for (int round = 0; round < 3000; ++round) {
    const std::string text = RandomText(&rng, "/*a\n", 24);
    EXPECT_EQ(ReplaceEachMatch(text, Bracket), ReplaceEachMatchByPattern(text, Bracket)) << text;
  }
}

TEST(TextUtilsTest, ReplaceEachMatchOnLargeTextsFinishes) {
  const std::string unterminated = "/*" + std::string(8u << 20, '*');
  EXPECT_EQ(ReplaceEachMatch(unterminated, Bracket), unterminated);
  std::string many;
  std::string expected;
  for (int i = 0; i < 200'000; ++i) {
    many += "x /* c */\n";
    expected += "x C\n";
  }
  EXPECT_EQ(ReplaceEachMatch(many, [](std::string_view) { return std::string("C"); }), expected);
}

struct LineCommentCase {
  std::string_view text;
  std::string_view expected;
};

TEST(TextUtilsTest, RemoveLineComments) {
  const std::vector<LineCommentCase> cases = {
      {"", ""},
      {"a b", "a b"},
      {"a // b\nc", "a \nc"},
      {"//", ""},
      {"a/b", "a/b"},
      {"///x\n", "\n"},
      {"a // b\r\nc", "a \nc"},
      {"// a\n// b", "\n"},
      {"a //b // c\nd//\n", "a \nd\n"},
      {"x /* // */ y", "x /* "},
      {"\n//\n", "\n\n"},
  };
  for (const LineCommentCase& c : cases) EXPECT_EQ(RemoveLineComments(c.text), c.expected) << "\"" << c.text << "\"";
}

TEST(TextUtilsTest, RemoveLineCommentsAgreesWithThePattern) {
  std::mt19937 rng(19);
  for (int round = 0; round < 3000; ++round) {
    const std::string text = RandomText(&rng, "/a\n\r", 24);
    EXPECT_EQ(RemoveLineComments(text), kLineCommentPattern.ReplaceAll(text, "")) << text;
  }
}

TEST(TextUtilsTest, CountMatches) {
  EXPECT_EQ(CountMatches("begin end begin", Pattern(R"(\bbegin\b)")), 2);
  EXPECT_EQ(CountMatches("end else begin", Pattern(R"(\bend\b)")), 1);
  EXPECT_EQ(CountMatches("casez case casex endcase", Pattern(R"(\bcase[zx]?\b)")), 3);
  EXPECT_EQ(CountMatches("endcase endcase", Pattern(R"(\bendcase\b)")), 2);
  EXPECT_EQ(CountMatches("", Pattern(R"(\bbegin\b)")), 0);
  EXPECT_EQ(CountMatches("beginend", Pattern(R"(\bbegin\b)")), 0);
  // After an empty match the search resumes further on.
  const Pattern maybeX("x*");
  EXPECT_EQ(CountMatches("axb", maybeX), 4);
  EXPECT_EQ(CountMatches("", maybeX), 1);
}

}  // namespace
}  // namespace quill

namespace quill {
namespace {

// RewriteLines against its definition: the reader's lines, some replaced,
// joined by LF. `replaced` holds line numbers and their new texts.
struct RewriteCase {
  const char* name;
  std::string text;
  std::vector<std::pair<std::size_t, std::string>> replaced;
  std::string expected;
};

class RewriteLinesTest : public testing::TestWithParam<RewriteCase> {};

TEST_P(RewriteLinesTest, ReplacesTheNamedLinesOnly) {
  const RewriteCase& c = GetParam();
  const LineViews lines = SplitLineViews(c.text);
  std::vector<LineReplacement> replacements;
  for (const auto& [index, text] : c.replaced) replacements.push_back({lines[index], text});
  EXPECT_EQ(RewriteLines(c.text, replacements, 0), c.expected);
}

const RewriteCase kRewriteCases[] = {
    {"NothingReplaced", "a\nb\n", {}, "a\nb\n"},
    {"FirstLine", "a\nb\nc", {{0, "A"}}, "A\nb\nc"},
    {"LastLineWithoutLf", "a\nb\nc", {{2, "C!"}}, "a\nb\nC!"},
    {"EmptyLastLine", "a\n", {{1, "z"}}, "a\nz"},
    {"SeveralLinesLongerAndShorter", "one\ntwo\nthree\n", {{0, "1"}, {2, "THREE!!"}}, "1\ntwo\nTHREE!!\n"},
    {"CrBeforeLfDroppedEverywhere", "a\r\nb\r\nc\r\n", {{1, "B"}}, "a\nB\nc\n"},
    {"LoneCrStaysInsideALine", "a\rb\nc\r\n", {{1, "C"}}, "a\rb\nC\n"},
    {"CrAtTheEndDropped", "a\nb\r", {{0, "x"}}, "x\nb"},
};

INSTANTIATE_TEST_SUITE_P(Texts, RewriteLinesTest, testing::ValuesIn(kRewriteCases),
                         [](const testing::TestParamInfo<RewriteCase>& test) { return test.param.name; });

}  // namespace
}  // namespace quill
