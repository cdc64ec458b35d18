// What the alignment passes share: cell padding, the grouping of neighbouring
// candidate lines, and scanners that dissect the line forms the passes align.
#ifndef QUILL_FORMAT_ALIGNMENT_UTILS_H_
#define QUILL_FORMAT_ALIGNMENT_UTILS_H_

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"

namespace quill {

// `s` widened with trailing spaces to `width`; never cut.
std::string PadRight(std::string_view s, std::size_t width);

// Whether a line is blank or a "//" comment line.
bool IsSkippableLine(std::string_view line);

// Whether every line from `first` to `last` (inclusive) is blank or a "//"
// comment line; true for an empty range and past the end of the lines.
bool IsSkippableGap(const TextLines& lines, std::size_t first, std::size_t last);

// Cuts ascending candidate line numbers into groups: a candidate joins the
// current group when it directly follows the previous one or when only blank
// and "//" lines stand between them; otherwise it opens a new group.
std::vector<std::vector<std::size_t>> GroupLines(const TextLines& lines, const std::vector<std::size_t>& candidates);

// The same grouping, made while the lines are read once, in order.
class CandidateGrouper {
 public:
  struct Candidate {
    std::size_t line = 0;
    std::size_t group = 0;
  };

  // A line that is no candidate.
  void AddOther(std::string_view line) { gapIsSkippable_ = gapIsSkippable_ && IsSkippableLine(line); }
  // Line number `line` is a candidate; true when it opens a new group.
  bool AddCandidate(std::size_t line);

  // The candidates in line order, each with its group number (from 0).
  const std::vector<Candidate>& Candidates() const { return candidates_; }

 private:
  std::vector<Candidate> candidates_;
  std::size_t groupCount_ = 0;
  bool gapIsSkippable_ = true;
};

// The capture groups of one line match as views into the scanned line;
// group[0] is the whole match and a group that took no part is empty.
struct LineGroups {
  static constexpr int kGroupCount = 9;
  std::array<std::string_view, kGroupCount> group{};
};

// Scanners giving the same verdict and groups as matching the named
// pattern-table entry against the whole line (the header scanner: searching
// it), in one pass over the line. Backtracking engines need time quadratic in
// the line length for some lines of these forms; these never do.
//
// kModuleHeaderPattern, searched: group 1 the module name part.
std::optional<LineGroups> ScanModuleHeader(std::string_view line);
// kPortDeclPattern, whole line: direction, netType, signed, range, name,
// array dimension, comma, comment.
std::optional<LineGroups> ScanPortDecl(std::string_view line);
// kNetDeclPattern, whole line: type, signed, range, name, array dimension,
// comment.
std::optional<LineGroups> ScanNetDecl(std::string_view line);
// kParamDeclPattern, whole line: keyword, range, name, value, separator,
// comment.
std::optional<LineGroups> ScanParamDecl(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_ALIGNMENT_UTILS_H_
