#include "format/scan/block_line_facts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "format/reference_patterns.h"

namespace quill {
namespace {

// The facts read off a line's leading word agree with the patterns they
// stand for, for every word they know in three letter cases, the words with
// a byte more or less, and a few lines around them.
TEST(BlockLineFactsTest, LeadingWordFactsAgreeWithThePatterns) {
  const std::vector<std::string> words = {"always", "always_ff", "always_comb", "generate", "endgenerate", "assign",
                                          "initial", "module", "endmodule", "wire", "reg", "logic", "begin", "x"};
  std::vector<std::string> lines;
  for (const std::string& word : words) {
    std::string upper = word;
    for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
    std::string mixed = word;
    mixed[0] = upper[0];
    for (const std::string& form : {word, upper, mixed, word + "s", word.substr(1), word.substr(0, word.size() - 1)}) {
      for (const std::string& line : {form, "  " + form + " @(*)", "\t" + form + ";", form + "// c", "\v" + form}) {
        lines.push_back(line);
      }
    }
  }
  const ReferencePatternTable& p = ReferencePatterns();
  for (const std::string& line : lines) {
    const BlockLineFacts facts = ReadBlockLineFacts(line);
    const bool always = p.kAlwaysPattern.Search(line);
    const bool generate = p.kGeneratePattern.Search(line);
    EXPECT_EQ(facts.startsBlock,
              always ? BlockKind::kAlways : generate ? BlockKind::kGenerate : BlockKind::kNone)
        << line;
    EXPECT_EQ(BlockStartingAt(line), facts.startsBlock) << line;
    EXPECT_EQ(facts.opensGenerate, generate) << line;
    EXPECT_EQ(facts.closesGenerate, p.kEndgeneratePattern.Search(line)) << line;
    EXPECT_EQ(facts.movesToColumnZero, p.kAssignPattern.Search(line) || p.kEndgeneratePattern.Search(line)) << line;
    EXPECT_EQ(facts.startsStatement, p.kStatementStartPattern.Search(line)) << line;
  }
}

TEST(BlockLineFactsTest, BareLabels) {
  struct Case {
    const char* line;
    bool bare;
  };
  const Case cases[] = {
      {"IDLE:", true},     {"  default: // idle", true}, {"2'b01: begin", false}, {"IDLE : ", true},
      {"a = b ? c : d;", false}, {":", false},           {"x: y = 1;", false},     {"\vx:", true},
  };
  for (const Case& c : cases) EXPECT_EQ(ReadBlockLineFacts(c.line).isBareLabel, c.bare) << c.line;
}

}  // namespace
}  // namespace quill
