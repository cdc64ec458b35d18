#include "lint_output.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace quill::cli {
namespace {

Finding Make(std::string severity, int64_t line, std::string check, std::string message, std::string raw = "") {
  Finding f;
  f.severity = std::move(severity);
  f.line = line;
  f.check = std::move(check);
  f.message = std::move(message);
  f.raw = std::move(raw);
  return f;
}

TEST(ParseFindings, EmptyArray) {
  const auto findings = ParseFindings("[]");
  ASSERT_TRUE(findings.has_value());
  EXPECT_TRUE(findings->empty());
}

TEST(ParseFindings, FieldsAndRawObjects) {
  const std::string first = R"({"severity":"warning","line":12,"check":"latch","message":"case without default"})";
  const std::string second = R"({"severity":"error","line":-3,"check":"multi-driver","message":"q \"x\" \\ y\tz\nw"})";
  const auto findings = ParseFindings("[" + first + "," + second + "]");
  ASSERT_TRUE(findings.has_value());
  ASSERT_EQ(findings->size(), 2u);
  EXPECT_EQ((*findings)[0].severity, "warning");
  EXPECT_EQ((*findings)[0].line, 12);
  EXPECT_EQ((*findings)[0].check, "latch");
  EXPECT_EQ((*findings)[0].message, "case without default");
  EXPECT_EQ((*findings)[0].raw, first);
  EXPECT_EQ((*findings)[1].line, -3);
  EXPECT_EQ((*findings)[1].message, "q \"x\" \\ y\tz\nw");
  EXPECT_EQ((*findings)[1].raw, second);
}

TEST(ParseFindings, RawControlAndNonUtf8BytesAreKept) {
  const std::string report = "[{\"severity\":\"warning\",\"line\":0,\"check\":\"c\",\"message\":\"a\x01\xff\"}]";
  const auto findings = ParseFindings(report);
  ASSERT_TRUE(findings.has_value());
  EXPECT_EQ((*findings)[0].message, "a\x01\xff");
}

TEST(ParseFindings, ExceptionFallbackWithUnescapedQuote) {
  const std::string report =
      R"([{"severity":"error","line":0,"check":"cpp-exception","message":"bad "thing" happened"}])";
  const auto findings = ParseFindings(report);
  ASSERT_TRUE(findings.has_value());
  ASSERT_EQ(findings->size(), 1u);
  EXPECT_EQ((*findings)[0].check, "cpp-exception");
  EXPECT_EQ((*findings)[0].severity, "error");
  EXPECT_EQ((*findings)[0].message, "bad \"thing\" happened");
  EXPECT_EQ(FormatJsonArray(*findings, 1), report);
}

TEST(ParseFindings, NotAnArray) {
  for (const char* report : {"", "{}", "[", "[{]", "[1]", "[] x", "nonsense", R"([{"line":"x"}])"}) {
    SCOPED_TRACE(report);
    EXPECT_FALSE(ParseFindings(report).has_value());
  }
}

TEST(FormatTextFinding, CompilerStyle) {
  EXPECT_EQ(FormatTextFinding("top.v", Make("warning", 4, "latch", "case without default"), false),
            "top.v:5:1: warning: case without default [latch]\n");
  EXPECT_EQ(FormatTextFinding("a b.v", Make("error", 0, "reg-assign", "x"), false),
            "a b.v:1:1: error: x [reg-assign]\n");
}

TEST(FormatTextFinding, NegativeLineShowsAsOne) {
  EXPECT_EQ(FormatTextFinding("f.v", Make("warning", -5, "c", "m"), false), "f.v:1:1: warning: m [c]\n");
}

TEST(FormatTextFinding, ControlBytesBecomeSpaces) {
  EXPECT_EQ(FormatTextFinding("f.v", Make("warning", 1, "c", "a\nb\x1b[31mc\x7f"), false),
            "f.v:2:1: warning: a b [31mc  [c]\n");
}

TEST(FormatTextFinding, Colours) {
  EXPECT_EQ(FormatTextFinding("f.v", Make("warning", 0, "latch", "m"), true),
            "\x1b[1mf.v:1:1:\x1b[0m \x1b[1;35mwarning:\x1b[0m \x1b[1mm\x1b[0m [latch]\n");
  EXPECT_EQ(FormatTextFinding("f.v", Make("error", 0, "c", "m"), true),
            "\x1b[1mf.v:1:1:\x1b[0m \x1b[1;31merror:\x1b[0m \x1b[1mm\x1b[0m [c]\n");
}

TEST(IsErrorSeverity, UnknownCountsAsError) {
  EXPECT_TRUE(IsErrorSeverity("error"));
  EXPECT_FALSE(IsErrorSeverity("warning"));
  EXPECT_TRUE(IsErrorSeverity("fatal"));
}

TEST(FormatJsonArray, CutsAtCount) {
  const std::vector<Finding> findings = {Make("w", 0, "a", "", "{A}"), Make("w", 0, "b", "", "{B}")};
  EXPECT_EQ(FormatJsonArray(findings, 0), "[]");
  EXPECT_EQ(FormatJsonArray(findings, 1), "[{A}]");
  EXPECT_EQ(FormatJsonArray(findings, 5), "[{A},{B}]");
}

TEST(PathToUri, Table) {
  EXPECT_EQ(PathToUri("rtl/top.v"), "rtl/top.v");
  EXPECT_EQ(PathToUri("./rtl/top.v"), "rtl/top.v");
  EXPECT_EQ(PathToUri("/home/me/a b.v"), "file:///home/me/a%20b.v");
  EXPECT_EQ(PathToUri("<stdin>"), "%3Cstdin%3E");
  EXPECT_EQ(PathToUri("x%#?.v"), "x%25%23%3F.v");
}

