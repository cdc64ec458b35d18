#include "format/scan/block_line_facts.h"

#include <string>

#include "common/byte_search.h"
#include "common/text_utils.h"
#include "format/scan/block_words.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

// Whether "\bif\b\s*\(.+?\)\s*$" matches somewhere in `code`, found by one
// scan instead of a lazy match tried from every "if". A match needs the last
// non-space byte to be ")", and an "if (" whose "(" stands at least two bytes
// before it with no CR or LF in between ("." stops at both).
bool EndsWithIfHeader(std::string_view code) {
  std::size_t end = code.size();
  while (end > 0 && IsSpaceByte(code[end - 1])) --end;
  if (end == 0 || code[end - 1] != ')') return false;
  const std::size_t close = end - 1;
  std::size_t minOpen = close;
  while (minOpen > 0 && code[minOpen - 1] != '\r' && code[minOpen - 1] != '\n') --minOpen;
  for (std::size_t at = FindText(code, "if", 0); at != std::string_view::npos; at = FindText(code, "if", at + 1)) {
    if (at > 0 && IsWordByte(code[at - 1])) continue;
    std::size_t open = at + 2;
    if (open < code.size() && IsWordByte(code[open])) continue;
    while (open < code.size() && IsSpaceByte(code[open])) ++open;
    if (open < code.size() && code[open] == '(' && open >= minOpen && open + 2 <= close) return true;
  }
  return false;
}

// Whether `t`, whose leading word is `word` (a part of it), continues with
// ":" after white space, as kLabelPattern ("^\s*(\w+)\s*:\s*(.*)") requires.
bool HasLabelShape(std::string_view t, std::string_view word) {
  if (word.empty()) return false;
  std::size_t pos = static_cast<std::size_t>(word.data() - t.data()) + word.size();
  while (pos < t.size() && IsSpaceByte(t[pos])) ++pos;
  return pos < t.size() && t[pos] == ':';
}

// A case label alone on its line ("IDLE:", "default: // idle"), which puts
// the next line one step further in.
bool IsBareLabelText(std::string_view t, std::string_view word) {
  if (!HasLabelShape(t, word)) return false;
  Match match;
  if (!Patterns().kLabelPattern.Search(t, &match)) return false;
  const std::string rest = Trim(match.Group(2));
  return rest.empty() || rest.compare(0, 2, "//") == 0;
}

bool EqualsIgnoringCase(std::string_view word, std::string_view lower) {
  return IsOneOfIgnoringCase(word, {lower});
}

BlockKind BlockKindOf(std::string_view word) {
  if (IsOneOfIgnoringCase(word, {"always_ff", "always_comb", "always"})) return BlockKind::kAlways;
  if (IsOneOfIgnoringCase(word, {"generate"})) return BlockKind::kGenerate;
  return BlockKind::kNone;
}

// The facts the leading word gives: the block that starts (always,
// always_ff, always_comb, generate), a generate's end, a move to column 0
// (assign, endgenerate), a statement start (always, initial, module,
// endmodule, assign, wire, reg, logic); any letter case. The word's length
// picks the few words it can be.
void ReadLeadingWord(std::string_view word, BlockLineFacts* facts) {
  switch (word.size()) {
    case 3:
      facts->startsStatement = EqualsIgnoringCase(word, "reg");
      break;
    case 4:
      facts->startsStatement = EqualsIgnoringCase(word, "wire");
      break;
    case 5:
      facts->startsStatement = EqualsIgnoringCase(word, "logic");
      break;
    case 6:
      if (EqualsIgnoringCase(word, "always")) {
        facts->startsBlock = BlockKind::kAlways;
        facts->startsStatement = true;
      } else if (EqualsIgnoringCase(word, "assign")) {
        facts->movesToColumnZero = true;
        facts->startsStatement = true;
      } else {
        facts->startsStatement = EqualsIgnoringCase(word, "module");
      }
      break;
    case 7:
      facts->startsStatement = EqualsIgnoringCase(word, "initial");
      break;
    case 8:
      if (EqualsIgnoringCase(word, "generate")) {
        facts->startsBlock = BlockKind::kGenerate;
        facts->opensGenerate = true;
      }
      break;
    case 9:
      if (EqualsIgnoringCase(word, "always_ff")) {
        facts->startsBlock = BlockKind::kAlways;
      } else {
        facts->startsStatement = EqualsIgnoringCase(word, "endmodule");
      }
      break;
    case 11:
      if (EqualsIgnoringCase(word, "always_comb")) {
        facts->startsBlock = BlockKind::kAlways;
      } else if (EqualsIgnoringCase(word, "endgenerate")) {
        facts->closesGenerate = true;
        facts->movesToColumnZero = true;
      }
      break;
    default:
      break;
  }
}

}  // namespace

// A line begins with one of some words ("^\s*(word|...)\b", ignoring case)
// exactly when its leading run of word bytes is one of them, so those tests
// read the leading word; a search for "begin" runs only on a line that holds
// the letters.
BlockLineFacts ReadBlockLineFacts(std::string_view line) {
  const PatternTable& p = Patterns();
  BlockLineFacts facts;
  const std::string_view t = TrimmedView(line);
  facts.isBlank = t.empty();
  if (t.empty()) return facts;
  std::string storage;
  std::string_view code;
  const BlockWordCounts counts = CountCodeBlockWords(t, &code, &storage);
  facts.begins = counts.begins;
  facts.ends = counts.ends;
  facts.cases = counts.cases;
  facts.endcases = counts.endcases;
  // A "//" comment starts with a byte outside words, so removing it leaves
  // the leading word as it is.
  const std::string_view word = LeadingPatternWord(t);
  ReadLeadingWord(word, &facts);
  facts.mentionsBegin = facts.begins > 0 || (FindText(t, "begin", 0) != std::string_view::npos && p.kBeginPattern.Search(t));
  facts.isLoneBegin = t == "begin";
  facts.isSignificant = t.compare(0, 2, "//") != 0;
  facts.endsIfHeader = EndsWithIfHeader(code);
  facts.isBareLabel = IsBareLabelText(t, word);
  return facts;
}

BlockKind BlockStartingAt(std::string_view line) {
  return BlockKindOf(LeadingPatternWord(line));
}

}  // namespace quill
