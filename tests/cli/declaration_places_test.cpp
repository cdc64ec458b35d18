#include "precision/declaration_places.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "lint/lint_text.h"
#include "lint/steps.h"
#include "precision/generate_scopes.h"

namespace quill::cli {
namespace {

std::vector<std::uint32_t> PlaceLines(std::string_view text, std::string_view name) {
  const std::vector<Token> tokens = TokenizeVerilog(text);
  std::vector<std::uint32_t> lines;
  for (const DeclarationPlace& place : FindDeclarationPlaces(tokens, name)) {
    lines.push_back(tokens[place.statement].line);
  }
  return lines;
}

struct PlaceCase {
  const char* name;
  const char* text;
  const char* signal;
  std::vector<std::uint32_t> lines;  // of the declarations each place belongs to
};

class DeclarationPlacesTest : public ::testing::TestWithParam<PlaceCase> {};

TEST_P(DeclarationPlacesTest, FindsThePlacesTheLinterCounts) {
  const PlaceCase& c = GetParam();
  EXPECT_EQ(PlaceLines(c.text, c.signal), c.lines);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, DeclarationPlacesTest,
    ::testing::Values(PlaceCase{"PlainDeclaration", "reg [3:0] q;\n", "q", {0}},
                      PlaceCase{"ListOfNames", "wire a, q, b;\n", "q", {0}},
                      PlaceCase{"AnyLetterCaseOfTheKeyword", "WIRE q;\n", "q", {0}},
                      PlaceCase{"ReadInAnInitializer", "wire r = q;\n", "q", {}},
                      PlaceCase{"MiddleOfAConcatenationInAnInitializer", "wire [2:0] r = {a, q, b};\n", "q", {0}},
                      PlaceCase{"LastOfAConcatenation", "wire [1:0] r = {a, q};\n", "q", {}},
                      PlaceCase{"JoinedLines", "wire [1:0] r,\n  q;\n", "q", {0}},
                      PlaceCase{"JoinStopsAtADeclarationWord", "input a\ninput q;\n", "q", {1}},
                      PlaceCase{"JoinStopsAfterAParenthesis", "input a)\n  q;\n", "q", {}},
                      PlaceCase{"SelectsAfterTheName", "wire a, q[3:0][1:0], b;\n", "q", {0}},
                      PlaceCase{"TypeNameBefore", "input status_t q;\n", "q", {}},
                      PlaceCase{"OtherStatementAfterIt", "reg q; assign q = 1;\n", "q", {0}},
                      PlaceCase{"NotADeclarationLine", "assign q = 1;\nlocalparam q = 2;\n", "q", {}},
                      PlaceCase{"ModportListOverLines", "modport m (\n  input a,\n        q\n);\n", "q", {1}}),
    [](const ::testing::TestParamInfo<PlaceCase>& param) { return std::string(param.param.name); });

// The linter's own reading is the reference: on texts of declaration
// fragments and comments, each of its declarations of a name stands at a place found
// (the places may hold more: a word such as "Wire" inside a list is taken
// for the head of the declaration).
TEST(DeclarationPlacesTest, HoldEveryDeclarationTheLinterCountsOnRandomText) {
  const std::vector<std::string> fragments = {
      "input ", "output ", "inout ", "wire ", "reg ", "logic ", "Wire ", "signed ", "int ",   "a", "q",
      "a_q",    " ",       ",",      ";",     "=",    "==",     "[",     "]",       "3:0",    "(", ")",
      "{",      "}",       ":",      "1",     "\n",   "\n",     "\n  ",  "// ;)\n", "/* ) */"};
  std::mt19937 random(2026);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const int pieces = 1 + static_cast<int>(random() % 24);
    for (int k = 0; k < pieces; ++k) text += fragments[random() % fragments.size()];
    std::map<std::string, std::vector<std::uint32_t>, std::less<>> counted;
    for (const SignalDecl& declaration : ExtractDeclarations(PrepareText(text))) {
      counted[declaration.name].push_back(declaration.line);
    }
    for (std::string_view name : {"a", "q", "a_q"}) {
      std::vector<std::uint32_t> left = PlaceLines(text, name);
      const auto found = counted.find(name);
      if (found == counted.end()) continue;
      for (std::uint32_t line : found->second) {
        const auto place = std::find(left.begin(), left.end(), line);
        ASSERT_NE(place, left.end()) << "no place for " << name << " on line " << line << " in:\n" << text;
        left.erase(place);
      }
    }
  }
}

// The declarations found once for a file, as the filters hold them, give
// the same places for every name as a search of its own.
TEST(DeclarationPlacesTest, DeclarationsFoundOnceGiveTheSamePlaces) {
  const std::string text =
      "module m;\n  input a, b;\n  wire [3:0] q = a, c;\n  REG a;\n  assign q = b;\n  output\n    c;\nendmodule\n";
  const GenerateScopes scopes(text);
  const std::vector<DeclarationStatement>& statements = scopes.LinterDeclarationStatements();
  EXPECT_EQ(&statements, &scopes.LinterDeclarationStatements());
  ASSERT_EQ(statements.size(), 4u);
  for (std::string_view name : {"a", "b", "c", "q", "m"}) {
    std::vector<std::size_t> once;
    for (const DeclarationPlace& place : FindDeclarationPlaces(scopes.Tokens(), statements, name)) {
      once.push_back(place.token);
    }
    std::vector<std::size_t> alone;
    for (const DeclarationPlace& place : FindDeclarationPlaces(scopes.Tokens(), name)) alone.push_back(place.token);
    EXPECT_EQ(once, alone) << name;
  }
  EXPECT_EQ(FindDeclarationPlaces(scopes.Tokens(), statements, "a").size(), 2u);
}

}  // namespace
}  // namespace quill::cli
