#include "format/scan/instance_heads.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "format/reference_patterns.h"
#include "format/short_texts.h"

namespace quill {
namespace {

using Reader = std::function<std::optional<InstanceHead>(std::string_view)>;

struct Shape {
  const char* name;
  Reader read;
  const Pattern* pattern;
  bool hasName;  // the pattern's second group is the head's name
};

std::vector<Shape> Shapes() {
  const ReferencePatternTable& p = ReferencePatterns();
  return {
      {"instance head", ReadInstanceHead, &p.kInstanceHeadPattern, true},
      {"parameterised head", ReadParamInstanceHead, &p.kParamInstanceHeadPattern, false},
      {"type and name", ReadTypeAndName, &p.kTypeAndNamePattern, true},
      {"single word", ReadSingleWord, &p.kSingleWordPattern, false},
      {"call head", ReadCallHead, &p.kCallHeadPattern, false},
  };
}

// The reader agrees with its pattern: both match or neither, with the same
// words and the same end of the whole match.
void ExpectAgreement(const Shape& shape, std::string_view text) {
  Match match;
  const bool matched = shape.pattern->Search(text, &match);
  const std::optional<InstanceHead> head = shape.read(text);
  ASSERT_EQ(head.has_value(), matched) << shape.name << " on \"" << text << "\"";
  if (!matched) return;
  EXPECT_EQ(head->type, match.Group(1)) << shape.name << " on \"" << text << "\"";
  if (shape.hasName) {
    EXPECT_EQ(head->name, match.Group(2)) << shape.name << " on \"" << text << "\"";
  }
  EXPECT_EQ(head->end, match.End(0)) << shape.name << " on \"" << text << "\"";
}

// The one-walk shape tests agree with the patterns they combine.
void ExpectCombinedAgreement(std::string_view text) {
  const ReferencePatternTable& p = ReferencePatterns();
  const bool instance = p.kInstanceHeadPattern.Search(text);
  const bool param = p.kParamInstanceHeadPattern.Search(text);
  const bool typeAndName = p.kTypeAndNamePattern.Search(text);
  const bool singleWord = p.kSingleWordPattern.Search(text);
  EXPECT_EQ(HasInstanceOrParamHead(text), instance || param) << "on \"" << text << "\"";
  EXPECT_EQ(HasAnyHeaderShape(text), instance || param || typeAndName || singleWord) << "on \"" << text << "\"";
}

std::vector<std::string> NamedCases() {
  return {
      "fifo u_fifo (", "and g1(a, b, c);", "A\tB  (", "  fifo u_fifo (", "fifo #(", "fifo # (.W(8)) u (",
      "fifo#(", "fifo u_fifo", "fifo(", "a\tb", "a b c", "a b\n", "fifo", "_1", "fifo ", "a\n", "", "a-b",
      "foo (x)", "foo bar(", "x\v y\f(", "a b ", "a #", "a # x", "a b #(",
  };
}

TEST(InstanceHeadsTest, CombinedShapesOnNamedCases) {
  for (const std::string& text : NamedCases()) ExpectCombinedAgreement(text);
}

TEST(InstanceHeadsTest, NamedCases) {
  const std::vector<std::string> cases = {
      "fifo u_fifo (", "and g1(a, b, c);", "A\tB  (", "  fifo u_fifo (", "fifo #(", "fifo # (.W(8)) u (",
      "fifo#(", "fifo u_fifo", "fifo(", "a\tb", "a b c", "a b\n", "fifo", "_1", "fifo ", "a\n", "", "a-b",
      "foo (x)", "foo bar(", "x\v y\f(",
  };
  for (const Shape& shape : Shapes()) {
    for (const std::string& text : cases) ExpectAgreement(shape, text);
  }
}

TEST(InstanceHeadsTest, AgreesWithThePatternsOnEveryShortText) {
  // Every text of up to five bytes from bytes that matter to the shapes:
  // word bytes, the white space kinds, "(", "#" and one other byte.
  const std::string alphabet = "a_1 \t\n\v(#.";
  const std::vector<std::string> texts = EveryShortText(alphabet, 5);
  const std::vector<Shape> shapes = Shapes();
  for (const std::string& text : texts) {
    for (const Shape& shape : shapes) ExpectAgreement(shape, text);
    ExpectCombinedAgreement(text);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace quill
