#include "common/pattern.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace quill {
namespace {

using namespace std::string_view_literals;

// Every wrapper behaviour holds with and without the JIT compiler.
class PatternTest : public ::testing::TestWithParam<bool> {
 protected:
  Pattern Make(std::string_view source, CaseMode caseMode = CaseMode::kSensitive,
               LimitPolicy limitPolicy = LimitPolicy::kThrow) const {
    return Pattern(source, Pattern::Options{caseMode, limitPolicy, GetParam()});
  }
  Pattern MakeIcase(std::string_view source) const { return Make(source, CaseMode::kIgnoreCase); }
};

using Span = std::pair<std::size_t, std::size_t>;

std::vector<Span> AllMatches(const Pattern& pattern, std::string_view subject) {
  std::vector<Span> spans;
  pattern.ForEachMatch(subject, [&spans](const Match& m) { spans.emplace_back(m.Begin(), m.End()); });
  return spans;
}

std::string Byte(int value) {
  return std::string(1, static_cast<char>(value));
}

TEST_P(PatternTest, DollarMatchesOnlyAtTheVeryEnd) {
  const Pattern p = Make("a$");
  EXPECT_TRUE(p.Search("xa"));
  EXPECT_FALSE(p.Search("xa\n"));
  EXPECT_FALSE(p.Search("xa\r\n"));
  EXPECT_FALSE(p.Search("xa\r"));
  EXPECT_FALSE(p.Search("a\nb"));
  EXPECT_TRUE(Make("^$").Search(""));
  EXPECT_FALSE(Make("^$").Search("\n"));
}

TEST_P(PatternTest, CaretMatchesOnlyAtTheStartOfTheSubject) {
  const Pattern p = Make("^b");
  EXPECT_TRUE(p.Search("b"));
  EXPECT_FALSE(p.Search("a\nb"));
  EXPECT_FALSE(p.Search("a\rb"));
  EXPECT_EQ(Make("^").Count("a\nb\nc"), 1);
}

TEST_P(PatternTest, DotMatchesNeitherCrNorLf) {
  const Pattern p = Make("a.b");
  EXPECT_FALSE(p.Search("a\nb"));
  EXPECT_FALSE(p.Search("a\rb"));
  EXPECT_TRUE(p.Search("a\tb"));
  EXPECT_TRUE(p.Search("a\vb"));
  EXPECT_TRUE(p.Search("a\fb"));
  EXPECT_TRUE(p.Search("a\0b"sv));
  EXPECT_TRUE(
      p.Search("a\x80"
               "b"));
  EXPECT_TRUE(
      p.Search("a\xFF"
               "b"));
  Match m;
  ASSERT_TRUE(Make(".*").Search("ab\rcd", &m));
  EXPECT_EQ(m.Group(), "ab");
  EXPECT_FALSE(Make(".*").FullMatch("ab\r\ncd"));
}

TEST_P(PatternTest, DotMatchesEveryOtherByte) {
  const Pattern p = Make(".");
  for (int value = 0; value < 256; ++value) {
    EXPECT_EQ(p.FullMatch(Byte(value)), value != '\n' && value != '\r') << value;
  }
}

TEST_P(PatternTest, SpaceClassIsSpaceTabLfVtFfCr) {
  const Pattern space = Make(R"(\s)");
  const Pattern nonSpace = Make(R"(\S)");
  for (int value = 0; value < 256; ++value) {
    const bool expected =
        value == ' ' || value == '\t' || value == '\n' || value == '\v' || value == '\f' || value == '\r';
    EXPECT_EQ(space.FullMatch(Byte(value)), expected) << value;
    EXPECT_EQ(nonSpace.FullMatch(Byte(value)), !expected) << value;
  }
}

TEST_P(PatternTest, WordClassIsAsciiLettersDigitsAndUnderscore) {
  const Pattern word = Make(R"(\w)");
  const Pattern nonWord = Make(R"(\W)");
  for (int value = 0; value < 256; ++value) {
    const bool expected = (value >= 'a' && value <= 'z') || (value >= 'A' && value <= 'Z') ||
                          (value >= '0' && value <= '9') || value == '_';
    EXPECT_EQ(word.FullMatch(Byte(value)), expected) << value;
    EXPECT_EQ(nonWord.FullMatch(Byte(value)), !expected) << value;
  }
}

TEST_P(PatternTest, AnyByteClassMatchesEveryByte) {
  const Pattern any = Make(R"([\s\S])");
  for (int value = 0; value < 256; ++value) EXPECT_TRUE(any.FullMatch(Byte(value))) << value;
}

TEST_P(PatternTest, WordBoundaryTreatsHighBytesAsNonWord) {
  const Pattern p = Make(R"(\bx\b)");
  EXPECT_TRUE(p.Search("\xC4x\xC4"));
  EXPECT_TRUE(p.Search("\xE2\x80\x9Cx\xE2\x80\x9D"));
  EXPECT_TRUE(p.Search("x"));
  EXPECT_FALSE(p.Search("_x"));
  EXPECT_FALSE(p.Search("x9"));
  EXPECT_FALSE(p.Search("ax"));
  EXPECT_EQ(AllMatches(Make(R"(\b)"), "ab cd"), (std::vector<Span>{{0, 0}, {2, 2}, {3, 3}, {5, 5}}));
  EXPECT_EQ(AllMatches(Make(R"(\B)"), "ab"), (std::vector<Span>{{1, 1}}));
  EXPECT_EQ(AllMatches(Make(R"(\b)"), "\xC3\xA9t\xC3\xA9"), (std::vector<Span>{{2, 2}, {3, 3}}));
}

TEST_P(PatternTest, CaseInsensitiveMatchingFoldsAsciiLettersOnly) {
  EXPECT_TRUE(MakeIcase("abc").FullMatch("ABC"));
  EXPECT_TRUE(MakeIcase("ABC").FullMatch("aBc"));
  EXPECT_TRUE(MakeIcase("[a-z]+").FullMatch("XyZ"));
  EXPECT_FALSE(MakeIcase("[^a]").FullMatch("A"));
  EXPECT_FALSE(Make("abc").FullMatch("ABC"));
  EXPECT_FALSE(Make("[a-z]").FullMatch("X"));
  // Latin-1 A-umlaut (0xC4) and a-umlaut (0xE4) are not folded, nor are the
  // UTF-8 forms.
  EXPECT_FALSE(MakeIcase("\xC4").FullMatch("\xE4"));
  EXPECT_FALSE(MakeIcase("\xE4").FullMatch("\xC4"));
  EXPECT_TRUE(MakeIcase("\xC4").FullMatch("\xC4"));
  EXPECT_FALSE(MakeIcase("\xC3\x84").FullMatch("\xC3\xA4"));
  EXPECT_FALSE(MakeIcase("[\xC0-\xDE]").FullMatch("\xE4"));
  // Letters next to the ASCII letter ranges are not folded either.
  EXPECT_FALSE(MakeIcase("@").FullMatch("`"));
  EXPECT_FALSE(MakeIcase("\\[").FullMatch("{"));
}

TEST_P(PatternTest, LookaheadDoesNotConsume) {
  Match m;
  ASSERT_TRUE(Make("a(?=b)").Search("ac ab", &m));
  EXPECT_EQ(m.Begin(), 3u);
  EXPECT_EQ(m.End(), 4u);
  ASSERT_TRUE(Make("a(?!b)").Search("ab ac", &m));
  EXPECT_EQ(m.Begin(), 3u);
  ASSERT_TRUE(Make(R"(\w+?(?=[(;]|$))").Search("top;", &m));
  EXPECT_EQ(m.Group(), "top");
  ASSERT_TRUE(Make(R"(\w+?(?=[(;]|$))").Search("top", &m));
  EXPECT_EQ(m.Group(), "top");
}

TEST_P(PatternTest, LazyQuantifiersTakeTheShortestMatch) {
  Match m;
  ASSERT_TRUE(Make("<.+?>").Search("<a><b>", &m));
  EXPECT_EQ(m.Group(), "<a>");
  ASSERT_TRUE(Make("<.+>").Search("<a><b>", &m));
  EXPECT_EQ(m.Group(), "<a><b>");
  ASSERT_TRUE(Make("a*?").Search("aaa", &m));
  EXPECT_EQ(m.Length(), 0u);
  ASSERT_TRUE(Make(R"(/\*[\s\S]*?\*/)").Search("x /* a\n*/ b */", &m));
  EXPECT_EQ(m.Group(), "/* a\n*/");
  ASSERT_TRUE(Make("(a+?)(a*)").FullMatch("aaa", &m));
  EXPECT_EQ(m.Group(1), "a");
  EXPECT_EQ(m.Group(2), "aa");
}

TEST_P(PatternTest, SearchFindsAnywhereFullMatchNeedsTheWholeSubject) {
  const Pattern p = Make("b+");
  EXPECT_TRUE(p.Search("abba"));
  EXPECT_FALSE(p.FullMatch("abba"));
  EXPECT_TRUE(p.FullMatch("bb"));
  EXPECT_FALSE(p.FullMatch(""));
  // A full match backtracks into alternatives and lazy quantifiers.
  EXPECT_TRUE(Make("a|abc").FullMatch("abc"));
  EXPECT_TRUE(Make("a.*?").FullMatch("abc"));
  EXPECT_FALSE(Make("a|abc").FullMatch("ab"));
  EXPECT_TRUE(Make("x*").FullMatch(""));
  Match m;
  ASSERT_TRUE(Make("(a|ab)(c|bcd)").FullMatch("abcd", &m));
  EXPECT_EQ(m.Group(1), "a");
  EXPECT_EQ(m.Group(2), "bcd");
  EXPECT_EQ(m.Begin(), 0u);
  EXPECT_EQ(m.End(), 4u);
}

TEST_P(PatternTest, SearchFromAStartOffset) {
  const Pattern p = Make("ab");
  Match m;
  ASSERT_TRUE(p.Search("abab", &m, 1));
  EXPECT_EQ(m.Begin(), 2u);
  EXPECT_FALSE(p.Search("abab", &m, 3));
  EXPECT_FALSE(p.Search("abab", 5));
  EXPECT_TRUE(Make("").Search("abab", 4));
  EXPECT_FALSE(Make("").Search("abab", 5));
}

TEST_P(PatternTest, CaretNeverMatchesAtALaterStartOffset) {
  EXPECT_FALSE(Make("^a").Search("aa", 1));
  EXPECT_FALSE(Make("^a").Search("\na", 1));
  EXPECT_FALSE(Make("^").Search("ab", 1));
  EXPECT_EQ(Make("^a").Count("aaa"), 1);
  EXPECT_EQ(Make("^x").ReplaceAll("xxx", "y"), "yxx");
}

TEST_P(PatternTest, WordBoundarySeesBytesBeforeTheStartOffset) {
  EXPECT_FALSE(Make(R"(\bb)").Search("ab", 1));
  EXPECT_TRUE(Make(R"(\bb)").Search(" b", 1));
  EXPECT_TRUE(Make(R"(\Bb)").Search("ab", 1));
}

TEST_P(PatternTest, IterationResumesAfterEachMatch) {
  EXPECT_EQ(AllMatches(Make("a"), "aaa"), (std::vector<Span>{{0, 1}, {1, 2}, {2, 3}}));
  EXPECT_EQ(AllMatches(Make("aa"), "aaaaa"), (std::vector<Span>{{0, 2}, {2, 4}}));
  EXPECT_EQ(AllMatches(Make("aba"), "ababa"), (std::vector<Span>{{0, 3}}));
  EXPECT_EQ(AllMatches(Make(R"(\bend\b)"), "end else end;endx end"), (std::vector<Span>{{0, 3}, {9, 12}, {18, 21}}));
  EXPECT_TRUE(AllMatches(Make("z"), "aaa").empty());
  EXPECT_TRUE(AllMatches(Make("a"), "").empty());
}

TEST_P(PatternTest, IterationAfterAnEmptyMatchTriesANonEmptyOneAtTheSamePlace) {
  // After an empty match the next attempt must be non-empty at the same
  // position; failing that, the search moves one byte on.
  EXPECT_EQ(AllMatches(Make("x*"), "axb"), (std::vector<Span>{{0, 0}, {1, 2}, {2, 2}, {3, 3}}));
  EXPECT_EQ(AllMatches(Make("a?"), "baa"), (std::vector<Span>{{0, 0}, {1, 2}, {2, 3}, {3, 3}}));
  EXPECT_EQ(AllMatches(Make(""), "ab"), (std::vector<Span>{{0, 0}, {1, 1}, {2, 2}}));
  EXPECT_EQ(AllMatches(Make("|b"), "b"), (std::vector<Span>{{0, 0}, {0, 1}, {1, 1}}));
  EXPECT_EQ(AllMatches(Make("x*"), ""), (std::vector<Span>{{0, 0}}));
  EXPECT_EQ(AllMatches(Make("x*"), "\r\n"), (std::vector<Span>{{0, 0}, {1, 1}, {2, 2}}));
  EXPECT_EQ(AllMatches(Make(".*"), "a\r\nb"), (std::vector<Span>{{0, 1}, {1, 1}, {2, 2}, {3, 4}, {4, 4}}));
  // "\b" sees the byte before the resumed position.
  EXPECT_EQ(AllMatches(Make(R"(\b\w*)"), "ab cd"), (std::vector<Span>{{0, 2}, {2, 2}, {3, 5}, {5, 5}}));
}

TEST_P(PatternTest, IterationStopsWhenTheVisitorReturnsFalse) {
  int visited = 0;
  Make("a").ForEachMatch("aaaa", [&visited](const Match&) { return ++visited < 2; });
  EXPECT_EQ(visited, 2);
}

TEST_P(PatternTest, GroupOffsets) {
  Match m;
  ASSERT_TRUE(Make(R"((\w+)\s*=\s*(\d+))").Search("  key = 42;", &m));
  EXPECT_EQ(m.Begin(), 2u);
  EXPECT_EQ(m.End(), 10u);
  EXPECT_EQ(m.Group(), "key = 42");
  EXPECT_EQ(m.Begin(1), 2u);
  EXPECT_EQ(m.End(1), 5u);
  EXPECT_EQ(m.Length(1), 3u);
  EXPECT_EQ(m.Group(1), "key");
  EXPECT_EQ(m.Str(1), "key");
  EXPECT_EQ(m.Begin(2), 8u);
  EXPECT_EQ(m.End(2), 10u);
  EXPECT_EQ(m.Group(2), "42");
  // Offsets count from the start of the subject, not from the start offset.
  ASSERT_TRUE(Make(R"((b)(c)?)").Search("abab", &m, 2));
  EXPECT_EQ(m.Begin(1), 3u);
  EXPECT_EQ(m.End(1), 4u);
  // A group that matched empty is set.
  ASSERT_TRUE(Make("a(x*)b").Search("ab", &m));
  EXPECT_TRUE(m.Matched(1));
  EXPECT_EQ(m.Begin(1), 1u);
  EXPECT_EQ(m.Length(1), 0u);
}

TEST_P(PatternTest, FifteenGroupsAreAvailable) {
  std::string source;
  std::string subject;
  for (char c = 'a'; c < 'a' + 15; ++c) {
    source += std::string("(") + c + ")";
    subject += c;
  }
  Match m;
  ASSERT_TRUE(Make(source).FullMatch(subject, &m));
  for (int group = 1; group <= 15; ++group) {
    EXPECT_EQ(m.Begin(group), static_cast<std::size_t>(group - 1));
    EXPECT_EQ(m.Group(group), subject.substr(static_cast<std::size_t>(group - 1), 1));
  }
}

TEST_P(PatternTest, UnsetGroups) {
  Match m;
  ASSERT_TRUE(Make("(a)|(b)").Search("b", &m));
  EXPECT_FALSE(m.Matched(1));
  EXPECT_EQ(m.Group(1), "");
  EXPECT_EQ(m.Str(1), "");
  EXPECT_EQ(m.Begin(1), 0u);
  EXPECT_EQ(m.End(1), 0u);
  EXPECT_TRUE(m.Matched(2));
  EXPECT_EQ(m.Begin(2), 0u);
  EXPECT_EQ(m.Group(2), "b");
  // Groups that a pattern does not have are unset.
  EXPECT_FALSE(m.Matched(3));
  EXPECT_FALSE(m.Matched(15));
  // Trailing optional groups that did not take part.
  ASSERT_TRUE(Make("(x)(y)?(z)?").Search("xz", &m));
  EXPECT_TRUE(m.Matched(1));
  EXPECT_FALSE(m.Matched(2));
  EXPECT_TRUE(m.Matched(3));
  ASSERT_TRUE(Make("(x)(y)?(z)?").Search("x", &m));
  EXPECT_FALSE(m.Matched(2));
  EXPECT_FALSE(m.Matched(3));
}

TEST_P(PatternTest, GroupsAreResetBetweenIteratedMatches) {
  std::vector<bool> matched;
  Make("(a)?b").ForEachMatch("abb", [&matched](const Match& m) { matched.push_back(m.Matched(1)); });
  EXPECT_EQ(matched, (std::vector<bool>{true, false}));
}

TEST_P(PatternTest, ReplaceAllTakesTheReplacementLiterally) {
  EXPECT_EQ(Make("a").ReplaceAll("banana", "XY"), "bXYnXYnXY");
  EXPECT_EQ(Make("(a)").ReplaceAll("banana", "$1$&\\1"), "b$1$&\\1n$1$&\\1n$1$&\\1");
  EXPECT_EQ(Make("z").ReplaceAll("banana", "-"), "banana");
  EXPECT_EQ(Make("x*").ReplaceAll("abc", "-"), "-a-b-c-");
  EXPECT_EQ(Make("//[^\\n]*").ReplaceAll("a // b\nc // d", ""), "a \nc ");
  EXPECT_EQ(Make("a").ReplaceAll("", "-"), "");
  EXPECT_EQ(Make("a").ReplaceAll("a\0a"sv, ""), "\0"sv);
}

TEST_P(PatternTest, CountCountsIteratedMatches) {
  EXPECT_EQ(Make(R"(\bbegin\b)").Count("begin begin_x begin\nbegin"), 3);
  EXPECT_EQ(Make("aa").Count("aaaaa"), 2);
  EXPECT_EQ(Make("x*").Count("axb"), 4);
  EXPECT_EQ(Make("a").Count(""), 0);
  EXPECT_EQ(Make("").Count(""), 1);
}

TEST_P(PatternTest, EmbeddedNulBytesAreOrdinaryBytes) {
  Match m;
  ASSERT_TRUE(Make("b").Search("a\0b"sv, &m));
  EXPECT_EQ(m.Begin(), 2u);
  EXPECT_TRUE(Make("a\\x00b").FullMatch("a\0b"sv));
  EXPECT_TRUE(Make(R"(a\Wb)").FullMatch("a\0b"sv));
}

TEST_P(PatternTest, SearchAfterACrLfStillFindsAMatchStartingAtTheLf) {
  // Scanning on from a failed attempt at a CR moves one byte, onto the LF, as
  // at any other byte.
  Match m;
  ASSERT_TRUE(Make(R"(\n\w)").Search("a\r\nb", &m));
  EXPECT_EQ(m.Begin(), 2u);
}

// A failed attempt at the CR of a CR LF pair must not skip the LF: a match
// may start there.
TEST_P(PatternTest, ImplicitLineFeedMatchAfterCrIsFound) {
  Match m;
  ASSERT_TRUE(Make(R"(\s\w)").Search("a\r\nb", &m));
  EXPECT_EQ(m.Begin(), 2u);
  ASSERT_TRUE(Make(R"([^a]b)").Search("a\r\nb", &m));
  EXPECT_EQ(m.Begin(), 2u);
  EXPECT_EQ(Make(R"(\s\w)").Count("x\r\ny\r\nz"), 2);
}

// A repeated group keeps a backtracking frame per repetition; the limits
// grow with the subject so that such linear work completes.
TEST_P(PatternTest, LinearGroupRepetitionOverAMegabyteCompletes) {
  std::string subject;
  for (int i = 0; i < (1 << 19); ++i) subject += "ab";
  subject += "c";
  EXPECT_TRUE(Make("(?:ab)+c").FullMatch(subject));
  EXPECT_TRUE(Make("(?:a|b)*?c").Search(subject));
}

TEST_P(PatternTest, EmptyClassesFollowEcmaScript) {
  EXPECT_FALSE(Make("a[]").Search("a]"));
  EXPECT_TRUE(Make("a[^]b").FullMatch("a\nb"));
  EXPECT_TRUE(Make("[.]").FullMatch("."));
  EXPECT_FALSE(Make("[.]").FullMatch("x"));
  EXPECT_TRUE(Make(R"(\.)").FullMatch("."));
  EXPECT_FALSE(Make(R"(\.)").FullMatch("x"));
}

TEST_P(PatternTest, CatastrophicBacktrackingThrowsWithThrowPolicy) {
  const Pattern p = Make("(a+)+$");
  for (std::size_t length : {30u, 100'000u}) {
    const std::string subject = std::string(length, 'a') + "b";
    EXPECT_THROW(p.Search(subject), PatternLimitError) << length;
    EXPECT_THROW(p.FullMatch(subject), PatternLimitError) << length;
    EXPECT_THROW(p.Count(subject), PatternLimitError) << length;
  }
}

TEST_P(PatternTest, CatastrophicBacktrackingIsNoMatchWithNoMatchPolicy) {
  const Pattern p = Make("(a+)+$", CaseMode::kSensitive, LimitPolicy::kNoMatch);
  for (std::size_t length : {30u, 100'000u}) {
    const std::string subject = std::string(length, 'a') + "b";
    Match m;
    EXPECT_FALSE(p.Search(subject, &m)) << length;
    EXPECT_FALSE(p.FullMatch(subject)) << length;
    EXPECT_EQ(p.Count(subject), 0) << length;
    EXPECT_EQ(p.ReplaceAll(subject, "x"), subject) << length;
  }
  // The same pattern still matches where it can.
  EXPECT_TRUE(p.Search("aaaa"));
}

TEST_P(PatternTest, LazyScanOverSeveralMegabytesCompletes) {
  const Pattern p = Make(R"(/\*[\s\S]*?\*/)");
  const std::string body(4u << 20, 'x');
  const std::string closed = "a /*" + body + "*/ b";
  Match m;
  ASSERT_TRUE(p.Search(closed, &m));
  EXPECT_EQ(m.Begin(), 2u);
  EXPECT_EQ(m.End(), closed.size() - 2);
  const std::string lines = "/*" + std::string(4u << 20, '\n') + "*/";
  EXPECT_TRUE(p.FullMatch(lines));
  EXPECT_FALSE(p.Search("/*" + body));
  EXPECT_EQ(Make(R"([\s\S]*?\*/)").Count(body + "*/"), 1);
}

TEST_P(PatternTest, LongLinesCompleteForPerLinePatterns) {
  const std::string line = "  wire " + std::string(3u << 20, 'a') + ";";
  EXPECT_TRUE(Make(R"(^\s*(wire|reg)\s*(\w+)\s*;\s*(//.*)?$)").Search(line));
  EXPECT_EQ(Make(R"(\w+)").Count(line), 2);
}

TEST_P(PatternTest, ASharedPatternServesManyThreads) {
  const Pattern p = Make(R"((\w+)\s*=\s*(\w+);)");
  std::string subject;
  for (int i = 0; i < 2000; ++i) subject += "a" + std::to_string(i) + " = b;\n";
  std::vector<int> counts(8, 0);
  std::vector<std::thread> threads;
  for (std::size_t t = 0; t < counts.size(); ++t) {
    threads.emplace_back([&p, &subject, &counts, t] {
      for (int round = 0; round < 20; ++round) counts[t] += p.Count(subject);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int count : counts) EXPECT_EQ(count, 20 * 2000);
}

TEST_P(PatternTest, MovedPatternKeepsWorking) {
  Pattern original = Make("ab+");
  Pattern moved(std::move(original));
  EXPECT_TRUE(moved.Search("xabb"));
  EXPECT_EQ(moved.source(), "ab+");
  Pattern assigned = Make("z");
  assigned = std::move(moved);
  EXPECT_TRUE(assigned.FullMatch("abbb"));
}

TEST_P(PatternTest, SourceIsKeptAsGiven) {
  EXPECT_EQ(Make(R"(\bx\b)").source(), R"(\bx\b)");
}

TEST_P(PatternTest, BadPatternIsALogicError) {
  EXPECT_THROW(Make("("), std::logic_error);
  EXPECT_THROW(Make("a{2,1}"), std::logic_error);
  std::string sixteenGroups;
  for (int i = 0; i < 16; ++i) sixteenGroups += "(a)";
  EXPECT_THROW(Make(sixteenGroups), std::logic_error);
}

INSTANTIATE_TEST_SUITE_P(JitAndInterpreter, PatternTest, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& param) { return param.param ? "Jit" : "NoJit"; });

TEST(PatternConstructorTest, DefaultsAreCaseSensitiveAndThrowing) {
  const Pattern p("(a+)+$");
  EXPECT_FALSE(p.Search("A"));
  EXPECT_THROW(p.Search(std::string(40, 'a') + "b"), PatternLimitError);
  const Pattern icase("(a+)+$", CaseMode::kIgnoreCase);
  EXPECT_TRUE(icase.Search("A"));
  EXPECT_THROW(icase.Search(std::string(40, 'a') + "b"), PatternLimitError);
  const Pattern quiet("(a+)+$", CaseMode::kIgnoreCase, LimitPolicy::kNoMatch);
  EXPECT_FALSE(quiet.Search(std::string(40, 'A') + "b"));
}

}  // namespace
}  // namespace quill
