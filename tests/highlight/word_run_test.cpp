// The block search for a word's end against a byte-at-a-time loop: every byte
// value at every place of a block, and random texts at every start.
#include <gtest/gtest.h>

#include <cstddef>
#include <random>
#include <vector>

#include "highlight/ascii_class.h"
#include "highlight/word_run.h"

namespace quill::test {
namespace {

std::size_t EndOfWordRunByBytes(const unsigned char* text, std::size_t length, std::size_t from) {
  while (from < length && IsWordByte(text[from])) ++from;
  return from;
}

TEST(WordRun, EachByteValueAtEachPlaceOfABlock) {
  for (std::size_t length = 1; length <= 20; ++length) {
    for (std::size_t place = 0; place < length; ++place) {
      for (int value = 0; value < 256; ++value) {
        std::vector<unsigned char> text(length, 'a');
        text[place] = static_cast<unsigned char>(value);
        EXPECT_EQ(EndOfWordRun(text.data(), length, 0), EndOfWordRunByBytes(text.data(), length, 0))
            << "length " << length << ", byte " << value << " at " << place;
      }
    }
  }
}

TEST(WordRun, EmptyRemainderEndsAtTheStart) {
  const unsigned char text[] = {'a', 'b'};
  EXPECT_EQ(EndOfWordRun(text, 2, 2), 2u);
  EXPECT_EQ(EndOfWordRun(text, 0, 0), 0u);
}

TEST(WordRun, RandomTextsAgreeWithTheByteLoop) {
  // Mostly word bytes, so that runs cross block borders.
  const unsigned char kAlphabet[] = {'a', 'Z', '_', '0', '9', '@', '[', '`', '{', '/', ':', ' ', 0x80, 0xC1, 0xFF, 0};
  std::mt19937 engine(2026);
  for (int round = 0; round < 200; ++round) {
    std::vector<unsigned char> text(engine() % 64);
    for (unsigned char& c : text) c = engine() % 4 != 0 ? 'q' : kAlphabet[engine() % sizeof kAlphabet];
    for (std::size_t from = 0; from <= text.size(); ++from) {
      ASSERT_EQ(EndOfWordRun(text.data(), text.size(), from), EndOfWordRunByBytes(text.data(), text.size(), from));
    }
  }
}

}  // namespace
}  // namespace quill::test
