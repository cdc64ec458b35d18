// Reading a text line by line with one step back, as the declaration
// extraction does when a declaration continues on the next line.
#ifndef QUILL_LINT_LINE_CURSOR_H_
#define QUILL_LINT_LINE_CURSOR_H_

#include <cstddef>
#include <string_view>

namespace quill {

// TrimRightOf(s, "\r"), without the search of a set per byte.
inline std::string_view WithoutTrailingCarriageReturns(std::string_view s) {
  std::size_t end = s.size();
  while (end > 0 && s[end - 1] == '\r') --end;
  return end == 0 ? std::string_view() : s.substr(0, end);
}

// The lines of the text split at each LF, each without its trailing CRs,
// read in order; the last read can be taken back.
class LineCursor {
 public:
  explicit LineCursor(std::string_view text) : text_(text) {}

  bool Next(std::string_view* line) {
    if (done_) return false;
    const std::size_t end = text_.find('\n', next_);
    const std::size_t stop = end == std::string_view::npos ? text_.size() : end;
    *line = WithoutTrailingCarriageReturns(text_.substr(next_, stop - next_));
    previous_ = next_;
    next_ = stop + 1;
    done_ = end == std::string_view::npos;
    ++count_;
    return true;
  }

  void Unread() {
    next_ = previous_;
    done_ = false;
    --count_;
  }

  // The zero-based number of the line read last.
  std::size_t Number() const { return count_ - 1; }

 private:
  std::string_view text_;
  std::size_t next_ = 0;
  std::size_t previous_ = 0;
  std::size_t count_ = 0;
  bool done_ = false;
};

}  // namespace quill

#endif  // QUILL_LINT_LINE_CURSOR_H_
