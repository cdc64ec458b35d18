#include "format/scan/alignment_utils.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "format/reference_patterns.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

TEST(PadRightTest, WidensWithSpaces) {
  EXPECT_EQ(PadRight("ab", 5), "ab   ");
}
TEST(PadRightTest, NeverCuts) {
  EXPECT_EQ(PadRight("abcdef", 3), "abcdef");
}
TEST(PadRightTest, ExactWidthUnchanged) {
  EXPECT_EQ(PadRight("abc", 3), "abc");
}
TEST(PadRightTest, EmptyBecomesSpaces) {
  EXPECT_EQ(PadRight("", 2), "  ");
}
TEST(PadRightTest, CountsBytes) {
  EXPECT_EQ(PadRight("\xC3\xA9\t", 4), "\xC3\xA9\t ");
}

TEST(IsSkippableGapTest, BlankAndCommentLinesAreSkippable) {
  const TextLines lines = {"x", "", " \t\r", "  // note", "//", "y"};
  EXPECT_TRUE(IsSkippableGap(lines, 1, 4));
}

TEST(IsSkippableGapTest, CodeLineIsNotSkippable) {
  const TextLines lines = {"x", "", "assign x = y;", "y"};
  EXPECT_FALSE(IsSkippableGap(lines, 1, 2));
}

TEST(IsSkippableGapTest, SingleSlashIsNotAComment) {
  const TextLines lines = {"/ x", "  /"};
  EXPECT_FALSE(IsSkippableGap(lines, 0, 0));
  EXPECT_FALSE(IsSkippableGap(lines, 1, 1));
}

TEST(IsSkippableGapTest, EmptyRangeIsSkippable) {
  const TextLines lines = {"a", "b"};
  EXPECT_TRUE(IsSkippableGap(lines, 1, 0));
}

TEST(IsSkippableGapTest, StopsAtEndOfLines) {
  const TextLines lines = {"a", ""};
  EXPECT_TRUE(IsSkippableGap(lines, 1, 10));
}

TEST(IsSkippableGapTest, VerticalTabIsNotBlank) {
  const TextLines lines = {"\v"};
  EXPECT_FALSE(IsSkippableGap(lines, 0, 0));
}

TEST(GroupLinesTest, NeighboursAndSkippableGapsJoin) {
  const TextLines lines = {"wire a;", "wire b;", "", "// c", "wire d;", "assign x = y;", "wire e;"};
  const std::vector<std::vector<std::size_t>> expected = {{0, 1, 4}, {6}};
  EXPECT_EQ(GroupLines(lines, {0, 1, 4, 6}), expected);
}

TEST(GroupLinesTest, NoCandidatesNoGroups) {
  EXPECT_TRUE(GroupLines({"a"}, {}).empty());
}

// The scanners are checked against the pattern table on generated lines: one
// choice per slot, then now and then a stray token inserted or a byte dropped.
using Slots = std::vector<std::vector<std::string>>;

// A scanner's parts in the order of its pattern's capture groups, the whole
// match first.
using Groups = std::vector<std::string_view>;

std::optional<Groups> ModuleHeaderGroups(std::string_view line) {
  const std::optional<ModuleHeaderParts> p = ScanModuleHeader(line);
  if (!p) return std::nullopt;
  return Groups{p->whole, p->name};
}

std::optional<Groups> PortDeclGroups(std::string_view line) {
  const std::optional<PortDeclParts> p = ScanPortDecl(line);
  if (!p) return std::nullopt;
  return Groups{p->whole, p->direction, p->netType, p->signedWord, p->range,
                p->name,  p->arrayDim,  p->comma,   p->comment};
}

std::optional<Groups> NetDeclGroups(std::string_view line) {
  const std::optional<NetDeclParts> p = ScanNetDecl(line);
  if (!p) return std::nullopt;
  return Groups{p->whole, p->type, p->signedWord, p->range, p->name, p->arrayDim, p->comment};
}

std::optional<Groups> ParamDeclGroups(std::string_view line) {
  const std::optional<ParamDeclParts> p = ScanParamDecl(line);
  if (!p) return std::nullopt;
  return Groups{p->whole, p->keyword, p->range, p->name, p->value, p->separator, p->comment};
}

struct ScannerCase {
  const char* name;
  const Pattern* pattern;
  std::optional<Groups> (*scan)(std::string_view);
  bool search;
  int groupCount;
  Slots slots;
};

const std::vector<std::string> kSpaceChoices = {"", "", " ", "  ", "\t", "\r", " \v", "\f ", "\n"};
const std::vector<std::string> kStrayTokens = {" ", "\t",     "\r",   "\n",    "[",         "]",     "=",
                                               ",", ";",      "/",    "//",    "#",         "(",     ")",
                                               "a", "signed", "wire", "input", "parameter", "module"};

