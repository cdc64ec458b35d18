#include "content_guard.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

struct Case {
  const char* name;
  std::string input;
  std::string output;
  std::vector<uint32_t> lost;
};

TEST(FindLostLines, Table) {
  const std::vector<Case> cases = {
      {"identical", "module m;\nendmodule\n", "module m;\nendmodule\n", {}},
      {"re-spaced and re-indented",
       "module  m ;\n\twire a,b;\r\nendmodule",
       "module m;\n    wire a, b;\nendmodule\n",
       {}},
      {"lines joined and split", "input a, output b\n", "input a,\noutput b\n", {}},
      {"text added", "a;\n", "a; // a\n", {}},
      {"empty input", "", "\n", {}},
      {"blank input", " \t\r\n\n", "\n", {}},
      {"one word lost",
       "module m;\n  .a(x), .b(y) junk\nendmodule\n",
       "module m;\n  .a(x),\n  .b(y)\nendmodule\n",
       {2}},
      {"lost on two lines", "a\nb\nc\nd\n", "a\nc\n", {2, 4}},
      {"whole output empty", "x\n\ny\n", "\n", {1, 3}},
      {"a line reported once", "abc xyz\n", "\n", {1}},
      {"moved text counts as lost where it was", "ab\nxyz\n", "xyz\nab\n", {1}},
      {"lost text whose letters appear later", "begin\nqq x;\nend q x;\n", "begin\nend q x;\n", {2}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(FindLostLines(c.input, c.output), c.lost);
  }
}

TEST(FindLostLines, HugeDifferenceFallsBackToTheLostStretch) {
  // More than the alignment's limit differs: the lines from the first lost
  // byte to the start of the longest kept suffix are reported.
  std::string input = "head\n";
  for (int i = 0; i < 600000; ++i) input += "lost" + std::to_string(i % 10) + "\n";
  input += "tail\n";
  std::string output = "head\ntail\n";
  const std::vector<uint32_t> lost = FindLostLines(input, output);
  ASSERT_EQ(lost.size(), 600000u);
  EXPECT_EQ(lost.front(), 2u);
  EXPECT_EQ(lost.back(), 600001u);
}

TEST(FindLostLines, LongInputWithOneLoss) {
  std::string input, output;
  for (int i = 0; i < 100000; ++i) {
    input += "  assign w" + std::to_string(i) + " = a;\n";
    output += (i == 70000 ? std::string("assign = a;") : "assign w" + std::to_string(i) + " = a;") + "\n";
  }
  EXPECT_EQ(FindLostLines(input, output), std::vector<uint32_t>({70001}));
}

TEST(DescribeLines, Table) {
  EXPECT_EQ(DescribeLines({7}), "line 7");
  EXPECT_EQ(DescribeLines({3, 7, 12}), "lines 3, 7, 12");
  EXPECT_EQ(DescribeLines({1, 2, 3, 4, 5}, 3), "lines 1, 2, 3 and 2 more");
  EXPECT_EQ(DescribeLines({1, 2, 3}, 3), "lines 1, 2, 3");
}

}  // namespace
}  // namespace quill::cli
