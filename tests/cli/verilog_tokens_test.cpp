#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "precision/verilog_tokens.h"

namespace quill::cli {
namespace {

struct KeywordCase {
  const char* word;
  Keyword keyword;
};

const KeywordCase kKeywordCases[] = {
    {"always", Keyword::kAlways},       {"always_ff", Keyword::kAlwaysFf},     {"always_comb", Keyword::kAlwaysComb},
    {"join_none", Keyword::kJoinNone},  {"endmodule", Keyword::kEndmodule},    {"end", Keyword::kEnd},
    {"endcase", Keyword::kEndcase},     {"wor", Keyword::kWor},                {"wire", Keyword::kWire},
    {"unique0", Keyword::kUnique0},     {"tri1", Keyword::kTri1},              {"macromodule", Keyword::kMacromodule},
    {"localparam", Keyword::kLocalparam}, {"if", Keyword::kIf},               {"End", Keyword::kNone},
    {"ends", Keyword::kNone},           {"en", Keyword::kNone},                {"e", Keyword::kNone},
    {"", Keyword::kNone},               {"_end", Keyword::kNone},              {"always_", Keyword::kNone},
    {"zend", Keyword::kNone},           {"$display", Keyword::kNone},          {"wires", Keyword::kNone},
    {"endinterface", Keyword::kEndinterface}, {"always_latch", Keyword::kAlwaysLatch},
    {"endinterfaces", Keyword::kNone},  {"endinterfacf", Keyword::kNone},      {"wore", Keyword::kNone},
};

TEST(KeywordOfTest, FindsExactSpellingsOnly) {
  for (const KeywordCase& c : kKeywordCases) EXPECT_EQ(KeywordOf(c.word), c.keyword) << c.word;
}

// Text, kind, keyword and line of each token, as one string per token.
std::vector<std::string> Describe(std::string_view text) {
  std::vector<std::string> out;
  for (const Token& token : TokenizeVerilog(text)) {
    EXPECT_EQ(text.substr(token.offset, token.text.size()), token.text);
    out.push_back(std::string(token.text) + " " + std::to_string(static_cast<int>(token.kind)) + " " +
                  std::to_string(static_cast<int>(token.keyword)) + " " + std::to_string(token.line));
  }
  return out;
}

struct TokenCase {
  const char* name;
  std::string text;
  std::vector<std::string> expected;
};

class TokenizeVerilogTest : public ::testing::TestWithParam<TokenCase> {};

TEST_P(TokenizeVerilogTest, GivesEachTokenItsKindKeywordAndLine) {
  EXPECT_EQ(Describe(GetParam().text), GetParam().expected);
}

const std::string kEnd = std::to_string(static_cast<int>(Keyword::kEnd));
const std::string kBegin = std::to_string(static_cast<int>(Keyword::kBegin));

const TokenCase kTokenCases[] = {
    {"WordsAndSymbols", "begin x <= 1'b0; end", {"begin 0 " + kBegin + " 0", "x 0 0 0", "<= 2 0 0", "1'b0 1 0 0",
                                                 "; 2 0 0", "end 0 " + kEnd + " 0"}},
    {"LinesPastBlanksAndComments", "a\n\n// c\nb /* x\ny */ c\r\n\td",
     {"a 0 0 0", "b 0 0 3", "c 0 0 4", "d 0 0 5"}},
    {"StringWithAnEscapedLineFeed", "\"a\\\nb\" x\ny", {"x 0 0 1", "y 0 0 2"}},
    {"DefineLinesAndMacros", "`define M(a) a \\\n  + 1\n`M(z) end", {"`M 3 0 2", "( 2 0 2", "z 0 0 2", ") 2 0 2",
                                                                      "end 0 " + kEnd + " 2"}},
    {"EscapedIdentifierIsNoKeyword", "\\end \nq", {"\\end 0 0 0", "q 0 0 1"}},
    {"DirectiveNamesLeftOut", "`ifdef end\nx\n`endif", {"x 0 0 1"}},
};

INSTANTIATE_TEST_SUITE_P(Cases, TokenizeVerilogTest, ::testing::ValuesIn(kTokenCases),
                         [](const ::testing::TestParamInfo<TokenCase>& param) { return std::string(param.param.name); });

}  // namespace
}  // namespace quill::cli
