#include "config.h"

#include <gtest/gtest.h>

#include <string>

namespace quill::cli {
namespace {

ConfigResult Parse(const std::string& text) {
  return ParseConfig(text, "/project/quill.toml", "quill.toml");
}

TEST(ConfigTest, ReadsEveryKey) {
  const ConfigResult result = Parse(
      "[files]\nexclude = [\"build/\"]\nextend-exclude = [\"gen/**\"]\n"
      "[format]\nexclude = [\"vendor/\"]\n"
      "[lint]\nselect = [\"latch\", \"comb-loop\"]\nignore = [\"comb-loop\"]\n"
      "severity = { latch = \"error\" }\n"
      "[lint.per-file-ignores]\n\"tb/*.v\" = [\"latch\"]\n");
  ASSERT_TRUE(result.config) << result.error;
  const Config& config = *result.config;
  EXPECT_TRUE(IsExcluded(config, "/project/build", true, CommandKind::kLint));
  EXPECT_FALSE(IsExcluded(config, "/project/.hidden", true, CommandKind::kLint));  // exclude replaced ".*"
  EXPECT_TRUE(IsExcluded(config, "/project/.git", true, CommandKind::kLint));
  EXPECT_TRUE(IsExcluded(config, "/project/gen/a/b.v", false, CommandKind::kLint));
  EXPECT_TRUE(IsExcluded(config, "/project/vendor", true, CommandKind::kFormat));
  EXPECT_FALSE(IsExcluded(config, "/project/vendor", true, CommandKind::kLint));
  EXPECT_TRUE(IsCheckEnabled(config, "/project/rtl/a.v", "latch"));
  EXPECT_FALSE(IsCheckEnabled(config, "/project/rtl/a.v", "comb-loop"));
  EXPECT_FALSE(IsCheckEnabled(config, "/project/rtl/a.v", "reg-assign"));
  EXPECT_FALSE(IsCheckEnabled(config, "/project/tb/t.v", "latch"));
  EXPECT_TRUE(SeverityOverride(config, "latch") == quill::Severity::kError);
  EXPECT_FALSE(SeverityOverride(config, "comb-loop").has_value());
}

TEST(ConfigTest, DefaultsSkipHiddenEntriesAndSelectAll) {
  const ConfigResult result = Parse("");
  ASSERT_TRUE(result.config);
  EXPECT_TRUE(IsExcluded(*result.config, "/project/.cache", true, CommandKind::kFormat));
  EXPECT_FALSE(IsExcluded(*result.config, "/project/rtl", true, CommandKind::kFormat));
  for (const CheckInfo& check : kCheckTable) EXPECT_TRUE(IsCheckEnabled(*result.config, "/project/a.v", check.name));
}

struct ErrorCase {
  const char* text;
  const char* error;
};

const ErrorCase kErrors[] = {
    {"[lint]\n\nselct = []\n",
     "quill.toml:3: [lint] unknown key 'selct' (select, ignore, severity, per-file-ignores, defines, filters)"},
    {"[lint]\nselect = \"latch\"\n", "quill.toml:2: [lint] select: expected an array of strings"},
    {"[lint]\nselect = [1]\n", "quill.toml:2: [lint] select: expected an array of strings"},
    {"[lint]\nignore = [\"latch\", \"lach\"]\n", "quill.toml:2: [lint] ignore: unknown check 'lach'"},
    {"[lint.severity]\nlatch = \"fatal\"\n", "quill.toml:2: [lint.severity] latch: expected \"error\" or \"warning\""},
    {"[lint.severity]\nlach = \"error\"\n", "quill.toml:2: [lint.severity] unknown check 'lach'"},
    {"[lint]\nseverity = 3\n", "quill.toml:2: 'lint.severity' must be a table"},
    {"[files]\nexclude = [\"[ab\"]\n", "quill.toml:2: [files] exclude: pattern '[ab' has an unclosed '['"},
    {"[files]\ninclude = []\n", "quill.toml:2: [files] unknown key 'include' (exclude, extend-exclude)"},
    {"[format]\nwidth = 80\n", "quill.toml:2: [format] unknown key 'width' (exclude)"},
    {"[style]\n", "quill.toml:1: unknown section 'style' (files, format or lint)"},
    {"lint = 1\n", "quill.toml:1: 'lint' must be a table"},
};

TEST(ConfigTest, ReportsTheFirstProblemWithItsLine) {
  for (const ErrorCase& c : kErrors) {
    const ConfigResult result = Parse(c.text);
    EXPECT_FALSE(result.config) << c.text;
    EXPECT_EQ(result.error, c.error) << c.text;
  }
}

TEST(ConfigTest, ReportsSyntaxErrorsWithTheirLine) {
  const ConfigResult result = Parse("[lint]\nselect = [\n");
  EXPECT_FALSE(result.config);
  EXPECT_TRUE(result.error.starts_with("quill.toml:")) << result.error;
}

TEST(ConfigTest, DescribesTheSettingsAsToml) {
  const ConfigResult result = Parse("[lint]\nignore = [\"latch\"]\n");
  ASSERT_TRUE(result.config);
  EXPECT_EQ(DescribeConfig(*result.config),
            "# from /project/quill.toml\n\n[files]\nexclude = [\".*\"]\nextend-exclude = []\n\n[format]\nexclude = "
            "[]\n\n[lint]\nselect = [\"all\"]\nignore = [\"latch\"]\ndefines = []\nfilters = [\"all\"]\n\n[lint.severity]\n\n[lint.per-file-ignores]\n");
}

}  // namespace
}  // namespace quill::cli