TEST(FormatSarif, Structure) {
  const std::vector<FileFindings> files = {
      {"rtl/a.v", {Make("warning", 0, "latch", "m1"), Make("error", 9, "reg-assign", "m2")}},
      {"b.v", {Make("warning", 2, "latch", "m3"), Make("error", 0, "cpp-exception", "bad\xff")}},
      {"clean.v", {}},
  };
  const nlohmann::json log = nlohmann::json::parse(FormatSarif(files, "core_engine v1.25"));
  EXPECT_EQ(log["version"], "2.1.0");
  EXPECT_EQ(log["$schema"], "https://json.schemastore.org/sarif-2.1.0.json");
  ASSERT_EQ(log["runs"].size(), 1u);
  const nlohmann::json& run = log["runs"][0];
  EXPECT_EQ(run["tool"]["driver"]["name"], "quill");
  EXPECT_EQ(run["tool"]["driver"]["version"], "1.25");
  EXPECT_EQ(run["tool"]["driver"]["semanticVersion"], "1.25.0");
  EXPECT_TRUE(run["tool"]["driver"]["informationUri"].get<std::string>().starts_with("https://"));
  const nlohmann::json& rules = run["tool"]["driver"]["rules"];
  ASSERT_EQ(rules.size(), 12u);
  const std::vector<std::string> ids = {"latch",        "multi-driver",   "width-mismatch",   "blocking-assign",
                                        "dupli-define", "repeated-assig", "used-bef-declare", "comb-loop",
                                        "dupli-inst",   "reg-assign",     "wire-always",      "cpp-exception"};
  for (std::size_t i = 0; i < ids.size(); ++i) {
    EXPECT_EQ(rules[i]["id"], ids[i]);
    EXPECT_TRUE(rules[i]["shortDescription"]["text"].get<std::string>().ends_with("."));
    EXPECT_TRUE(rules[i]["fullDescription"]["text"].get<std::string>().ends_with("."));
    EXPECT_EQ(rules[i]["helpUri"], CheckHelpUri(ids[i]));
  }
  EXPECT_EQ(rules[1]["name"], "MultiDriver");
  EXPECT_FALSE(rules[0].contains("name"));  // "Latch" would only repeat the id
  EXPECT_EQ(rules[0]["defaultConfiguration"]["level"], "warning");
  EXPECT_EQ(rules[1]["defaultConfiguration"]["level"], "error");
  const nlohmann::json& results = run["results"];
  ASSERT_EQ(results.size(), 4u);
  EXPECT_EQ(results[0]["ruleId"], "latch");
  EXPECT_EQ(results[0]["ruleIndex"], 0);
  EXPECT_EQ(results[0]["level"], "warning");
  EXPECT_EQ(results[0]["message"]["text"], "m1.");
  const nlohmann::json& location = results[0]["locations"][0]["physicalLocation"];
  EXPECT_EQ(location["artifactLocation"]["uri"], "rtl/a.v");
  EXPECT_EQ(location["region"]["startLine"], 1);
  EXPECT_EQ(results[1]["level"], "error");
  EXPECT_EQ(results[1]["ruleIndex"], 9);
  EXPECT_EQ(results[1]["locations"][0]["physicalLocation"]["region"]["startLine"], 10);
  EXPECT_EQ(results[2]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"], "b.v");
  EXPECT_EQ(results[3]["ruleIndex"], 11);
  EXPECT_EQ(results[3]["message"]["text"], "bad\xef\xbf\xbd.");
}

TEST(FormatGithub, EscapesAsWorkflowCommandsWant) {
  EXPECT_EQ(FormatGithubFinding("a,b:c%.v", Make("error", 4, "latch", "50% a,b:c\r\nnext")),
            "::error file=a%2Cb%3Ac%25.v,line=5,title=latch::50%25 a,b:c%0D%0Anext\n");
  EXPECT_EQ(FormatGithubFinding("a.v", Make("warning", -3, "comb-loop", "m")),
            "::warning file=a.v,line=1,title=comb-loop::m\n");
}

TEST(FormatJsonDocument, OneArrayWithOneBasedLines) {
  EXPECT_EQ(FormatJsonDocument({}), "[]\n");
  EXPECT_EQ(FormatJsonDocument({{"a.v", {Make("warning", 0, "latch", "m")}}, {"b.v", {}}}),
            "[\n  {\"path\":\"a.v\",\"line\":1,\"check\":\"latch\",\"severity\":\"warning\",\"message\":\"m\"}\n]\n");
}

TEST(FormatSummary, CountsFindingsFilesAndSeverities) {
  EXPECT_EQ(FormatSummary(0, 0, 0), "No findings.\n");
  EXPECT_EQ(FormatSummary(1, 0, 1), "1 finding in 1 file (1 warning, 0 errors)\n");
  EXPECT_EQ(FormatSummary(9, 3, 3), "12 findings in 3 files (9 warnings, 3 errors)\n");
}

TEST(NumericVersion, TakesTheNumberOfTheEngineVersion) {
  EXPECT_EQ(NumericVersion("core_engine v1.25"), "1.25");
  EXPECT_EQ(NumericVersion("unknown"), "unknown");
}

TEST(FormatSarif, NoFindings) {
  const nlohmann::json log = nlohmann::json::parse(FormatSarif({}, "v"));
  EXPECT_TRUE(log["runs"][0]["results"].empty());
  EXPECT_EQ(log["runs"][0]["tool"]["driver"]["rules"].size(), 11u);
}

}  // namespace
}  // namespace quill::cli
