// The word lists in their stored order, the sets built from them and the
// precedence among them, through the classifier.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "class_notation.h"
#include "highlight/ascii_class.h"
#include "highlight/listed_words.h"
#include "highlight/token_class.h"
#include "highlight/word_lists.h"

namespace quill::test {
namespace {

std::string Lower(std::string_view word) {
  std::string lower(word);
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return lower;
}

std::string Upper(std::string_view word) {
  std::string upper(word);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return upper;
}

// The word with the case of every other letter flipped.
std::string MixedCase(std::string_view word) {
  std::string mixed = Lower(word);
  for (std::size_t k = 0; k < mixed.size(); k += 2) mixed[k] = Upper(mixed.substr(k, 1))[0];
  return mixed;
}

template <std::size_t N>
bool Holds(const std::array<std::string_view, N>& list, std::string_view word) {
  const std::string lower = Lower(word);
  return std::any_of(list.begin(), list.end(), [&](std::string_view entry) { return Lower(entry) == lower; });
}

TEST(WordListsTest, SizesAndStoredOrder) {
  ASSERT_EQ(kConstraintKeywords.size(), 68u);
  EXPECT_EQ(kConstraintKeywords.front(), "set_property");
  EXPECT_EQ(kConstraintKeywords[14], "-dict");
  EXPECT_EQ(kConstraintKeywords[27], "IO_LOC");
  EXPECT_EQ(kConstraintKeywords.back(), "format");
  ASSERT_EQ(kToolCommands.size(), 64u);
  EXPECT_EQ(kToolCommands.front(), "synth_design");
  EXPECT_EQ(kToolCommands[36], "run");
  EXPECT_EQ(kToolCommands.back(), "reset_project");
  ASSERT_EQ(kFlowCommands.size(), 20u);
  EXPECT_EQ(kFlowCommands.front(), "project_new");
  EXPECT_EQ(kFlowCommands.back(), "read_sdc_file");
  ASSERT_EQ(kPinProperties.size(), 15u);
  EXPECT_EQ(kPinProperties.front(), "PACKAGE_PIN");
  EXPECT_EQ(kPinProperties.back(), "BITSTREAM");
  ASSERT_EQ(kIoStandardPrefixes.size(), 19u);
  EXPECT_EQ(kIoStandardPrefixes.front(), "LVCMOS");
  EXPECT_EQ(kIoStandardPrefixes[11], "SUB_LVDS");
  EXPECT_EQ(kIoStandardPrefixes.back(), "HSLVDCI");
}

TEST(WordListsTest, EntriesAreNonEmptyWords) {
  auto isWord = [](std::string_view entry) {
    if (entry.empty()) return false;
    for (std::size_t k = 0; k < entry.size(); ++k) {
      const char c = entry[k];
      const bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (k == 0 && c == '-');
      if (!ok) return false;
    }
    return true;
  };
  for (std::string_view entry : kConstraintKeywords) EXPECT_TRUE(isWord(entry)) << entry;
  for (std::string_view entry : kToolCommands) EXPECT_TRUE(isWord(entry)) << entry;
  for (std::string_view entry : kFlowCommands) EXPECT_TRUE(isWord(entry)) << entry;
  for (std::string_view entry : kPinProperties) EXPECT_TRUE(isWord(entry)) << entry;
  for (std::string_view entry : kIoStandardPrefixes) EXPECT_TRUE(isWord(entry)) << entry;
}

TEST(WordListsTest, EveryKeywordInAnyCase) {
  for (std::string_view entry : kConstraintKeywords) {
    for (const std::string& word : {Lower(entry), Upper(entry), MixedCase(entry)}) {
      EXPECT_EQ(Classes(word), std::string(word.size(), 'K')) << word;
    }
  }
}

TEST(WordListsTest, EveryToolCommandInAnyCase) {
  for (std::string_view entry : kToolCommands) {
    for (const std::string& word : {Lower(entry), Upper(entry), MixedCase(entry)}) {
      EXPECT_EQ(Classes(word), std::string(word.size(), 'T')) << word;
    }
  }
}

TEST(WordListsTest, FlowCommandsYieldToEarlierLists) {
  int flowClassed = 0;
  for (std::string_view entry : kFlowCommands) {
    char expected = 'F';
    if (Holds(kConstraintKeywords, entry)) {
      expected = 'K';
    } else if (Holds(kToolCommands, entry)) {
      expected = 'T';
    } else {
      ++flowClassed;
    }
    for (const std::string& word : {Lower(entry), Upper(entry), MixedCase(entry)}) {
      EXPECT_EQ(Classes(word), std::string(word.size(), expected)) << word;
    }
  }
  EXPECT_EQ(flowClassed, 14);
  EXPECT_EQ(Classes("set_location_assignment"), std::string(23, 'K'));
  EXPECT_EQ(Classes("set_instance_assignment"), std::string(23, 'K'));
  EXPECT_EQ(Classes("set_input_delay"), std::string(15, 'K'));
  EXPECT_EQ(Classes("set_output_delay"), std::string(16, 'K'));
  EXPECT_EQ(Classes("report_timing"), std::string(13, 'T'));
  EXPECT_EQ(Classes("report_power"), std::string(12, 'T'));
}

TEST(WordListsTest, EveryPinPropertyInAnyCase) {
  for (std::string_view entry : kPinProperties) {
    for (const std::string& word : {Lower(entry), Upper(entry), MixedCase(entry)}) {
      EXPECT_EQ(Classes(word), std::string(word.size(), 'P')) << word;
    }
  }
}

TEST(WordListsTest, EveryIoStandardPrefixNeedsMore) {
  for (std::string_view prefix : kIoStandardPrefixes) {
    const std::string bare(prefix);
    EXPECT_EQ(Classes(bare), std::string(bare.size(), '.')) << bare;
    for (const std::string& word : {bare + "33", Lower(prefix) + "_x", MixedCase(prefix) + "1_8"}) {
      EXPECT_EQ(Classes(word), std::string(word.size(), 'I')) << word;
    }
  }
}

TokenClass Listed(std::string_view word) {
  return ClassifyListedWord(reinterpret_cast<const unsigned char*>(word.data()), word.size());
}

TEST(ListedWordsTest, HoldsEachDistinctWordOnce) {
  // 167 entries, six flow commands of which stand in an earlier list.
  EXPECT_EQ(kListedWords.count, 161u);
  std::size_t longest = 0;
  for (std::size_t k = 0; k < kListedWords.count; ++k) longest = std::max(longest, kListedWords.words[k].length);
  EXPECT_EQ(longest, kMaxListedLength);
  EXPECT_EQ(kMaxListedLength, std::string_view("report_clock_interaction").size());
  EXPECT_LE(kListedWords.longestProbe, 4u);
}

TEST(ListedWordsTest, LooksUpIgnoringCaseAndExactLength) {
  struct Case {
    std::string_view word;
    TokenClass expected;
  };
  const Case cases[] = {
      {"set_property", TokenClass::kKeyword},
      {"SET_PROPERTY", TokenClass::kKeyword},
      {"-Dict", TokenClass::kKeyword},
      {"dict", TokenClass::kKeyword},
      {"if", TokenClass::kKeyword},
      {"Report_Clock_Interaction", TokenClass::kToolCommand},
      {"run", TokenClass::kToolCommand},
      {"report_power", TokenClass::kToolCommand},
      {"set_input_delay", TokenClass::kKeyword},
      {"execute_flow", TokenClass::kFlowCommand},
      {"package_pin", TokenClass::kProperty},
      {"set_max_delay", TokenClass::kKeyword},
      {"set_min_delay", TokenClass::kKeyword},
      {"set_mid_delay", TokenClass::kPlain},
      {"report_clock_interactions", TokenClass::kPlain},
      {"ru", TokenClass::kPlain},
      {"runs", TokenClass::kPlain},
      {"i", TokenClass::kPlain},
      {"", TokenClass::kPlain},
      {"run[3]", TokenClass::kPlain},
      {"r\n", TokenClass::kPlain},
      {"s_ring", TokenClass::kPlain},
  };
  for (const Case& c : cases) EXPECT_EQ(Listed(c.word), c.expected) << c.word;
}

TEST(ListedWordsTest, FoldsOnlyLettersOntoLowerCase) {
  // "| 0x20" gives DEL for "_" and CR for "-"; the full comparison tells them apart.
  EXPECT_EQ(Listed("get\x7Fports"), TokenClass::kPlain);
  EXPECT_EQ(Listed("\rdict"), TokenClass::kPlain);
  EXPECT_EQ(Listed("GET_PORTS"), TokenClass::kKeyword);
}

// The class of the entry equal to `word` ignoring case, by a plain search.
TokenClass ListedByteByByte(const std::vector<unsigned char>& word) {
  for (std::size_t n = 0; n < kListedWords.count; ++n) {
    const ListedWord& entry = kListedWords.words[n];
    if (entry.length != word.size()) continue;
    bool same = true;
    for (std::size_t k = 0; k < word.size() && same; ++k) same = LowerAsciiByte(word[k]) == entry.lower[k];
    if (same) return entry.tokenClass;
  }
  return TokenClass::kPlain;
}

TEST(ListedWordsTest, BlockComparisonMatchesByteByByte) {
  // Every listed word with each of its bytes replaced by every byte value, in
  // a buffer of its own length so that a read past the word would be caught by
  // the sanitizer builds.
  for (std::size_t n = 0; n < kListedWords.count; ++n) {
    const ListedWord& entry = kListedWords.words[n];
    const std::string upper = Upper(std::string(entry.lower.begin(), entry.lower.begin() + static_cast<long>(entry.length)));
    for (std::size_t k = 0; k < entry.length; ++k) {
      for (int b = 0; b < 256; ++b) {
        std::string word = upper;
        word[k] = static_cast<char>(b);
        const std::vector<unsigned char> bytes(word.begin(), word.end());
        const TokenClass expected = ListedByteByByte(bytes);
        ASSERT_EQ(ClassifyListedWord(bytes.data(), bytes.size()), expected) << word << " byte " << k << " = " << b;
      }
    }
  }
}

TEST(ListedWordsTest, LowerAsciiBlockLowersOnlyLetters) {
  for (int b = 0; b < 256; ++b) {
    const auto c = static_cast<std::uint64_t>(b);
    const std::uint64_t block = c | c << 8 | 0x41u << 16 | 0x5Au << 24 | 0x40ull << 32 | 0x5Bull << 40 | 0xC1ull << 48 | c << 56;
    const std::uint64_t lower = LowerAsciiByte(static_cast<unsigned char>(b));
    const std::uint64_t expected =
        lower | lower << 8 | 0x61u << 16 | 0x7Au << 24 | 0x40ull << 32 | 0x5Bull << 40 | 0xC1ull << 48 | lower << 56;
    EXPECT_EQ(LowerAsciiBlock(block), expected) << b;
  }
}

TEST(ListedWordsTest, HighBytesNeverFoldOntoLetters) {
  // Bytes of 128 and above have no lower-case form in the "C" locale.
  const std::string word = "run\xC9";
  const auto* bytes = reinterpret_cast<const unsigned char*>(word.data());
  EXPECT_EQ(ClassifyListedWord(bytes, 3), TokenClass::kToolCommand);
  EXPECT_EQ(ClassifyListedWord(bytes, 4), TokenClass::kPlain);
  EXPECT_EQ(Listed("RU\xCE"), TokenClass::kPlain);
}

}  // namespace
}  // namespace quill::test
