#include "format/scan/block_words.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "common/pattern.h"
#include "common/text_utils.h"
#include "format/reference_patterns.h"
#include "format/scan/pattern_table.h"
#include "format/short_texts.h"

namespace quill {
namespace {

struct Counted {
  BlockWordCounts counts;
  std::string code;
};

Counted CountInOneScan(std::string_view text) {
  std::string storage;
  std::string_view code;
  const BlockWordCounts counts = CountCodeBlockWords(text, &code, &storage);
  return {counts, std::string(code)};
}

// The counts of the block word patterns over the text without its "//"
// comments.
Counted CountByPatterns(std::string_view text) {
  const std::string code = ReferencePatterns().kLineCommentPattern.ReplaceAll(text, "");
  BlockWordCounts counts;
  counts.begins = CountMatches(code, Patterns().kBeginPattern);
  counts.ends = CountMatches(code, ReferencePatterns().kEndPattern);
  counts.cases = CountMatches(code, ReferencePatterns().kCasePattern);
  counts.endcases = CountMatches(code, ReferencePatterns().kEndcasePattern);
  return {counts, code};
}

void ExpectAgreement(std::string_view text) {
  const Counted scanned = CountInOneScan(text);
  const Counted expected = CountByPatterns(text);
  EXPECT_EQ(scanned.code, expected.code) << "on \"" << text << "\"";
  EXPECT_EQ(scanned.counts.begins, expected.counts.begins) << "on \"" << text << "\"";
  EXPECT_EQ(scanned.counts.ends, expected.counts.ends) << "on \"" << text << "\"";
  EXPECT_EQ(scanned.counts.cases, expected.counts.cases) << "on \"" << text << "\"";
  EXPECT_EQ(scanned.counts.endcases, expected.counts.endcases) << "on \"" << text << "\"";
}

TEST(CountCodeBlockWordsTest, ExactCounts) {
  struct Case {
    const char* text;
    BlockWordCounts counts;
    const char* code;
  };
  const Case cases[] = {
      {"", {0, 0, 0, 0}, ""},
      {"end else begin // begin end", {1, 1, 0, 0}, "end else begin "},
      {"case (x) // endcase", {0, 0, 1, 0}, "case (x) "},
      {"casez casex endcase", {0, 0, 2, 1}, "casez casex endcase"},
      {"begin/end", {1, 1, 0, 0}, "begin/end"},
      {"a //b\nend // c\nbegin", {1, 1, 0, 0}, "a \nend \nbegin"},
      {"//begin", {0, 0, 0, 0}, ""},
      {"end//", {0, 1, 0, 0}, "end"},
  };
  for (const Case& c : cases) {
    const Counted scanned = CountInOneScan(c.text);
    EXPECT_EQ(scanned.code, c.code) << c.text;
    EXPECT_EQ(scanned.counts.begins, c.counts.begins) << c.text;
    EXPECT_EQ(scanned.counts.ends, c.counts.ends) << c.text;
    EXPECT_EQ(scanned.counts.cases, c.counts.cases) << c.text;
    EXPECT_EQ(scanned.counts.endcases, c.counts.endcases) << c.text;
  }
}

// Every sequence of up to four pieces that matter to the scan: the block
// words, word bytes beside them, slashes, LF and a space.
TEST(CountCodeBlockWordsTest, AgreesWithThePatternsOnShortTexts) {
  const std::vector<std::string> pieces = {"end", "begin", "case", "casex", "endcase", "/", "//", "\n", " ", "x"};
  const std::vector<std::string> texts = EveryShortText(pieces, 4);
  for (const std::string& text : texts) {
    ExpectAgreement(text);
    if (HasFailure()) return;
  }
}

}  // namespace
}  // namespace quill
