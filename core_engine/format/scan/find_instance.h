// Recognises module instances: where the header starts, where the port list
// opens and where it closes.
#ifndef QUILL_FORMAT_SCAN_FIND_INSTANCE_H_
#define QUILL_FORMAT_SCAN_FIND_INSTANCE_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"

namespace quill {

// A byte position in a list of lines.
struct TextPosition {
  std::size_t line = 0;
  std::size_t column = 0;
};

// For every "(" of a text, the ")" that balances it when the lines are read
// as one text joined with LF, counting every parenthesis (also those inside
// comments and strings). Built in one pass, so that asking for many "(" whose
// ")" never comes costs no rescan of the rest of the text.
class ParenthesisMatches {
 public:
  explicit ParenthesisMatches(const LineViews& lines);
  explicit ParenthesisMatches(const TextLines& lines) : ParenthesisMatches(ViewsOf(lines)) {}

  // The ")" that balances the "(" at `open`; nothing when the text ends
  // first or no "(" stands there.
  std::optional<TextPosition> FindClose(TextPosition open) const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::vector<std::size_t> lineStarts_;  // offset of each line in the joined text
  std::vector<std::size_t> opens_;       // offset of every "(", ascending
  std::vector<std::size_t> closes_;      // offset of its ")", or kNone
};

// One instance as FindInstance sees it.
struct InstanceSpan {
  std::size_t startLine = 0;    // first header line
  std::size_t openLine = 0;     // line of the "(" that opens the port list
  std::size_t closeLine = 0;    // line of the ")" that balances it
  std::size_t endLine = 0;      // last line of the instance (= closeLine)
  std::size_t indent = 0;       // leading blanks of the first header line
  std::string header;           // normalised first header line, e.g. "fifo u_fifo ("
  TextLines paramLines;         // trimmed lines inside a "#(" block spread over lines
  std::string nameLine;         // ") name (" after such a block; empty when there is none
  std::size_t openColumn = 0;   // position of the port list's "(" in openLine
  std::size_t closeColumn = 0;  // position of its ")" in closeLine
};

// Whether the text begins, after white space, with a keyword that starts a
// block or statement (module, function, task, if, else, case, casex, casez,
// for, while, forever, assign, always, always_ff, always_comb, initial,
// generate, endgenerate, specify, endspecify; any letter case): no instance
// starts there.
bool StartsWithBlockKeyword(std::string_view trimmed);

// The text with each run of white space (\s) replaced by one space, as
// replacing every match of "\s+" by " " gives it.
std::string CollapseBlankRuns(std::string_view s);

// The instance whose header starts at line `start`, or nothing.
std::optional<InstanceSpan> FindInstance(const LineViews& lines, const ParenthesisMatches& parens, std::size_t start);

// The same, for a single question: builds the parenthesis matches of `lines`
// first, which costs a pass over the whole text.
std::optional<InstanceSpan> FindInstance(const TextLines& lines, std::size_t start);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_FIND_INSTANCE_H_
