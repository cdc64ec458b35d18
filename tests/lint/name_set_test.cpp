#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "lint/name_set.h"

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

TEST(ToLowerAsciiTest, LowersOnlyAsciiLetters) {
  EXPECT_EQ(ToLowerAscii("AbC_9\xc3\x89"), "abc_9\xc3\x89");
}

}  // namespace
}  // namespace quill
