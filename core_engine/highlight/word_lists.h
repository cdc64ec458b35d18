// The highlighter's fixed word lists, one entry per line in their stored order.
// Lookups ignore case; the sets built from these lists hold lower-case copies.
#ifndef QUILL_HIGHLIGHT_WORD_LISTS_H_
#define QUILL_HIGHLIGHT_WORD_LISTS_H_

#include <array>
#include <string_view>

namespace quill {

// Constraint and Tcl keywords, coloured as keywords.
extern const std::array<std::string_view, 68> kConstraintKeywords;

// Synthesis, implementation, report, simulation, hardware and project
// commands, coloured as tool commands.
extern const std::array<std::string_view, 64> kToolCommands;

// Project, compilation and timing-analysis flow commands, coloured as flow
// commands. Six of them also stand in an earlier list, whose class they always
// receive.
extern const std::array<std::string_view, 20> kFlowCommands;

// Pin properties, coloured as properties.
extern const std::array<std::string_view, 15> kPinProperties;

// Prefixes of I/O-standard names, tried in this order ignoring case.
extern const std::array<std::string_view, 19> kIoStandardPrefixes;

}  // namespace quill

#endif  // QUILL_HIGHLIGHT_WORD_LISTS_H_
