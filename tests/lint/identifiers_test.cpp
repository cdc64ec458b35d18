#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "common/pattern.h"
#include "lint/check_test_support.h"
#include "lint/identifiers.h"
#include "lint/keyword_set.h"
#include "lint/lint_text.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// The keyword test agrees with the engine's keyword table, in any letter
// case, whatever the shape filter in front of the table lookup.
TEST(KeywordSetTest, EveryTableWordIsAKeywordInAnyCase) {
  EXPECT_EQ(KeywordSet().size(), 162u);
  for (const std::string& word : KeywordSet()) {
    EXPECT_TRUE(IsKeyword(word)) << word;
    std::string upper = word;
    for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    EXPECT_TRUE(IsKeyword(upper)) << upper;
  }
}

TEST(KeywordSetTest, TableWordsAreLowerCase) {
  for (const std::string& word : KeywordSet()) EXPECT_EQ(ToLowerAscii(word), word);
}

TEST(IsKeywordTest, IgnoresCase) {
  for (const char* word : {"Input", "MODULE", "always_FF", "WIRE", "Begin", "POSEDGE"}) {
    EXPECT_TRUE(IsKeyword(word)) << word;
  }
}

TEST(IsKeywordTest, WholeWordsOnly) {
  for (const char* word : {"inputs", "always_comb_x", "assert", "final", "string", "void", "", "in", "wir"}) {
    EXPECT_FALSE(IsKeyword(word)) << word;
  }
  EXPECT_TRUE(IsKeyword("always_comb"));
}

std::vector<std::string> Identifiers(std::string_view text) {
  std::vector<std::string> result;
  for (std::string_view identifier : ExtractIdentifiers(text)) result.emplace_back(identifier);
  return result;
}

using Words = std::vector<std::string>;

TEST(ExtractIdentifiersTest, Examples) {
  EXPECT_EQ(Identifiers("a_1 + _b - 3"), (Words{"a_1", "_b"}));
  EXPECT_EQ(Identifiers("$display(\"x\")"), (Words{"display", "x"}));
  EXPECT_EQ(Identifiers("u1.q"), (Words{"u1", "q"}));
  EXPECT_EQ(Identifiers("#1ns"), (Words{}));
  EXPECT_EQ(Identifiers("\"hello world\""), (Words{"hello", "world"}));
  EXPECT_EQ(Identifiers("8'hFF"), (Words{"hFF"}));
  EXPECT_EQ(Identifiers("4'b1010"), (Words{"b1010"}));
  EXPECT_EQ(Identifiers("\\esc$aped a"), (Words{"esc", "aped", "a"}));
  EXPECT_EQ(Identifiers("a\xc3\xa9z"), (Words{"a", "z"}));
  EXPECT_EQ(Identifiers("x x X"), (Words{"x", "x", "X"}));
  EXPECT_EQ(Identifiers(""), (Words{}));
}

TEST(ExtractIdentifiersTest, AgreesWithTheIdentifierPatternOnRandomText) {
  const Pattern identifierPattern(R"(\b([a-zA-Z_]\w*)\b)");
  std::mt19937 random(11);
  const std::string alphabet = "aZ_09 .'$\xc3\n";
  for (int round = 0; round < 3000; ++round) {
    std::string text(random() % 30, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    Words expected;
    identifierPattern.ForEachMatch(text, [&expected](const Match& match) { expected.push_back(match.Str(1)); });
    ASSERT_EQ(Identifiers(text), expected) << text;
  }
}

TEST(ExtractIdentifiersTest, AgreesWithTheIdentifierPatternOnTheCorpus) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  const Pattern identifierPattern(R"(\b([a-zA-Z_]\w*)\b)");
  for (const CorpusSource& source : sources) {
    const std::string prepared = PrepareText(source.text);
    Words expected;
    identifierPattern.ForEachMatch(prepared, [&expected](const Match& match) { expected.push_back(match.Str(1)); });
    EXPECT_EQ(Identifiers(prepared), expected) << source.path;
  }
}

TEST(IsNumberTokenTest, Examples) {
  for (const char* word : {"0", "123", "8'h", "8'H", "16'b", "2'd", "3'O", "007"}) {
    EXPECT_TRUE(IsNumberToken(word)) << word;
  }
  for (const char* word : {"", "abc", "12a", "8'x", "'h", "8'hF", "8'", "8 'h", "1.5", "x1", "8'h'"}) {
    EXPECT_FALSE(IsNumberToken(word)) << word;
  }
}

