// The block words of a line ("begin", "end", "case", "endcase") counted in
// its code, the part before any "//" comment.
#ifndef QUILL_FORMAT_SCAN_BLOCK_WORDS_H_
#define QUILL_FORMAT_SCAN_BLOCK_WORDS_H_

#include <cstdint>
#include <string>
#include <string_view>

namespace quill {

// Matches of kBeginPattern, kEndPattern, kCasePattern and kEndcasePattern.
struct BlockWordCounts {
  std::int32_t begins = 0;
  std::int32_t ends = 0;
  std::int32_t cases = 0;  // "case", "casez" and "casex"
  std::int32_t endcases = 0;
};

// The counts of one scan over `code`. A match of "\bword\b" is a run of word
// bytes that is exactly the word, and runs never overlap, so comparing every
// maximal run of word bytes gives the same numbers as iterating the patterns.
BlockWordCounts CountBlockWords(std::string_view code);

// CountBlockWords(CodeOf(text, storage)) in one scan, which stops at the
// first "//" when no LF follows it (always, for a line); `code` receives
// CodeOf's result.
BlockWordCounts CountCodeBlockWords(std::string_view text, std::string_view* code, std::string* storage);

// The text with every "//" comment removed (RemoveLineComments); a text
// without one is returned as it is and `storage` stays untouched.
std::string_view CodeOf(std::string_view text, std::string* storage);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_BLOCK_WORDS_H_
