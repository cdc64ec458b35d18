#include "format/format_text.h"

#include "common/text_utils.h"
#include "format/passes/align_declarations.h"
#include "format/passes/align_instances.h"
#include "format/passes/align_parameters.h"
#include "format/passes/block_comments.h"
#include "format/passes/flush_module_level.h"
#include "format/passes/layout_blocks.h"
#include "format/passes/layout_port_list.h"
#include "format/passes/space_sections.h"
#include "format/passes/split_crowded_lines.h"
#include "format/scan/pattern_table.h"

namespace quill {

bool IsForeignSource(std::string_view text) { return Patterns().kForeignSourcePattern.Search(text); }

namespace {

// Frees a pass's output once the next pass has read it: on a large input
// the pipeline then holds two or three texts at a time, not one per pass.
void Release(std::string& text) { std::string().swap(text); }

}  // namespace

std::string FormatText(std::string_view text) {
  // One item per line, so that the aligners see one declaration or
  // connection per line; CRs go here too.
  std::string working = SplitCrowdedLines(text);
  // Block comments become placeholders that keep the line count: no pass
  // may align, indent or split their text.
  BlockCommentList comments;
  working = ProtectBlockComments(working, &comments);

  // The first module header's port list, then the body's declaration and
  // parameter groups, each into its own columns.
  working = LayoutPortList(working);
  working = AlignDeclarations(working);
  working = AlignParameters(working);
  // Always and generate bodies indented by nesting depth.
  LaidOutText laidOut = LayoutBlocksKeepingCounts(working);
  Release(working);
  // Empty lines between sections of different kinds, once block bodies have
  // their final indentation.
  SpacedText spaced = SpaceSectionsKeepingKinds(laidOut.text);
  Release(laidOut.text);
  ChangedLines aligned = AlignInstancesMarkingChanges(spaced.text);
  Release(spaced.text);
  // Module-level lines and endmodule to the left margin. The block word
  // counts of the layout hold for every line the alignment kept.
  const std::vector<BlockWordCounts> counts = ShiftRows(laidOut.counts, spaced.emptyLinesBefore, BlockWordCounts{});
  std::vector<BlockWordCounts>().swap(laidOut.counts);
  ChangedLines flushed = FlushModuleLevelMarkingChanges(aligned.text, counts, aligned.changed);
  Release(aligned.text);
  // Spacing again over the final lines: the two passes above rewrite lines
  // after the first run, and a rewritten line may begin a new section. The
  // pass only inserts lines, so the first run's separators stay. Both passes
  // keep the lines one for one, so only the rows they rewrote are read again.
  MergeChangedRows(aligned.changed, &flushed.changed);
  working = SpaceSectionsAgain(flushed.text, spaced.kinds, flushed.changed);

  // The comments return into the final layout; exactly one LF ends it.
  working = RestoreBlockComments(working, comments);
  working.resize(TrimRightOf(working, "\r\n").size());
  working.push_back('\n');
  return working;
}

}  // namespace quill
