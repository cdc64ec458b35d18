#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "common/pattern.h"
#include "lint/lint_text.h"
#include "support/corpus_files.h"

namespace quill {
namespace {

// A check runner that notes whether it ran and reports one fixed finding.
struct RecordingChecks {
  bool ran = false;
  std::vector<Diagnostic> findings = {{Severity::kWarning, 1, CheckId::kCombLoop, "ran"}};
  CheckRunner Runner() {
    return [this](const ModuleModel&) {
      ran = true;
      return findings;
    };
  }
};

constexpr char kProbeReport[] = R"([{"severity":"warning","line":1,"check":"comb-loop","message":"ran"}])";

TEST(LintTextTest, EmptyInputIsAnEmptyArray) {
  EXPECT_EQ(LintText(std::string_view()), "[]");
  EXPECT_EQ(LintText(""), "[]");
}

TEST(LintTextTest, EmptyInputRunsNoCheck) {
  RecordingChecks checks;
  EXPECT_EQ(LintTextWith("", checks.Runner()), "[]");
  EXPECT_FALSE(checks.ran);
}

TEST(LintTextTest, NoModuleAndNoDeclarationRunsNoCheck) {
  RecordingChecks checks;
  EXPECT_EQ(LintTextWith("assign a = b;\nfoo u (.a(b));\nparameter P = 1;\n", checks.Runner()), "[]");
  EXPECT_FALSE(checks.ran);
  EXPECT_EQ(LintText("assign a = b;\n"), "[]");
}

TEST(LintTextTest, CommentedModuleRunsNoCheck) {
  RecordingChecks checks;
  EXPECT_EQ(LintTextWith("// module foo\n/* module bar */\n", checks.Runner()), "[]");
  EXPECT_FALSE(checks.ran);
}

TEST(LintTextTest, DeclarationWithoutModuleRunsTheChecks) {
  RecordingChecks checks;
  EXPECT_EQ(LintTextWith("wire a;\n", checks.Runner()), kProbeReport);
  EXPECT_TRUE(checks.ran);
}

TEST(LintTextTest, ModuleWithoutDeclarationRunsTheChecks) {
  RecordingChecks checks;
  EXPECT_EQ(LintTextWith("module m;\nendmodule\n", checks.Runner()), kProbeReport);
  EXPECT_TRUE(checks.ran);
}

TEST(LintTextTest, FindingsKeepTheCheckOrder) {
  RecordingChecks checks;
  checks.findings = {{Severity::kWarning, 5, CheckId::kLatch, "a"},
                     {Severity::kError, 1, CheckId::kMultiDriver, "b"},
                     {Severity::kWarning, 3, CheckId::kLatch, "c"}};
  EXPECT_EQ(LintTextWith("module m;", checks.Runner()),
            R"([{"severity":"warning","line":5,"check":"latch","message":"a"},)"
            R"({"severity":"error","line":1,"check":"multi-driver","message":"b"},)"
            R"({"severity":"warning","line":3,"check":"latch","message":"c"}])");
}

TEST(LintTextTest, MessagesAreEscapedAndLinesRenderedAsGiven) {
  RecordingChecks checks;
  checks.findings = {{Severity::kWarning, -2, CheckId::kWidthMismatch, "say \"hi\" \\ now\nthen caf\xc3\xa9"},
                     {Severity::kError, 0, CheckId::kDuplicateInstance, ""}};
  EXPECT_EQ(LintTextWith("module m;", checks.Runner()),
            "[{\"severity\":\"warning\",\"line\":-2,\"check\":\"width-mismatch\",\"message\":\"say \\\"hi\\\" \\\\ "
            "now\\nthen "
            "caf\xc3\xa9\"},{\"severity\":\"error\",\"line\":0,\"check\":\"dupli-inst\",\"message\":\"\"}]");
}

TEST(LintTextTest, StandardExceptionTextIsInsertedUnescaped) {
  const CheckRunner throwing = [](const ModuleModel&) -> std::vector<Diagnostic> {
    throw std::runtime_error("bad \"x\" \\ y");
  };
  EXPECT_EQ(LintTextWith("module m;", throwing),
            "[{\"severity\":\"error\",\"line\":0,\"check\":\"cpp-exception\",\"message\":\"bad \"x\" \\ y\"}]");
}

TEST(LintTextTest, PatternLimitIsAStandardException) {
  const CheckRunner throwing = [](const ModuleModel&) -> std::vector<Diagnostic> {
    throw PatternLimitError("match limit");
  };
  EXPECT_EQ(LintTextWith("module m;", throwing),
            R"([{"severity":"error","line":0,"check":"cpp-exception","message":"match limit"}])");
}

TEST(LintTextTest, OtherExceptionsAreUnknown) {
  const CheckRunner throwing = [](const ModuleModel&) -> std::vector<Diagnostic> { throw 42; };
  EXPECT_EQ(LintTextWith("module m;", throwing),
            R"([{"severity":"error","line":0,"check":"cpp-exception","message":"unknown exception"}])");
}

TEST(BuildModuleModelTest, EmptySourceGivesNoModel) {
  EXPECT_FALSE(BuildModuleModel("").has_value());
}

TEST(BuildModuleModelTest, TextWithoutModuleOrDeclarationGivesNoModel) {
  EXPECT_FALSE(BuildModuleModel("assign a = b;\nalways @(*) y = a;\n").has_value());
  EXPECT_TRUE(BuildModuleModel("wire a;").has_value());
  EXPECT_TRUE(BuildModuleModel("module m;").has_value());
}

struct ModuleNameCase {
  const char* name;
  const char* source;
  const char* expected;
};

class ModuleNameTest : public testing::TestWithParam<ModuleNameCase> {};

TEST_P(ModuleNameTest, FirstModuleHeader) {
  const std::optional<ModuleModel> model = BuildModuleModel(GetParam().source);
  EXPECT_EQ(model ? model->moduleName : "", GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ModuleNameTest,
    testing::Values(ModuleNameCase{"LineComment", "// module foo\n", ""},
                    ModuleNameCase{"BlockComment", "/* module foo */", ""},
                    ModuleNameCase{"UpperCase", "MODULE Foo (a);", "Foo"},
                    ModuleNameCase{"NameOnTheNextLine", "module\n  top_1 (", "top_1"},
                    ModuleNameCase{"TabBeforeName", "module\tm;", "m"}, ModuleNameCase{"Endmodule", "endmodule x", ""},
                    ModuleNameCase{"FirstOfSeveral", "module a; endmodule\nmodule b; endmodule", "a"},
                    ModuleNameCase{"NoNameThenLaterModule", "module (\nmodule real_one;", "real_one"},
                    ModuleNameCase{"InsideIdentifier", "my_module x;", ""},
                    ModuleNameCase{"DigitsAreWordCharacters", "module 9lives;", "9lives"}),
    [](const testing::TestParamInfo<ModuleNameCase>& paramInfo) { return std::string(paramInfo.param.name); });

TEST(BuildModuleModelTest, TabsAreSpacesForEveryStep) {
  const ModuleModel model = BuildModuleModel("module m;\nwire\ta,\tb;\nassign\tc\t=\ta;\nparameter\tP\t=\t1;").value();
  ASSERT_EQ(model.signals.size(), 2u);
  EXPECT_EQ(model.signals[1].name, "b");
  ASSERT_EQ(model.assigns.size(), 1u);
  EXPECT_EQ(model.assigns[0].rhs, "a");
  ASSERT_EQ(model.parameters.size(), 1u);
  EXPECT_EQ(model.parameters[0].value, "1");
}

TEST(BuildModuleModelTest, UnterminatedCommentKeepsLineNumbers) {
  const ModuleModel model = BuildModuleModel("wire a; /* open\nwire b;\n\nwire c;").value();
  ASSERT_EQ(model.signals.size(), 1u);
  EXPECT_EQ(model.signals[0].name, "a");
  const ModuleModel closed = BuildModuleModel("wire a; /* x\n*/\nwire b;").value();
  ASSERT_EQ(closed.signals.size(), 2u);
  EXPECT_EQ(closed.signals[1].line, 2u);
}

TEST(BuildModuleModelTest, WholePipelineFillsTheModel) {
  const ModuleModel model = BuildModuleModel(
                                "module top #(parameter W = 4) (\n"
                                "  input clk,\n"
                                "  output [W-1:0] q\n"
                                ");\n"
                                "  wire [W-1:0] d;\n"
                                "  assign d = q + 1'b1;\n"
                                "  counter #(.W(W)) u0 (.clk(clk), .d(d));\n"
                                "endmodule\n")
                                .value();
  EXPECT_EQ(model.moduleName, "top");
  ASSERT_EQ(model.signals.size(), 3u);
  ASSERT_EQ(model.parameters.size(), 1u);
  EXPECT_EQ(model.parameters[0].value, "4) (\n  input clk");
  ASSERT_EQ(model.assigns.size(), 1u);
  EXPECT_EQ(model.assigns[0].line, 5u);
  ASSERT_EQ(model.instances.size(), 1u);
  EXPECT_EQ(model.instances[0].name, "u0");
  EXPECT_EQ(model.instances[0].line, 6u);
  EXPECT_EQ(model.firstUseLine, (NameMap{{"q", 5}, {"clk", 6}, {"d", 6}}));
}

TEST(LintTextCorpusTest, EverySourceGivesAnArray) {
  const std::vector<CorpusSource> sources = VerilogCorpusSources();
  if (sources.empty()) GTEST_SKIP() << "no Verilog sources in " << QUILL_CORPUS_DIR;
  for (const CorpusSource& source : sources) {
    const std::string report = LintText(source.text);
    ASSERT_FALSE(report.empty()) << source.path;
    EXPECT_EQ(report.front(), '[') << source.path;
    EXPECT_EQ(report.back(), ']') << source.path;
    EXPECT_EQ(report.find("cpp-exception"), std::string::npos) << source.path;
  }
}

// Every call from many threads at once gives what a serial run gives.
std::vector<std::string> ConcurrencyInputs() {
  return {"",
          "module m(input a, output b);\nassign b = a;\nendmodule\n",
          "module top #(parameter W = 8) (\n  input clk,\n  output reg [W-1:0] q\n);\n"
          "  always @(posedge clk) q <= q + 1;\n  counter u0 (.clk(clk), .q(q));\nendmodule\n",
          "wire a;\nwire a;\nassign a = b;\nassign a = c;\n",
          "module m;\n  reg r;\n  always @(*) begin\n    if (en) r = d;\n  end\nendmodule\n",
          "/* unterminated\nmodule x;\n"};
}

bool ConcurrentCallsMatchSerialOnes(bool serialFirst) {
  const std::vector<std::string> inputs = ConcurrencyInputs();
  std::vector<std::string> serial;
  if (serialFirst) {
    for (const std::string& input : inputs) serial.push_back(LintText(input));
  }
  constexpr int kThreads = 8;
  std::vector<std::vector<std::string>> results(kThreads);
  std::atomic<int> ready{0};
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      ++ready;
      while (ready.load() < kThreads) std::this_thread::yield();
      for (int round = 0; round < 20; ++round) {
        for (const std::string& input : inputs) results[static_cast<std::size_t>(t)].push_back(LintText(input));
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  if (!serialFirst) {
    for (const std::string& input : inputs) serial.push_back(LintText(input));
  }
  for (const auto& perThread : results) {
    for (std::size_t i = 0; i < perThread.size(); ++i) {
      if (perThread[i] != serial[i % inputs.size()]) return false;
    }
  }
  return true;
}

TEST(LintTextConcurrencyTest, ManyThreadsAgreeWithASerialRun) {
  EXPECT_TRUE(ConcurrentCallsMatchSerialOnes(true));
}

TEST(LintTextConcurrencyTest, ManyThreadsFromTheVeryFirstCall) {
  // A fresh process, so that the threads' calls are the first lint calls and
  // race for the one-time initialisations.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(std::exit(ConcurrentCallsMatchSerialOnes(false) ? 0 : 1), testing::ExitedWithCode(0), "");
}

// Hostile inputs: no crash and a well-formed array.
void ExpectWellFormed(const std::string& report) {
  ASSERT_FALSE(report.empty());
  EXPECT_EQ(report.front(), '[');
  EXPECT_EQ(report.back(), ']');
}

std::string Repeat(std::string_view piece, std::size_t times) {
  std::string text;
  text.reserve(piece.size() * times);
  for (std::size_t i = 0; i < times; ++i) text += piece;
  return text;
}

TEST(LintTextPathologicalTest, UnterminatedBlockComment) {
  const std::string text = "module m;\n/*" + Repeat("wire x;\n", 1'000'000);
  ExpectWellFormed(LintText(text));
  const ModuleModel model = BuildModuleModel(text).value();
  EXPECT_EQ(model.moduleName, "m");
  EXPECT_TRUE(model.signals.empty());
}

TEST(LintTextPathologicalTest, TenMegabytesOfAssign) {
  EXPECT_EQ(LintText(Repeat("assign", 10'000'000 / 6)), "[]");
  EXPECT_EQ(LintText(Repeat("assign ", 10'000'000 / 7)), "[]");
  ExpectWellFormed(LintText("module m;\n" + Repeat("assign a = b;\n", 500'000)));
}

TEST(LintTextPathologicalTest, EveryLinkOfALongAssignmentChainIsReported) {
  constexpr int kLinks = 6000;
  const std::string text = "module m;\nalways @(*) x" + Repeat(" = x", kLinks) + ";\nendmodule\n";
  std::string expected = "[";
  for (int i = 0; i < kLinks; ++i) {
    if (i > 0) expected += ",";
    expected +=
        R"({"severity":"warning","line":1,"check":"comb-loop","message":"signal 'x' feeds back to itself in always"})";
  }
  expected += "]";
  EXPECT_EQ(LintText(text), expected);
}

TEST(LintTextPathologicalTest, ParameterValueRunningToTheEnd) {
  const std::string text = "module m;\n" + Repeat("parameter x = ", 500'000);
  ExpectWellFormed(LintText(text));
  EXPECT_EQ(BuildModuleModel(text).value().parameters.size(), 1u);
}

TEST(LintTextPathologicalTest, OneIdentifierAMillionTimes) {
  const std::string text = Repeat("a ", 1'000'000);
  EXPECT_EQ(LintText(text), "[]");
  ExpectWellFormed(LintText("module m;\n" + text));
}

TEST(LintTextPathologicalTest, HundredThousandInputKeywordsWithoutEnd) {
  const std::string bare = Repeat("input ", 100'000);
  EXPECT_EQ(LintText(bare), "[]");
  const std::string named = "module m (" + Repeat("input a ", 100'000);
  ExpectWellFormed(LintText(named));
  ExpectWellFormed(LintText(Repeat("input a\n", 100'000)));
}

TEST(LintTextPathologicalTest, ManyUnclosedBrackets) {
  ExpectWellFormed(LintText("module m;\n" + Repeat("parameter [ ", 100'000)));
  ExpectWellFormed(LintText("module m;\n" + Repeat("foo #(\n", 100'000)));
  ExpectWellFormed(LintText("module m;\nfoo u (" + Repeat(".a(b ", 100'000)));
  ExpectWellFormed(LintText("module m (\n" + Repeat("(", 100'000) + "\nendmodule\n"));
}

TEST(LintTextPathologicalTest, ArbitraryBytes) {
  std::string bytes;
  for (int i = 0; i < 256 * 64; ++i) bytes += static_cast<char>(i * 37 % 256);
  ExpectWellFormed(LintText(bytes));
  ExpectWellFormed(LintText("module m;\n" + bytes));
}

}  // namespace
}  // namespace quill
