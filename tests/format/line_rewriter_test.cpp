// LineRewriter (common/text_utils.h), which the formatter's passes write
// their output through.
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"

namespace quill {
namespace {

// Replaces every line that starts with "x" by "<line>" and keeps the others,
// once through the rewriter and once by joining the resulting lines.
struct Rewritten {
  std::string rewriter;
  std::string joined;
};

Rewritten RewriteLinesStartingWithX(std::string_view text) {
  LineRewriter rewriter(text, text.size());
  LineViews lines;
  // A deque keeps its strings in place as it grows: `lines` holds views of them.
  std::deque<std::string> replacements;
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) {
    if (line.starts_with("x")) {
      replacements.push_back("<" + std::string(line) + ">");
      rewriter.Replace(line, replacements.back());
      lines.push_back(replacements.back());
    } else {
      rewriter.Keep(line);
      lines.push_back(line);
    }
  }
  return {rewriter.Take(), JoinLines(lines, "\n")};
}

TEST(LineRewriterTest, ExactTexts) {
  struct Case {
    const char* text;
    const char* expected;
  };
  const Case cases[] = {
      {"", ""},
      {"a", "a"},
      {"x", "<x>"},
      {"a\nx1\nb\n", "a\n<x1>\nb\n"},
      {"x\n\nx\n", "<x>\n\n<x>\n"},
      {"a\r\nx\r\nb", "a\n<x>\nb"},
      {"x\rq\nb\r", "<x\rq>\nb"},
      {"\n\n", "\n\n"},
  };
  for (const Case& c : cases) {
    const Rewritten result = RewriteLinesStartingWithX(c.text);
    EXPECT_EQ(result.rewriter, c.expected) << c.text;
    EXPECT_EQ(result.joined, c.expected) << c.text;
  }
}

TEST(LineRewriterTest, ReplacementsMayHoldLineFeeds) {
  const std::string text = "a\nx\nb";
  LineRewriter rewriter(text, text.size());
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) {
    if (line == "x") {
      rewriter.Replace(line, "x1\nx2");
    } else {
      rewriter.Keep(line);
    }
  }
  EXPECT_EQ(rewriter.Take(), "a\nx1\nx2\nb");
}

}  // namespace
}  // namespace quill
