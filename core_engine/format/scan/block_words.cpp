#include "format/scan/block_words.h"

#include "common/text_utils.h"

namespace quill {

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
    const std::string_view word = code.substr(begin, i - begin);
    switch (word.size()) {
      case 3:
        if (word == "end") ++counts.ends;
        break;
      case 4:
        if (word == "case") ++counts.cases;
        break;
      case 5:
        if (word == "begin") {
          ++counts.begins;
        } else if (word == "casez" || word == "casex") {
          ++counts.cases;
        }
        break;
      case 7:
        if (word == "endcase") ++counts.endcases;
        break;
      default:
        break;
    }
  }
  return counts;
}

std::string_view CodeOf(std::string_view text, std::string* storage) {
  if (text.find("//") == std::string_view::npos) return text;
  *storage = RemoveLineComments(text);
  return *storage;
}

}  // namespace quill
