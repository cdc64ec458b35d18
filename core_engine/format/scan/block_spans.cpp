#include "format/scan/block_spans.h"

#include <algorithm>
#include <string>

namespace quill {

void BlockEndFinder::Add(const BlockLineFacts& facts, BlockKind start) {
  constexpr std::size_t kNoBlock = static_cast<std::size_t>(-1);
  const std::size_t added = start == BlockKind::kNone ? kNoBlock : blocks_.size();
  if (added != kNoBlock) {
    blocks_.push_back(Block{{line_, kOpen}, facts.mentionsBegin, beginDepth_, caseDepth_});
  }

  // The first significant line after a start line decides its "begin".
  if (!facts.isBlank && facts.isSignificant) {
    for (std::size_t b : beforeStatement_) blocks_[b].hasBegin = facts.isLoneBegin;
    beforeStatement_.clear();
  }
  if (added != kNoBlock && !facts.mentionsBegin) beforeStatement_.push_back(added);

  // Before its first "begin" an always block ends at the line before a
  // statement start; from the line with that "begin" on, it waits for the
  // begin/end count to return to its value before the start line.
  if (start == BlockKind::kAlways && facts.begins > 0) beforeBegin_.push_back(added);
  if (facts.begins > 0) {
    for (std::size_t b : beforeBegin_) beginReturn_[blocks_[b].beginDepthAtStart].push_back(b);
    beforeBegin_.clear();
  } else if (facts.startsStatement) {
    for (std::size_t b : beforeBegin_) blocks_[b].span.last = line_ - 1;
    beforeBegin_.clear();
  }
  if (start == BlockKind::kAlways && facts.begins == 0) beforeBegin_.push_back(added);
  if (start == BlockKind::kGenerate) generateReturn_[generateDepth_].push_back(added);

  beginDepth_ += facts.begins - facts.ends;
  caseDepth_ += facts.cases - facts.endcases;
  generateDepth_ += (facts.opensGenerate ? 1 : 0) - (facts.closesGenerate ? 1 : 0);
  // A count that this line leaves unchanged ended nothing on the line before
  // and ends nothing now, unless a block started waiting on this line.
  if (facts.begins > 0 || facts.ends > 0) EndBlocksWaitingFor(&beginReturn_, beginDepth_);
  if (facts.opensGenerate || facts.closesGenerate || start == BlockKind::kGenerate) {
    EndBlocksWaitingFor(&generateReturn_, generateDepth_);
  }
  ++line_;
}

void BlockEndFinder::EndBlocksWaitingFor(Waiting* waiting, std::int64_t value) {
  auto found = waiting->find(value);
  if (found == waiting->end()) return;
  for (std::size_t b : found->second) blocks_[b].span.last = line_;
  waiting->erase(found);
}

std::vector<Block> BlockEndFinder::Finish() {
  for (Block& block : blocks_) {
    if (block.span.last == kOpen) block.span.last = line_ - 1;
  }
  return std::move(blocks_);
}

BodyIndenter::BodyIndenter(std::vector<Block> blocks, int firstLine) : blocks_(std::move(blocks)), line_(firstLine) {}

std::int64_t BodyIndenter::Next(const BlockLineFacts& facts) {
  const int line = line_++;
  while (nextBlock_ < blocks_.size() && blocks_[nextBlock_].span.first <= line) open_.push_back(nextBlock_++);
  while (!open_.empty() && blocks_[open_.back()].span.last < line) open_.pop_back();

  std::int64_t levels = -1;
  if (!open_.empty() && !facts.isBlank) {
    const Block& block = blocks_[open_.back()];
    const std::int64_t depth = beginDepth_ - block.beginDepthAtStart + caseDepth_ - block.caseDepthAtStart;
    const std::int64_t level = depth - facts.endcases - facts.ends;
    const bool previousInBlock = previousLine_ >= block.span.first;
    const bool pendingIf = previousInBlock && previousEndsIfHeader_;
    const bool pendingLabel =
        previousInBlock && previousIsBareLabel_ && caseDepthAfterPrevious_ - block.caseDepthAtStart >= 1;
    levels = (pendingIf ? 1 : 0) + (!block.hasBegin && line > block.span.first ? 1 : 0) + (pendingLabel ? 1 : 0) +
             std::max<std::int64_t>(level, 0);
  }

  beginDepth_ += facts.begins - facts.ends;
  caseDepth_ += facts.cases - facts.endcases;
  if (!facts.isBlank) {
    previousLine_ = line;
    previousEndsIfHeader_ = facts.endsIfHeader;
    previousIsBareLabel_ = facts.isBareLabel;
    caseDepthAfterPrevious_ = caseDepth_;
  }
  return levels;
}

namespace {

int LastLine(const TextLines& lines) {
  return static_cast<int>(lines.size()) - 1;
}

bool IsLineNumber(const TextLines& lines, int line) {
  return line >= 0 && static_cast<std::size_t>(line) < lines.size();
}

// The end of the one block of `kind` that starts at `start`.
int FindEnd(const TextLines& lines, int start, BlockKind kind) {
  if (!IsLineNumber(lines, start)) return LastLine(lines);
  BlockEndFinder finder(start);
  for (std::size_t i = static_cast<std::size_t>(start); i < lines.size(); ++i) {
    finder.Add(ReadBlockLineFacts(lines[i]), static_cast<int>(i) == start ? kind : BlockKind::kNone);
  }
  return finder.Finish().front().span.last;
}

}  // namespace

int FindAlwaysEnd(const TextLines& lines, int start) {
  return FindEnd(lines, start, BlockKind::kAlways);
}

int FindGenerateEnd(const TextLines& lines, int start) {
  return FindEnd(lines, start, BlockKind::kGenerate);
}

void IndentBlockBody(TextLines* lines, int start, int end) {
  if (lines == nullptr || !IsLineNumber(*lines, start)) return;
  const int last = std::min(end, LastLine(*lines));
  if (last < start) return;
  const std::size_t first = static_cast<std::size_t>(start);
  Block block{{start, last}, ReadBlockLineFacts((*lines)[first]).mentionsBegin, 0, 0};
  for (std::size_t i = first + 1; !block.hasBegin && i < lines->size(); ++i) {
    const BlockLineFacts facts = ReadBlockLineFacts((*lines)[i]);
    if (facts.isBlank || !facts.isSignificant) continue;
    block.hasBegin = facts.isLoneBegin;
    break;
  }
  BodyIndenter indenter({block}, start);
  for (std::size_t i = first; i <= static_cast<std::size_t>(last); ++i) {
    std::string& line = (*lines)[i];
    const std::int64_t levels = indenter.Next(ReadBlockLineFacts(line));
    if (levels < 0) continue;
    std::string indented(static_cast<std::size_t>(levels) * 4, ' ');
    indented.append(TrimmedView(line));
    line = std::move(indented);
  }
}

}  // namespace quill
