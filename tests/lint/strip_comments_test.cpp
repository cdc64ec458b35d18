#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

#include "lint/lint_text.h"
#include "lint/steps.h"

namespace quill {
namespace {

using namespace std::string_literals;

struct StripCase {
  const char* name;
  std::string input;
  std::string expected;
};

class StripCommentsTest : public testing::TestWithParam<StripCase> {};

TEST_P(StripCommentsTest, BlanksCommentsKeepingPositions) {
  const StripCase& c = GetParam();
  const std::string stripped = StripComments(c.input);
  EXPECT_EQ(stripped, c.expected);
  EXPECT_EQ(stripped.size(), c.input.size());
}

INSTANTIATE_TEST_SUITE_P(
    Cases, StripCommentsTest,
    testing::Values(StripCase{"Empty", "", ""}, StripCase{"NoComment", "wire a;\n", "wire a;\n"},
                    StripCase{"LineComment", "a // b\nc", "a     \nc"}, StripCase{"LineCommentAtEnd", "a //", "a   "},
                    StripCase{"LineCommentBlanksCrBeforeLf", "x // c\r\ny", "x      \ny"},
                    StripCase{"BlockComment", "a /* b */ c", "a         c"},
                    StripCase{"BlockCommentKeepsCrAndLf", "/* a\r\nb */x", "    \r\n    x"},
                    StripCase{"UnterminatedBlockCommentRunsToEnd", "a /* b\nc", "a     \n "},
                    StripCase{"SlashStarSlashDoesNotClose", "/*/ x */y", "        y"},
                    StripCase{"SlashStarSlashAlone", "/*/", "   "}, StripCase{"EmptyBlockComment", "/**/", "    "},
                    StripCase{"BlockTestComesFirst", "/*//*/x", "      x"},
                    StripCase{"BlockMarkerInsideLineComment", "// a /* b\nc */", "         \nc */"},
                    StripCase{"LineMarkerInsideString", "s = \"http://x\";\nt", "s = \"http:     \nt"},
                    StripCase{"LoneSlash", "/", "/"}, StripCase{"SlashAtEnd", "a/", "a/"},
                    StripCase{"DivisionIsNotAComment", "a = b / c;", "a = b / c;"},
                    StripCase{"StarSlashWithoutOpenStays", "a */ b", "a */ b"},
                    StripCase{"NulBytesKept", "a\0b//\0\nc"s, "a\0b   \nc"s},
                    StripCase{"TwoBlockComments", "/*a*/b/*c*/", "     b     "},
                    StripCase{"TabsInsideCommentBecomeSpaces", "/*\t*/\t", "     \t"}),
    [](const testing::TestParamInfo<StripCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(StripCommentsTest, UnterminatedBlockCommentKeepsLaterLineNumbers) {
  const std::string text = "wire a;\n/* open\nwire b;\r\nwire c;\n";
  const std::string stripped = StripComments(text);
  EXPECT_EQ(stripped, "wire a;\n       \n       \r\n       \n");
  EXPECT_EQ(std::count(stripped.begin(), stripped.end(), '\n'), std::count(text.begin(), text.end(), '\n'));
}

TEST(StripCommentsTest, KeepsLengthAndLineBreaksOnRandomText) {
  std::mt19937 random(7);
  const std::string alphabet = "/*\n\r a\"";
  for (int round = 0; round < 2000; ++round) {
    std::string text(random() % 40, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    const std::string stripped = StripComments(text);
    ASSERT_EQ(stripped.size(), text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '\n') {
        ASSERT_EQ(stripped[i], '\n') << text;
      } else {
        ASSERT_TRUE(stripped[i] == text[i] || stripped[i] == ' ') << text;
      }
    }
  }
}

TEST(PrepareTextTest, TurnsTabsIntoSpacesAfterStrippingComments) {
  EXPECT_EQ(PrepareText("wire\ta,\tb; // x\ty\n\t"), "wire a, b;       \n ");
}

TEST(StripCommentsTest, TenMegabyteUnterminatedComment) {
  std::string text = "module m;\n/*";
  while (text.size() < 10'000'000) text += "x\n";
  const std::string stripped = StripComments(text);
  EXPECT_EQ(stripped.substr(0, 12), "module m;\n  ");
  EXPECT_EQ(std::count(stripped.begin(), stripped.end(), '\n'), std::count(text.begin(), text.end(), '\n'));
  EXPECT_EQ(stripped.find('x'), std::string::npos);
}

}  // namespace
}  // namespace quill
