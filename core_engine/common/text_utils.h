// Small text helpers shared by the services. "Blank" means exactly space,
// TAB, LF and CR; vertical tab, form feed and bytes of 128 and above are not.
#ifndef QUILL_COMMON_TEXT_UTILS_H_
#define QUILL_COMMON_TEXT_UTILS_H_

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/pattern.h"

namespace quill {

// A text as its lines, without line terminators.
using TextLines = std::vector<std::string>;

inline bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

// The text from its first non-blank byte on; "" when all blank.
std::string TrimLeft(std::string_view s);

// The text without leading and trailing blanks; "" when all blank.
std::string Trim(std::string_view s);

// The text without trailing bytes from `chars`.
std::string_view TrimRightOf(std::string_view s, std::string_view chars);

// Cuts at every LF; each piece loses at most one CR at its end. A text with k
// LFs gives k + 1 lines.
TextLines SplitLines(std::string_view text);

// The lines with `separator` between neighbours; "" for no lines.
std::string JoinLines(const TextLines& lines, std::string_view separator);

// Replaces each block comment ("/*" up to the first following "*/") by what
// `replace` returns for it, left to right; other text is copied unchanged.
std::string ReplaceEachMatch(std::string_view text, const std::function<std::string(std::string_view)>& replace);

// The text with every line comment ("//" up to the next LF) removed: the
// same as replacing each match of "//[^\n]*" by nothing.
std::string RemoveLineComments(std::string_view text);

// Number of matches of `pattern` iterated over `s` from left to right.
std::int32_t CountMatches(std::string_view s, const Pattern& pattern);

// Whether the line's first word (everything before the first space or TAB),
// lower-cased, is a declaration keyword. Leading blanks are not skipped.
bool StartsWithDeclKeyword(std::string_view line);

}  // namespace quill

#endif  // QUILL_COMMON_TEXT_UTILS_H_
