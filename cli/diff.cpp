#include "diff.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "sequence_diff.h"

namespace quill::cli {
namespace {

// Lines with their LF; the last one lacks it when the text does not end in LF.
std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find('\n', start);
    end = end == std::string_view::npos ? text.size() : end + 1;
    lines.push_back(text.substr(start, end - start));
    start = end;
  }
  return lines;
}

struct Operation {
  char kind;  // ' ', '-' or '+'
  std::size_t oldLine;
  std::size_t newLine;
};

std::string RangeText(std::size_t first, std::size_t count) {
  // An empty range names the line before it, as diff -u does.
  std::string text = std::to_string(count == 0 ? first : first + 1);
  if (count != 1) text += "," + std::to_string(count);
  return text;
}

void AppendLine(std::string* out, char kind, std::string_view line) {
  out->push_back(kind);
  out->append(line);
  if (line.empty() || line.back() != '\n') out->append("\n\\ No newline at end of file\n");
}

}  // namespace

std::string UnifiedDiff(std::string_view before, std::string_view after, std::string_view oldName,
                        std::string_view newName, std::size_t context) {
  if (before == after) return "";
  const std::vector<std::string_view> oldLines = LinesOf(before);
  const std::vector<std::string_view> newLines = LinesOf(after);

  std::unordered_map<std::string_view, uint32_t> ids;
  auto intern = [&ids](const std::vector<std::string_view>& lines) {
    std::vector<uint32_t> seq;
    seq.reserve(lines.size());
    for (std::string_view line : lines) {
      seq.push_back(ids.emplace(line, static_cast<uint32_t>(ids.size())).first->second);
    }
    return seq;
  };
  const std::vector<uint32_t> a = intern(oldLines);
  const std::vector<uint32_t> b = intern(newLines);
  const DiffMarks marks = MarkDifferences(a, b);

  std::vector<Operation> ops;
  ops.reserve(a.size() + b.size());
  std::vector<std::size_t> changes;
  for (std::size_t i = 0, j = 0; i < a.size() || j < b.size();) {
    if (i < a.size() && marks.deleted[i]) {
      changes.push_back(ops.size());
      ops.push_back({'-', i++, j});
    } else if (j < b.size() && marks.inserted[j]) {
      changes.push_back(ops.size());
      ops.push_back({'+', i, j++});
    } else {
      ops.push_back({' ', i++, j++});
    }
  }

  std::string out;
  out.append("--- ").append(oldName).append("\n+++ ").append(newName).append("\n");
  for (std::size_t c = 0; c < changes.size();) {
    const std::size_t first = changes[c] > context ? changes[c] - context : 0;
    std::size_t lastChange = changes[c];
    while (c + 1 < changes.size() && changes[c + 1] - lastChange - 1 <= 2 * context) lastChange = changes[++c];
    ++c;
    const std::size_t end = std::min(ops.size(), lastChange + context + 1);
    std::size_t oldCount = 0, newCount = 0;
    for (std::size_t k = first; k < end; ++k) {
      if (ops[k].kind != '+') ++oldCount;
      if (ops[k].kind != '-') ++newCount;
    }
    out.append("@@ -")
        .append(RangeText(ops[first].oldLine, oldCount))
        .append(" +")
        .append(RangeText(ops[first].newLine, newCount))
        .append(" @@\n");
    for (std::size_t k = first; k < end; ++k) {
      const Operation& op = ops[k];
      AppendLine(&out, op.kind, op.kind == '+' ? newLines[op.newLine] : oldLines[op.oldLine]);
    }
  }
  return out;
}

}  // namespace quill::cli
