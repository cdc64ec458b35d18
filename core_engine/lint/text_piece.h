// A stretch of a text that many records can share. Each piece keeps its
// whole text alive, so copying a record copies no text: the right-hand sides
// of an "a = b = c = ..." chain are suffixes of one another, and copies of
// them would grow with the square of the chain.
#ifndef QUILL_LINT_TEXT_PIECE_H_
#define QUILL_LINT_TEXT_PIECE_H_

#include <cstddef>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace quill {

class TextPiece {
 public:
  TextPiece() = default;
  // A piece holding all of `text`.
  TextPiece(std::string text)  // NOLINT(google-explicit-constructor): records are built from plain strings
      : text_(std::make_shared<const std::string>(std::move(text))), size_(text_->size()) {}
  TextPiece(const char* text) : TextPiece(std::string(text)) {}  // NOLINT(google-explicit-constructor)
  TextPiece(std::shared_ptr<const std::string> text, std::size_t begin, std::size_t size)
      : text_(std::move(text)), begin_(begin), size_(size) {}

  std::string_view View() const {
    return text_ ? std::string_view(*text_).substr(begin_, size_) : std::string_view();
  }
  operator std::string_view() const { return View(); }  // NOLINT(google-explicit-constructor)

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }

  // The whole text the piece belongs to, and where in it the piece stands.
  const std::string* Text() const { return text_.get(); }
  std::size_t Begin() const { return begin_; }
  std::size_t End() const { return begin_ + size_; }

  friend bool operator==(const TextPiece& a, std::string_view b) { return a.View() == b; }
  friend std::ostream& operator<<(std::ostream& out, const TextPiece& piece) { return out << piece.View(); }

 private:
  std::shared_ptr<const std::string> text_;
  std::size_t begin_ = 0;
  std::size_t size_ = 0;
};

}  // namespace quill

#endif  // QUILL_LINT_TEXT_PIECE_H_
