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
  EXPECT_EQ(RenderReport({{Severity::kWarning, 12, CheckId::kLatch, "Signal 'q' may infer a latch"}}),
            R"([{"severity":"warning","line":12,"check":"latch","message":"Signal 'q' may infer a latch"}])");
}

TEST(RenderReportTest, FindingsKeepTheirOrderAndAreJoinedByCommas) {
  const std::vector<Diagnostic> findings = {{Severity::kError, 9, CheckId::kMultiDriver, "b"},
                                            {Severity::kWarning, 0, CheckId::kLatch, "a"},
                                            {Severity::kWarning, 3, CheckId::kLatch, "c"}};
  EXPECT_EQ(RenderReport(findings), R"([{"severity":"error","line":9,"check":"multi-driver","message":"b"},)"
                                    R"({"severity":"warning","line":0,"check":"latch","message":"a"},)"
                                    R"({"severity":"warning","line":3,"check":"latch","message":"c"}])");
}

TEST(RenderReportTest, NegativeAndExtremeLines) {
  EXPECT_EQ(RenderReport({{Severity::kError, -1, CheckId::kRegAssign, ""}}),
            R"([{"severity":"error","line":-1,"check":"reg-assign","message":""}])");
  EXPECT_EQ(RenderReport({{Severity::kError, 0, CheckId::kRegAssign, ""}}),
            R"([{"severity":"error","line":0,"check":"reg-assign","message":""}])");
  EXPECT_EQ(RenderReport({{Severity::kWarning, std::numeric_limits<std::int32_t>::min(), CheckId::kCombLoop, "m"}}),
            R"([{"severity":"warning","line":-2147483648,"check":"comb-loop","message":"m"}])");
  EXPECT_EQ(RenderReport({{Severity::kWarning, std::numeric_limits<std::int32_t>::max(), CheckId::kCombLoop, "m"}}),
            R"([{"severity":"warning","line":2147483647,"check":"comb-loop","message":"m"}])");
}

TEST(RenderReportTest, EscapesTheMessage) {
  EXPECT_EQ(RenderReport({{Severity::kWarning, 1, CheckId::kLatch, "line1\nline2\t\"q\" \\ \xc3\xa9"}}),
            "[{\"severity\":\"warning\",\"line\":1,\"check\":\"latch\",\"message\":\"line1\\nline2\\t\\\"q\\\" "
            "\\\\ \xc3\xa9\"}]");
}

// Every check renders with the name and severity word of its table entry.
TEST(RenderReportTest, NamesAndSeveritiesComeFromTheCheckTable) {
  for (const CheckInfo& check : kCheckTable) {
    const std::string expected = "[{\"severity\":\"" + std::string(SeverityName(check.severity)) +
                                 "\",\"line\":2,\"check\":\"" + std::string(check.name) + "\",\"message\":\"m\"}]";
    EXPECT_EQ(RenderReport({{check.severity, 2, check.id, "m"}}), expected);
  }
}

}  // namespace
}  // namespace quill
