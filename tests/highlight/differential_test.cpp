// The classifier against the plain reference in reference_classifier.h, on
// real constraint files, on every one- and two-byte text, on every prefix of
// tricky texts and on random token soups.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "class_notation.h"
#include "highlight/ascii_class.h"
#include "reference_classifier.h"
#include "support/corpus_files.h"

namespace quill::test {
namespace {

void ExpectSameAsReference(std::string_view text, const std::string& label) {
  const std::vector<unsigned char> expected = ReferenceClassify(text);
  const std::vector<unsigned char> actual = ClassCodes(text);
  if (actual == expected) return;
  std::size_t k = 0;
  while (k < actual.size() && actual[k] == expected[k]) ++k;
  const std::size_t from = k < 40 ? 0 : k - 40;
  const std::size_t count = std::min<std::size_t>(80, text.size() - from);
  ADD_FAILURE() << label << ": first difference at byte " << k << "\n  text:     " << text.substr(from, count)
                << "\n  actual:   " << RenderClasses(actual.data() + from, count)
                << "\n  expected: " << RenderClasses(expected.data() + from, count);
}

TEST(DifferentialTest, AsciiTestsMatchTheCLocale) {
  for (int b = 0; b < 256; ++b) {
    const auto c = static_cast<unsigned char>(b);
    EXPECT_EQ(IsAsciiAlpha(c), std::isalpha(b) != 0) << b;
    EXPECT_EQ(IsAsciiDigit(c), std::isdigit(b) != 0) << b;
    EXPECT_EQ(IsAsciiUpper(c), std::isupper(b) != 0) << b;
    EXPECT_EQ(IsWordByte(c), std::isalnum(b) != 0 || b == '_') << b;
    EXPECT_EQ(LowerAsciiByte(c), static_cast<unsigned char>(std::tolower(b))) << b;
  }
}

TEST(DifferentialTest, EveryOneAndTwoByteText) {
  std::string text(2, '\0');
  for (int a = 0; a < 256; ++a) {
    text.resize(1);
    text[0] = static_cast<char>(a);
    ExpectSameAsReference(text, "byte " + std::to_string(a));
    text.resize(2);
    for (int b = 0; b < 256; ++b) {
      text[1] = static_cast<char>(b);
      const std::vector<unsigned char> expected = ReferenceClassify(text);
      if (ClassCodes(text) != expected)
        ExpectSameAsReference(text, "bytes " + std::to_string(a) + " " + std::to_string(b));
    }
  }
}

TEST(DifferentialTest, EveryPrefixOfTrickyTexts) {
  const std::string texts[] = {
      "set_property -dict { PACKAGE_PIN PIN_AB3 IOSTANDARD LVCMOS33 } [get_ports {led[12] b}] ;# c\n",
      "[ \tget_ports\t{a [get_ports b] c}] get_ports \t{x\"y\\\"z\" #q\n w}",
      "\"a\\\\\" \"\\\"\\ LVDS_25[3] W5[0] POD12 -LVCMOS33 -5 -_x $x x#y",
      "\xC3\xA9\xE2\x80\x94\x80\xBF\xFFget_ports{\xC3}run\x00W5",
  };
  for (const std::string& text : texts) {
    for (std::size_t n = 0; n <= text.size(); ++n) ExpectSameAsReference(std::string_view(text).substr(0, n), text);
  }
}

// Random texts made of pieces that exercise every rule, with stray bytes.
std::string RandomTokenSoup(std::mt19937& random) {
  static const std::vector<std::string> kPieces = {"get_ports",
                                                   "GET_PORTS",
                                                   "get_port",
                                                   "[",
                                                   "]",
                                                   "{",
                                                   "}",
                                                   "#",
                                                   "\"",
                                                   "\\",
                                                   "\n",
                                                   "\r",
                                                   " ",
                                                   " ",
                                                   "\t",
                                                   ";",
                                                   ",",
                                                   "$",
                                                   "-",
                                                   "_",
                                                   ".",
                                                   "0",
                                                   "42",
                                                   "3.3",
                                                   "PIN_",
                                                   "W5",
                                                   "AB12",
                                                   "ABCD1",
                                                   "A1234",
                                                   "pin_a5",
                                                   "LVCMOS",
                                                   "33",
                                                   "lvds",
                                                   "_25",
                                                   "SSTL15",
                                                   "POD",
                                                   "12",
                                                   "led",
                                                   "[3]",
                                                   "[",
                                                   "x",
                                                   "set_property",
                                                   "PACKAGE_PIN",
                                                   "IOSTANDARD",
                                                   "-period",
                                                   "report_timing",
                                                   "execute_flow",
                                                   "set_input_delay",
                                                   "\xC3",
                                                   "\xA9",
                                                   "\xFF",
                                                   std::string(1, '\0'),
                                                   "create_clock",
                                                   "Synth_Design",
                                                   "-",
                                                   "-dict",
                                                   "run"};
  std::uniform_int_distribution<std::size_t> pieceCount(0, 60);
  std::uniform_int_distribution<std::size_t> pick(0, kPieces.size() - 1);
  std::uniform_int_distribution<int> anyByte(0, 255);
  std::uniform_int_distribution<int> percent(0, 99);
  std::string text;
  const std::size_t count = pieceCount(random);
  for (std::size_t k = 0; k < count; ++k) {
    if (percent(random) < 5) {
      text += static_cast<char>(anyByte(random));
    } else {
      text += kPieces[pick(random)];
    }
  }
  return text;
}

TEST(DifferentialTest, RandomTokenSoups) {
  std::mt19937 random(20240611u);
  for (int round = 0; round < 20000; ++round) {
    const std::string text = RandomTokenSoup(random);
    ExpectSameAsReference(text, "round " + std::to_string(round));
    if (HasFailure()) break;
  }
}

TEST(DifferentialTest, CorpusConstraintAndScriptFiles) {
  const std::filesystem::path root(QUILL_CORPUS_DIR);
  std::error_code error;
  if (!std::filesystem::is_directory(root, error)) GTEST_SKIP() << "no corpus at " << root;
  const std::vector<CorpusSource> sources =
      CorpusSources({".xdc", ".sdc", ".tcl", ".qsf", ".ucf", ".pcf", ".cst", ".lpf", ".pdc", ".ccf", ".v"});
  for (const CorpusSource& source : sources) ExpectSameAsReference(source.text, source.path);
  EXPECT_GT(sources.size(), 0u);
}

}  // namespace
}  // namespace quill::test
