#include "format/scan/block_words.h"

#include "common/byte_search.h"
#include "common/text_utils.h"

namespace quill {

namespace {

// Counts `word`, a maximal run of word bytes, when it is a block word.
inline void CountWord(std::string_view word, BlockWordCounts* counts) {
  switch (word.size()) {
    case 3:
      if (word == "end") ++counts->ends;
      break;
    case 4:
      if (word == "case") ++counts->cases;
      break;
    case 5:
      if (word == "begin") {
        ++counts->begins;
      } else if (word == "casez" || word == "casex") {
        ++counts->cases;
      }
      break;
    case 7:
      if (word == "endcase") ++counts->endcases;
      break;
    default:
      break;
  }
}

}  // namespace

BlockWordCounts CountBlockWords(std::string_view code) {
  BlockWordCounts counts;
  std::size_t i = 0;
  while (i < code.size()) {
    if (!IsWordByte(code[i])) {
      ++i;
      continue;
    }
    const std::size_t begin = i;
    while (i < code.size() && IsWordByte(code[i])) ++i;
    CountWord(code.substr(begin, i - begin), &counts);
  }
  return counts;
}

// A "/" ends every run of word bytes, so the counts up to the first "//" are
// those of the code before it; behind it, without a later LF, all is comment.
BlockWordCounts CountCodeBlockWords(std::string_view text, std::string_view* code, std::string* storage) {
  BlockWordCounts counts;
  std::size_t i = 0;
  while (i < text.size()) {
    if (!IsWordByte(text[i])) {
      if (text[i] == '/' && i + 1 < text.size() && text[i + 1] == '/') {
        if (FindByte(text, i + 2, '\n') != std::string_view::npos) {
          *code = CodeOf(text, storage);
          return CountBlockWords(*code);
        }
        *code = text.substr(0, i);
        return counts;
      }
      ++i;
      continue;
    }
    const std::size_t begin = i;
    while (i < text.size() && IsWordByte(text[i])) ++i;
    CountWord(text.substr(begin, i - begin), &counts);
  }
  *code = text;
  return counts;
}

std::string_view CodeOf(std::string_view text, std::string* storage) {
  if (FindText(text, "//", 0) == std::string_view::npos) return text;
  *storage = RemoveLineComments(text);
  return *storage;
}

}  // namespace quill
