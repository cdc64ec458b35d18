#include <gtest/gtest.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "common/name_set.h"

namespace quill {
namespace {

TEST(NameHashTest, FollowsTheMultiplyBy131Rule) {
  EXPECT_EQ(NameHash{}(""), 0u);
  EXPECT_EQ(NameHash{}("a"), 97u);
  EXPECT_EQ(NameHash{}("ab"), 97u * 131u + 98u);
}

TEST(NameHashTest, IgnoresAsciiCase) {
  EXPECT_EQ(NameHash{}("Data"), NameHash{}("DATA"));
  EXPECT_EQ(NameHash{}("Data"), NameHash{}("data"));
}

TEST(NameHashTest, BytesAboveAsciiCountAsNegative) {
  EXPECT_EQ(NameHash{}("\xc3"), static_cast<std::size_t>(static_cast<std::uint64_t>(-61)));
  EXPECT_EQ(NameHash{}("a\xff"), static_cast<std::size_t>(97u * 131u - 1u));
}

TEST(NameHashTest, WrapsAround) {
  const std::string longName(40, 'z');
  std::uint64_t expected = 0;
  for (char c : longName) expected = expected * 131 + static_cast<std::uint64_t>(c);
  EXPECT_EQ(NameHash{}(longName), static_cast<std::size_t>(expected));
}

TEST(NameEqualTest, ComparesWithoutCase) {
  EXPECT_TRUE(NameEqual{}("Data", "dATA"));
  EXPECT_FALSE(NameEqual{}("data", "data_"));
  EXPECT_FALSE(NameEqual{}("a", "b"));
  EXPECT_TRUE(NameEqual{}("", ""));
  EXPECT_FALSE(NameEqual{}("\xc3", "\xe3"));
  EXPECT_TRUE(NameEqual{}("a_1", "A_1"));
}

TEST(NameSetTest, OneEntryPerNameKeepingTheFirstSpelling) {
  NameSet names;
  names.insert("Data");
  names.insert("DATA");
  names.insert("data");
  ASSERT_EQ(names.size(), 1u);
  EXPECT_EQ(*names.begin(), "Data");
  EXPECT_NE(names.find(std::string_view("dAtA")), names.end());
}

TEST(NameMapTest, SharesEntriesAcrossCase) {
  NameMap counts;
  counts["Clk"] = 1;
  counts["CLK"] += 1;
  ASSERT_EQ(counts.size(), 1u);
  EXPECT_EQ(counts.begin()->first, "Clk");
  EXPECT_EQ(counts.begin()->second, 2);
}

TEST(NameSetTest, KeepsEveryNameThroughGrowthInInsertionOrder) {
  NameSet names;
  for (int i = 0; i < 10000; ++i) EXPECT_TRUE(names.insert("sig_" + std::to_string(i)).second);
  for (int i = 0; i < 10000; ++i) EXPECT_FALSE(names.emplace("SIG_" + std::to_string(i)).second);
  ASSERT_EQ(names.size(), 10000u);
  int expected = 0;
  for (const std::string& name : names) EXPECT_EQ(name, "sig_" + std::to_string(expected++));
  EXPECT_EQ(names.count("Sig_9999"), 1u);
  EXPECT_EQ(names.count("sig_10000"), 0u);
}

// Reserving before, between and below the entries present changes no answer.
TEST(NameMapTest, ReserveKeepsEveryEntryAndItsValue) {
  NameMap uses;
  uses.reserve(100);
  for (int i = 0; i < 300; ++i) uses.emplace("n" + std::to_string(i), i);
  uses.reserve(5000);
  uses.reserve(10);
  for (int i = 300; i < 3000; ++i) uses.emplace("n" + std::to_string(i), i);
  ASSERT_EQ(uses.size(), 3000u);
  for (int i = 0; i < 3000; ++i) EXPECT_EQ(uses.at("N" + std::to_string(i)), i);
  EXPECT_FALSE(uses.emplace("N7", 1).second);
  EXPECT_EQ(uses.find("n3000"), uses.end());
}

TEST(NameSetTest, EqualityIgnoresOrderAndCase) {
  EXPECT_EQ((NameSet{"a", "B", "c"}), (NameSet{"C", "b", "A"}));
  EXPECT_FALSE((NameSet{"a", "b"}) == (NameSet{"a", "c"}));
  EXPECT_FALSE((NameSet{"a"}) == (NameSet{"a", "b"}));
  EXPECT_EQ(NameSet{}, NameSet{});
}

TEST(NameSetTest, EmptyNameIsAName) {
  NameSet names;
  EXPECT_EQ(names.count(""), 0u);
  names.insert("");
  EXPECT_EQ(names.count(""), 1u);
  EXPECT_EQ(names.size(), 1u);
}

TEST(NameMapTest, EmplaceKeepsTheFirstValueAndEqualityComparesValues) {
  NameMap lines;
  EXPECT_TRUE(lines.emplace("x", 7).second);
  EXPECT_FALSE(lines.emplace("X", 3).second);
  EXPECT_EQ(lines.at("x"), 7);
  EXPECT_THROW(lines.at("y"), std::out_of_range);
  EXPECT_EQ(lines, (NameMap{{"X", 7}}));
  EXPECT_FALSE(lines == (NameMap{{"x", 8}}));
}

TEST(ToLowerAsciiTest, LowersOnlyAsciiLetters) {
  EXPECT_EQ(ToLowerAscii("AbC_9\xc3\x89"), "abc_9\xc3\x89");
}

}  // namespace
}  // namespace quill
