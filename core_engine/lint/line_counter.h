// Zero-based line numbers of positions in one text, counted incrementally:
// each query counts only the LFs between the previous position and the new
// one, so positions visited in increasing order cost linear time in total.
#ifndef QUILL_LINT_LINE_COUNTER_H_
#define QUILL_LINT_LINE_COUNTER_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "common/byte_search.h"

namespace quill {

class LineCounter {
 public:
  explicit LineCounter(std::string_view text) : text_(text) {}

  // The number of LFs before `pos` (positions past the end count as the end).
  std::uint32_t LineAt(std::size_t pos) {
    pos = std::min(pos, text_.size());
    if (pos >= pos_) {
      lines_ += CountLineFeeds(text_.substr(pos_, pos - pos_));
    } else {
      lines_ -= CountLineFeeds(text_.substr(pos, pos_ - pos));
    }
    pos_ = pos;
    return static_cast<std::uint32_t>(lines_);
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
  std::size_t lines_ = 0;
};

}  // namespace quill

#endif  // QUILL_LINT_LINE_COUNTER_H_
