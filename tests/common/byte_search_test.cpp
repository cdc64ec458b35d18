#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>

#include "common/byte_search.h"

namespace quill {
namespace {

constexpr std::size_t kNone = std::string_view::npos;

struct FindCase {
  std::string_view text;
  std::size_t from;
  std::size_t expected;
};

TEST(FindParenthesisTest, Examples) {
  const FindCase cases[] = {
      {"", 0, kNone},
      {"abc", 0, kNone},
      {"(", 0, 0},
      {"a)", 0, 1},
      {"abcdefgh(", 0, 8},
      {"abcdefghijklmnop)", 3, 16},
      {"()", 1, 1},
      {"()", 2, kNone},
      {"()", 5, kNone},
      {"\x28\x29\xa8\xa9", 2, kNone},
      {"ab\xa8\xa9\x08\x09*+)", 0, 8},
  };
  for (const FindCase& c : cases) EXPECT_EQ(FindParenthesis(c.text, c.from), c.expected) << c.text;
}

TEST(FindEitherByteTest, Examples) {
  EXPECT_EQ(FindEitherByte("a[b]c", 0, '[', ']'), 1u);
  EXPECT_EQ(FindEitherByte("a[b]c", 2, '[', ']'), 3u);
  EXPECT_EQ(FindEitherByte("0123456789abcdef]", 0, '[', ']'), 16u);
  EXPECT_EQ(FindEitherByte("\xff\xff\xff\xff\xff\xff\xff\xff\x80", 0, '\x80', '\x80'), 8u);
  EXPECT_EQ(FindEitherByte("{[}]", 0, '\0', '\0'), kNone);
}

TEST(FindByteTest, Examples) {
  EXPECT_EQ(FindByte("ab\ncd\n", 0, '\n'), 2u);
  EXPECT_EQ(FindByte("ab\ncd\n", 3, '\n'), 5u);
  EXPECT_EQ(FindByte("0123456789abcdef\n", 0, '\n'), 16u);
  EXPECT_EQ(FindByte("\xff\xff\xff\xff\xff\xff\xff\xff\x80", 0, '\x80'), 8u);
  EXPECT_EQ(FindByte("abc", 0, '\0'), kNone);
  EXPECT_EQ(FindByte("abc", 5, 'a'), kNone);
}

TEST(FindTextTest, Examples) {
  EXPECT_EQ(FindText("deassign assign x", "assign", 0), 2u);
  EXPECT_EQ(FindText("deassign assign x", "assign", 3), 9u);
  EXPECT_EQ(FindText("assigassignassign", "assign", 1), 5u);
  EXPECT_EQ(FindText("aaaaaaaaaaaaaaaaaaaaaaaaaan", "assign", 0), kNone);
  EXPECT_EQ(FindText("anananananananananananassign", "assign", 0), 22u);
  EXPECT_EQ(FindText("assign", "assign", 1), kNone);
  EXPECT_EQ(FindText("assign", "assign", 7), kNone);
  EXPECT_EQ(FindText("xx", "", 1), 1u);
}

TEST(CountLineFeedsTest, Examples) {
  EXPECT_EQ(CountLineFeeds(""), 0u);
  EXPECT_EQ(CountLineFeeds("\n"), 1u);
  EXPECT_EQ(CountLineFeeds("a\nb\r\n\x8a\x0b\x09"), 2u);
  EXPECT_EQ(CountLineFeeds("\n\n\n\n\n\n\n\n\n"), 9u);
}

// Every alignment and length, across several sixteen-byte blocks, against a
// byte-by-byte walk.
TEST(ByteSearchTest, AgreesWithAPlainWalkOnRandomText) {
  std::mt19937 random(3);
  std::string alphabet = "()[]\n\xa8\xa9\x08\x09\x8a\xff a";
  alphabet.push_back('\0');
  for (int round = 0; round < 5000; ++round) {
    std::string text(random() % 100, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    const std::size_t from = random() % (text.size() + 2);
    std::size_t paren = kNone;
    std::size_t bracket = kNone;
    for (std::size_t i = from; i < text.size(); ++i) {
      if (paren == kNone && (text[i] == '(' || text[i] == ')')) paren = i;
      if (bracket == kNone && (text[i] == '[' || text[i] == ']')) bracket = i;
    }
    std::size_t lineFeeds = 0;
    for (char c : text) lineFeeds += c == '\n' ? 1u : 0u;
    ASSERT_EQ(FindParenthesis(text, from), paren) << round;
    ASSERT_EQ(FindEitherByte(text, from, '[', ']'), bracket) << round;
    for (char c : {'\n', '(', '\xff', '\0'}) ASSERT_EQ(FindByte(text, from, c), text.find(c, from)) << round;
    ASSERT_EQ(CountLineFeeds(text), lineFeeds) << round;
    for (std::string_view needle : {"()", "(\n(", "[[", "a()a", "()[]\n\xa8\xa9\x08", ")"}) {
      ASSERT_EQ(FindText(text, needle, from), text.find(needle, from)) << round << " " << needle;
    }
  }
}

}  // namespace
}  // namespace quill
