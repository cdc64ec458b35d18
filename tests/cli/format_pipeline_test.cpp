#include "format_pipeline.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace quill::cli {
namespace {

using Spans = std::vector<std::pair<uint32_t, uint32_t>>;

// A small formatter that aligns the "=" of all assignment lines of the text
// into one column, as the engine aligns declarations and port lists.
std::optional<std::string> AlignAssignments(std::string_view text) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t lf = text.find('\n', start);
    const std::size_t end = lf == std::string_view::npos ? text.size() : lf;
    lines.emplace_back(text.substr(start, end - start));
    start = end + 1;
  }
  auto trim = [](std::string s) {
    s.erase(0, s.find_first_not_of(' '));
    s.erase(s.find_last_not_of(' ') + 1);
    return s;
  };
  std::size_t width = 0;
  for (const std::string& line : lines) {
    if (const std::size_t eq = line.find('='); eq != std::string::npos) width = std::max(width, trim(line.substr(0, eq)).size());
  }
  std::string out;
  for (const std::string& line : lines) {
    const std::size_t eq = line.find('=');
    if (eq == std::string::npos) {
      out += trim(line) + "\n";
      continue;
    }
    std::string name = trim(line.substr(0, eq));
    name.resize(width, ' ');
    out += name + " = " + trim(line.substr(eq + 1)) + "\n";
  }
  return out;
}

struct Case {
  const char* name;
  std::string input;
  FormatOutcome outcome;
  std::string text;
  Spans broken;
};

TEST(FormatForTool, WithTheAligner) {
  const std::vector<Case> cases = {
      {"aligned as a whole", "a = 1;\nlongname = 2;\n", FormatOutcome::kFormatted, "a        = 1;\nlongname = 2;\n", {}},
      {"the lines around a region share the column the whole text gives them",
       "a = 1;\n// quill: format off\nlongname   =    2;\n// quill: format on\nbb = 3;\n", FormatOutcome::kFormatted,
       "a        = 1;\n// quill: format off\nlongname   =    2;\n// quill: format on\nbb       = 3;\n", {}},
      {"CR LF kept, region too",
       "a = 1;\r\n  // quill: format off\r\nlongname=2;\r\n// quill: format on\r\nbb = 3;\r\n", FormatOutcome::kFormatted,
       "a        = 1;\r\n  // quill: format off\r\nlongname=2;\r\n// quill: format on\r\nbb       = 3;\r\n", {}},
      {"mixed line ends are formatted as they are", "a = 1;\r\nb = 2;\n", FormatOutcome::kFormatted,
       "a = 1;\r\nb = 2;\n", {}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const PipelineResult result = FormatForTool(c.input, PipelineOptions{}, AlignAssignments);
    EXPECT_EQ(result.outcome, c.outcome);
    EXPECT_EQ(result.text, c.text);
    EXPECT_EQ(result.brokenRegions, c.broken);
    EXPECT_TRUE(result.lostLines.empty());
  }
}

// The stand-in engine: trailing blanks go, "~~" spreads one step per round,
// a line ending in JOIN takes the next one, LOSE is dropped.
TEST(FormatForTool, WithTheEngine) {
  const std::vector<Case> cases = {
      {"nothing to do", "a\n", FormatOutcome::kFormatted, "a\n", {}},
      {"settles over rounds", "a ~~~~  \n", FormatOutcome::kFormatted, "a ~ ~ ~ ~\n", {}},
      {"does not settle", "~~~~~~~~\n", FormatOutcome::kUnsettled, "", {}},
      {"engine failure", "FAIL_FORMAT\n", FormatOutcome::kEngineFailed, "", {}},
      {"CR LF in, CR LF out", "a  \r\nb\r\n", FormatOutcome::kFormatted, "a\r\nb\r\n", {}},
      {"CR LF with a region", "a  \r\n// quill: format off\r\nb  \r\n// quill: format on\r\nc  \r\n",
       FormatOutcome::kFormatted, "a\r\n// quill: format off\r\nb  \r\n// quill: format on\r\nc\r\n", {}},
      {"a region keeps what would otherwise spread", "// quill: format off\n~~~~~~~~  \n", FormatOutcome::kFormatted,
       "// quill: format off\n~~~~~~~~  \n", {}},
      {"a line joined onto the off marker", "a JOIN\n// quill: format off\nb  \n// quill: format on\n",
       FormatOutcome::kRegionBroken, "", Spans{{2, 4}}},
      {"a region line joined onto the on marker", "// quill: format off\nb JOIN\n// quill: format on\nc\n",
       FormatOutcome::kRegionBroken, "", Spans{{1, 3}}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const PipelineResult result = FormatForTool(c.input, PipelineOptions{});
    EXPECT_EQ(result.outcome, c.outcome);
    EXPECT_EQ(result.text, c.text);
    EXPECT_EQ(result.brokenRegions, c.broken);
    if (c.outcome == FormatOutcome::kFormatted) {
      EXPECT_EQ(FormatForTool(result.text, PipelineOptions{}).text, result.text) << "not stable";
    }
  }
}

TEST(FormatForTool, ForceFormatsABrokenRegion) {
  const PipelineResult result =
      FormatForTool("a JOIN\n// quill: format off\nb  \n// quill: format on\n", PipelineOptions{true});
  EXPECT_EQ(result.outcome, FormatOutcome::kFormatted);
  EXPECT_EQ(result.text, "a JOIN // quill: format off\nb\n// quill: format on\n");
  EXPECT_EQ(result.brokenRegions, (Spans{{2, 4}}));
  EXPECT_TRUE(result.lostLines.empty());
}

TEST(FormatForTool, TheGuardComparesTheInputWithTheFinalText) {
  const PipelineResult result = FormatForTool("a\nLOSE b\nc ~~~\n", PipelineOptions{});
  EXPECT_EQ(result.outcome, FormatOutcome::kFormatted);
  EXPECT_EQ(result.text, "a\n b\nc ~ ~ ~\n");
  EXPECT_EQ(result.lostLines, (std::vector<uint32_t>{2}));
  EXPECT_EQ(result.rounds, 3);
}

}  // namespace
}  // namespace quill::cli
