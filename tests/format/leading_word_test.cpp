// The formatter tests how a line begins by its leading word instead of
// patterns of the form "^\s*(word|...)\b": these cases hold the two readings
// equal, for every such pattern it no longer runs.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"
#include "format/reference_patterns.h"

namespace quill {
namespace {

struct LeadingWordRule {
  const char* name;
  const Pattern* pattern;
  std::vector<std::string_view> words;  // lower case
};

std::vector<LeadingWordRule> Rules() {
  const ReferencePatternTable& p = ReferencePatterns();
  return {
      {"module", &p.kModulePattern, {"module"}},
      {"endmodule", &p.kEndmodulePattern, {"endmodule"}},
      {"always", &p.kAlwaysPattern, {"always_ff", "always_comb", "always"}},
      {"generate", &p.kGeneratePattern, {"generate"}},
      {"endgenerate", &p.kEndgeneratePattern, {"endgenerate"}},
      {"assign", &p.kAssignPattern, {"assign"}},
      {"statement start",
       &p.kStatementStartPattern,
       {"always", "initial", "module", "endmodule", "assign", "wire", "reg", "logic"}},
      {"block keyword",
       &p.kBlockKeywordPattern,
       {"module", "function", "task", "if", "else", "case", "casex", "casez", "for", "while", "forever", "assign",
        "always", "always_ff", "always_comb", "initial", "generate", "endgenerate", "specify", "endspecify"}},
      {"body item",
       &p.kBodyItemPattern,
       {"module", "endmodule", "always", "always_ff", "always_comb", "initial", "assign"}},
  };
}

bool LeadingWordIsOneOf(std::string_view text, const std::vector<std::string_view>& words) {
  const std::string_view word = LeadingPatternWord(text);
  for (std::string_view candidate : words) {
    if (IsOneOfIgnoringCase(word, {candidate})) return true;
  }
  return false;
}

// Every keyword of every rule and near misses, in three letter cases, behind
// every kind of white space and before every kind of following byte.
std::vector<std::string> Texts() {
  std::vector<std::string> words = {"", "x", "alway", "always_", "always_latch", "modules", "_module", "module1",
                                    "if1", "iff", "casey", "endgenerat", "ASSIGN", "Initial"};
  for (const LeadingWordRule& rule : Rules()) {
    for (std::string_view word : rule.words) {
      std::string upper(word);
      for (char& c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
      std::string mixed(word);
      mixed[0] = upper[0];
      words.insert(words.end(), {std::string(word), upper, mixed});
    }
  }
  std::vector<std::string> texts;
  for (std::string_view before : {"", " ", "\t", "  \t", "\v", "\f", "\r", "\n", "x "}) {
    for (const std::string& word : words) {
      for (std::string_view after : {"", " ", "(", ";", "_", "1", "x", "\n", "\r", ":", " begin", "@(*)"}) {
        texts.push_back(std::string(before) + word + std::string(after));
      }
    }
  }
  return texts;
}

TEST(LeadingWordTest, AgreesWithEachPatternItStandsFor) {
  const std::vector<std::string> texts = Texts();
  for (const LeadingWordRule& rule : Rules()) {
    for (const std::string& text : texts) {
      EXPECT_EQ(LeadingWordIsOneOf(text, rule.words), rule.pattern->Search(text))
          << rule.name << " on \"" << text << "\"";
    }
  }
}

}  // namespace
}  // namespace quill
