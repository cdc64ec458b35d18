// The five exports as a host sees them: argument checks, buffer contracts,
// return codes and ownership, through the library loaded with dlopen.
#include <gtest/gtest.h>
#include <malloc.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "abi/loaded_library.h"

namespace quill_abi {
namespace {

using namespace std::string_view_literals;

constexpr unsigned char kSentinel = 0xA5;
constexpr std::size_t kBufferSize = 256;
constexpr int32_t kCapacity = static_cast<int32_t>(kBufferSize);

class AbiTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(Quill().Complete()) << Quill().error; }

  // A caller buffer filled with the sentinel.
  static std::vector<char> Buffer(std::size_t size = kBufferSize) {
    return std::vector<char>(size, static_cast<char>(kSentinel));
  }

  static bool Untouched(const std::vector<char>& buffer, std::size_t from = 0) {
    for (std::size_t i = from; i < buffer.size(); ++i) {
      if (static_cast<unsigned char>(buffer[i]) != kSentinel) return false;
    }
    return true;
  }

  static int32_t Format(std::string_view text, int32_t length, std::vector<char>* out, int32_t capacity) {
    return Quill().format(text.data(), length, out->data(), capacity);
  }

  static int32_t Size(std::string_view text) { return static_cast<int32_t>(text.size()); }

  // The formatted text as the host obtains it: ask, grow, ask again.
  static std::string FormatFully(std::string_view text) {
    std::vector<char> out(1);
    int32_t result = Quill().format(text.data(), Size(text), out.data(), 1);
    if (result < 0) {
      out.assign(static_cast<std::size_t>(-result), '\0');
      result = Quill().format(text.data(), Size(text), out.data(), static_cast<int32_t>(out.size()));
    }
    if (result < 0) return "<error " + std::to_string(result) + ">";
    return std::string(out.data(), static_cast<std::size_t>(result));
  }

  static std::string Lint(const char* text, int32_t length) {
    char* report = Quill().lint(text, length);
    std::string copy = report != nullptr ? report : "<null>";
    Quill().release(report);
    return copy;
  }
};

// n5p8w

TEST_F(AbiTest, FormatRejectsEveryNullPointerAndCapacityBelowOne) {
  const char* texts[] = {nullptr, "module m;", ""};
  for (const char* text : texts) {
    for (const bool nullOut : {true, false}) {
      for (const int32_t capacity : {INT32_MIN, -5, -1, 0, 1, 2, 64}) {
        for (const int32_t length : {-1, 0, 3}) {
          const bool rejected = text == nullptr || nullOut || capacity < 1;
          if (!rejected) continue;
          std::vector<char> out = Buffer();
          const int32_t result = Quill().format(text, length, nullOut ? nullptr : out.data(), capacity);
          EXPECT_EQ(result, -1) << (text ? text : "(null)") << " out " << !nullOut << " capacity " << capacity
                                << " length " << length;
          EXPECT_TRUE(Untouched(out));
        }
      }
    }
  }
}

TEST_F(AbiTest, FormatWithCapacityZeroOrNullOutReturnsMinusOneEvenForEmptyText) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().format("", 0, out.data(), 0), -1);
  EXPECT_EQ(Quill().format("", 0, nullptr, 2), -1);
  EXPECT_EQ(Quill().format("", 0, nullptr, 0), -1);
  EXPECT_EQ(Quill().format("  \r\n\t", 0, out.data(), 0), -1);
  EXPECT_TRUE(Untouched(out));
}

TEST_F(AbiTest, FormatOfBlankTextWithCapacityOneReturnsMinusTwo) {
  for (const std::string_view text : {""sv, "  \r\n\t"sv, "\n"sv, " "sv}) {
    std::vector<char> out = Buffer();
    EXPECT_EQ(Format(text, 0, &out, 1), -2) << "\"" << text << "\"";
    EXPECT_EQ(Format(text, Size(text), &out, 1), -2) << "\"" << text << "\"";
    EXPECT_TRUE(Untouched(out));
  }
}

TEST_F(AbiTest, FormatOfBlankTextWithCapacityTwoWritesOneLineFeed) {
  for (const std::string_view text : {""sv, "  \r\n\t"sv, "\r\r\n\n"sv}) {
    std::vector<char> out = Buffer();
    EXPECT_EQ(Format(text, Size(text), &out, 2), 1) << "\"" << text << "\"";
    EXPECT_EQ(out[0], '\n');
    EXPECT_EQ(out[1], '\0');
    EXPECT_TRUE(Untouched(out, 2));
  }
}

