#include "sequence_diff.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace quill::cli {
namespace {

using Seq = std::vector<uint32_t>;

std::size_t LongestCommonLength(const Seq& a, const Seq& b) {
  std::vector<std::vector<std::size_t>> t(a.size() + 1, std::vector<std::size_t>(b.size() + 1, 0));
  for (std::size_t i = 1; i <= a.size(); ++i) {
    for (std::size_t j = 1; j <= b.size(); ++j) {
      t[i][j] = a[i - 1] == b[j - 1] ? t[i - 1][j - 1] + 1 : std::max(t[i - 1][j], t[i][j - 1]);
    }
  }
  return t[a.size()][b.size()];
}

Seq Kept(const Seq& s, const std::vector<bool>& marked) {
  Seq kept;
  for (std::size_t i = 0; i < s.size(); ++i) {
    if (!marked[i]) kept.push_back(s[i]);
  }
  return kept;
}

struct Case {
  const char* name;
  Seq a;
  Seq b;
  std::size_t deleted;
  std::size_t inserted;
};

TEST(MarkDifferences, Table) {
  const std::vector<Case> cases = {
      {"both empty", {}, {}, 0, 0},
      {"equal", {1, 2, 3}, {1, 2, 3}, 0, 0},
      {"all inserted", {}, {1, 2}, 0, 2},
      {"all deleted", {1, 2}, {}, 2, 0},
      {"one replaced", {1, 2, 3}, {1, 9, 3}, 1, 1},
      {"swap", {1, 2}, {2, 1}, 1, 1},
      {"insert in middle", {1, 3}, {1, 2, 3}, 0, 1},
      {"classic abcabba/cbabac", {1, 2, 3, 1, 2, 2, 1}, {3, 2, 1, 2, 1, 3}, 3, 2},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const DiffMarks marks = MarkDifferences(c.a, c.b);
    ASSERT_EQ(marks.deleted.size(), c.a.size());
    ASSERT_EQ(marks.inserted.size(), c.b.size());
    EXPECT_EQ(Kept(c.a, marks.deleted), Kept(c.b, marks.inserted));
    EXPECT_EQ(std::count(marks.deleted.begin(), marks.deleted.end(), true), static_cast<long>(c.deleted));
    EXPECT_EQ(std::count(marks.inserted.begin(), marks.inserted.end(), true), static_cast<long>(c.inserted));
  }
}

TEST(MarkDifferences, RandomSequencesGiveALongestCommonSubsequence) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    std::uniform_int_distribution<std::size_t> length(0, 40);
    std::uniform_int_distribution<uint32_t> symbol(0, round % 2 == 0 ? 3 : 12);
    Seq a(length(random)), b(length(random));
    for (uint32_t& x : a) x = symbol(random);
    for (uint32_t& x : b) x = symbol(random);
    const DiffMarks marks = MarkDifferences(a, b);
    const Seq common = Kept(a, marks.deleted);
    ASSERT_EQ(common, Kept(b, marks.inserted));
    ASSERT_EQ(common.size(), LongestCommonLength(a, b));
  }
}

TEST(MarkDifferences, LargeUnrelatedSequencesStayValid) {
  // Far past the cost cut-off: the script may be longer than the shortest,
  // but what is left unmarked must still be common to both.
  std::mt19937 random(11);
  std::uniform_int_distribution<uint32_t> symbol(0, 50);
  Seq a(20000), b(20000);
  for (uint32_t& x : a) x = symbol(random);
  for (uint32_t& x : b) x = symbol(random);
  const DiffMarks marks = MarkDifferences(a, b);
  EXPECT_EQ(Kept(a, marks.deleted), Kept(b, marks.inserted));
}

TEST(MarkDifferences, FewChangesInALongSequence) {
  Seq a(200000);
  for (std::size_t i = 0; i < a.size(); ++i) a[i] = static_cast<uint32_t>(i % 97);
  Seq b = a;
  b.erase(b.begin() + 1000);
  b.insert(b.begin() + 150000, 555);
  const DiffMarks marks = MarkDifferences(a, b);
  EXPECT_EQ(std::count(marks.deleted.begin(), marks.deleted.end(), true), 1);
  EXPECT_EQ(std::count(marks.inserted.begin(), marks.inserted.end(), true), 1);
  EXPECT_TRUE(marks.inserted[150000]);
}

}  // namespace
}  // namespace quill::cli
