// The wrappers against the stand-in engine (fake_engine.cpp), whose rules
// make the retry and failure paths reachable.
#include "engine.h"

#include <gtest/gtest.h>

#include <string>

#include "exit_codes.h"

namespace quill::cli {
namespace {

TEST(FormatSource, ResultLargerThanTheFirstBufferIsFetchedAgain) {
  const std::optional<std::string> formatted = FormatSource("EXPAND");
  ASSERT_TRUE(formatted.has_value());
  EXPECT_EQ(*formatted, "EXPAND" + std::string(10000, 'x') + "\n");
}

TEST(FormatSource, EmptyTextAndFailure) {
  EXPECT_EQ(FormatSource(""), std::optional<std::string>("\n"));
  EXPECT_EQ(FormatSource("a  \nb"), std::optional<std::string>("a\nb\n"));
  EXPECT_FALSE(FormatSource("FAIL_FORMAT").has_value());
}

TEST(FormatSource, NulBytesAreText) {
  EXPECT_EQ(FormatSource(std::string("a\0b", 3)), std::optional<std::string>(std::string("a\0b\n", 4)));
}

TEST(LintSource, ReportAndNull) {
  EXPECT_EQ(LintSource(""), std::optional<std::string>("[]"));
  EXPECT_EQ(LintSource("x\n// FINDING warning latch m\n"),
            std::optional<std::string>(R"([{"severity":"warning","line":1,"check":"latch","message":"m"}])"));
  EXPECT_FALSE(LintSource("LINT_NULL").has_value());
}

TEST(ClassifySource, OneClassPerByte) {
  EXPECT_EQ(ClassifySource(""), std::optional<std::vector<unsigned char>>(std::vector<unsigned char>{}));
  EXPECT_EQ(ClassifySource("ak z"), std::optional<std::vector<unsigned char>>(std::vector<unsigned char>{0, 10, 0, 0}));
}

TEST(EngineVersion, FromTheEngine) {
  EXPECT_EQ(EngineVersion(), "fake_engine v0");
}

TEST(WorseExit, ErrorThenGuardThenFindings) {
  EXPECT_EQ(WorseExit(kExitClean, kExitFindings), kExitFindings);
  EXPECT_EQ(WorseExit(kExitFindings, kExitGuard), kExitGuard);
  EXPECT_EQ(WorseExit(kExitGuard, kExitError), kExitError);
  EXPECT_EQ(WorseExit(kExitError, kExitGuard), kExitError);
  EXPECT_EQ(WorseExit(kExitGuard, kExitFindings), kExitGuard);
  EXPECT_EQ(WorseExit(kExitClean, kExitClean), kExitClean);
}

}  // namespace
}  // namespace quill::cli
