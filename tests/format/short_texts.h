// Every text of one to `maxPieces` pieces, each piece from a small set, for
// the tests that hold a hand reader equal to the pattern it stands for on
// all short inputs. The empty text comes first.
#ifndef QUILL_TESTS_FORMAT_SHORT_TEXTS_H_
#define QUILL_TESTS_FORMAT_SHORT_TEXTS_H_

#include <string>
#include <string_view>
#include <vector>

namespace quill {

inline std::vector<std::string> EveryShortText(const std::vector<std::string>& pieces, int maxPieces) {
  std::vector<std::string> texts = {""};
  std::size_t begin = 0;
  for (int length = 1; length <= maxPieces; ++length) {
    const std::size_t end = texts.size();
    for (std::size_t i = begin; i < end; ++i) {
      for (const std::string& piece : pieces) texts.push_back(texts[i] + piece);
    }
    begin = end;
  }
  return texts;
}

// The same with single bytes of `alphabet` as the pieces.
inline std::vector<std::string> EveryShortText(std::string_view alphabet, int maxLength) {
  std::vector<std::string> pieces;
  for (char c : alphabet) pieces.emplace_back(1, c);
  return EveryShortText(pieces, maxLength);
}

}  // namespace quill

#endif  // QUILL_TESTS_FORMAT_SHORT_TEXTS_H_
