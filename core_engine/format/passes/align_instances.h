// The instance alignment pass: module instances with named connections are
// rebuilt one connection per line, with the "(", ")" and comments of all
// connections of the text in shared columns.
#ifndef QUILL_FORMAT_PASSES_ALIGN_INSTANCES_H_
#define QUILL_FORMAT_PASSES_ALIGN_INSTANCES_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"
#include "format/changed_lines.h"
#include "format/scan/find_instance.h"

namespace quill {

// One ".port(signal)" entry of a port list.
struct PortConnection {
  std::size_t entryIndex = 0;  // position in the instance's entry list
  std::string port;
  std::string signal;   // without the blanks around it
  std::string comma;    // "," or ""
  std::string comment;  // from "//", or ""
};

// An instance to rebuild: its lines, header and port-list entries.
struct InstanceEdit {
  std::size_t startLine = 0;
  std::size_t endLine = 0;
  std::size_t indent = 0;
  std::string header;
  TextLines paramLines;
  std::string nameLine;  // empty when there is none
  TextLines entries;     // the port list, one text line per entry
  std::vector<PortConnection> connections;
  std::string closeComment;  // "//" comment of the instance's last line, or ""
};

// The port list of the instance at `span`, parsed; nothing when it holds no
// named connection.
std::optional<InstanceEdit> CollectInstanceEdit(const LineViews& lines, InstanceSpan span);

// Aligns the named connections of module instances into shared columns.
std::string AlignInstances(std::string_view text);

// The same, with the rows it rewrote; the lines stay as many as the text's.
ChangedLines AlignInstancesMarkingChanges(std::string_view text);

}  // namespace quill

#endif  // QUILL_FORMAT_PASSES_ALIGN_INSTANCES_H_