std::vector<ScannerCase> ScannerCases() {
  const std::vector<std::string>& ws = kSpaceChoices;
  const std::vector<std::string> name = {"a", "count", "x1", "regs", "signed", "wire", ""};
  const std::vector<std::string> range = {"", "", "[7:0]", "[ 3 : 0 ]", "[", "]", "[a]b"};
  const std::vector<std::string> init = {"",       "",     " = 4'd0", "=b",    " = x[1]",
                                         " = a;b", " = [", " =  y]",  "= a,b", "= //c"};
  const std::vector<std::string> array = {"", "", "[0:3]", "[1]", "[", "]x", "[;]"};
  const std::vector<std::string> comment = {"", "", "// c", "//", "// a, b", "/ x", "// x\r", "//;", "// ]"};
  const std::vector<std::string> signedKw = {"", "", "signed ", "signed\t", "Signed  ", "signed", "signedx "};
  return {
      {"header",
       &ReferencePatterns().kModuleHeaderPattern,
       &ModuleHeaderGroups,
       true,
       1,
       {ws,
        {"module", "MODULE", "Module", "modul"},
        ws,
        {"m", "top", "", "a b", "x;"},
        ws,
        {"", "#", "(", "#(", ";", "x", "\r", "//c"},
        ws,
        {"", "(", ")", "y"}}},
      {"port",
       &ReferencePatterns().kPortDeclPattern,
       &PortDeclGroups,
       false,
       8,
       {ws,
        {"input", "output", "inout", "INPUT", "Inout", "inputs", "in"},
        ws,
        {"", "", "wire", "reg", "logic", "Wire"},
        ws,
        signedKw,
        range,
        ws,
        name,
        init,
        ws,
        array,
        ws,
        {"", "", ",", ",,", ";", ", "},
        ws,
        comment,
        ws}},
      {"net",
       &ReferencePatterns().kNetDeclPattern,
       &NetDeclGroups,
       false,
       6,
       {ws,
        {"wire", "reg", "logic", "WIRE", "Reg", "wires"},
        ws,
        signedKw,
        range,
        ws,
        name,
        init,
        ws,
        array,
        ws,
        {";", ";", ";;", "", ",", "; ;"},
        ws,
        comment,
        ws}},
      {"param",
       &ReferencePatterns().kParamDeclPattern,
       &ParamDeclGroups,
       false,
       6,
       {ws,
        {"", "parameter", "localparam", "PARAMETER", "parameterX", "param"},
        ws,
        range,
        ws,
        {"W", "x", "", "=", "parameter"},
        ws,
        {"=", "=", "==", "", "<="},
        ws,
        {"8", "{a,b}", "", "x )", "4'h2", "a = b", ";", "//"},
        ws,
        {"", ",", ";", ",;", ")"},
        ws,
        comment,
        ws}},
  };
}

std::string RandomLine(std::mt19937& rng, const ScannerCase& scannerCase) {
  std::string line;
  for (const std::vector<std::string>& slot : scannerCase.slots) line += slot[rng() % slot.size()];
  const std::size_t edits = rng() % 4 == 0 ? rng() % 3 + 1 : 0;
  for (std::size_t i = 0; i < edits; ++i) {
    const std::size_t at = line.empty() ? 0 : rng() % (line.size() + 1);
    if (rng() % 2 == 0 && at < line.size()) {
      line.erase(at, 1);
    } else {
      line.insert(at, kStrayTokens[rng() % kStrayTokens.size()]);
    }
  }
  return line;
}

void ExpectSameAsPattern(const ScannerCase& scannerCase, const std::string& line) {
  Match match;
  const bool matched =
      scannerCase.search ? scannerCase.pattern->Search(line, &match) : scannerCase.pattern->FullMatch(line, &match);
  const std::optional<Groups> scanned = scannerCase.scan(line);
  ASSERT_EQ(scanned.has_value(), matched) << scannerCase.name << " line: \"" << line << "\"";
  if (!matched) return;
  for (int g = 0; g <= scannerCase.groupCount; ++g) {
    ASSERT_EQ((*scanned)[static_cast<std::size_t>(g)], match.Group(g))
        << scannerCase.name << " group " << g << " line: \"" << line << "\"";
  }
  ASSERT_EQ(scanned->front().data(), line.data()) << scannerCase.name << " line: \"" << line << "\"";
}

