#include "content_guard.h"

#include <algorithm>
#include <span>

#include "sequence_diff.h"

namespace quill::cli {
namespace {

bool IsBlankByte(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Beyond this many non-blank bytes on both sides of the differing stretch the
// alignment is not worth its time: the lost text is then located as the
// stretch between the longest kept prefix and the longest kept suffix.
constexpr std::size_t kMaxAlignedBytes = std::size_t{4} << 20;

// Position just past the longest prefix of `needle`'s non-blank bytes that is
// a subsequence of `hay`'s non-blank bytes.
std::size_t KeptPrefixEnd(std::string_view needle, std::string_view hay) {
  std::size_t i = 0, j = 0;
  for (;; ++i, ++j) {
    while (i < needle.size() && IsBlankByte(needle[i])) ++i;
    if (i == needle.size()) return i;
    while (j < hay.size() && hay[j] != needle[i]) ++j;
    if (j == hay.size()) return i;
  }
}

// Position where the longest suffix of `needle`'s non-blank bytes that is a
// subsequence of `hay`'s non-blank bytes starts.
std::size_t KeptSuffixStart(std::string_view needle, std::string_view hay) {
  std::size_t i = needle.size(), j = hay.size();
  for (;; --i, --j) {
    while (i > 0 && IsBlankByte(needle[i - 1])) --i;
    if (i == 0) return 0;
    while (j > 0 && hay[j - 1] != needle[i - 1]) --j;
    if (j == 0) return i;
  }
}

uint32_t LineAt(std::string_view text, std::size_t position) {
  return 1 +
         static_cast<uint32_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n'));
}

// The non-blank bytes of text[from, to), and, when asked, the line of each.
std::vector<uint32_t> NonBlankBytes(std::string_view text, std::size_t from, std::size_t to,
                                    std::vector<uint32_t>* lines) {
  std::vector<uint32_t> bytes;
  uint32_t line = lines != nullptr ? LineAt(text, from) : 0;
  for (std::size_t i = from; i < to; ++i) {
    const char c = text[i];
    if (c == '\n') ++line;
    if (IsBlankByte(c)) continue;
    bytes.push_back(static_cast<unsigned char>(c));
    if (lines != nullptr) lines->push_back(line);
  }
  return bytes;
}

void AddLine(std::vector<uint32_t>* lines, uint32_t line) {
  if (lines->empty() || lines->back() != line) lines->push_back(line);
}

}  // namespace

std::vector<uint32_t> FindLostLines(std::string_view input, std::string_view output) {
  if (KeptPrefixEnd(input, output) == input.size()) return {};

  // Trim the non-blank bytes both sides share at the front and at the back.
  std::size_t inHead = 0, outHead = 0;
  for (;;) {
    while (inHead < input.size() && IsBlankByte(input[inHead])) ++inHead;
    while (outHead < output.size() && IsBlankByte(output[outHead])) ++outHead;
    if (inHead == input.size() || outHead == output.size() || input[inHead] != output[outHead]) break;
    ++inHead, ++outHead;
  }
  std::size_t inTail = input.size(), outTail = output.size();
  for (;;) {
    while (inTail > inHead && IsBlankByte(input[inTail - 1])) --inTail;
    while (outTail > outHead && IsBlankByte(output[outTail - 1])) --outTail;
    if (inTail == inHead || outTail == outHead || input[inTail - 1] != output[outTail - 1]) break;
    --inTail, --outTail;
  }

  std::vector<uint32_t> lost;
  if ((inTail - inHead) + (outTail - outHead) <= kMaxAlignedBytes) {
    std::vector<uint32_t> lines;
    const std::vector<uint32_t> a = NonBlankBytes(input, inHead, inTail, &lines);
    const std::vector<uint32_t> b = NonBlankBytes(output, outHead, outTail, nullptr);
    const DiffMarks marks = MarkDifferences(std::span<const uint32_t>(a), std::span<const uint32_t>(b));
    for (std::size_t i = 0; i < marks.deleted.size(); ++i) {
      if (marks.deleted[i]) AddLine(&lost, lines[i]);
    }
    return lost;
  }
  const std::size_t first = KeptPrefixEnd(input, output);
  const std::size_t end = std::max(first + 1, KeptSuffixStart(input, output));
  uint32_t line = LineAt(input, first);
  for (std::size_t i = first; i < end && i < input.size(); ++i) {
    if (!IsBlankByte(input[i])) AddLine(&lost, line);
    if (input[i] == '\n') ++line;
  }
  return lost;
}

std::string DescribeLines(const std::vector<uint32_t>& lines, std::size_t shown) {
  std::string text = lines.size() == 1 ? "line " : "lines ";
  const std::size_t listed = std::min(lines.size(), shown);
  for (std::size_t i = 0; i < listed; ++i) {
    if (i > 0) text += ", ";
    text += std::to_string(lines[i]);
  }
  if (lines.size() > listed) text += " and " + std::to_string(lines.size() - listed) + " more";
  return text;
}

}  // namespace quill::cli
