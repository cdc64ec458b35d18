#include "suppressions.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

struct Probe {
  int64_t line;
  const char* check;
  bool covered;
};

struct SuppressionCase {
  const char* text;
  std::vector<Probe> probes;
};

const SuppressionCase kCases[] = {
    {"wire a; // quill: disable-line latch\n", {{0, "latch", true}, {0, "comb-loop", false}, {1, "latch", false}}},
    {"// quill: disable-next-line latch, comb-loop\nx\n",
     {{1, "latch", true}, {1, "comb-loop", true}, {0, "latch", false}, {2, "latch", false}}},
    {"/* quill: disable-next-line\n   latch */\nx\n", {{2, "latch", true}, {1, "latch", false}}},
    {"a\n// quill: disable latch\nb\n// quill: enable latch\nc\n",
     {{0, "latch", false}, {1, "latch", true}, {2, "latch", true}, {3, "latch", true}, {4, "latch", false}}},
    {"// quill: disable all\nb\n", {{1, "reg-assign", true}, {99, "latch", true}}},
    {"a\nb\n// quill: disable-file multi-driver\n", {{0, "multi-driver", true}, {0, "latch", false}}},
    {"x // quill: disable-line latch -- reset value is kept on purpose\n", {{0, "latch", true}}},
    {"x // quill:disable-line latch\n", {{0, "latch", true}}},
    {"x // see quill: disable-line latch\n", {{0, "latch", false}}},
    {"x = \"// quill: disable-line latch\";\n", {{0, "latch", false}}},
};

TEST(SuppressionsTest, CoversTheLinesOfEachForm) {
  for (const SuppressionCase& c : kCases) {
    Suppressions suppressions(c.text, ScanSource(c.text).comments);
    EXPECT_TRUE(suppressions.Problems().empty()) << c.text;
    for (const Probe& probe : c.probes) {
      EXPECT_EQ(suppressions.Covers(probe.line, probe.check), probe.covered)
          << c.text << " line " << probe.line << " " << probe.check;
    }
  }
}

struct ProblemCase {
  const char* text;
  int64_t line;
  const char* message;
};

const ProblemCase kProblems[] = {
    {"a\n// quill: disable-line lach\n", 1, "unknown check 'lach' in suppression comment"},
    {"// quill: disabel latch\n", 0,
     "unknown suppression directive 'disabel' (disable-next-line, disable-line, disable, enable or disable-file)"},
    {"// quill: disable-line\n", 0, "suppression comment 'disable-line' names no check"},
    {"// quill: enable latch\n", 0, "'enable latch' without an open 'disable latch'"},
};

TEST(SuppressionsTest, ReportsWhatItCannotUse) {
  for (const ProblemCase& c : kProblems) {
    Suppressions suppressions(c.text, ScanSource(c.text).comments);
    ASSERT_EQ(suppressions.Problems().size(), 1u) << c.text;
    EXPECT_EQ(suppressions.Problems()[0].line, c.line);
    EXPECT_EQ(suppressions.Problems()[0].message, c.message);
  }
}

TEST(SuppressionsTest, MarksTheOnesUsed) {
  const std::string text = "x // quill: disable-line latch\ny // quill: disable-line comb-loop\n";
  Suppressions suppressions(text, ScanSource(text).comments);
  EXPECT_TRUE(suppressions.Covers(0, "latch"));
  ASSERT_EQ(suppressions.Entries().size(), 2u);
  EXPECT_TRUE(suppressions.Entries()[0].used);
  EXPECT_FALSE(suppressions.Entries()[1].used);
  EXPECT_EQ(suppressions.Entries()[1].commentLine, 1);
}

}  // namespace
}  // namespace quill::cli
