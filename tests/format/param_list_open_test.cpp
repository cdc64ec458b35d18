#include "format/scan/param_list_open.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "format/reference_patterns.h"
#include "format/short_texts.h"

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
  const std::vector<std::string> texts = EveryShortText(alphabet, 6);
  for (const std::string& text : texts) ASSERT_EQ(OpensParamList(text), MatchesAPattern(text)) << text;
}

}  // namespace
}  // namespace quill