TEST_F(AbiTest, FormatOfEmptyTextWithCapacityTwoWritesOneLineFeed) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().format("", 0, out.data(), 2), 1);
  EXPECT_EQ(std::string(out.data(), 2), "\n\0"sv);
  EXPECT_TRUE(Untouched(out, 2));
}

TEST_F(AbiTest, VerticalTabIsNotBlank) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Format("\v", 1, &out, 2), -3);
  EXPECT_TRUE(Untouched(out));
  EXPECT_EQ(FormatFully("\v"), "\v\n");
}

TEST_F(AbiTest, FormatWithLengthZeroOrNegativeReadsToTheNul) {
  const std::string_view expected = "module m;\nendmodule\n";
  for (const int32_t length : {0, -1, -7, INT32_MIN}) {
    std::vector<char> out = Buffer();
    EXPECT_EQ(Quill().format("module m;\nendmodule", length, out.data(), kCapacity), Size(expected)) << length;
    EXPECT_EQ(std::string(out.data()), expected);
  }
}

TEST_F(AbiTest, FormatWithLengthThreeOnModuleFormatsMod) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().format("module", 3, out.data(), kCapacity), 4);
  EXPECT_EQ(std::string(out.data(), 5), "mod\n\0"sv);
  EXPECT_TRUE(Untouched(out, 5));
}

TEST_F(AbiTest, FormatReadsExactlyLengthBytesOfAnUnterminatedBuffer) {
  const std::vector<char> text = {'m', 'o', 'd'};
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().format(text.data(), 3, out.data(), kCapacity), 4);
  EXPECT_EQ(std::string(out.data()), "mod\n");
}

TEST_F(AbiTest, FormatResultNeedingExactlyCapacityBytesReturnsMinusCapacityPlusOne) {
  // "mod" formats to "mod\n": n = 4, so 5 bytes are needed.
  for (const int32_t capacity : {1, 2, 3, 4}) {
    std::vector<char> out = Buffer();
    EXPECT_EQ(Quill().format("mod", 3, out.data(), capacity), -5) << capacity;
    EXPECT_TRUE(Untouched(out)) << capacity;
  }
}

TEST_F(AbiTest, FormatWithCapacityNPlusOneWritesTextAndNul) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().format("mod", 3, out.data(), 5), 4);
  EXPECT_EQ(std::string(out.data(), 5), "mod\n\0"sv);
  EXPECT_TRUE(Untouched(out, 5));
}

TEST_F(AbiTest, FormatTooSmallBufferIsNeverTouched) {
  std::string text = "module m (\n  input a, output b\n);\n/* c\n d */\nwire w;\nendmodule\n";
  for (int i = 0; i < 200; ++i) text += "wire w" + std::to_string(i) + ";\n";
  const std::string formatted = FormatFully(text);
  ASSERT_FALSE(formatted.empty());
  ASSERT_NE(formatted[0], '<');
  const auto needed = static_cast<int32_t>(formatted.size() + 1);
  for (const int32_t capacity : {1, 2, needed / 2, needed - 2, needed - 1}) {
    std::vector<char> out = Buffer(formatted.size() + 64);
    EXPECT_EQ(Format(text, Size(text), &out, capacity), -needed) << capacity;
    EXPECT_TRUE(Untouched(out)) << capacity;
  }
  std::vector<char> out = Buffer(formatted.size() + 64);
  EXPECT_EQ(Format(text, Size(text), &out, needed), needed - 1);
  EXPECT_EQ(std::string(out.data(), formatted.size()), formatted);
  EXPECT_EQ(out[formatted.size()], '\0');
  EXPECT_TRUE(Untouched(out, formatted.size() + 1));
}

TEST_F(AbiTest, FormatOfForeignSourceReturnsItByteForByte) {
  const std::string_view cases[] = {
      "import os\nprint(1)",
      "\n  import os\r\n",
      "IMPORT os",
      "def main():\n  pass\n\n\n",
      "#!/usr/bin/env python3\r\nx = 1\r\n",
      "from a import b\nmodule m;",
  };
  for (const std::string_view text : cases) {
    std::vector<char> out = Buffer();
    EXPECT_EQ(Format(text, Size(text), &out, kCapacity), Size(text)) << "\"" << text << "\"";
    EXPECT_EQ(std::string_view(out.data(), text.size()), text);
    EXPECT_EQ(out[text.size()], '\0');
    EXPECT_TRUE(Untouched(out, text.size() + 1));
  }
}

