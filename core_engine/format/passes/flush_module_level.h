#ifndef QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_
#define QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_

#include <string>
#include <string_view>

#include <vector>

#include "format/changed_lines.h"
#include "format/scan/block_words.h"

namespace quill {

// Puts endmodule lines and module-level declarations at the left margin.
// Lines inside a module's port list or inside begin/end and case/endcase
// blocks keep their indentation.
std::string FlushModuleLevel(std::string_view text);

// The same, with the rows it rewrote; the lines stay as many as the text's.
// `counts` are the block word counts of each line's code where known; rows
// past its end or marked in `stale` are counted here.
ChangedLines FlushModuleLevelMarkingChanges(std::string_view text, const std::vector<BlockWordCounts>& counts = {},
                                            const std::vector<bool>& stale = {});

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_
