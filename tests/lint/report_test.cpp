#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "lint/report.h"

namespace quill {
namespace {

using namespace std::string_literals;

struct EscapeCase {
  const char* name;
  std::string input;
  std::string expected;
};

class EscapeJsonTest : public testing::TestWithParam<EscapeCase> {};

TEST_P(EscapeJsonTest, Escapes) {
  EXPECT_EQ(EscapeJson(GetParam().input), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, EscapeJsonTest,
    testing::Values(EscapeCase{"Empty", "", ""}, EscapeCase{"Plain", "abc", "abc"}, EscapeCase{"Tab", "a\tb", "a\\tb"},
                    EscapeCase{"LineFeed", "a\nb", "a\\nb"}, EscapeCase{"CarriageReturn", "a\rb", "a\\rb"},
                    EscapeCase{"Quote", "say \"x\"", "say \\\"x\\\""}, EscapeCase{"Backslash", "a\\b", "a\\\\b"},
                    EscapeCase{"OtherControlBytesUnchanged", "\x01\x08\x0b\x0c\x1f\x7f", "\x01\x08\x0b\x0c\x1f\x7f"},
                    EscapeCase{"NulUnchanged", "a\0b"s, "a\0b"s},
                    EscapeCase{"Utf8Unchanged", "caf\xc3\xa9 \xe2\x82\xac", "caf\xc3\xa9 \xe2\x82\xac"},
                    EscapeCase{"InvalidUtf8Unchanged", "\xff\xfe\x80", "\xff\xfe\x80"},
                    EscapeCase{"Slash", "a/b", "a/b"}),
    [](const testing::TestParamInfo<EscapeCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(RenderReportTest, EmptyListIsTwoBrackets) {
  EXPECT_EQ(RenderReport({}), "[]");
}

TEST(RenderReportTest, OneFinding) {
  EXPECT_EQ(RenderReport({{"warning", 12, "latch", "Signal 'q' may infer a latch"}}),
            R"([{"severity":"warning","line":12,"check":"latch","message":"Signal 'q' may infer a latch"}])");
}

TEST(RenderReportTest, FindingsKeepTheirOrderAndAreJoinedByCommas) {
  const std::vector<Diagnostic> findings = {
      {"error", 9, "multi-driver", "b"}, {"warning", 0, "latch", "a"}, {"warning", 3, "latch", "c"}};
  EXPECT_EQ(RenderReport(findings), R"([{"severity":"error","line":9,"check":"multi-driver","message":"b"},)"
                                    R"({"severity":"warning","line":0,"check":"latch","message":"a"},)"
                                    R"({"severity":"warning","line":3,"check":"latch","message":"c"}])");
}

TEST(RenderReportTest, NegativeAndExtremeLines) {
  EXPECT_EQ(RenderReport({{"error", -1, "x", ""}}), R"([{"severity":"error","line":-1,"check":"x","message":""}])");
  EXPECT_EQ(RenderReport({{"error", 0, "x", ""}}), R"([{"severity":"error","line":0,"check":"x","message":""}])");
  EXPECT_EQ(RenderReport({{"e", std::numeric_limits<std::int32_t>::min(), "c", "m"}}),
            R"([{"severity":"e","line":-2147483648,"check":"c","message":"m"}])");
  EXPECT_EQ(RenderReport({{"e", std::numeric_limits<std::int32_t>::max(), "c", "m"}}),
            R"([{"severity":"e","line":2147483647,"check":"c","message":"m"}])");
}

TEST(RenderReportTest, EscapesEveryStringField) {
  EXPECT_EQ(RenderReport({{"a\"b", 1, "c\\d", "line1\nline2\t\"q\" \xc3\xa9"}}),
            "[{\"severity\":\"a\\\"b\",\"line\":1,\"check\":\"c\\\\d\",\"message\":\"line1\\nline2\\t\\\"q\\\" "
            "\xc3\xa9\"}]");
}

}  // namespace
}  // namespace quill
