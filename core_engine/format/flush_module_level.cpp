#include "format/flush_module_level.h"

#include <algorithm>
#include <cstdint>

#include "common/pattern.h"
#include "common/pattern_table.h"
#include "common/text_utils.h"

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

}  // namespace

std::string FlushModuleLevel(std::string_view text) {
  const PatternTable& patterns = Patterns();
  TextLines lines = SplitLines(text);
  bool inHeader = false;
  std::int64_t depth = 0;
  for (std::string& line : lines) {
    std::string t = Trim(line);
    if (t.empty() || patterns.kLineCommentStartPattern.Search(t)) continue;
    if (patterns.kEndmodulePattern.Search(t)) {
      line = EndmoduleLine(t);
      depth = 0;
      inHeader = false;
      continue;
    }
    if (patterns.kModulePattern.Search(t)) {
      depth = 0;
      inHeader = true;
      continue;
    }
    // Port lines keep their place up to the ");" that closes the list.
    if (inHeader) {
      if (!PortListClosePattern().Search(t)) continue;
      inHeader = false;
    }
    const std::string code = RemoveLineComments(t);
    const std::int64_t begins = CountMatches(code, patterns.kBeginPattern);
    const std::int64_t ends = CountMatches(code, patterns.kEndPattern);
    const std::int64_t cases = CountMatches(code, patterns.kCasePattern);
    const std::int64_t endcases = CountMatches(code, patterns.kEndcasePattern);
    const std::int64_t after = std::max<std::int64_t>(depth - endcases - ends, 0);
    if (after == 0 && StartsWithDeclKeyword(t)) line = std::move(t);
    depth = std::max<std::int64_t>(depth + cases - endcases - ends + begins, 0);
  }
  return JoinLines(lines, "\n");
}

}  // namespace quill
