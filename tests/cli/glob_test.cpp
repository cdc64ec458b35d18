#include "glob.h"

#include <gtest/gtest.h>

#include <string>

namespace quill::cli {
namespace {

struct GlobCase {
  const char* pattern;
  const char* path;
  bool isFolder;
  bool matches;  // MatchesPathOrParent
};

const GlobCase kGlobCases[] = {
    {"*.v", "top.v", false, true},
    {"*.v", "rtl/deep/top.v", false, true},
    {"*.v", "top.sv", false, false},
    {"/top.v", "top.v", false, true},
    {"/top.v", "rtl/top.v", false, false},
    {"rtl/*.v", "rtl/a.v", false, true},
    {"rtl/*.v", "rtl/sub/a.v", false, false},
    {"rtl/*.v", "x/rtl/a.v", false, false},
    {"gen/", "gen", true, true},
    {"gen/", "gen", false, false},
    {"gen/", "rtl/gen/a.v", false, true},
    {"gen", "rtl/gen/a.v", false, true},
    {"**/gen/*.v", "gen/a.v", false, true},
    {"**/gen/*.v", "a/b/gen/a.v", false, true},
    {"a/**/b.v", "a/b.v", false, true},
    {"a/**/b.v", "a/x/y/b.v", false, true},
    {"a/**/b.v", "x/a/b.v", false, false},
    {"vendor/**", "vendor/ip/x.v", false, true},
    {"tb_?.v", "tb_1.v", false, true},
    {"tb_?.v", "tb_12.v", false, false},
    {"[a-c]*.v", "b_top.v", false, true},
    {"[!a-c]*.v", "b_top.v", false, false},
    {"[!a-c]*.v", "d_top.v", false, true},
    {"\\*.v", "*.v", false, true},
    {"\\*.v", "a.v", false, false},
    {"*", "anything/at/all.v", false, true},
    {".*", "rtl/.hidden/a.v", false, true},
    {".*", "rtl/a.v", false, false},
};

TEST(GlobTest, MatchesAsGitignoreDoes) {
  for (const GlobCase& c : kGlobCases) {
    std::string error;
    const std::optional<Glob> glob = Glob::Parse(c.pattern, &error);
    ASSERT_TRUE(glob) << c.pattern << ": " << error;
    EXPECT_EQ(glob->MatchesPathOrParent(c.path, c.isFolder), c.matches) << c.pattern << " on " << c.path;
  }
}

TEST(GlobTest, RejectsBadPatterns) {
  for (const char* pattern : {"", "/", "[abc"}) {
    std::string error;
    EXPECT_FALSE(Glob::Parse(pattern, &error)) << pattern;
    EXPECT_FALSE(error.empty());
  }
}

}  // namespace
}  // namespace quill::cli
