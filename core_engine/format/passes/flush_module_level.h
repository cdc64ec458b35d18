#ifndef QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_
#define QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_

#include <string>
#include <string_view>

#include "format/changed_lines.h"

namespace quill {

// Puts endmodule lines and module-level declarations at the left margin.
// Lines inside a module's port list or inside begin/end and case/endcase
// blocks keep their indentation.
std::string FlushModuleLevel(std::string_view text);

// The same, with the rows it rewrote; the lines stay as many as the text's.
ChangedLines FlushModuleLevelMarkingChanges(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_FLUSH_MODULE_LEVEL_H_
