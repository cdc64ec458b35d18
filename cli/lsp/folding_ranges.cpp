#include <map>

#include "lsp/navigation.h"

namespace quill::lsp {

nlohmann::json FoldingRanges(const IndexedFile& file) {
  // One range per start line: the longest, so that a module and a block
  // opening on the same line fold as the module.
  std::map<std::uint32_t, std::pair<std::uint32_t, bool>> byStart;
  auto add = [&byStart](const structure::Span& span, bool comment) {
    if (span.stop.line <= span.start.line) return;
    auto [it, inserted] = byStart.emplace(span.start.line, std::make_pair(span.stop.line, comment));
    if (!inserted && it->second.first < span.stop.line) it->second = {span.stop.line, comment};
  };
  for (const structure::Module& m : file.structure.modules) {
    add(m.span, false);
    for (const auto& b : m.blocks) add(b.span, false);
    for (const auto& r : m.routines) add(r.span, false);
  }
  for (const structure::Fold& f : file.structure.folds) add(f.span, f.comment);
  nlohmann::json ranges = nlohmann::json::array();
  for (const auto& [start, end] : byStart) {
    nlohmann::json range = {{"startLine", start}, {"endLine", end.first}};
    if (end.second) range["kind"] = "comment";
    ranges.push_back(std::move(range));
  }
  return ranges;
}

}  // namespace quill::lsp
