// What the alignment passes share: cell padding, the grouping of neighbouring
// candidate lines, and scanners that dissect the line forms the passes align.
#ifndef QUILL_FORMAT_SCAN_ALIGNMENT_UTILS_H_
#define QUILL_FORMAT_SCAN_ALIGNMENT_UTILS_H_

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/text_utils.h"

namespace quill {

// `s` widened with trailing spaces to `width`; never cut.
std::string PadRight(std::string_view s, std::size_t width);

// One column of aligned cells, as the aligners measure it: as wide as its
// widest cell (or its starting width), and present when at least one cell is
// not empty; an aligner leaves out an optional column that no line fills.
struct Column {
  bool present = false;
  std::size_t width = 0;

  void Widen(std::string_view cell) {
    present = present || !cell.empty();
    if (cell.size() > width) width = cell.size();
  }
};

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

// The parts of the line forms the passes align, as views into the scanned
// line; a part the line does not have is empty. `whole` is the text the form
// covers: the whole line, or for a module header the part up to the list.
struct ModuleHeaderParts {
  std::string_view whole;
  std::string_view name;  // the name part, up to the spaces before "#", "(" or the line's end
};

struct PortDeclParts {
  std::string_view whole;
  std::string_view direction;
  std::string_view netType;
  std::string_view signedWord;  // "signed" with the spaces after it
  std::string_view range;
  std::string_view name;  // with an initialiser when there is one
  std::string_view arrayDim;
  std::string_view comma;
  std::string_view comment;
};

struct NetDeclParts {
  std::string_view whole;
  std::string_view type;
  std::string_view signedWord;  // "signed" with the spaces after it
  std::string_view range;
  std::string_view name;  // with an initialiser when there is one
  std::string_view arrayDim;
  std::string_view comment;
};

struct ParamDeclParts {
  std::string_view whole;
  std::string_view keyword;
  std::string_view range;
  std::string_view name;
  std::string_view value;  // from "=" on
  std::string_view separator;
  std::string_view comment;
};

// Scanners giving the same verdict and parts as matching the form's pattern
// against the whole line (the header scanner: searching it), in one pass over
// the line. Backtracking engines need time quadratic in the line length for
// some lines of these forms; these never do. The patterns live with the
// tests, which hold the scanners to them (tests/format/reference_patterns.h).
std::optional<ModuleHeaderParts> ScanModuleHeader(std::string_view line);
std::optional<PortDeclParts> ScanPortDecl(std::string_view line);
std::optional<NetDeclParts> ScanNetDecl(std::string_view line);
std::optional<ParamDeclParts> ScanParamDecl(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_ALIGNMENT_UTILS_H_
