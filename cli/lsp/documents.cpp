#include "lsp/documents.h"

#include <algorithm>
#include <array>

namespace quill::lsp {
namespace {

std::string Lower(std::string_view s) {
  std::string lower(s);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool EndsWithAny(std::string_view s, std::initializer_list<std::string_view> endings) {
  return std::any_of(endings.begin(), endings.end(), [s](std::string_view e) { return s.ends_with(e); });
}

// Bytes and UTF-16 units of the UTF-8 sequence that starts at `bytes[i]`.
std::pair<std::size_t, std::uint32_t> SequenceAt(std::string_view bytes, std::size_t i) {
  const auto lead = static_cast<unsigned char>(bytes[i]);
  std::size_t length = lead < 0x80 ? 1 : lead >= 0xC2 && lead < 0xE0 ? 2 : lead >= 0xE0 && lead < 0xF0 ? 3
                       : lead >= 0xF0 && lead < 0xF5 ? 4 : 1;
  if (i + length > bytes.size()) return {1, 1};
  for (std::size_t k = 1; k < length; ++k) {
    if ((static_cast<unsigned char>(bytes[i + k]) & 0xC0) != 0x80) return {1, 1};
  }
  return {length, length == 4 ? 2u : 1u};
}

}  // namespace

DocumentKind KindOf(std::string_view languageId, std::string_view uri) {
  // A known extension wins: one server started for one mode serves every
  // mode with that mode's language id in some clients.
  const std::string path = Lower(uri);
  if (EndsWithAny(path, {".v", ".sv", ".vh", ".svh"})) return DocumentKind::kVerilog;
  if (EndsWithAny(path, {".xdc", ".sdc", ".tcl", ".qsf", ".cst", ".pcf", ".lpf", ".ucf"})) {
    return DocumentKind::kConstraint;
  }
  const std::string id = Lower(languageId);
  if (id == "verilog" || id == "systemverilog") return DocumentKind::kVerilog;
  if (id == "tcl" || id == "xdc" || id == "sdc" || id == "qsf" || id == "cst" || id == "pcf" || id == "lpf" ||
      id == "ucf") {
    return DocumentKind::kConstraint;
  }
  return DocumentKind::kOther;
}

std::uint32_t Utf16Length(std::string_view bytes) {
  std::uint32_t units = 0;
  for (std::size_t i = 0; i < bytes.size();) {
    auto [length, count] = SequenceAt(bytes, i);
    i += length;
    units += count;
  }
  return units;
}

std::size_t ByteOffsetOfColumn(std::string_view line, std::uint32_t column) {
  std::uint32_t units = 0;
  std::size_t i = 0;
  while (i < line.size() && units < column) {
    auto [length, count] = SequenceAt(line, i);
    i += length;
    units += count;
  }
  return i;
}

LineIndex::LineIndex(std::string_view text) : text_(text) {
  starts_.push_back(0);
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\n') starts_.push_back(i + 1);
  }
}

std::string_view LineIndex::Line(std::size_t line) const {
  if (line >= starts_.size()) return {};
  std::size_t start = starts_[line];
  std::size_t end = line + 1 < starts_.size() ? starts_[line + 1] - 1 : text_.size();
  if (end > start && text_[end - 1] == '\r' && line + 1 < starts_.size()) --end;
  return text_.substr(start, end - start);
}

std::size_t LineIndex::Offset(Position position) const {
  if (position.line >= starts_.size()) return text_.size();
  return starts_[position.line] + ByteOffsetOfColumn(Line(position.line), position.character);
}

Position LineIndex::PositionOf(std::size_t offset) const {
  offset = std::min(offset, text_.size());
  auto after = std::upper_bound(starts_.begin(), starts_.end(), offset);
  const auto line = static_cast<std::size_t>(after - starts_.begin()) - 1;
  std::string_view content = Line(line);
  std::size_t column = std::min(offset - starts_[line], content.size());
  return {static_cast<std::uint32_t>(line), Utf16Length(content.substr(0, column))};
}

}  // namespace quill::lsp
