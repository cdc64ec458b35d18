// The formatter's table of compiled patterns and keyword sets, shared by its
// passes. Built once when the library is loaded and read-only afterwards, so
// any number of threads may use it at once.
#ifndef QUILL_FORMAT_SCAN_PATTERN_TABLE_H_
#define QUILL_FORMAT_SCAN_PATTERN_TABLE_H_

#include <string_view>

#include "common/name_set.h"
#include "common/pattern.h"

namespace quill {

struct PatternTable {
  PatternTable();

  Pattern kBeginPattern;
  Pattern kForeignSourcePattern;
  NameSet kCoreKeywords;  // lower case, looked up ignoring case
  Pattern kLabelPattern;
  Pattern kNamedConnectionPattern;
  NameSet kDeclKeywords;  // lower case, looked up ignoring case
};

// The table, constructed during the library's static initialisation.
const PatternTable& Patterns();

// Whether the line's first word (up to a space or TAB) is one of the
// declaration keywords, in any letter case.
bool StartsWithDeclKeyword(std::string_view line);

}  // namespace quill

#endif  // QUILL_FORMAT_SCAN_PATTERN_TABLE_H_
