#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "lint/word_scan.h"

namespace quill {
namespace {

using Runs = std::vector<std::pair<std::size_t, std::size_t>>;

Runs RunsHolding(std::string_view text, char a, char b) {
  Runs runs;
  ForEachWordRunHolding(text, a, b, [&runs](std::size_t begin, std::size_t end) { runs.emplace_back(begin, end); });
  return runs;
}

TEST(ForEachWordRunHoldingTest, Examples) {
  EXPECT_EQ(RunsHolding("", 'y', 'Y'), Runs{});
  EXPECT_EQ(RunsHolding("always @(*) y", 'y', 'Y'), (Runs{{0, 6}, {12, 13}}));
  EXPECT_EQ(RunsHolding("ALWAYS_FF yy;x", 'y', 'Y'), (Runs{{0, 9}, {10, 12}}));
  EXPECT_EQ(RunsHolding("begin end n_a_m_e", 'n', 'N'), (Runs{{0, 5}, {6, 9}, {10, 17}}));
  EXPECT_EQ(RunsHolding("abc def", 'n', 'N'), Runs{});
  EXPECT_EQ(RunsHolding("0123456789_abcdefghN", 'n', 'N'), (Runs{{0, 20}}));
}

// The runs are those of ForEachWordRun that hold one of the letters.
TEST(ForEachWordRunHoldingTest, AgreesWithTheFullWalkOnRandomText) {
  std::mt19937 random(29);
  const std::string alphabet = "nNyYa_0 \n(\xc3;";
  for (int round = 0; round < 5000; ++round) {
    std::string text(random() % 40, ' ');
    for (char& c : text) c = alphabet[random() % alphabet.size()];
    Runs expected;
    ForEachWordRun(text, [&](std::size_t begin, std::size_t end) {
      const std::string_view run = std::string_view(text).substr(begin, end - begin);
      if (run.find_first_of("nN") != std::string_view::npos) expected.emplace_back(begin, end);
    });
    ASSERT_EQ(RunsHolding(text, 'n', 'N'), expected) << text;
  }
}

}  // namespace
}  // namespace quill
