#include "format/format_text.h"

#include "common/pattern_table.h"
#include "common/text_utils.h"
#include "format/align_declarations.h"
#include "format/align_instances.h"
#include "format/align_parameters.h"
#include "format/block_comments.h"
#include "format/flush_module_level.h"
#include "format/layout_blocks.h"
#include "format/layout_port_list.h"
#include "format/space_sections.h"
#include "format/split_crowded_lines.h"

namespace quill {

bool IsForeignSource(std::string_view text) { return Patterns().kForeignSourcePattern.Search(text); }

std::string FormatText(std::string_view text) {
  std::string working = SplitCrowdedLines(text);
  BlockCommentList comments;
  working = ProtectBlockComments(working, &comments);

  working = LayoutPortList(working);
  working = AlignDeclarations(working);
  working = AlignParameters(working);
  working = LayoutBlocks(working);
  working = SpaceSections(working);
  working = AlignInstances(working);
  working = FlushModuleLevel(working);
  working = SpaceSections(working);

  working = RestoreBlockComments(working, comments);
  working.resize(TrimRightOf(working, "\r\n").size());
  working.push_back('\n');
  return working;
}

}  // namespace quill
