// Hostile and very large inputs: the classifier writes exactly `length`
// bytes, never reads or writes past them, and handles unterminated and
// unbalanced constructs by running them to the end of the text.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "class_notation.h"
#include "highlight/classify_constraint_text.h"

namespace quill::test {
namespace {

constexpr unsigned char kGuard = 0x5A;
constexpr std::size_t kGuardSize = 64;

// Classifies into the middle of a guarded buffer; checks both guards.
std::vector<unsigned char> ClassifyGuarded(const std::string& text) {
  std::vector<unsigned char> buffer(kGuardSize + text.size() + kGuardSize, kGuard);
  // The text gets a heap copy of its own size, so reading past it is caught
  // by address sanitizer builds.
  std::vector<char> copy(text.begin(), text.end());
  ClassifyConstraintText(copy.data(), copy.size(), buffer.data() + kGuardSize);
  for (std::size_t k = 0; k < kGuardSize; ++k) {
    EXPECT_EQ(buffer[k], kGuard) << "written before the buffer";
    EXPECT_EQ(buffer[kGuardSize + text.size() + k], kGuard) << "written after the buffer";
  }
  return {buffer.begin() + kGuardSize, buffer.begin() + static_cast<std::ptrdiff_t>(kGuardSize + text.size())};
}

TEST(RobustnessTest, EmptyTextWritesNothing) {
  unsigned char out = kGuard;
  ClassifyConstraintText("", 0, &out);
  EXPECT_EQ(out, kGuard);
  ClassifyConstraintText(nullptr, 0, nullptr);
}

TEST(RobustnessTest, WritesExactlyLengthBytesAndNoTerminator) {
  const std::vector<unsigned char> codes = ClassifyGuarded("set_property PACKAGE_PIN W5 [get_ports clk]");
  EXPECT_EQ(RenderClasses(codes.data(), codes.size()), "KKKKKKKKKKKK.PPPPPPPPPPP.NN..KKKKKKKKK.ppp.");
}

TEST(RobustnessTest, StaleBufferContentIsCleared) {
  std::vector<unsigned char> out(8, 0xFF);
  ClassifyConstraintText("1 + 2 ;", 7, out.data());
  EXPECT_EQ(std::vector<unsigned char>(out.begin(), out.begin() + 7), std::vector<unsigned char>(7, 0));
  EXPECT_EQ(out[7], 0xFF);
}

TEST(RobustnessTest, ReadsOnlyLengthBytes) {
  // The bytes after `length` would make a keyword, a string and a port.
  const char text[] = "[get_ports\"x\" run";
  unsigned char out[16];
  std::memset(out, kGuard, sizeof out);
  ClassifyConstraintText(text, 8, out);
  EXPECT_EQ(RenderClasses(out, 8), "........");
  EXPECT_EQ(out[8], kGuard);
  ClassifyConstraintText(text, 10, out);
  EXPECT_EQ(RenderClasses(out, 10), ".KKKKKKKKK");
}

TEST(RobustnessTest, EveryByteValueAlone) {
  std::string text;
  for (int b = 0; b < 256; ++b) text += static_cast<char>(b);
  const std::vector<unsigned char> codes = ClassifyGuarded(text);
  for (int b = 0; b < 256; ++b) {
    const unsigned char code = codes[static_cast<std::size_t>(b)];
    EXPECT_LE(code, 10) << b;
  }
  // The quote (34) opens a string that no later byte closes; the "#" (35) and
  // the LF (10) do not end it.
  EXPECT_EQ(RenderClasses(codes.data(), 256), std::string(34, '.') + std::string(222, 's'));
}

TEST(RobustnessTest, UnterminatedConstructsRunToTheEnd) {
  EXPECT_EQ(Classes("x \"abc\\"), "..sssss");
  EXPECT_EQ(Classes("x # abc"), "..ccccc");
  EXPECT_EQ(Classes("get_ports { a b"), "KKKKKKKKK.b.p.p");
  EXPECT_EQ(Classes("[get_ports"), ".KKKKKKKKK");
  EXPECT_EQ(Classes("led[12"), "......");
  EXPECT_EQ(Classes("}}]] run"), "bb...TTT");
}

TEST(RobustnessTest, LongRunsStayLinear) {
  const std::size_t n = 1u << 20;
  for (const std::string& piece :
       {std::string("{"), std::string(" {"), std::string("\t{ "), std::string("["), std::string("[ "),
        std::string("\\"), std::string("a"), std::string("9."), std::string("\xC3\xA9"), std::string("-"),
        std::string("PIN_"), std::string("a[1]"), std::string("get_ports")}) {
    std::string text;
    while (text.size() < n) text += piece;
    const std::vector<unsigned char> codes = ClassifyGuarded(text);
    ASSERT_EQ(codes.size(), text.size()) << piece;
  }
}

TEST(RobustnessTest, OneLongWordIsPlain) {
  const std::string word(1u << 20, 'w');
  const std::vector<unsigned char> codes = ClassifyGuarded(word + " run");
  EXPECT_EQ(std::vector<unsigned char>(codes.begin(), codes.end() - 4), std::vector<unsigned char>(word.size(), 0));
  EXPECT_EQ(RenderClasses(codes.data() + word.size(), 4), ".TTT");
}

TEST(RobustnessTest, LargeConstraintFileAndEndlessLine) {
  const std::string line = "set_property -dict { PACKAGE_PIN W5 IOSTANDARD LVCMOS33 } [get_ports {led[3]}] ;# x\n";
  std::string text;
  while (text.size() < (8u << 20)) text += line;
  const std::vector<unsigned char> codes = ClassifyGuarded(text);
  const std::string first = Classes(line);
  for (std::size_t at = 0; at < text.size(); at += line.size() * 4099) {
    ASSERT_EQ(RenderClasses(codes.data() + at, line.size()), first) << "at " << at;
  }
  std::string endless = text;
  for (char& c : endless) {
    if (c == '\n') c = ' ';
  }
  const std::vector<unsigned char> endlessCodes = ClassifyGuarded(endless);
  EXPECT_EQ(RenderClasses(endlessCodes.data(), line.size() - 1), first.substr(0, line.size() - 1));
  EXPECT_EQ(endlessCodes.back(), 1);
}

}  // namespace
}  // namespace quill::test
