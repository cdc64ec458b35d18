#include <algorithm>
#include <cstddef>

#include "lint/identifiers.h"
#include "lint/steps.h"

namespace quill {
namespace {

bool IsDirectionKeyword(std::string_view word) {
  return NameEqual{}(word, "input") || NameEqual{}(word, "output") || NameEqual{}(word, "inout");
}

// The first position at or after `from` holding `c`, or the text's length.
// Queries come with growing `from`, so the cached answer is reused until it
// falls behind.
class NextByte {
 public:
  NextByte(std::string_view text, char c) : text_(text), c_(c) {}
  std::size_t From(std::size_t from) {
    if (!found_ || position_ < from) {
      position_ = text_.find(c_, from);
      if (position_ == std::string_view::npos) position_ = text_.size();
      found_ = true;
    }
    return position_;
  }

 private:
  std::string_view text_;
  char c_;
  std::size_t position_ = 0;
  bool found_ = false;
};

}  // namespace

void CollectPortNames(std::string_view text, ModuleModel& model) {
  NextByte nextSemicolon(text, ';');
  NextByte nextParen(text, ')');
  // Stretches that overlap end at the same ";" or ")"; the part already
  // scanned would only insert names the set holds already.
  std::size_t scannedTo = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    if (!IsWordByte(text[i])) {
      ++i;
      continue;
    }
    const std::size_t start = i;
    while (i < text.size() && IsWordByte(text[i])) ++i;
    if (!IsDirectionKeyword(text.substr(start, i - start))) continue;
    const std::size_t stretchEnd = std::min(nextSemicolon.From(i), nextParen.From(i));
    const std::size_t from = std::max(i, scannedTo);
    if (from >= stretchEnd) continue;
    ForEachIdentifier(text.substr(from, stretchEnd - from), [&model](std::string_view identifier) {
      if (IsKeyword(identifier) || model.portNames.find(identifier) != model.portNames.end()) return;
      model.portNames.emplace(identifier);
    });
    scannedTo = stretchEnd;
  }
}

}  // namespace quill
