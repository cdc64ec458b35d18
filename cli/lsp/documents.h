// Open documents and the conversion between LSP positions (line, UTF-16 code
// unit) and byte offsets. Lines end at LF; a CR before the LF is not part of
// the line's characters.
#ifndef QUILL_CLI_LSP_DOCUMENTS_H_
#define QUILL_CLI_LSP_DOCUMENTS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill::lsp {

enum class DocumentKind { kVerilog, kConstraint, kOther };

// Verilog and SystemVerilog by .v .sv .vh .svh, constraint and Tcl by .xdc
// .sdc .tcl .qsf .cst .pcf .lpf .ucf; the language id decides only for other
// names.
DocumentKind KindOf(std::string_view languageId, std::string_view uri);

struct Position {
  std::uint32_t line = 0;
  std::uint32_t character = 0;  // UTF-16 code units
};

// Byte offsets of line starts, for position conversions.
class LineIndex {
 public:
  explicit LineIndex(std::string_view text);

  std::size_t LineCount() const { return starts_.size(); }
  // The line's bytes without its LF and without a CR before it.
  std::string_view Line(std::size_t line) const;
  // The byte offset of a position; characters past the line end clamp to it
  // and lines past the end clamp to the end of the text.
  std::size_t Offset(Position position) const;
  Position PositionOf(std::size_t offset) const;

 private:
  std::string_view text_;
  std::vector<std::size_t> starts_;
};

// UTF-16 length of bytes taken as UTF-8; each byte of an invalid sequence
// counts as one unit.
std::uint32_t Utf16Length(std::string_view bytes);

// The byte offset within `line` of the given UTF-16 column (clamped).
std::size_t ByteOffsetOfColumn(std::string_view line, std::uint32_t column);

}  // namespace quill::lsp

#endif  // QUILL_CLI_LSP_DOCUMENTS_H_
