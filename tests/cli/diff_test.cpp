#include "diff.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

std::string Numbered(int from, int to) {
  std::string text;
  for (int i = from; i <= to; ++i) text += std::to_string(i) + "\n";
  return text;
}

struct Case {
  const char* name;
  std::string before;
  std::string after;
  std::string expected;
};

TEST(UnifiedDiff, Table) {
  const std::string ten = Numbered(1, 10);
  std::string tenChanged = ten;
  tenChanged.replace(tenChanged.find("5\n"), 2, "five\n");
  std::string twoFar = Numbered(1, 20);
  twoFar.replace(twoFar.find("\n2\n") + 1, 2, "b\n");
  twoFar.replace(twoFar.find("\n10\n") + 1, 3, "j\n");
  std::string twoNear = Numbered(1, 20);
  twoNear.replace(twoNear.find("\n2\n") + 1, 2, "b\n");
  twoNear.replace(twoNear.find("\n9\n") + 1, 2, "i\n");

  const std::vector<Case> cases = {
      {"equal texts give nothing", "a\nb\n", "a\nb\n", ""},
      {"one line changed with context", ten, tenChanged,
       "--- f\n+++ f\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n"},
      {"changes 7 lines apart make two hunks", Numbered(1, 20), twoFar,
       "--- f\n+++ f\n@@ -1,5 +1,5 @@\n 1\n-2\n+b\n 3\n 4\n 5\n@@ -7,7 +7,7 @@\n 7\n 8\n 9\n-10\n+j\n 11\n 12\n 13\n"},
      {"changes 6 lines apart share a hunk", Numbered(1, 20), twoNear,
       "--- f\n+++ f\n@@ -1,12 +1,12 @@\n 1\n-2\n+b\n 3\n 4\n 5\n 6\n 7\n 8\n-9\n+i\n 10\n 11\n 12\n"},
      {"missing final line feed", "a\nb", "a\nb\n",
       "--- f\n+++ f\n@@ -1,2 +1,2 @@\n a\n-b\n\\ No newline at end of file\n+b\n"},
      {"from empty", "", "x\n", "--- f\n+++ f\n@@ -0,0 +1 @@\n+x\n"},
      {"to empty", "x\n", "", "--- f\n+++ f\n@@ -1 +0,0 @@\n-x\n"},
      {"insertion names the line before", "a\nb\n", "a\nnew\nb\n", "--- f\n+++ f\n@@ -1,2 +1,3 @@\n a\n+new\n b\n"},
      {"deletions come before insertions", "a\nb\nc\n", "a\nB\nC\n",
       "--- f\n+++ f\n@@ -1,3 +1,3 @@\n a\n-b\n-c\n+B\n+C\n"},
      {"CR is part of the line", "a\r\nb\r\n", "a\nb\n", "--- f\n+++ f\n@@ -1,2 +1,2 @@\n-a\r\n-b\r\n+a\n+b\n"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(UnifiedDiff(c.before, c.after, "f", "f"), c.expected);
  }
}

TEST(UnifiedDiff, NamesBothSides) {
  EXPECT_EQ(UnifiedDiff("a\n", "b\n", "old.v", "new.v"), "--- old.v\n+++ new.v\n@@ -1 +1 @@\n-a\n+b\n");
}

TEST(UnifiedDiff, LargeTextWithManyChangesIsComplete) {
  std::string before, after;
  for (int i = 0; i < 50000; ++i) {
    before += "line " + std::to_string(i) + "\n";
    after += (i % 3 == 0 ? "LINE " : "line ") + std::to_string(i) + "\n";
  }
  const std::string diff = UnifiedDiff(before, after, "f", "f");
  std::size_t minus = 0, plus = 0;
  for (std::size_t at = diff.find("\n-"); at != std::string::npos; at = diff.find("\n-", at + 1)) ++minus;
  for (std::size_t at = diff.find("\n+"); at != std::string::npos; at = diff.find("\n+", at + 1)) ++plus;
  EXPECT_EQ(minus, 16667u);
  EXPECT_EQ(plus, 16667u + 1u);  // "+++ f" counts too
}

}  // namespace
}  // namespace quill::cli
