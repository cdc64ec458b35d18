#include "format/block_spans.h"

#include <algorithm>

#include "common/pattern_table.h"
#include "format/block_words.h"

namespace quill {
namespace {

std::string_view TrimmedView(std::string_view line) {
  std::size_t first = 0;
  while (first < line.size() && IsBlank(line[first])) ++first;
  std::size_t last = line.size();
  while (last > first && IsBlank(line[last - 1])) --last;
  return line.substr(first, last - first);
}

// Whether "\bif\b\s*\(.+?\)\s*$" matches somewhere in `code`, found by one
// scan instead of a lazy match tried from every "if". A match needs the last
// non-space byte to be ")", and an "if (" whose "(" stands at least two bytes
// before it with no CR or LF in between ("." stops at both).
bool EndsWithIfHeader(std::string_view code) {
  std::size_t end = code.size();
  while (end > 0 && IsPatternSpace(code[end - 1])) --end;
  if (end == 0 || code[end - 1] != ')') return false;
  const std::size_t close = end - 1;
  const std::size_t lastBreak = code.substr(0, close).find_last_of("\r\n");
  const std::size_t minOpen = lastBreak == std::string_view::npos ? 0 : lastBreak + 1;
  for (std::size_t at = code.find("if"); at != std::string_view::npos; at = code.find("if", at + 1)) {
    if (at > 0 && IsPatternWord(code[at - 1])) continue;
    std::size_t open = at + 2;
    if (open < code.size() && IsPatternWord(code[open])) continue;
    while (open < code.size() && IsPatternSpace(code[open])) ++open;
    if (open < code.size() && code[open] == '(' && open >= minOpen && open + 2 <= close) return true;
  }
  return false;
}

// A case label alone on its line ("IDLE:", "default: // idle"), which puts
// the next line one step further in. A label is a word and a ":".
bool IsBareLabelText(std::string_view t) {
  if (!IsPatternWord(LeadingByteLower(t)) || t.find(':') == std::string_view::npos) return false;
  Match match;
  if (!Patterns().kLabelPattern.Search(t, &match)) return false;
  const std::string rest = Trim(match.Group(2));
  return rest.empty() || rest.compare(0, 2, "//") == 0;
}

// Whether `t` can start a statement of kStatementStartPattern: always,
// initial, module, endmodule, assign, wire, reg or logic.
bool MayStartStatement(std::string_view t) {
  const char first = LeadingByteLower(t);
  return first == 'a' || first == 'i' || first == 'm' || first == 'e' || first == 'w' || first == 'r' || first == 'l';
}

}  // namespace

// Patterns run only on lines whose first byte or whose letters allow a match.
BlockLineIndex::LineFacts BlockLineIndex::ReadFacts(std::string_view line) {
  const PatternTable& p = Patterns();
  LineFacts facts;
  const std::string_view t = TrimmedView(line);
  facts.textBegin = static_cast<std::size_t>(t.data() - line.data());
  facts.textLength = t.size();
  if (t.empty()) return facts;
  std::string storage;
  const std::string_view code = CodeOf(t, &storage);
  const BlockWordCounts counts = CountBlockWords(code);
  facts.begins = counts.begins;
  facts.ends = counts.ends;
  facts.cases = counts.cases;
  facts.endcases = counts.endcases;
  const char first = LeadingByteLower(code);
  facts.opensGenerate = first == 'g' && p.kGeneratePattern.Search(code);
  facts.closesGenerate = first == 'e' && p.kEndgeneratePattern.Search(code);
  facts.startsStatement = MayStartStatement(t) && p.kStatementStartPattern.Search(t);
  facts.mentionsBegin = facts.begins > 0 || (t.find("begin") != std::string_view::npos && p.kBeginPattern.Search(t));
  facts.isLoneBegin = t == "begin";
  facts.isSignificant = t.compare(0, 2, "//") != 0;
  facts.endsIfHeader = EndsWithIfHeader(code);
  facts.isBareLabel = IsBareLabelText(t);
  return facts;
}

BlockLineIndex::ValuePositions::ValuePositions(const std::vector<std::int64_t>& prefix) {
  sorted_.reserve(prefix.size());
  for (std::size_t i = 0; i < prefix.size(); ++i) sorted_.emplace_back(prefix[i], static_cast<int>(i));
  std::sort(sorted_.begin(), sorted_.end());
}

int BlockLineIndex::ValuePositions::Find(std::int64_t value, int from) const {
  auto found = std::lower_bound(sorted_.begin(), sorted_.end(), std::make_pair(value, from));
  return found != sorted_.end() && found->first == value ? found->second : -1;
}

BlockLineIndex::BlockLineIndex(const LineViews& lines) : count_(static_cast<int>(lines.size())) {
  const std::size_t n = lines.size();
  facts_.reserve(n);
  for (std::string_view line : lines) facts_.push_back(ReadFacts(line));

  beginDepth_.assign(n + 1, 0);
  generateDepth_.assign(n + 1, 0);
  bodyDepth_.assign(n + 1, 0);
  caseDepth_.assign(n + 1, 0);
  for (std::size_t i = 0; i < n; ++i) {
    const LineFacts& f = facts_[i];
    beginDepth_[i + 1] = beginDepth_[i] + f.begins - f.ends;
    generateDepth_[i + 1] = generateDepth_[i] + (f.opensGenerate ? 1 : 0) - (f.closesGenerate ? 1 : 0);
    bodyDepth_[i + 1] = bodyDepth_[i] + f.begins - f.ends + f.cases - f.endcases;
    caseDepth_[i + 1] = caseDepth_[i] + f.cases - f.endcases;
  }

  nextBegin_.assign(n + 1, count_);
  nextStatement_.assign(n + 1, count_);
  nextSignificant_.assign(n + 1, count_);
  for (std::size_t i = n; i-- > 0;) {
    const LineFacts& f = facts_[i];
    const int here = static_cast<int>(i);
    nextBegin_[i] = f.begins > 0 ? here : nextBegin_[i + 1];
    nextStatement_[i] = f.startsStatement ? here : nextStatement_[i + 1];
    nextSignificant_[i] = f.textLength > 0 && f.isSignificant ? here : nextSignificant_[i + 1];
  }
  previousNonBlank_.assign(n, -1);
  for (std::size_t i = 1; i < n; ++i) {
    previousNonBlank_[i] = facts_[i - 1].textLength > 0 ? static_cast<int>(i - 1) : previousNonBlank_[i - 1];
  }

  beginReturns_ = ValuePositions(beginDepth_);
  generateReturns_ = ValuePositions(generateDepth_);
}

// Walking from `start`, the depth after line i is beginDepth_[i + 1] -
// beginDepth_[start]. Before the first "begin" only a statement start can end
// the block; from the first "begin" on, the block ends at the first line after
// which that depth is exactly 0 again.
int BlockLineIndex::FindAlwaysEnd(int start) const {
  const int last = count_ - 1;
  if (start < 0 || start >= count_) return last;
  const int firstBegin = At(nextBegin_, start);
  const int nextStatement = At(nextStatement_, start + 1);
  if (nextStatement < firstBegin) return nextStatement - 1;
  if (firstBegin == count_) return last;
  const int back = beginReturns_.Find(At(beginDepth_, start), firstBegin + 1);
  return back < 0 ? last : back - 1;
}

int BlockLineIndex::FindGenerateEnd(int start) const {
  const int last = count_ - 1;
  if (start < 0 || start >= count_) return last;
  const int back = generateReturns_.Find(At(generateDepth_, start), start + 1);
  return back < 0 ? last : back - 1;
}

// The state IndentBlockBody carries from line to line is rebuilt here for
// one line: the depths are differences of prefix sums, and the pending "if"
// and label steps come from the last non-blank line before it in the block.
std::int64_t BlockLineIndex::BodyLevels(int start, int line) const {
  const LineFacts& f = Facts(line);
  if (f.textLength == 0) return -1;
  const int firstStatement = At(nextSignificant_, start + 1);
  const bool hasBegin = Facts(start).mentionsBegin || (firstStatement < count_ && Facts(firstStatement).isLoneBegin);
  const std::int64_t level = At(bodyDepth_, line) - At(bodyDepth_, start) - f.endcases - f.ends;
  const int previous = At(previousNonBlank_, line);
  const bool pendingIf = previous >= start && Facts(previous).endsIfHeader;
  const bool pendingLabel =
      previous >= start && Facts(previous).isBareLabel && At(caseDepth_, previous + 1) - At(caseDepth_, start) >= 1;
  return (pendingIf ? 1 : 0) + (!hasBegin && line > start ? 1 : 0) + (pendingLabel ? 1 : 0) +
         std::max<std::int64_t>(level, 0);
}

int FindAlwaysEnd(const TextLines& lines, int start) {
  return BlockLineIndex(ViewsOf(lines)).FindAlwaysEnd(start);
}

int FindGenerateEnd(const TextLines& lines, int start) {
  return BlockLineIndex(ViewsOf(lines)).FindGenerateEnd(start);
}

void IndentBlockBody(TextLines* lines, int start, int end) {
  if (lines == nullptr || start < 0 || static_cast<std::size_t>(start) >= lines->size()) return;
  const BlockLineIndex index(ViewsOf(*lines));
  const int last = std::min(end, static_cast<int>(lines->size()) - 1);
  for (int i = start; i <= last; ++i) {
    const std::int64_t levels = index.BodyLevels(start, i);
    if (levels < 0) continue;
    std::string& line = (*lines)[static_cast<std::size_t>(i)];
    std::string indented(static_cast<std::size_t>(levels) * 4, ' ');
    indented.append(line, index.TextBegin(i), index.TextLength(i));
    line = std::move(indented);
  }
}

}  // namespace quill
