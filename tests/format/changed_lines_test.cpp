// The passes that report the rows they rewrote (ChangedLines), and the
// second spacing run that reads again only those rows.
#include "format/changed_lines.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/text_utils.h"
#include "format/passes/align_instances.h"
#include "format/passes/flush_module_level.h"
#include "format/passes/layout_blocks.h"
#include "format/passes/space_sections.h"

namespace quill {
namespace {

const std::vector<std::string>& Texts() {
  static const std::vector<std::string> texts = {
      "",
      "\n",
      "module top;\nwire a;\n  fifo u_fifo (\n.clk(clk),\n  .din( d ), // input\n.dout(q)\n);\nendmodule\n",
      "module top (\n  input a\n);\n    wire b;\n  reg c;\nassign b = a;\nalways @(*) c = b;\n  endmodule  // top\n",
      "sub #(.W(8)) u1 (.a(x), .b(y));\nsub u2 (\r\n.a(x),\r\n.b(y)\r\n);\r\n  wire z;\r\n",
      "fifo u (\n.a(b)\n",
      "begin\n  wire a;\nend\n  wire b;\n",
      "always @(*) begin\ncase (s) // case\n0: y = a;\nendcase\n  end\n  wire c; // end\ngenerate\n  assign d = e;\n"
      "endgenerate\r\n",
  };
  return texts;
}

// Every row `changed` leaves unmarked holds the input's line.
void ExpectUnmarkedRowsKept(const std::string& input, const ChangedLines& output) {
  const LineViews before = SplitLineViews(input);
  const LineViews after = SplitLineViews(output.text);
  ASSERT_EQ(before.size(), after.size()) << input;
  for (std::size_t row = 0; row < before.size(); ++row) {
    const bool marked = row < output.changed.size() && output.changed[row];
    if (!marked) {
      EXPECT_EQ(before[row], after[row]) << "row " << row << " of \"" << input << "\"";
    }
  }
}

TEST(ChangedLinesTest, AlignInstancesMarksWhatItRewrites) {
  for (const std::string& text : Texts()) {
    const ChangedLines aligned = AlignInstancesMarkingChanges(text);
    EXPECT_EQ(aligned.text, AlignInstances(text)) << text;
    ExpectUnmarkedRowsKept(text, aligned);
  }
}

TEST(ChangedLinesTest, AlignInstancesMarksExactRows) {
  const ChangedLines aligned = AlignInstancesMarkingChanges("wire a;\nfifo u (\n.a(b),\n.c(d)\n);\nwire e;");
  EXPECT_EQ(aligned.changed, std::vector<bool>({false, true, true, true, true, false}));
}

TEST(ChangedLinesTest, FlushModuleLevelMarksWhatItRewrites) {
  for (const std::string& text : Texts()) {
    const ChangedLines flushed = FlushModuleLevelMarkingChanges(text);
    EXPECT_EQ(flushed.text, FlushModuleLevel(text)) << text;
    ExpectUnmarkedRowsKept(text, flushed);
  }
  const ChangedLines flushed = FlushModuleLevelMarkingChanges("  wire a;\nwire b;\n endmodule");
  EXPECT_EQ(flushed.text, "wire a;\nwire b;\nendmodule");
  EXPECT_EQ(flushed.changed, std::vector<bool>({true, false, true}));
}

TEST(ChangedLinesTest, MergeMarksTheUnion) {
  std::vector<bool> into = {false, true};
  MergeChangedRows({true, false, false, true}, &into);
  EXPECT_EQ(into, std::vector<bool>({true, true, false, true}));
}

BlockWordCounts CountsOfLine(std::string_view line) {
  std::string storage;
  std::string_view code;
  return CountCodeBlockWords(TrimmedView(line), &code, &storage);
}

void ExpectSameCounts(const BlockWordCounts& a, const BlockWordCounts& b, const std::string& where) {
  EXPECT_EQ(a.begins, b.begins) << where;
  EXPECT_EQ(a.ends, b.ends) << where;
  EXPECT_EQ(a.cases, b.cases) << where;
  EXPECT_EQ(a.endcases, b.endcases) << where;
}

TEST(ChangedLinesTest, LayoutKeepsTheCountsOfItsLines) {
  for (const std::string& text : Texts()) {
    const LaidOutText laidOut = LayoutBlocksKeepingCounts(text);
    EXPECT_EQ(laidOut.text, LayoutBlocks(text)) << text;
    const LineViews before = SplitLineViews(text);
    const LineViews after = SplitLineViews(laidOut.text);
    ASSERT_EQ(laidOut.counts.size(), after.size()) << text;
    ASSERT_EQ(before.size(), after.size()) << text;
    for (std::size_t row = 0; row < after.size(); ++row) {
      const std::string where = "row " + std::to_string(row) + " of \"" + text + "\"";
      ExpectSameCounts(laidOut.counts[row], CountsOfLine(after[row]), where);
      ExpectSameCounts(laidOut.counts[row], CountsOfLine(before[row]), where);
    }
  }
}

TEST(ChangedLinesTest, FlushWithKnownCountsAgreesWithCountingAll) {
  for (const std::string& text : Texts()) {
    std::vector<BlockWordCounts> counts;
    for (std::string_view line : SplitLineViews(text)) counts.push_back(CountsOfLine(line));
    EXPECT_EQ(FlushModuleLevelMarkingChanges(text, counts, {}).text, FlushModuleLevel(text)) << text;
    // Stale rows and rows past the known counts are counted anew.
    std::vector<BlockWordCounts> wrong(counts.size(), BlockWordCounts{5, 0, 0, 0});
    EXPECT_EQ(FlushModuleLevelMarkingChanges(text, wrong, std::vector<bool>(counts.size(), true)).text,
              FlushModuleLevel(text))
        << text;
  }
}

TEST(ChangedLinesTest, ShiftRowsMakesRoomForInsertedLines) {
  EXPECT_EQ(ShiftRows<int>({1, 2, 3}, {0, 2, 2}, 0), std::vector<int>({0, 1, 2, 0, 0, 3}));
  EXPECT_EQ(ShiftRows<int>({1, 2}, {}, 0), std::vector<int>({1, 2}));
  EXPECT_EQ(ShiftRows<int>({}, {}, 0), std::vector<int>());
  EXPECT_EQ(ShiftRows<int>({1, 2}, {-1, 1, 2, 5}, 0), std::vector<int>({1, 0, 2}));
}

TEST(SpaceSectionsAgainTest, KeptKindsAreThoseOfTheSpacedLines) {
  for (const std::string& text : Texts()) {
    const SpacedText spaced = SpaceSectionsKeepingKinds(text);
    EXPECT_EQ(spaced.text, SpaceSections(text)) << text;
    const LineViews lines = SplitLineViews(spaced.text);
    ASSERT_EQ(spaced.kinds.size(), lines.size()) << text;
    for (std::size_t row = 0; row < lines.size(); ++row) {
      const LineKind kind = ReadLineKind(lines[row]);
      EXPECT_EQ(spaced.kinds[row].label, kind.label) << "row " << row << " of \"" << text << "\"";
      EXPECT_EQ(spaced.kinds[row].separates, kind.separates) << "row " << row << " of \"" << text << "\"";
    }
  }
}

// Rewriting any one row with any of a few lines and spacing again gives
// what spacing the rewritten text from scratch gives.
TEST(SpaceSectionsAgainTest, AgreesWithAFreshRun) {
  const std::vector<std::string> replacements = {"", "wire x;", "// note", "fifo u (", "assign y = z;", "  ", ");"};
  for (const std::string& text : Texts()) {
    const SpacedText spaced = SpaceSectionsKeepingKinds(text);
    const LineViews lines = SplitLineViews(spaced.text);
    for (std::size_t row = 0; row < lines.size(); ++row) {
      for (const std::string& replacement : replacements) {
        LineViews rewritten = lines;
        rewritten[row] = replacement;
        const std::string changedText = JoinLines(rewritten, "\n");
        std::vector<bool> changed(row + 1);
        changed[row] = true;
        EXPECT_EQ(SpaceSectionsAgain(changedText, spaced.kinds, changed), SpaceSections(changedText))
            << "row " << row << " as \"" << replacement << "\" in \"" << text << "\"";
      }
    }
  }
}

}  // namespace
}  // namespace quill
