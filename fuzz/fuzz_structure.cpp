// The structure scanner on any bytes: every span lies inside the text, ends
// after it starts, and its line and column agree with its byte offsets.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <vector>

#include "structure/structure.h"

namespace {

using quill::structure::Point;
using quill::structure::Span;

void Fail(const char* what) {
  std::fprintf(stderr, "structure contract broken: %s\n", what);
  std::abort();
}

Point PointOf(const std::vector<std::size_t>& lineStarts, std::size_t offset) {
  const auto after = std::upper_bound(lineStarts.begin(), lineStarts.end(), offset);
  const auto line = static_cast<std::size_t>(after - lineStarts.begin()) - 1;
  return {static_cast<std::uint32_t>(line), static_cast<std::uint32_t>(offset - lineStarts[line])};
}

void CheckSpan(const Span& span, std::size_t size, const std::vector<std::size_t>& lineStarts) {
  if (span.begin > span.end || span.end > size) Fail("span outside the text or reversed");
  if (span.start.line > span.stop.line ||
      (span.start.line == span.stop.line && span.start.column > span.stop.column)) {
    Fail("span points reversed");
  }
  if (!(PointOf(lineStarts, span.begin) == span.start)) Fail("start point does not match its offset");
  if (!(PointOf(lineStarts, span.end) == span.stop)) Fail("stop point does not match its offset");
}

void CheckInside(const Span& inner, const Span& outer) {
  if (inner.begin < outer.begin || inner.end > outer.end) Fail("record outside its module");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<std::size_t> lineStarts{0};
  for (std::size_t i = 0; i < size; ++i) {
    if (text[i] == '\n') lineStarts.push_back(i + 1);
  }
  const quill::structure::FileStructure s = quill::structure::ScanStructure(text);
  std::size_t previousEnd = 0;
  for (const auto& m : s.modules) {
    CheckSpan(m.span, size, lineStarts);
    if (m.span.begin < previousEnd) Fail("modules overlap or are out of order");
    previousEnd = m.span.end;
    for (const auto& x : m.ports) CheckSpan(x.nameSpan, size, lineStarts), CheckInside(x.nameSpan, m.span);
    for (const auto& x : m.parameters) CheckSpan(x.nameSpan, size, lineStarts), CheckInside(x.nameSpan, m.span);
    for (const auto& x : m.signals) CheckSpan(x.declaration, size, lineStarts), CheckInside(x.declaration, m.span);
    for (const auto& x : m.instances) CheckSpan(x.span, size, lineStarts), CheckInside(x.span, m.span);
    for (const auto& x : m.blocks) CheckSpan(x.span, size, lineStarts), CheckInside(x.span, m.span);
    for (const auto& x : m.routines) CheckSpan(x.span, size, lineStarts), CheckInside(x.span, m.span);
  }
  for (const auto& f : s.folds) CheckSpan(f.span, size, lineStarts);
  return 0;
}
