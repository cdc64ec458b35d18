// What the linter counts as a name: the keyword test, identifier extraction,
// number tokens, sized literals, and the recording of identifier uses.
#ifndef QUILL_LINT_IDENTIFIERS_H_
#define QUILL_LINT_IDENTIFIERS_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/name_set.h"
#include "lint/word_scan.h"

namespace quill {

// Whether `word` is a Verilog or SystemVerilog keyword, ignoring case.
bool IsKeyword(std::string_view word);

// Every identifier of `text` in order, repetitions kept (see
// ForEachIdentifier below). The views point into `text`.
std::vector<std::string_view> ExtractIdentifiers(std::string_view text);

// Whether the whole word is a decimal number, or digits, "'" and a base
// letter ("8'h").
bool IsNumberToken(std::string_view word);

// The end of the sized literal "\b\d+\s*'\s*[bhdo]\s*\w+" (ignoring case)
// whose digits start the word run at `begin`, or `begin` when none does.
// `begin` must start a word run. Every part of the literal is followed by a
// byte it cannot take, so the greedy reading is the only one a backtracking
// matcher could find.
std::size_t SizedLiteralEnd(std::string_view text, std::size_t begin);

// `text` with every sized literal ("8'hFF", "16 'h ff") replaced by a space.
std::string StripSizedLiterals(std::string_view text);

// Whether an identifier walk reads sized literals ("8'hFF") as text or passes
// over them.
enum class SizedLiterals { kRead, kSkipped };

// Calls visit(std::string_view) for every identifier of `text` in order: each
// maximal run of word characters that begins with a letter or "_" (a run that
// begins with a digit holds none, so "1ns" gives nothing). With
// SizedLiterals::kSkipped the identifiers are those of StripSizedLiterals(text),
// found without building the stripped text: a literal starts and ends at a
// word boundary, so putting a space in its place joins no word runs and the
// other identifiers stay.
template <SizedLiterals kLiterals = SizedLiterals::kRead, typename Visitor>
void ForEachIdentifier(std::string_view text, Visitor&& visit) {
  std::size_t i = 0;
  while (i < text.size()) {
    if (!IsWordByte(text[i])) {
      ++i;
      continue;
    }
    const std::size_t start = i;
    if constexpr (kLiterals == SizedLiterals::kSkipped) {
      if (IsDigitByte(text[start])) {
        const std::size_t literalEnd = SizedLiteralEnd(text, start);
        if (literalEnd != start) {
          i = literalEnd;
          continue;
        }
      }
    }
    while (i < text.size() && IsWordByte(text[i])) ++i;
    if (!IsDigitByte(text[start])) visit(text.substr(start, i - start));
  }
}

// The first word of `text` after leading space, TAB and CR, or "".
std::string LeadingWord(std::string_view text);

// Records a use of `name` at `line`, keeping the smallest line per name.
void RecordFirstUse(NameMap& firstUseLine, std::string_view name, std::int32_t line);

// Records every identifier of `text` that is not a keyword or number as used
// at `line` (sized literals removed first).
void RecordUses(std::string_view text, std::int32_t line, NameMap& firstUseLine);

}  // namespace quill

#endif  // QUILL_LINT_IDENTIFIERS_H_
