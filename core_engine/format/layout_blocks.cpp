#include "format/layout_blocks.h"

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "common/pattern_table.h"
#include "common/text_utils.h"
#include "format/block_spans.h"

namespace quill {
namespace {

// Re-indenting deeply nested blocks can multiply a text's size (each of n
// nested lines gains up to 4n spaces). A layout that would grow past this
// bound leaves the block bodies as they are, so that hostile nesting cannot
// exhaust memory; real sources stay far below it.
constexpr std::uint64_t kFixedGrowth = std::uint64_t{64} << 20;
constexpr std::uint64_t kGrowthFactor = 8;

// How a block body line is rewritten: `levels` steps of four spaces before
// its trimmed text. Lines with negative `levels` keep their indentation.
struct Indent {
  std::int64_t levels = -1;
  std::string_view text;
};

enum class BlockKind { kAlways, kGenerate };

// Lines that start an always or a generate block. Every line is looked at,
// also inside a generate block, so nested blocks get spans of their own.
std::vector<std::pair<int, BlockKind>> FindBlockStarts(std::string_view text) {
  const PatternTable& p = Patterns();
  std::vector<std::pair<int, BlockKind>> starts;
  LineReader reader(text);
  std::string_view line;
  for (int i = 0; reader.Next(&line); ++i) {
    const char first = LeadingByteLower(line);
    if (first == 'a' && p.kAlwaysPattern.Search(line)) {
      starts.emplace_back(i, BlockKind::kAlways);
    } else if (first == 'g' && p.kGeneratePattern.Search(line)) {
      starts.emplace_back(i, BlockKind::kGenerate);
    }
  }
  return starts;
}

// Spans of the blocks that end after their start line, by ascending start.
std::vector<BlockSpan> FindBlockSpans(const std::vector<std::pair<int, BlockKind>>& starts,
                                      const BlockLineIndex& index) {
  std::vector<BlockSpan> spans;
  for (const auto& [start, kind] : starts) {
    const int end = kind == BlockKind::kAlways ? index.FindAlwaysEnd(start) : index.FindGenerateEnd(start);
    if (end > start) spans.push_back(BlockSpan{start, end});
  }
  return spans;
}

// For each line, the start of the span whose indentation it keeps, or -1.
// Spans are applied in ascending order of start and each rewrites all of its
// lines from their trimmed text alone, so the span with the greatest start
// that covers a line decides it: a stack of open spans finds that span for
// every line in one sweep.
std::vector<int> FindDecidingSpans(std::size_t lineCount, const std::vector<BlockSpan>& spans) {
  std::vector<int> deciding(lineCount, -1);
  std::vector<BlockSpan> open;
  std::size_t next = 0;
  for (std::size_t i = 0; i < lineCount; ++i) {
    const int line = static_cast<int>(i);
    while (next < spans.size() && spans[next].first == line) open.push_back(spans[next++]);
    while (!open.empty() && open.back().last < line) open.pop_back();
    if (!open.empty()) deciding[i] = open.back().first;
  }
  return deciding;
}

// The indentation of every line inside an always or generate block; empty
// when the text has none.
std::vector<Indent> PlanIndents(const LineViews& lines, const std::vector<std::pair<int, BlockKind>>& starts) {
  std::vector<Indent> indents;
  if (lines.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return indents;

  const BlockLineIndex index(lines);
  const std::vector<BlockSpan> spans = FindBlockSpans(starts, index);
  if (spans.empty()) return indents;
  const std::vector<int> deciding = FindDecidingSpans(lines.size(), spans);
  indents.resize(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (deciding[i] < 0) continue;
    const int line = static_cast<int>(i);
    indents[i].levels = index.BodyLevels(deciding[i], line);
    indents[i].text = lines[i].substr(index.TextBegin(line), index.TextLength(line));
  }
  return indents;
}

std::string_view WithoutLeadingBlanks(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsBlank(line[first])) ++first;
  return line.substr(first);
}

// Assign and endgenerate lines go to column 0.
bool MovesToColumnZero(std::string_view line) {
  const PatternTable& p = Patterns();
  const char first = LeadingByteLower(line);
  return (first == 'a' && p.kAssignPattern.Search(line)) || (first == 'e' && p.kEndgeneratePattern.Search(line));
}

// One output line: `spaces` spaces, then `text`.
struct OutputLine {
  std::uint64_t spaces = 0;
  std::string_view text;
};

OutputLine LayOut(std::string_view line, const Indent* indent, bool toColumnZero) {
  if (indent != nullptr && indent->levels >= 0) {
    return OutputLine{toColumnZero ? 0 : static_cast<std::uint64_t>(indent->levels) * 4, indent->text};
  }
  return OutputLine{0, toColumnZero ? WithoutLeadingBlanks(line) : line};
}

// The text of a layout without blocks: only assign and endgenerate lines
// move, and the lines are read once.
std::string LayOutWithoutBlocks(std::string_view text) {
  LineJoiner output(text.size());
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) output.Add(MovesToColumnZero(line) ? WithoutLeadingBlanks(line) : line);
  return output.Take();
}

}  // namespace

std::string LayoutBlocks(std::string_view text) {
  const std::vector<std::pair<int, BlockKind>> starts = FindBlockStarts(text);
  if (starts.empty()) return LayOutWithoutBlocks(text);
  const LineViews lines = SplitLineViews(text);
  const std::vector<Indent> indents = PlanIndents(lines, starts);
  if (indents.empty()) return LayOutWithoutBlocks(text);
  std::vector<bool> toColumnZero(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) toColumnZero[i] = MovesToColumnZero(lines[i]);

  auto laidOutSize = [&](bool indent) {
    std::uint64_t size = lines.size();
    for (std::size_t i = 0; i < lines.size(); ++i) {
      const OutputLine out = LayOut(lines[i], indent ? &indents[i] : nullptr, toColumnZero[i]);
      size += out.spaces + out.text.size();
    }
    return size;
  };
  bool indent = true;
  std::uint64_t size = laidOutSize(indent);
  if (size > kFixedGrowth + kGrowthFactor * text.size()) {
    indent = false;
    size = laidOutSize(false);
  }

  std::string result;
  result.reserve(static_cast<std::size_t>(size));
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const OutputLine out = LayOut(lines[i], indent ? &indents[i] : nullptr, toColumnZero[i]);
    if (i > 0) result.push_back('\n');
    result.append(static_cast<std::size_t>(out.spaces), ' ');
    result.append(out.text);
  }
  return result;
}

}  // namespace quill
