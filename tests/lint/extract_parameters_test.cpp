#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include "common/pattern.h"
#include "lint/lint_text.h"
#include "lint/steps.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// A ParamDecl as a comparable, printable value.
struct Param {
  std::string name;
  std::string value;
  std::uint32_t line = 0;

  friend bool operator==(const Param&, const Param&) = default;
  friend void PrintTo(const Param& p, std::ostream* out) {
    *out << "{" << testing::PrintToString(p.name) << ", " << testing::PrintToString(p.value) << ", line " << p.line
         << "}";
  }
};

using Params = std::vector<Param>;

Params Extract(std::string_view text) {
  Params params;
  for (const ParamDecl& p : ExtractParameters(text)) params.push_back({p.name, p.value, p.line});
  return params;
}

struct ParameterCase {
  const char* name;
  const char* text;
  Params expected;
};

class ExtractParametersTest : public testing::TestWithParam<ParameterCase> {};

TEST_P(ExtractParametersTest, Records) {
  EXPECT_EQ(Extract(GetParam().text), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ExtractParametersTest,
    testing::Values(
        ParameterCase{"Simple", "parameter WIDTH = 8;", {{"WIDTH", "8", 0}}},
        ParameterCase{"IntegerType", "parameter integer N = 4;", {{"N", "4", 0}}},
        ParameterCase{"LocalparamWithRange", "localparam [7:0] M = 8'hFF;", {{"M", "8'hFF", 0}}},
        ParameterCase{"OnlyFirstOfAStatement", "parameter A = 1, B = 2;", {{"A", "1", 0}}},
        ParameterCase{"HeaderValueRunsToNextComma",
                      "module m #(parameter W = 8) (input clk, output q);",
                      {{"W", "8) (input clk", 0}}},
        ParameterCase{"MultiLineValueKeepsLineFeed", "parameter T = 1\n+ 2;", {{"T", "1\n+ 2", 0}}},
        ParameterCase{"CaseInsensitiveKeywords", "PARAMETER P = 1;\nLocalParam Q = 2;", {{"P", "1", 0}, {"Q", "2", 1}}},
        ParameterCase{"WithoutEqualsNotRecorded", "parameter X;", {}},
        ParameterCase{"LineOfTheKeyword", "\n\nparameter A =\n 1;", {{"A", "1", 2}}},
        ParameterCase{"OnlyBlanksKeptUntrimmed", "parameter A =  ;", {{"A", " ", 0}}},
        ParameterCase{"OnlyCarriageReturnKept", "parameter A =\r;", {{"A", "\r", 0}}},
        ParameterCase{"LineFeedValue", "parameter A =\n;", {{"A", "\n", 0}}},
        ParameterCase{"BlankValueAtEndOfText", "parameter A = ", {{"A", " ", 0}}},
        ParameterCase{"EmptyValueNotRecorded", "parameter A =;parameter B = 2;", {{"B", "2", 0}}},
        ParameterCase{"TrailingLineFeedNotTrimmed", "parameter A = 1\n;", {{"A", "1\n", 0}}},
        ParameterCase{"TypeWordAsName", "parameter signed = 1;", {{"signed", "1", 0}}},
        ParameterCase{"RealAsName", "parameter real = 2.5;", {{"real", "2.5", 0}}},
        ParameterCase{"RealtimeType", "parameter realtime T = 1.0;", {{"T", "1.0", 0}}},
        ParameterCase{"RealType", "parameter real r = 1.5;", {{"r", "1.5", 0}}},
        ParameterCase{"TypeWordPrefixIsName", "parameter signedx = 1;", {{"signedx", "1", 0}}},
        ParameterCase{"RangeBeforeType", "parameter [3:0] signed x = 1;", {{"x", "1", 0}}},
        ParameterCase{"TypeBeforeRangeNotRecorded", "parameter signed [3:0] x = 1;", {}},
        ParameterCase{"KeywordMustBeAWholeWord", "myparameter A = 1; parameter_x B = 2; localparams C = 3;", {}},
        ParameterCase{"ValueTrimmed", "parameter A =\t 1 \t;", {{"A", "1", 0}}},
        ParameterCase{"ValueTakesTheNextKeyword", "parameter A = parameter B = 2;", {{"A", "parameter B = 2", 0}}},
        ParameterCase{"SearchResumesAfterTheValue",
                      "parameter A = 1; localparam B = A + 1, parameter C = 3;",
                      {{"A", "1", 0}, {"B", "A + 1", 0}, {"C", "3", 0}}},
        ParameterCase{"ValueRunsToEndOfText", "parameter A = x\ny", {{"A", "x\ny", 0}}},
        ParameterCase{"UnclosedRangeNotRecorded", "parameter [3:0 A = 1;", {}},
        ParameterCase{"RangeSpansLines", "parameter [\n3:0\n] A = 1;", {{"A", "1", 0}}},
        ParameterCase{"NoSpaceBeforeNameNotRecorded", "parameter[3:0] A = 1;", {}}),
    [](const testing::TestParamInfo<ParameterCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(ExtractParametersNamesTest, NamesDifferingInCaseAreBothKept) {
  EXPECT_EQ(Extract("parameter Width = 1;\nlocalparam WIDTH = 2;"), (Params{{"Width", "1", 0}, {"WIDTH", "2", 1}}));
}

TEST(ExtractParametersNamesTest, TabsAreSpacesAfterPreparation) {
  EXPECT_EQ(Extract(PrepareText("parameter\tP\t=\t1;")), (Params{{"P", "1", 0}}));
}

// The matcher must give what iterating the declaration pattern gives.
Params ExtractWithPattern(std::string_view text) {
  static const Pattern kParameterPattern(
      R"(\b(parameter|localparam)\b(?:\s+(\[[^\]]*\]))?(?:\s+(signed|integer|real|realtime|time))?\s+(\w+)\s*=\s*([^;,]+))",
      CaseMode::kIgnoreCase);
  Params params;
  kParameterPattern.ForEachMatch(text, [&](const Match& match) {
    std::string value = match.Str(5);
    const std::size_t start = value.find_first_not_of(" \t\r");
    if (start != std::string::npos) {
      value = value.substr(start, value.find_last_not_of(" \t\r") - start + 1);
    }
    const auto line = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(match.Begin()), '\n');
    params.push_back({match.Str(4), value, static_cast<std::uint32_t>(line)});
  });
  return params;
}

TEST(ExtractParametersAgreementTest, MatchesThePatternOnRandomText) {
  const std::vector<std::string> tokens = {
      "parameter", "localparam", "PARAMETER", "LocalParam", " ",        " ",    "\n",   "\r", "\t", "\v",  "[", "]",
      "3:0",       "signed",     "integer",   "real",       "realtime", "time", "TIME", "x",  "y1", "=",   "=", ";",
      ",",         "(",          ")",         "1",          "#",        "_",    "a b",  "'h", "my", "\xc3"};
  std::mt19937 random(2024);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const std::size_t count = random() % 24;
    for (std::size_t i = 0; i < count; ++i) text += tokens[random() % tokens.size()];
    ASSERT_EQ(Extract(text), ExtractWithPattern(text)) << testing::PrintToString(text);
  }
}

TEST(ExtractParametersAgreementTest, MatchesThePatternOnStructuredText) {
  const std::vector<std::string> keywords = {"parameter", "localparam", "Parameter", "xparameter"};
  const std::vector<std::string> ranges = {"", " [7:0]", " [", " ]", " [a]", "[1]", " [3:0]\n"};
  const std::vector<std::string> types = {"", " signed", " real", " realtime", " time", " integer", " reals"};
  const std::vector<std::string> names = {" A", "  B_1", "", " real", " [x]", "\nC"};
  const std::vector<std::string> equals = {" =", "=", " ==", " :", ""};
  const std::vector<std::string> values = {" 1;", "  ;", ";", " 8) (input a,", "\n", " ,", " x\n+ y;", ""};
  for (const auto& k : keywords)
    for (const auto& r : ranges)
      for (const auto& t : types)
        for (const auto& n : names)
          for (const auto& e : equals)
            for (const auto& v : values) {
              const std::string text = k + r + t + n + e + v + " parameter Z = 2;";
              ASSERT_EQ(Extract(text), ExtractWithPattern(text)) << testing::PrintToString(text);
            }
}

TEST(ExtractParametersAgreementTest, MatchesThePatternOnTheCorpus) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const CorpusSource& source : sources) {
    const std::string prepared = PrepareText(source.text);
    EXPECT_EQ(Extract(prepared), ExtractWithPattern(prepared)) << source.path;
  }
}

TEST(ExtractParametersPathologicalTest, ValueRunningAcrossTheRestOfTheFile) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "parameter x = ";
  const Params params = Extract(text);
  ASSERT_EQ(params.size(), 1u);
  EXPECT_EQ(params[0].name, "x");
  EXPECT_EQ(params[0].value.size(), text.size() - 15);
}

TEST(ExtractParametersPathologicalTest, UnclosedRangeAfterEveryKeyword) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "parameter [ ";
  EXPECT_TRUE(Extract(text).empty());
}

TEST(ExtractParametersPathologicalTest, SharedRangeFollowedByLongBlanks) {
  std::string text;
  for (int i = 0; i < 50'000; ++i) text += "parameter [ ";
  text += "]" + std::string(200'000, ' ') + ";";
  EXPECT_TRUE(Extract(text).empty());
}

TEST(ExtractParametersPathologicalTest, KeywordsWithoutEquals) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "parameter x\n";
  EXPECT_TRUE(Extract(text).empty());
}

}  // namespace
}  // namespace quill