TEST(IsNumberTokenTest, AgreesWithTheDigitAndPrefixPatterns) {
  const Pattern digitsPattern(R"(^\d+$)");
  const Pattern sizedPrefixPattern(R"(^\d+'[bhdo])", CaseMode::kIgnoreCase);
  std::mt19937 random(5);
  const std::string alphabet = "019'bhdoBHxa";
  for (int round = 0; round < 3000; ++round) {
    std::string word(random() % 6, ' ');
    for (char& c : word) c = alphabet[random() % alphabet.size()];
    const bool expected = digitsPattern.FullMatch(word) || sizedPrefixPattern.FullMatch(word);
    ASSERT_EQ(IsNumberToken(word), expected) << word;
  }
}

TEST(StripSizedLiteralsTest, Examples) {
  EXPECT_EQ(StripSizedLiterals("x == 16 'h ff"), "x ==  ");
  EXPECT_EQ(StripSizedLiterals("8'HFF"), " ");
  EXPECT_EQ(StripSizedLiterals("a + 8'hFF"), "a +  ");
  EXPECT_EQ(StripSizedLiterals("4'b1010 & b"), "  & b");
  EXPECT_EQ(StripSizedLiterals("'hFF"), "'hFF");
  EXPECT_EQ(StripSizedLiterals("a8'hFF"), "a8'hFF");
  EXPECT_EQ(StripSizedLiterals("{2'b0, 3'd7}"), "{ ,  }");
  EXPECT_EQ(StripSizedLiterals("no literal"), "no literal");
}

TEST(LeadingWordTest, Examples) {
  EXPECT_EQ(LeadingWord("  data[3]"), "data");
  EXPECT_EQ(LeadingWord("{a,b}"), "");
  EXPECT_EQ(LeadingWord(""), "");
  EXPECT_EQ(LeadingWord("\r\t x y"), "x");
  EXPECT_EQ(LeadingWord("\nx"), "");
  EXPECT_EQ(LeadingWord("3abc+d"), "3abc");
}

TEST(RecordFirstUseTest, KeepsTheSmallestLine) {
  NameMap uses;
  RecordFirstUse(uses, "sig", 7);
  RecordFirstUse(uses, "sig", 3);
  RecordFirstUse(uses, "sig", 5);
  ASSERT_EQ(uses.size(), 1u);
  EXPECT_EQ(uses.at("sig"), 3);
}

TEST(RecordFirstUseTest, IgnoresCaseAndKeepsFirstSpelling) {
  NameMap uses;
  RecordFirstUse(uses, "Clk", 5);
  RecordFirstUse(uses, "clk", 2);
  RecordFirstUse(uses, "CLK", -1);
  ASSERT_EQ(uses.size(), 1u);
  EXPECT_EQ(uses.begin()->first, "Clk");
  EXPECT_EQ(uses.begin()->second, -1);
}

// The hand scan stands for the pattern: the same replacements, and the
// identifiers left between them are those of the stripped text.
TEST(StripSizedLiteralsTest, AgreesWithTheSizedLiteralPatternOnRandomText) {
  const Pattern sizedLiteralPattern(R"(\b\d+\s*'\s*[bhdoBHDO]\s*\w+)", CaseMode::kIgnoreCase);
  std::mt19937 random(17);
  const std::string alphabet = "18'hHbdOoxF_ \n\t\v(\xc3";
  for (int round = 0; round < 20000; ++round) {
    std::string text(random() % 24, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    const std::string expected = sizedLiteralPattern.ReplaceAll(text, " ");
    ASSERT_EQ(StripSizedLiterals(text), expected) << text;
    Words identifiers;
    ForEachIdentifier<SizedLiterals::kSkipped>(
        text, [&identifiers](std::string_view word) { identifiers.emplace_back(word); });
    ASSERT_EQ(identifiers, Identifiers(expected)) << text;
  }
}

TEST(SizedLiteralEndTest, Examples) {
  EXPECT_EQ(SizedLiteralEnd("8'hFF;", 0), 5u);
  EXPECT_EQ(SizedLiteralEnd("16 ' h ff x", 0), 9u);
  EXPECT_EQ(SizedLiteralEnd("12ab'hF", 0), 0u);
  EXPECT_EQ(SizedLiteralEnd("8'h", 0), 0u);
  EXPECT_EQ(SizedLiteralEnd("8'x1", 0), 0u);
  EXPECT_EQ(SizedLiteralEnd("a 4'b1", 2), 6u);
}

TEST(RecordUsesTest, SkipsKeywordsNumbersAndSizedLiterals) {
  NameMap uses;
  RecordUses("a + 8'hFF & begin | b[3:0] | 'hFF", 4, uses);
  EXPECT_EQ(test::NamesOf(uses), (NameSet{"a", "b", "hFF"}));
  EXPECT_EQ(uses, (NameMap{{"a", 4}, {"b", 4}, {"hFF", 4}}));
}

}  // namespace
}  // namespace quill
