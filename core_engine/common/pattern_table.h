// The process-wide table of compiled patterns and keyword sets shared by the
// formatter. Built once when the library is loaded and read-only afterwards,
// so any number of threads may use it at once.
#ifndef QUILL_COMMON_PATTERN_TABLE_H_
#define QUILL_COMMON_PATTERN_TABLE_H_

#include <string>
#include <unordered_set>

#include "common/pattern.h"

namespace quill {

// Hash set of words compared byte for byte, hashed with 64-bit FNV-1a.
struct Fnv1aHash {
  std::size_t operator()(std::string_view word) const noexcept;
};
using WordSet = std::unordered_set<std::string, Fnv1aHash>;

struct PatternTable {
  PatternTable();

  Pattern kBeginPattern;
  Pattern kEndPattern;
  Pattern kCasePattern;
  Pattern kEndcasePattern;
  Pattern kModulePattern;
  Pattern kEndmodulePattern;
  Pattern kLineCommentStartPattern;
  Pattern kForeignSourcePattern;
  Pattern kPortDeclPattern;
  Pattern kModuleHeaderPattern;
  Pattern kNetDeclPattern;
  Pattern kParamDeclPattern;
  WordSet kCoreKeywords;
  Pattern kAlwaysPattern;
  Pattern kGeneratePattern;
  Pattern kEndgeneratePattern;
  Pattern kAssignPattern;
  Pattern kLabelPattern;
  Pattern kIfHeaderPattern;
  Pattern kStatementStartPattern;
  Pattern kNamedConnectionPattern;
  Pattern kBlockKeywordPattern;
  Pattern kInstanceHeadPattern;
  Pattern kParamInstanceHeadPattern;
  Pattern kTypeAndNamePattern;
  Pattern kSingleWordPattern;
  Pattern kCallHeadPattern;
  Pattern kBlockCommentPattern;
  WordSet kDeclKeywords;
  Pattern kUnusedBlockCommentPattern;
  Pattern kLineCommentPattern;
};

// The table, constructed during the library's static initialisation.
const PatternTable& Patterns();

}  // namespace quill

#endif  // QUILL_COMMON_PATTERN_TABLE_H_
