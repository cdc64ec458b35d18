#include "format/passes/flush_module_level.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "common/pattern.h"
#include "common/text_utils.h"
#include "format/scan/alignment_utils.h"
#include "format/scan/block_words.h"
#include "format/scan/pattern_table.h"

namespace quill {
namespace {

const Pattern& PortListClosePattern() {
  static const Pattern pattern(R"(^\s*\)\s*;)", CaseMode::kSensitive, LimitPolicy::kNoMatch);
  return pattern;
}

// The first match of "//.*$" in a line without LF: "." stops at a CR, so the
// comment is the first "//" behind the line's last CR.
std::string_view TrailingComment(std::string_view t) {
  const std::size_t lastCr = t.rfind('\r');
  const std::size_t from = lastCr == std::string_view::npos ? 0 : lastCr + 1;
  const std::size_t open = t.find("//", from);
  return open == std::string_view::npos ? std::string_view() : t.substr(open);
}

std::string EndmoduleLine(std::string_view t) {
  std::string line = "endmodule";
  std::string_view comment = TrailingComment(t);
  if (!comment.empty()) {
    line.push_back(' ');
    line.append(comment);
  }
  return line;
}

// "^\s*//": the line's first bytes after white space are "//".
bool StartsWithLineComment(std::string_view t) {
  std::size_t first = 0;
  while (first < t.size() && IsSpaceByte(t[first])) ++first;
  return t.substr(first).starts_with("//");
}

// The block word counts of the code of row `row`, whose trimmed text is `t`.
BlockWordCounts CountsOfRow(std::size_t row, std::string_view t, const std::vector<BlockWordCounts>& counts,
                            const std::vector<bool>& stale) {
  if (row < counts.size() && (row >= stale.size() || !stale[row])) return counts[row];
  std::string storage;
  std::string_view code;
  return CountCodeBlockWords(t, &code, &storage);
}

}  // namespace

// A line begins with a word ("^\s*word\b", ignoring case) exactly when its
// leading run of word bytes is that word.
std::string FlushModuleLevel(std::string_view text) {
  return FlushModuleLevelMarkingChanges(text).text;
}

ChangedLines FlushModuleLevelMarkingChanges(std::string_view text, const std::vector<BlockWordCounts>& counts,
                                            const std::vector<bool>& stale) {
  LineRewriter output(text, text.size());
  std::vector<bool> changed;
  const auto replace = [&output, &changed](std::size_t row, std::string_view line, std::string_view replacement) {
    output.Replace(line, replacement);
    changed.resize(row + 1);
    changed[row] = true;
  };
  LineReader reader(text);
  std::string_view line;
  bool inHeader = false;
  std::int64_t depth = 0;
  for (std::size_t row = 0; reader.Next(&line); ++row) {
    const std::string_view t = TrimmedView(line);
    const char first = LeadingByteLower(t);
    const std::string_view word = LeadingPatternWord(t);
    if (t.empty() || (first == '/' && StartsWithLineComment(t))) {
      output.Keep(line);
      continue;
    }
    if (IsOneOfIgnoringCase(word, {"endmodule"})) {
      replace(row, line, EndmoduleLine(t));
      depth = 0;
      inHeader = false;
      continue;
    }
    if (IsOneOfIgnoringCase(word, {"module"})) {
      output.Keep(line);
      depth = 0;
      inHeader = true;
      continue;
    }
    // Port lines keep their place up to the ");" that closes the list.
    if (inHeader) {
      if (first != ')' || !PortListClosePattern().Search(t)) {
        output.Keep(line);
        continue;
      }
      inHeader = false;
    }
    const BlockWordCounts words = CountsOfRow(row, t, counts, stale);
    const std::int64_t after = std::max<std::int64_t>(depth - words.endcases - words.ends, 0);
    // The trimmed text is a part of the line, the same when of equal size.
    if (t.size() != line.size() && after == 0 && StartsWithDeclKeyword(t)) {
      replace(row, line, t);
    } else {
      output.Keep(line);
    }
    depth = std::max<std::int64_t>(depth + words.cases - words.endcases - words.ends + words.begins, 0);
  }
  return {output.Take(), std::move(changed)};
}

}  // namespace quill
