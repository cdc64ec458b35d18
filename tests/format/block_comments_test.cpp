#include "format/passes/block_comments.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"

namespace quill {
namespace {

// The placeholder built from its description, independently of the code
// under test.
std::string ExpectedPlaceholder(std::size_t index, std::string_view comment) {
  const auto lineFeeds = static_cast<std::size_t>(std::count(comment.begin(), comment.end(), '\n'));
  return "__BLKCMT_" + std::to_string(index) + "__" + std::string(lineFeeds, '\n');
}

// The restore loop as described: for each comment in order, search the text
// from the start and replace each occurrence of its placeholder, left to
// right, continuing just after the inserted text.
std::string ReferenceRestore(std::string text, const BlockCommentList& comments) {
  for (std::size_t i = 0; i < comments.size(); ++i) {
    const std::string placeholder = ExpectedPlaceholder(i, comments[i]);
    for (std::size_t pos = text.find(placeholder); pos != std::string::npos; pos = text.find(placeholder, pos)) {
      text.replace(pos, placeholder.size(), comments[i]);
      pos += comments[i].size();
    }
  }
  return text;
}

TEST(BlockCommentPlaceholderTest, HasOneLineFeedPerExtraLine) {
  EXPECT_EQ(BlockCommentPlaceholder(0, 1), "__BLKCMT_0__");
  EXPECT_EQ(BlockCommentPlaceholder(7, 2), "__BLKCMT_7__\n");
  EXPECT_EQ(BlockCommentPlaceholder(12, 3), "__BLKCMT_12__\n\n");
  EXPECT_EQ(BlockCommentPlaceholder(100, 1), "__BLKCMT_100__");
  EXPECT_EQ(BlockCommentPlaceholder(1234567, 5), "__BLKCMT_1234567__\n\n\n\n");
}

struct ProtectCase {
  const char* name;
  std::string_view text;
  std::string_view protectedText;
  BlockCommentList comments;
};

class ProtectBlockCommentsTest : public ::testing::TestWithParam<ProtectCase> {};

TEST_P(ProtectBlockCommentsTest, ReplacesCommentsByPlaceholders) {
  BlockCommentList comments;
  EXPECT_EQ(ProtectBlockComments(GetParam().text, &comments), GetParam().protectedText);
  EXPECT_EQ(comments, GetParam().comments);
  EXPECT_EQ(SplitLines(GetParam().protectedText).size(), SplitLines(GetParam().text).size());
  EXPECT_EQ(RestoreBlockComments(GetParam().protectedText, comments), GetParam().text);
}

const ProtectCase kProtectCases[] = {
    {"NoComment", "module m;\nendmodule", "module m;\nendmodule", {}},
    {"OneLine", "a /* x */ b", "a __BLKCMT_0__ b", {"/* x */"}},
    {"ThreeLines", "/* a\n b\n c */\nmodule m;", "__BLKCMT_0__\n\n\nmodule m;", {"/* a\n b\n c */"}},
    {"TwoOnOneLine", "/* a */ x /* b */", "__BLKCMT_0__ x __BLKCMT_1__", {"/* a */", "/* b */"}},
    {"NumbersCountUp",
     "/*0*//*1*/\n/*2\n*/\n/*3*/",
     "__BLKCMT_0____BLKCMT_1__\n__BLKCMT_2__\n\n__BLKCMT_3__",
     {"/*0*/", "/*1*/", "/*2\n*/", "/*3*/"}},
    {"SlashStarSlashIsNoComment", "a /*/ b", "a /*/ b", {}},
    {"Unterminated", "/* a */ b /* c\n d", "__BLKCMT_0__ b /* c\n d", {"/* a */"}},
    {"StrayClose", "/* a */ */", "__BLKCMT_0__ */", {"/* a */"}},
    {"LineCommentInside", "/* // */ x", "__BLKCMT_0__ x", {"/* // */"}},
    {"InsideALineComment", "// a /* b\n c */", "// a __BLKCMT_0__\n", {"/* b\n c */"}},
    {"EmptyLinesInside", "x/*\n\n\n*/y", "x__BLKCMT_0__\n\n\ny", {"/*\n\n\n*/"}},
};
INSTANTIATE_TEST_SUITE_P(Cases, ProtectBlockCommentsTest, ::testing::ValuesIn(kProtectCases),
                         [](const ::testing::TestParamInfo<ProtectCase>& param) { return param.param.name; });

struct RestoreCase {
  const char* name;
  std::string_view text;
  BlockCommentList comments;
  std::string_view restored;
};

class RestoreBlockCommentsTest : public ::testing::TestWithParam<RestoreCase> {};

TEST_P(RestoreBlockCommentsTest, RestoresAsTheTurnByTurnLoop) {
  const RestoreCase& c = GetParam();
  EXPECT_EQ(ReferenceRestore(std::string(c.text), c.comments), c.restored);
  EXPECT_EQ(RestoreBlockComments(c.text, c.comments), c.restored);
}

const RestoreCase kRestoreCases[] = {
    {"NoComments", "a __BLKCMT_0__ b", {}, "a __BLKCMT_0__ b"},
    {"EveryOccurrence", "__BLKCMT_0__ __BLKCMT_0__", {"/*a*/"}, "/*a*/ /*a*/"},
    {"MultiLine", "x __BLKCMT_0__\n\ny", {"/* a\n b\n c */"}, "x /* a\n b\n c */y"},
    {"AlteredPlaceholderStays", "__BLKCMT_0__ \n\ny", {"/* a\n b\n c */"}, "__BLKCMT_0__ \n\ny"},
    {"TooFewLineFeedsStays", "__BLKCMT_0__\ny", {"/* a\n b\n c */"}, "__BLKCMT_0__\ny"},
    {"ExtraLineFeedsKept", "__BLKCMT_0__\n\n\n\ny", {"/* a\n b */"}, "/* a\n b */\n\n\ny"},
    {"SourcePlaceholderTakenForAComment",
     "__BLKCMT_3__ __BLKCMT_0__",
     {"/*0*/", "/*1*/", "/*2*/", "/*3*/"},
     "/*3*/ /*0*/"},
    {"SourcePlaceholderBeyondTheListStays", "__BLKCMT_3__", {"/*0*/"}, "__BLKCMT_3__"},
    {"LeadingZeroIsNoPlaceholder", "__BLKCMT_00__ __BLKCMT_01__", {"/*0*/", "/*1*/"}, "__BLKCMT_00__ __BLKCMT_01__"},
    {"LongerNumberIsNoPlaceholder", "__BLKCMT_10__", {"/*0*/", "/*1*/"}, "__BLKCMT_10__"},
    {"HugeNumberIsNoPlaceholder",
     "__BLKCMT_123456789012345678901234567890__",
     {"/*0*/"},
     "__BLKCMT_123456789012345678901234567890__"},
    {"ExtraUnderscores", "___BLKCMT_0___", {"/*0*/"}, "_/*0*/_"},
    {"CommentHoldsALaterPlaceholder",
     "__BLKCMT_0__ __BLKCMT_1__",
     {"/* __BLKCMT_1__ */", "/* b */"},
     "/* /* b */ */ /* b */"},
    {"CommentHoldsItsOwnPlaceholder",
     "__BLKCMT_0__ __BLKCMT_0__",
     {"/* __BLKCMT_0__ */"},
     "/* __BLKCMT_0__ */ /* __BLKCMT_0__ */"},
    {"CommentHoldsAnEarlierPlaceholder",
     "__BLKCMT_1__ __BLKCMT_0__",
     {"/* a */", "/* __BLKCMT_0__ */"},
     "/* __BLKCMT_0__ */ /* a */"},
    {"NestedChain", "__BLKCMT_0__", {"/*__BLKCMT_1__*/", "/*__BLKCMT_2__*/", "/*end*/"}, "/*/*/*end*/*/*/"},
    {"NestedMultiLine", "__BLKCMT_0__\n\n", {"/*__BLKCMT_1__\n\n*/", "/*\n\n*/"}, "/*/*\n\n*/*/"},
    {"OverlapLaterNumberFirst", "__BLKCMT_1__BLKCMT_0__", {"/*A*/", "/*B*/"}, "__BLKCMT_1/*A*/"},
    {"OverlapEarlierNumberFirst", "__BLKCMT_0__BLKCMT_1__", {"/*A*/", "/*B*/"}, "/*A*/BLKCMT_1__"},
    {"OverlapSameNumber", "__BLKCMT_0__BLKCMT_0__BLKCMT_0__", {"/*A*/"}, "/*A*/BLKCMT_0/*A*/"},
    {"OverlapChain", "__BLKCMT_0__BLKCMT_1__BLKCMT_0__", {"/*A*/", "/*B*/"}, "/*A*/BLKCMT_1/*A*/"},
    {"OverlapInsideAComment", "__BLKCMT_0__", {"/*__BLKCMT_2__BLKCMT_1__*/", "/*B*/", "/*C*/"}, "/*__BLKCMT_2/*B*/*/"},
    {"OverlapWithAnEarlierNumberInsideAComment",
     "__BLKCMT_1__ __BLKCMT_0__",
     {"/*A*/", "/*__BLKCMT_0__BLKCMT_2__*/", "/*C*/"},
     "/*__BLKCMT_0/*C*/*/ /*A*/"},
};
INSTANTIATE_TEST_SUITE_P(Cases, RestoreBlockCommentsTest, ::testing::ValuesIn(kRestoreCases),
                         [](const ::testing::TestParamInfo<RestoreCase>& param) { return param.param.name; });

// Random texts and comments built from placeholder pieces, so that
// placeholders of every kind meet, overlap, nest and lose line feeds.
class RandomPieces {
 public:
  explicit RandomPieces(unsigned seed) : rng_(seed) {}

