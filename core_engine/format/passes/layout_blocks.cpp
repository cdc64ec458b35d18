#include "format/passes/layout_blocks.h"

#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "common/text_utils.h"
#include "format/scan/alignment_utils.h"
#include "format/scan/block_line_facts.h"
#include "format/scan/block_spans.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

// Re-indenting deeply nested blocks can multiply a text's size (each of n
// nested lines gains up to 4n spaces). A layout that would grow past this
// bound leaves the block bodies as they are, so that hostile nesting cannot
// exhaust memory; real sources stay far below it.
constexpr std::uint64_t kFixedGrowth = std::uint64_t{64} << 20;
constexpr std::uint64_t kGrowthFactor = 8;

std::string_view WithoutLeadingBlanks(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsBlankByte(line[first])) ++first;
  return line.substr(first);
}

// Assign and endgenerate lines go to column 0.
bool MovesToColumnZero(std::string_view line) {
  return IsOneOfIgnoringCase(LeadingPatternWord(line), {"assign", "endgenerate"});
}

// The layout without block indentation: only assign and endgenerate lines
// move.
std::string LayOutWithoutBlocks(std::string_view text) {
  LineJoiner output(text.size());
  LineReader reader(text);
  std::string_view line;
  while (reader.Next(&line)) output.Add(MovesToColumnZero(line) ? WithoutLeadingBlanks(line) : line);
  return output.Take();
}

// The blocks that end after their start line, by ascending start; `facts`
// receives what was read of each line, for the layout to reuse.
std::vector<Block> FindBlocks(const LineViews& lines, std::vector<BlockLineFacts>* facts) {
  BlockEndFinder finder;
  facts->reserve(lines.size());
  for (std::string_view line : lines) {
    facts->push_back(ReadBlockLineFacts(line));
    finder.Add(facts->back(), facts->back().startsBlock);
  }
  std::vector<Block> blocks = finder.Finish();
  std::erase_if(blocks, [](const Block& block) { return block.span.last <= block.span.first; });
  return blocks;
}

// Whether `spaces` spaces and then `rest`, a part of `line`, spell the line
// itself.
bool IsIndentedAs(std::string_view line, std::uint64_t spaces, std::string_view rest) {
  if (spaces > line.size() || rest.size() != line.size() - spaces) return false;
  if (static_cast<std::uint64_t>(rest.data() - line.data()) != spaces) return false;
  for (std::size_t i = 0; i < spaces; ++i) {
    if (line[i] != ' ') return false;
  }
  return true;
}

// The layout of `text`, whose lines and their facts are given.
std::string LayOut(std::string_view text, const LineViews& lines, const std::vector<BlockLineFacts>& facts,
                   std::vector<Block> blocks) {
  if (blocks.empty() || lines.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    return LayOutWithoutBlocks(text);
  }

  const std::uint64_t bound = kFixedGrowth + kGrowthFactor * text.size();
  BodyIndenter indenter(std::move(blocks));
  LineRewriter output(text, RoomToGrow(text.size()));
  // The layout's size so far, one byte per line besides the lines' text.
  std::uint64_t size = 0;
  std::string indented;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const std::string_view line = lines[i];
    const std::int64_t levels = indenter.Next(facts[i]);
    const bool toColumnZero = facts[i].movesToColumnZero;
    std::uint64_t spaces = 0;
    std::string_view rest = toColumnZero ? WithoutLeadingBlanks(line) : line;
    if (levels >= 0) {
      spaces = toColumnZero ? 0 : static_cast<std::uint64_t>(levels) * 4;
      rest = TrimmedView(line);
    }
    size += (i == 0 ? 0 : 1) + spaces + rest.size();
    if (size + 1 > bound) return LayOutWithoutBlocks(text);
    if (IsIndentedAs(line, spaces, rest)) {
      output.Keep(line);
      continue;
    }
    indented.assign(static_cast<std::size_t>(spaces), ' ');
    indented.append(rest);
    output.Replace(line, indented);
  }
  return output.Take();
}

std::vector<BlockWordCounts> CountsOf(const std::vector<BlockLineFacts>& facts) {
  std::vector<BlockWordCounts> counts;
  counts.reserve(facts.size());
  for (const BlockLineFacts& line : facts) counts.push_back({line.begins, line.ends, line.cases, line.endcases});
  return counts;
}

}  // namespace

// The lines are read once to find where the blocks end; the layout reuses
// what that read found of each line. Lines inside a block become their
// trimmed text behind their steps of four spaces (none when they go to
// column 0); blank lines and lines outside blocks keep their indentation.
std::string LayoutBlocks(std::string_view text) {
  return LayoutBlocksKeepingCounts(text).text;
}

LaidOutText LayoutBlocksKeepingCounts(std::string_view text) {
  const LineViews lines = SplitLineViews(text);
  std::vector<BlockLineFacts> facts;
  std::vector<Block> blocks = FindBlocks(lines, &facts);
  return {LayOut(text, lines, facts, std::move(blocks)), CountsOf(facts)};
}

}  // namespace quill