TEST_F(AbiTest, ForeignSourceNeedsExactlyItsLengthPlusOne) {
  const std::string_view text = "import os";
  std::vector<char> out = Buffer();
  EXPECT_EQ(Format(text, Size(text), &out, Size(text)), -(Size(text) + 1));
  EXPECT_TRUE(Untouched(out));
}

TEST_F(AbiTest, LaterImportLineDoesNotMakeTheTextForeign) {
  EXPECT_EQ(FormatFully("module m;\nimport os"), "module m;\nimport os\n");
}

TEST_F(AbiTest, FormatCopiesEmbeddedNulBytesOfAPositiveLength) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Format("a\0b"sv, 3, &out, kCapacity), 4);
  EXPECT_EQ(std::string_view(out.data(), 5), "a\0b\n\0"sv);
  EXPECT_TRUE(Untouched(out, 5));
  // The same text read by the NUL rule stops at the NUL.
  out = Buffer();
  EXPECT_EQ(Format("a\0b"sv, 0, &out, kCapacity), 2);
  EXPECT_EQ(std::string_view(out.data(), 3), "a\n\0"sv);
  // Foreign source with a NUL comes back whole.
  const std::string_view foreign = "import os\0x"sv;
  out = Buffer();
  EXPECT_EQ(Format(foreign, Size(foreign), &out, kCapacity), Size(foreign));
  EXPECT_EQ(std::string_view(out.data(), foreign.size() + 1), "import os\0x\0"sv);
}

TEST_F(AbiTest, FormatResultEndsWithOneLineFeedWithoutCr) {
  EXPECT_EQ(FormatFully("module m;\r\nendmodule\r\n\r\n\r\n"), "module m;\nendmodule\n");
}

// t2v6r

TEST_F(AbiTest, LintOfEmptyTextIsAnEmptyArray) {
  EXPECT_EQ(Lint("", 0), "[]");
  EXPECT_EQ(Lint("", -1), "[]");
  EXPECT_EQ(Lint("\0module"sv.data(), 0), "[]");
}

TEST_F(AbiTest, LintOfNullTextIsTheEmptyText) {
  for (const int32_t length : {INT32_MIN, -1, 0, 5}) EXPECT_EQ(Lint(nullptr, length), "[]") << length;
}

TEST_F(AbiTest, LintResultIsAHeapStringOfAtLeastItsSize) {
  char* report = Quill().lint("", 0);
  ASSERT_NE(report, nullptr);
  EXPECT_STREQ(report, "[]");
  EXPECT_GE(malloc_usable_size(report), 3u);
  Quill().release(report);
}

TEST_F(AbiTest, LintReturnsAJsonArray) {
  const std::string_view texts[] = {"module m;\nendmodule\n", "module m(input a, output b);\nassign b = a;\nendmodule",
                                    "\xFF\xFE\0\x01"sv, "/* unterminated"};
  for (const std::string_view text : texts) {
    const std::string report = Lint(text.data(), Size(text));
    ASSERT_GE(report.size(), 2u) << report;
    EXPECT_EQ(report.front(), '[') << report;
    EXPECT_EQ(report.back(), ']') << report;
  }
}

TEST_F(AbiTest, LintReadsExactlyLengthBytesOfAnUnterminatedBuffer) {
  const std::string text = "module m;\nendmodule\n";
  const std::vector<char> bytes(text.begin(), text.end());
  EXPECT_EQ(Lint(bytes.data(), static_cast<int32_t>(bytes.size())), Lint(text.c_str(), 0));
}

// x4b7d

