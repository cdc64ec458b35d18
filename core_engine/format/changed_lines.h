// The output of a pass whose lines stand one for one for those of its input,
// with the rows whose text it changed: a later pass that read the input's
// lines once needs to read again only those.
#ifndef QUILL_FORMAT_CHANGED_LINES_H_
#define QUILL_FORMAT_CHANGED_LINES_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quill {

struct ChangedLines {
  std::string text;
  // By row: false where the line is the input's line of the same row, byte
  // for byte. Rows past its end did not change.
  std::vector<bool> changed;
};

// Marks in `into` the rows marked in `from`.
inline void MergeChangedRows(const std::vector<bool>& from, std::vector<bool>* into) {
  if (into->size() < from.size()) into->resize(from.size());
  for (std::size_t row = 0; row < from.size(); ++row) {
    if (from[row]) (*into)[row] = true;
  }
}

// Values by row of a text, moved to the rows they take once an empty line
// went in before each row in `insertedBefore` (ascending; rows outside the
// text are passed over); the empty lines get `filler`. The values between
// two empty lines are copied as one range.
template <typename T>
std::vector<T> ShiftRows(const std::vector<T>& byRow, const std::vector<std::int32_t>& insertedBefore,
                         const T& filler) {
  std::vector<T> shifted;
  shifted.reserve(byRow.size() + insertedBefore.size());
  std::size_t copied = 0;
  for (const std::int32_t before : insertedBefore) {
    if (before < 0) continue;
    const auto row = static_cast<std::size_t>(before);
    if (row >= byRow.size()) break;
    shifted.insert(shifted.end(), byRow.begin() + static_cast<std::ptrdiff_t>(copied),
                   byRow.begin() + static_cast<std::ptrdiff_t>(row));
    shifted.push_back(filler);
    copied = row;
  }
  shifted.insert(shifted.end(), byRow.begin() + static_cast<std::ptrdiff_t>(copied), byRow.end());
  return shifted;
}

}  // namespace quill

#endif  // QUILL_FORMAT_CHANGED_LINES_H_
