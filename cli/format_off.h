// Format-off regions: the lines from a "// quill: format off" line (or
// "/* quill: format off */") to the next "// quill: format on" line come out
// of the tool's formatting byte for byte as they went in, markers included.
//
// A marker is a line holding only the marker comment (blanks before and
// after allowed). Regions do not nest: inside a region an "off" marker is
// ordinary text and the first "on" ends it. An "on" outside a region is an
// ordinary comment. An "off" without a later "on" keeps the rest of the file.
#ifndef QUILL_CLI_FORMAT_OFF_H_
#define QUILL_CLI_FORMAT_OFF_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

// A region as zero-based line indexes, both markers inside [first, last];
// an unclosed region's `last` is the file's last line.
struct FormatOffRegion {
  std::size_t first = 0;
  std::size_t last = 0;
  bool closed = true;
};

std::vector<FormatOffRegion> FindFormatOffRegions(std::string_view text);

struct KeptRegions {
  std::string text;  // `formatted` with every region of `original` put back
  // One-based original line spans (first, last) of the regions that could
  // not be kept; `text` is meaningful only when this is empty.
  std::vector<std::pair<uint32_t, uint32_t>> broken;
};

// Puts the regions of `original` back into `formatted`, its formatted form.
// The formatter sees the whole text, regions included, so the code around
// a region keeps the indentation and the alignment columns it gets from its
// context; cutting the file at the markers and formatting the pieces alone
// would indent a piece as if it were at the top level and align the lines
// above and below a region to different columns. A region is found again in
// the result by its markers (the k-th region of the original is the k-th of
// the result) and kept only when the result's lines between the markers
// hold exactly the region's non-blank bytes: then the formatter re-spaced or
// re-broke lines only inside it, and putting the original lines back loses
// and duplicates nothing. Otherwise (text moved across a marker, a marker
// joined to code or lost) the region is reported as broken.
KeptRegions KeepFormatOffRegions(std::string_view original, std::string_view formatted);

// "line 4" or "lines 4 to 9" for each span, joined by ", ".
std::string DescribeSpans(const std::vector<std::pair<uint32_t, uint32_t>>& spans);

}  // namespace quill::cli

#endif  // QUILL_CLI_FORMAT_OFF_H_