TEST_F(AbiTest, HighlightRejectsNullTextAndLengthBelowOne) {
  const char* texts[] = {nullptr, "set x 1"};
  for (const char* text : texts) {
    for (const bool nullOut : {true, false}) {
      for (const int32_t length : {INT32_MIN, -1, 0, 7}) {
        for (const int32_t capacity : {INT32_MIN, -1, 0, 6, 7, 64}) {
          std::vector<char> out = Buffer();
          auto* classes = nullOut ? nullptr : reinterpret_cast<unsigned char*>(out.data());
          const int32_t result = Quill().highlight(text, length, classes, capacity);
          int32_t expected = length;
          if (text == nullptr || length < 1) {
            expected = 0;
          } else if (nullOut || capacity < length) {
            expected = -length;
          }
          EXPECT_EQ(result, expected) << (text ? text : "(null)") << " out " << !nullOut << " length " << length
                                      << " capacity " << capacity;
          EXPECT_TRUE(Untouched(out, expected > 0 ? static_cast<std::size_t>(expected) : 0));
        }
      }
    }
  }
}

TEST_F(AbiTest, HighlightWithCapacityEqualToLengthWritesNoNul) {
  const std::string_view text = "set_property PACKAGE_PIN W5 [get_ports clk] ;# pin\n";
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().highlight(text.data(), Size(text), reinterpret_cast<unsigned char*>(out.data()), Size(text)),
            Size(text));
  for (std::size_t i = 0; i < text.size(); ++i) EXPECT_LE(static_cast<unsigned char>(out[i]), 10) << i;
  EXPECT_TRUE(Untouched(out, text.size()));
}

TEST_F(AbiTest, HighlightWithCapacityOneBelowLengthReturnsMinusLength) {
  const std::string_view text = "create_clock -period 10 [get_ports clk]";
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().highlight(text.data(), Size(text), reinterpret_cast<unsigned char*>(out.data()), Size(text) - 1),
            -Size(text));
  EXPECT_TRUE(Untouched(out));
}

TEST_F(AbiTest, HighlightWritesOneCodeOfZeroToTenPerByte) {
  std::string text;
  for (int value = 0; value < 256; ++value) text.push_back(static_cast<char>(value));
  text += "set_property IOSTANDARD LVCMOS33 [get_ports {led[0] led[1]}]\n# \"x\"\nsynth_design\n\xC3\xA9";
  std::vector<char> out = Buffer(text.size() + 16);
  EXPECT_EQ(Quill().highlight(text.data(), Size(text), reinterpret_cast<unsigned char*>(out.data()), Size(text)),
            Size(text));
  for (std::size_t i = 0; i < text.size(); ++i) EXPECT_LE(static_cast<unsigned char>(out[i]), 10) << i;
  EXPECT_TRUE(Untouched(out, text.size()));
}

TEST_F(AbiTest, HighlightOfOneByte) {
  std::vector<char> out = Buffer();
  EXPECT_EQ(Quill().highlight("#", 1, reinterpret_cast<unsigned char*>(out.data()), 1), 1);
  EXPECT_LE(static_cast<unsigned char>(out[0]), 10);
  EXPECT_TRUE(Untouched(out, 1));
}

// q7m2k and h3x9c

TEST_F(AbiTest, VersionIsExactlyEighteenBytes) {
  char* version = Quill().version();
  ASSERT_NE(version, nullptr);
  EXPECT_EQ(std::string_view(version, 18), "core_engine v1.25\0"sv);
  EXPECT_EQ(std::strlen(version), 17u);
  EXPECT_GE(malloc_usable_size(version), 18u);
  Quill().release(version);
}

TEST_F(AbiTest, EveryVersionCallReturnsANewString) {
  char* first = Quill().version();
  char* second = Quill().version();
  ASSERT_NE(first, nullptr);
  ASSERT_NE(second, nullptr);
  EXPECT_NE(first, second);
  first[0] = 'X';
  EXPECT_STREQ(second, "core_engine v1.25");
  Quill().release(first);
  Quill().release(second);
  char* third = Quill().version();
  EXPECT_STREQ(third, "core_engine v1.25");
  Quill().release(third);
}

TEST_F(AbiTest, ReleaseOfNullIsHarmless) {
  Quill().release(nullptr);
  Quill().release(nullptr);
  SUCCEED();
}

TEST_F(AbiTest, CallsInAnyOrderNeedNoInitialisation) {
  for (int round = 0; round < 3; ++round) {
    Quill().release(Quill().lint("module m;", 0));
    std::vector<char> out = Buffer();
    EXPECT_EQ(Quill().highlight("# c", 3, reinterpret_cast<unsigned char*>(out.data()), 3), 3);
    EXPECT_EQ(FormatFully("mod"), "mod\n");
    Quill().release(Quill().version());
  }
}

}  // namespace
}  // namespace quill_abi
