#include "suggest.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

TEST(EditDistance, Table) {
  struct Case {
    const char* a;
    const char* b;
    std::size_t distance;
  };
  const std::vector<Case> cases = {
      {"", "", 0},       {"lint", "lint", 0}, {"lnt", "lint", 1},    {"lint", "lnit", 2},
      {"", "lsp", 3},    {"frmat", "format", 1}, {"highlite", "highlight", 3}, {"abc", "xyz", 3},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.a) + " / " + c.b);
    EXPECT_EQ(EditDistance(c.a, c.b), c.distance);
    EXPECT_EQ(EditDistance(c.b, c.a), c.distance);
  }
}

TEST(ClosestName, Table) {
  const std::vector<std::string> commands = {"format", "lint", "highlight", "version", "lsp"};
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"lnt", "lint"},       {"fromat", "format"}, {"formt", "format"}, {"higlight", "highlight"},
      {"lps", "lsp"},        {"ver", "version"},   {"high", "highlight"}, {"frobnicate", ""},
      {"x", ""},             {"l", ""},            {"", ""},             {"versions", "version"},
  };
  for (const auto& [word, expected] : cases) {
    SCOPED_TRACE(word);
    EXPECT_EQ(ClosestName(word, commands), expected);
  }
}

}  // namespace
}  // namespace quill::cli
