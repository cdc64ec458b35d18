#include "format/scan/param_list_open.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "format/reference_patterns.h"

namespace quill {
namespace {

bool MatchesAPattern(const std::string& text) {
  const ReferencePatternTable& p = ReferencePatterns();
  return p.kParamListOpenPattern.Search(text) || p.kNamedParamListOpenPattern.Search(text);
}

TEST(OpensParamListTest, ExactAnswers) {
  struct Case {
    const char* text;
    bool opens;
  };
  const Case cases[] = {
      {"module fifo #(", true},   {"fifo #(.W(8)) u (", true}, {"  #(", true},      {"#\t(", true},
      {"fifo#(", false},          {"fifo # x(", false},        {"(#(", false},      {"a = b #(", true},
      {"a = (b) #(", false},      {"a # # (", false},          {"", false},         {"x\v#\f(", true},
      {"// fifo #(", true},       {"fifo #", false},           {"a #( b #(", true}, {") #(", false},
  };
  for (const Case& c : cases) EXPECT_EQ(OpensParamList(c.text), c.opens) << c.text;
}

// Every text of up to six bytes from the bytes that matter to the patterns.
TEST(OpensParamListTest, AgreesWithThePatternsOnEveryShortText) {
  const std::string alphabet = "a #(\t)";
  std::vector<std::string> texts = {""};
  std::size_t begin = 0;
  for (int length = 1; length <= 6; ++length) {
    const std::size_t end = texts.size();
    for (std::size_t i = begin; i < end; ++i) {
      for (char c : alphabet) texts.push_back(texts[i] + c);
    }
    begin = end;
  }
  for (const std::string& text : texts) ASSERT_EQ(OpensParamList(text), MatchesAPattern(text)) << text;
}

}  // namespace
}  // namespace quill
