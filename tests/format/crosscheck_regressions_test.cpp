// Cases where the formatter's output differed from an independent model of
// its rules (tools/crosscheck).
#include <gtest/gtest.h>

#include <string>

#include "format/format_text.h"
#include "format/passes/align_instances.h"

namespace quill {
namespace {

// A parameter block closed on the header line and followed by the instance
// name without a blank ("#(.W(8))u_fifo(") keeps the two adjacent: only runs
// of blanks are collapsed, none is added.
TEST(CrosscheckRegressionsTest, HeaderParamBlockKeepsNameAdjacentWhenWrittenWithoutBlank) {
  EXPECT_EQ(AlignInstances("fifo #(.W(8))u_fifo(\n"
                           "    .a(b)\n"
                           ");"),
            "fifo #(.W(8))u_fifo (\n"
            "    .a (b )\n"
            ");");
}

// The same through the whole pipeline, with a TAB before "#(".
TEST(CrosscheckRegressionsTest, FormatTextCollapsesHeaderBlanksWithoutAddingOne) {
  EXPECT_EQ(FormatText("o\t#(())u(\n"
                       ".q(q)\n"
                       ")"),
            "o #(())u (\n"
            "    .q (q )\n"
            ");\n");
}

// The forms that already agree: blanks between the block and the name, or
// before the port list's "(", collapse to one space.
TEST(CrosscheckRegressionsTest, HeaderParamBlockCollapsesBlankRuns) {
  EXPECT_EQ(AlignInstances("fifo   #(.W(8))  u_fifo  (\n"
                           "    .a(b)\n"
                           ");"),
            "fifo #(.W(8)) u_fifo (\n"
            "    .a (b )\n"
            ");");
}

}  // namespace
}  // namespace quill