  std::size_t Below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(rng_); }

  std::string Piece(const BlockCommentList& comments, std::size_t maxIndex) {
    switch (Below(9)) {
      case 0:
        return "__BLKCMT_";
      case 1:
        return "__";
      case 2:
        return "\n";
      case 3:
        return " x";
      case 4:
        return std::to_string(Below(maxIndex + 2));
      default: {
        const std::size_t index = Below(maxIndex + 1);
        std::string placeholder = "__BLKCMT_" + std::to_string(index) + "__";
        const std::size_t lineFeeds =
            index < comments.size()
                ? static_cast<std::size_t>(std::count(comments[index].begin(), comments[index].end(), '\n'))
                : Below(3);
        // Mostly intact, sometimes short of a line feed, sometimes with more.
        const std::size_t variant = Below(6);
        const std::size_t count = variant == 0 && lineFeeds > 0 ? lineFeeds - 1 : lineFeeds + (variant == 1 ? 1 : 0);
        placeholder.append(count, '\n');
        return placeholder;
      }
    }
  }

  std::string Text(const BlockCommentList& comments, std::size_t maxIndex, std::size_t maxPieces) {
    std::string text;
    const std::size_t pieces = Below(maxPieces + 1);
    for (std::size_t k = 0; k < pieces; ++k) text += Piece(comments, maxIndex);
    return text;
  }

