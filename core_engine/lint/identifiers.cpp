#include "lint/identifiers.h"

#include "lint/keyword_set.h"

namespace quill {
namespace {

// For each first letter (folded), the lengths of the keywords that start with
// it, one bit per length. Most identifiers are ruled out here without hashing.
struct KeywordShapes {
  std::uint32_t lengths[256] = {};

  KeywordShapes() {
    for (const std::string& keyword : KeywordSet()) {
      if (keyword.empty() || keyword.size() >= 32) continue;
      lengths[static_cast<unsigned char>(FoldAscii(keyword[0]))] |= 1u << keyword.size();
    }
  }

  bool MayBeKeyword(std::string_view word) const {
    if (word.empty() || word.size() >= 32) return true;
    return (lengths[static_cast<unsigned char>(FoldAscii(word[0]))] >> word.size()) & 1u;
  }
};

}  // namespace

bool IsKeyword(std::string_view word) {
  static const KeywordShapes kShapes;
  if (!kShapes.MayBeKeyword(word)) return false;
  const NameSet& keywords = KeywordSet();
  return keywords.find(word) != keywords.end();
}

std::vector<std::string_view> ExtractIdentifiers(std::string_view text) {
  std::vector<std::string_view> identifiers;
  ForEachIdentifier(text, [&identifiers](std::string_view identifier) { identifiers.push_back(identifier); });
  return identifiers;
}

bool IsNumberToken(std::string_view word) {
  std::size_t digits = 0;
  while (digits < word.size() && IsDigitByte(word[digits])) ++digits;
  if (digits == 0) return false;
  if (digits == word.size()) return true;
  if (word.size() != digits + 2 || word[digits] != '\'') return false;
  char base = FoldAscii(word[digits + 1]);
  return base == 'b' || base == 'h' || base == 'd' || base == 'o';
}

std::size_t SizedLiteralEnd(std::string_view text, std::size_t begin) {
  std::size_t i = begin;
  while (i < text.size() && IsDigitByte(text[i])) ++i;
  if (i == begin) return begin;
  while (i < text.size() && IsSpaceByte(text[i])) ++i;
  if (i == text.size() || text[i] != '\'') return begin;
  ++i;
  while (i < text.size() && IsSpaceByte(text[i])) ++i;
  if (i == text.size()) return begin;
  const char base = FoldAscii(text[i]);
  if (base != 'b' && base != 'h' && base != 'd' && base != 'o') return begin;
  ++i;
  while (i < text.size() && IsSpaceByte(text[i])) ++i;
  if (i == text.size() || !IsWordByte(text[i])) return begin;
  while (i < text.size() && IsWordByte(text[i])) ++i;
  return i;
}

std::string StripSizedLiterals(std::string_view text) {
  std::string stripped;
  stripped.reserve(text.size());
  std::size_t copied = 0;
  ForEachWordRun(text, [&](std::size_t begin, std::size_t) {
    if (begin < copied || !IsDigitByte(text[begin])) return;
    const std::size_t end = SizedLiteralEnd(text, begin);
    if (end == begin) return;
    stripped.append(text, copied, begin - copied);
    stripped.push_back(' ');
    copied = end;
  });
  stripped.append(text, copied, std::string_view::npos);
  return stripped;
}

std::string LeadingWord(std::string_view text) {
  std::size_t start = text.find_first_not_of(" \t\r");
  if (start == std::string_view::npos) return std::string();
  std::size_t end = start;
  while (end < text.size() && IsWordByte(text[end])) ++end;
  return std::string(text.substr(start, end - start));
}

void RecordFirstUse(NameMap& firstUseLine, std::string_view name, std::int32_t line) {
  auto [entry, added] = firstUseLine.emplace(name, line);
  if (!added && line < entry->second) entry->second = line;
}

void RecordUses(std::string_view text, std::int32_t line, NameMap& firstUseLine) {
  // An identifier never starts with a digit, so none is a number token.
  ForEachIdentifier<SizedLiterals::kSkipped>(text, [&firstUseLine, line](std::string_view identifier) {
    if (IsKeyword(identifier)) return;
    RecordFirstUse(firstUseLine, identifier, line);
  });
}

}  // namespace quill
