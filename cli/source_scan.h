// A light lexical scan of Verilog text for the tool's own needs: where the
// comments are and where each design unit (module, interface, program,
// package) begins. It knows comments, strings, compiler directives and
// statement boundaries, nothing more.
#ifndef QUILL_CLI_SOURCE_SCAN_H_
#define QUILL_CLI_SOURCE_SCAN_H_

#include <cstddef>
#include <string_view>
#include <vector>

namespace quill::cli {

struct Comment {
  std::size_t begin = 0;  // offset of the "//" or "/*"
  std::size_t end = 0;    // one past the last byte (before the LF of a line comment)
  std::string_view body;  // the text between the markers
};

struct SourceScan {
  std::vector<Comment> comments;
  // Offsets of the `module`, `macromodule`, `interface`, `program` and
  // `package` keywords that start a statement, outside comments and
  // strings, in text order (not the `interface` of "interface class").
  std::vector<std::size_t> unitStarts;
};

SourceScan ScanSource(std::string_view text);

}  // namespace quill::cli

#endif  // QUILL_CLI_SOURCE_SCAN_H_
