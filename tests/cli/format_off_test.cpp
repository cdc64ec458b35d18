#include "format_off.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

struct FindCase {
  const char* name;
  std::string text;
  std::vector<FormatOffRegion> regions;
};

TEST(FindFormatOffRegions, Table) {
  const std::vector<FindCase> cases = {
      {"none", "a;\nb;\n", {}},
      {"one region", "a;\n// quill: format off\nb;\n// quill: format on\nc;\n", {{1, 3, true}}},
      {"block comments, blanks around, CR LF",
       "  /* quill: format off */ \r\nb;\r\n\t/*quill:format on*/\r\n",
       {{0, 2, true}}},
      {"two regions", "// quill: format off\n// quill: format on\nx\n// quill: format off\ny\n// quill: format on\n",
       {{0, 1, true}, {3, 5, true}}},
      {"off without on runs to the end", "a;\n// quill: format off\nb;\nc;", {{1, 3, false}}},
      {"off as the last line", "a;\n// quill: format off\n", {{1, 1, false}}},
      {"no nesting: the first on closes",
       "// quill: format off\n// quill: format off\nb;\n// quill: format on\nc;\n// quill: format on\n",
       {{0, 3, true}}},
      {"an on before any off is a comment", "// quill: format on\na;\n", {}},
      {"a marker after code is a comment", "a; // quill: format off\nb;\n", {}},
      {"a marker with more text is a comment", "// quill: format off please\nb;\n", {}},
      {"an unclosed block marker is a comment", "/* quill: format off\nb;\n", {}},
  };
  for (const FindCase& c : cases) {
    SCOPED_TRACE(c.name);
    const std::vector<FormatOffRegion> regions = FindFormatOffRegions(c.text);
    ASSERT_EQ(regions.size(), c.regions.size());
    for (std::size_t i = 0; i < regions.size(); ++i) {
      EXPECT_EQ(regions[i].first, c.regions[i].first);
      EXPECT_EQ(regions[i].last, c.regions[i].last);
      EXPECT_EQ(regions[i].closed, c.regions[i].closed);
    }
  }
}

using Spans = std::vector<std::pair<uint32_t, uint32_t>>;

struct KeepCase {
  const char* name;
  std::string original;
  std::string formatted;
  std::string kept;  // expected text when `broken` is empty
  Spans broken;
};

TEST(KeepFormatOffRegions, Table) {
  const std::vector<KeepCase> cases = {
      {"no region: the formatted text", "a ;\n", "a;\n", "a;\n", {}},
      {"a region comes back byte for byte",
       "a ;\n  // quill: format off\nb   ;\n  // quill: format on\nc ;\n",
       "a;\n// quill: format off\nb;\n// quill: format on\nc;\n",
       "a;\n  // quill: format off\nb   ;\n  // quill: format on\nc;\n",
       {}},
      {"lines re-broken inside the region",
       "// quill: format off\nx, y,\nz\n// quill: format on\n",
       "// quill: format off\nx,\ny,\nz\n// quill: format on\n",
       "// quill: format off\nx, y,\nz\n// quill: format on\n",
       {}},
      {"blank lines around the region change",
       "a;\n\n\n// quill: format off\nb;\n// quill: format on\nc;",
       "a;\n\n// quill: format off\nb;\n// quill: format on\n\nc;\n",
       "a;\n\n// quill: format off\nb;\n// quill: format on\n\nc;\n",
       {}},
      {"an open region keeps the rest of the file",
       "a ;\n// quill: format off\nb  ;\nc  ;",
       "a;\n// quill: format off\nb;\nc;\n",
       "a;\n// quill: format off\nb  ;\nc  ;",
       {}},
      {"code joined to the off marker", "a,\n// quill: format off\nb;\n// quill: format on\n",
       "a, // quill: format off\nb;\n// quill: format on\n", "", Spans{{2, 4}}},
      {"the on marker joined to code", "// quill: format off\nb\n// quill: format on\nc;\n",
       "// quill: format off\nb // quill: format on\nc;\n", "", Spans{{1, 3}}},
      {"code moved into the region", "a\n// quill: format off\nb;\n// quill: format on\n",
       "// quill: format off\na b;\n// quill: format on\n", "", Spans{{2, 4}}},
      {"code moved out of the region", "// quill: format off\nb;\nc;\n// quill: format on\n",
       "// quill: format off\nb;\n// quill: format on\nc;\n", "", Spans{{1, 4}}},
      {"the second of two regions broken",
       "// quill: format off\nx\n// quill: format on\ny\n// quill: format off\nz\n// quill: format on\n",
       "// quill: format off\nx\n// quill: format on\n// quill: format off\ny z\n// quill: format on\n", "",
       Spans{{5, 7}}},
      {"an open marker without its line end, followed by more",
       "a\n// quill: format off", "a\n// quill: format off\nmore\n", "", Spans{{2, 2}}},
  };
  for (const KeepCase& c : cases) {
    SCOPED_TRACE(c.name);
    const KeptRegions kept = KeepFormatOffRegions(c.original, c.formatted);
    EXPECT_EQ(kept.broken, c.broken);
    if (c.broken.empty()) {
      EXPECT_EQ(kept.text, c.kept);
    }
  }
}

TEST(DescribeSpans, Table) {
  EXPECT_EQ(DescribeSpans({{4, 4}}), "line 4");
  EXPECT_EQ(DescribeSpans({{4, 9}}), "lines 4 to 9");
  EXPECT_EQ(DescribeSpans({{1, 3}, {7, 7}}), "lines 1 to 3, line 7");
}

}  // namespace
}  // namespace quill::cli