  // Comments are drawn from the last to the first, so that a placeholder of a
  // later comment inside a body carries that comment's line feeds.
  BlockCommentList Comments(std::size_t count) {
    BlockCommentList comments(count);
    for (std::size_t i = count; i-- > 0;) {
      comments[i] = "/*" + Text(comments, count, 4) + std::string(Below(3), '\n') + "*/";
    }
    return comments;
  }

 private:
  std::mt19937 rng_;
};

TEST(RestoreBlockCommentsRandomTest, AgreesWithTheTurnByTurnLoop) {
  RandomPieces random(2024);
  for (int round = 0; round < 20'000; ++round) {
    const BlockCommentList comments = random.Comments(random.Below(5));
    const std::string text = random.Text(comments, comments.size(), 12);
    ASSERT_EQ(RestoreBlockComments(text, comments), ReferenceRestore(text, comments))
        << "round " << round << " text \"" << text << "\"";
  }
}

TEST(RestoreBlockCommentsRandomTest, AgreesWithTheTurnByTurnLoopWithManyComments) {
  RandomPieces random(99);
  for (int round = 0; round < 2'000; ++round) {
    const BlockCommentList comments = random.Comments(10 + random.Below(20));
    const std::string text = random.Text(comments, comments.size(), 60);
    ASSERT_EQ(RestoreBlockComments(text, comments), ReferenceRestore(text, comments)) << "round " << round;
  }
}

TEST(RestoreBlockCommentsRandomTest, ProtectThenRestoreGivesTheTextBack) {
  std::mt19937 rng(5);
  const std::string_view alphabet = "/*a \n";
  for (int round = 0; round < 5'000; ++round) {
    std::string text(std::uniform_int_distribution<std::size_t>(0, 40)(rng), ' ');
    for (char& c : text) c = alphabet[std::uniform_int_distribution<std::size_t>(0, alphabet.size() - 1)(rng)];
    BlockCommentList comments;
    const std::string protectedText = ProtectBlockComments(text, &comments);
    EXPECT_EQ(SplitLines(protectedText).size(), SplitLines(text).size()) << text;
    EXPECT_EQ(RestoreBlockComments(protectedText, comments), text) << text;
  }
}

TEST(RestoreBlockCommentsRandomTest, ProtectThenRestoreOfPlaceholderLikeSourceAgreesWithTheLoop) {
  RandomPieces random(77);
  for (int round = 0; round < 5'000; ++round) {
    const BlockCommentList seeds = random.Comments(random.Below(4));
    std::string text;
    for (std::size_t k = random.Below(10); k > 0; --k) {
      text += random.Below(3) == 0 && !seeds.empty() ? seeds[random.Below(seeds.size())] : random.Piece(seeds, 4);
    }
    BlockCommentList comments;
    const std::string protectedText = ProtectBlockComments(text, &comments);
    ASSERT_EQ(RestoreBlockComments(protectedText, comments), ReferenceRestore(protectedText, comments))
        << "round " << round << " text \"" << text << "\"";
  }
}

TEST(RestoreBlockCommentsLargeTest, TwoHundredThousandCommentsFinish) {
  std::string text;
  for (int i = 0; i < 200'000; ++i) text += "x /* comment " + std::to_string(i) + "\n second line */ y\n";
  BlockCommentList comments;
  const std::string protectedText = ProtectBlockComments(text, &comments);
  ASSERT_EQ(comments.size(), 200'000u);
  EXPECT_EQ(protectedText.substr(0, 18), "x __BLKCMT_0__\n y\n");
  EXPECT_EQ(RestoreBlockComments(protectedText, comments), text);
}

TEST(RestoreBlockCommentsLargeTest, TwoHundredThousandPlaceholdersOfOneCommentFinish) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 200'000; ++i) {
    text += "__BLKCMT_0__\n";
    expected += "/* a\n*/";
  }
  EXPECT_EQ(RestoreBlockComments(text, {"/* a\n*/"}), expected);
}

TEST(RestoreBlockCommentsLargeTest, ExponentialNestingFinishes) {
  // Each comment holds two placeholders of the next: restoring all of it
  // would take 2^40 copies.
  BlockCommentList comments;
  for (std::size_t i = 0; i < 40; ++i) {
    comments.push_back("/*__BLKCMT_" + std::to_string(i + 1) + "____BLKCMT_" + std::to_string(i + 1) + "__*/");
  }
  comments.push_back("/*end*/");
  const std::string restored = RestoreBlockComments("__BLKCMT_0__", comments);
  EXPECT_EQ(restored.substr(0, 2), "/*");
}

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kAddressSpaceLimitWorks = false;
#else
constexpr bool kAddressSpaceLimitWorks = true;
#endif

// Limits the process's address space to 2 GiB, runs `body` and exits with 0
// when it returns true. Memory growing with the square of the input then
// fails instead of exhausting the machine.
template <typename Body>
[[noreturn]] void RunInTwoGibibytes(Body body) {
  constexpr rlim_t kLimit = rlim_t{2} << 30;
  const rlimit limit{kLimit, kLimit};
  setrlimit(RLIMIT_AS, &limit);
  std::exit(body() ? 0 : 1);
}

// A chain of comments each holding the next one's placeholder restores in
// memory proportional to the restored text, not to the square of the chain.
TEST(RestoreBlockCommentsLargeTest, NestedChainOfTwoHundredThousandCommentsFinishes) {
  if (!kAddressSpaceLimitWorks) GTEST_SKIP() << "address-space limits do not mix with sanitizers";
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  auto restoreChain = [] {
    constexpr std::size_t kCount = 200'000;
    BlockCommentList comments;
    for (std::size_t i = 0; i + 1 < kCount; ++i) comments.push_back("/*__BLKCMT_" + std::to_string(i + 1) + "__*/");
    comments.push_back("/*end*/");
    std::string expected;
    for (std::size_t i = 0; i + 1 < kCount; ++i) expected += "/*";
    expected += "/*end*/";
    for (std::size_t i = 0; i + 1 < kCount; ++i) expected += "*/";
    return RestoreBlockComments("__BLKCMT_0__", comments) == expected;
  };
  EXPECT_EXIT(RunInTwoGibibytes(restoreChain), ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace quill
