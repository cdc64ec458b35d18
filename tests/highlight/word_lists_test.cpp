// The word lists in their stored order, the sets built from them and the
// precedence among them, through the classifier.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "class_notation.h"
#include "highlight/word_lists.h"
#include "highlight/word_set.h"
#include "highlight/word_sets.h"

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

TEST(WordSetTest, BuildWordSetInsertsLowerCaseCopies) {
  constexpr std::string_view kWords[] = {"Alpha", "BETA", "gamma", "alpha"};
  WordSet set;
  BuildWordSet(set, kWords, 3);
  EXPECT_EQ(set.Size(), 3u);
  EXPECT_EQ(set.MaxLength(), 5u);
  auto holds = [&](std::string_view word) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(word.data());
    return set.Contains(bytes, word.size(), WordSet::HashIgnoringCase(bytes, word.size()));
  };
  EXPECT_TRUE(holds("alpha"));
  EXPECT_TRUE(holds("ALPHA"));
  EXPECT_TRUE(holds("beta"));
  EXPECT_TRUE(holds("GaMmA"));
  EXPECT_FALSE(holds("alph"));
  EXPECT_FALSE(holds("alphas"));
  EXPECT_FALSE(holds(""));
  BuildWordSet(set, kWords, 4);
  EXPECT_EQ(set.Size(), 3u);
}

TEST(WordSetTest, EmptySetHoldsNothing) {
  const WordSet set;
  const auto* bytes = reinterpret_cast<const unsigned char*>("x");
  EXPECT_FALSE(set.Contains(bytes, 1, WordSet::HashIgnoringCase(bytes, 1)));
  EXPECT_EQ(set.MaxLength(), 0u);
}

TEST(WordSetTest, GrowsPastItsFirstTable) {
  WordSet set;
  for (int n = 0; n < 1000; ++n) set.Insert("Word" + std::to_string(n));
  EXPECT_EQ(set.Size(), 1000u);
  for (int n = 0; n < 1000; ++n) {
    const std::string word = "WORD" + std::to_string(n);
    const auto* bytes = reinterpret_cast<const unsigned char*>(word.data());
    EXPECT_TRUE(set.Contains(bytes, word.size(), WordSet::HashIgnoringCase(bytes, word.size()))) << word;
  }
  const std::string missing = "word1000";
  const auto* bytes = reinterpret_cast<const unsigned char*>(missing.data());
  EXPECT_FALSE(set.Contains(bytes, missing.size(), WordSet::HashIgnoringCase(bytes, missing.size())));
}

TEST(WordSetsTest, BuiltFromTheFourLists) {
  const WordSets& sets = GetWordSets();
  EXPECT_EQ(&sets, &GetWordSets());
  EXPECT_EQ(sets.constraintKeywords.Size(), 68u);
  EXPECT_EQ(sets.toolCommands.Size(), 64u);
  EXPECT_EQ(sets.flowCommands.Size(), 20u);
  EXPECT_EQ(sets.pinProperties.Size(), 15u);
  EXPECT_EQ(sets.maxLength, std::string_view("report_clock_interaction").size());
}

TEST(WordSetsTest, HighBytesNeverFoldOntoLetters) {
  // Bytes of 128 and above have no lower-case form in the "C" locale.
  const std::string word = "run\xC9";
  const auto* bytes = reinterpret_cast<const unsigned char*>(word.data());
  EXPECT_EQ(ClassifyListedWord(GetWordSets(), bytes, 3), TokenClass::kToolCommand);
  EXPECT_EQ(ClassifyListedWord(GetWordSets(), bytes, 4), TokenClass::kPlain);
}

}  // namespace
}  // namespace quill::test
