// The highlighter's four word sets, built from the word lists on first use
// under thread-safe one-time initialisation and read-only afterwards.
#ifndef QUILL_HIGHLIGHT_WORD_SETS_H_
#define QUILL_HIGHLIGHT_WORD_SETS_H_

#include <cstddef>

#include "highlight/token_class.h"
#include "highlight/word_set.h"

namespace quill {

struct WordSets {
  WordSet constraintKeywords;
  WordSet toolCommands;
  WordSet flowCommands;
  WordSet pinProperties;
  std::size_t maxLength = 0;  // longest word in any of the four sets
};

// The sets, filled in the order keywords, tool commands, flow commands, pin
// properties on the first call from any thread.
const WordSets& GetWordSets();

// The class of the first set, in that order, that holds the `length` bytes at
// `word` ignoring case; kPlain when none does.
TokenClass ClassifyListedWord(const WordSets& sets, const unsigned char* word, std::size_t length);

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_WORD_SETS_H_