TEST(LineScannerTest, AgreeWithPatternTableOnGeneratedLines) {
  std::mt19937 rng(20240611);
  for (const ScannerCase& scannerCase : ScannerCases()) {
    for (int i = 0; i < 100000; ++i) {
      ExpectSameAsPattern(scannerCase, RandomLine(rng, scannerCase));
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

TEST(LineScannerTest, AgreeWithPatternTableOnWrittenLines) {
  const std::vector<std::string> lines = {
      "module top (",
      "module m #(parameter W = 8) (",
      "  module m;",
      "module  ",
      "module \r",
      "module x\ry",
      "module a \r b",
      "module",
      "modulex y",
      "input wire [7:0] data,",
      "output reg signed [3:0] b // x",
      "input a = 1'b0,",
      "input wire",
      "inputwire a",
      "input signed",
      "input a [0:3], // c",
      "input a // c\r",
      "input a, // c, d",
      "wire a;",
      "reg signed [15:0] counter; // c",
      "logic [3:0] st = 4'd0;",
      "wire a = b;c;",
      "wire a = b; // x;",
      "wire a = b;//c",
      "wire signed ;",
      "wiresigned a;",
      "wireless;",
      "wire a=[;",
      "wire a = x[1];",
      "wire a = x [1] ;",
      "  parameter WIDTH = 8,",
      "parameter [3:0] MODE = 4'h2, // mode",
      "parameter DEPTH = 16",
      "parameter P = {a,b},",
      "parameter B = 2)",
      "parameter = 5",
      "parameterX = 1",
      "a =  ",
      "a =  \r",
      "a = \r\r",
      "a = x\rzz",
      "a = // c",
      "a = ;",
      "q <= d;",
      "WIDTH=8",
  };
  for (const ScannerCase& scannerCase : ScannerCases()) {
    for (const std::string& line : lines) ExpectSameAsPattern(scannerCase, line);
  }
}

// Every line of the real-world sources, with its CR kept, as SplitLines
// leaves it.
TEST(LineScannerTest, AgreeWithPatternTableOnCorpusLines) {
  const std::vector<CorpusSource> sources = CorpusSources({".v", ".sv", ".vh"});
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  const std::vector<ScannerCase> cases = ScannerCases();
  for (const CorpusSource& source : sources) {
    for (const std::string& line : SplitLines(source.text)) {
      for (const ScannerCase& scannerCase : cases) ExpectSameAsPattern(scannerCase, line);
      if (testing::Test::HasFatalFailure()) return;
    }
  }
}

// Lines on which a backtracking matcher needs time quadratic in their length.
constexpr std::size_t kLongRun = 1 << 20;

TEST(LineScannerTest, LongRunOfBracketsAfterInitialiser) {
  EXPECT_FALSE(ScanNetDecl("wire a = " + std::string(kLongRun, '[') + " ;x").has_value());
  EXPECT_FALSE(ScanPortDecl("input a = " + std::string(kLongRun, '[') + " x").has_value());
}

TEST(LineScannerTest, LongRunOfSpacesBeforeStrayWord) {
  EXPECT_FALSE(ScanNetDecl("wire a" + std::string(kLongRun, ' ') + "x;").has_value());
  EXPECT_FALSE(ScanPortDecl("input a" + std::string(kLongRun, ' ') + "x").has_value());
}

TEST(LineScannerTest, LongRunOfSpacesInsideHeaderName) {
  const std::string line = "module a" + std::string(kLongRun, ' ') + "b";
  std::optional<ModuleHeaderParts> parts = ScanModuleHeader(line);
  ASSERT_TRUE(parts.has_value());
  EXPECT_EQ(parts->name, std::string_view(line).substr(7));
  EXPECT_EQ(parts->whole.size(), line.size());
}

TEST(LineScannerTest, LongRunOfSpacesInsideParameterValue) {
  const std::string line = "parameter a = x" + std::string(kLongRun, ' ') + "y;";
  std::optional<ParamDeclParts> parts = ScanParamDecl(line);
  ASSERT_TRUE(parts.has_value());
  EXPECT_EQ(parts->value, std::string_view(line).substr(12, line.size() - 13));
  EXPECT_EQ(parts->separator, ";");
}

TEST(LineScannerTest, LongRunOfCommentsBeforeCarriageReturn) {
  std::string line = "parameter a = x";
  for (std::size_t i = 0; i < kLongRun / 3; ++i) line += "// ";
  line += "\rz";
  EXPECT_FALSE(ScanParamDecl(line).has_value());
}

TEST(LineScannerTest, LongInitialiserWithClosingBracketsAndSpaces) {
  std::string line = "wire a = ";
  for (std::size_t i = 0; i < kLongRun / 4; ++i) line += "[]x]";
  line += std::string(kLongRun, ' ') + "y";
  EXPECT_FALSE(ScanNetDecl(line).has_value());
}

}  // namespace
}  // namespace quill
