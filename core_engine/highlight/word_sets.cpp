#include "highlight/word_sets.h"

#include <algorithm>

#include "highlight/word_lists.h"

namespace quill {

namespace {

WordSets BuildWordSets() {
  WordSets sets;
  BuildWordSet(sets.constraintKeywords, kConstraintKeywords.data(), kConstraintKeywords.size());
  BuildWordSet(sets.toolCommands, kToolCommands.data(), kToolCommands.size());
  BuildWordSet(sets.flowCommands, kFlowCommands.data(), kFlowCommands.size());
  BuildWordSet(sets.pinProperties, kPinProperties.data(), kPinProperties.size());
  sets.maxLength = std::max({sets.constraintKeywords.MaxLength(), sets.toolCommands.MaxLength(),
                             sets.flowCommands.MaxLength(), sets.pinProperties.MaxLength()});
  return sets;
}

}  // namespace

const WordSets& GetWordSets() {
  static const WordSets kWordSets = BuildWordSets();
  return kWordSets;
}

TokenClass ClassifyListedWord(const WordSets& sets, const unsigned char* word, std::size_t length) {
  if (length > sets.maxLength) return TokenClass::kPlain;
  const std::uint32_t hash = WordSet::HashIgnoringCase(word, length);
  if (sets.constraintKeywords.Contains(word, length, hash)) return TokenClass::kKeyword;
  if (sets.toolCommands.Contains(word, length, hash)) return TokenClass::kToolCommand;
  if (sets.flowCommands.Contains(word, length, hash)) return TokenClass::kFlowCommand;
  if (sets.pinProperties.Contains(word, length, hash)) return TokenClass::kProperty;
  return TokenClass::kPlain;
}

}  // namespace quill
