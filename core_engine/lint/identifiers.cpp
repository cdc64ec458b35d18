#include "lint/identifiers.h"

#include "common/pattern.h"
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

std::string StripSizedLiterals(std::string_view text) {
  if (text.find('\'') == std::string_view::npos) return std::string(text);
  static const Pattern kSizedLiteralPattern(R"(\b\d+\s*'\s*[bhdoBHDO]\s*\w+)", CaseMode::kIgnoreCase);
  return kSizedLiteralPattern.ReplaceAll(text, " ");
}

std::string LeadingWord(std::string_view text) {
  std::size_t start = text.find_first_not_of(" \t\r");
  if (start == std::string_view::npos) return std::string();
  std::size_t end = start;
  while (end < text.size() && IsWordByte(text[end])) ++end;
  return std::string(text.substr(start, end - start));
}

void RecordFirstUse(NameMap& firstUseLine, std::string_view name, std::int32_t line) {
  auto found = firstUseLine.find(name);
  if (found == firstUseLine.end()) {
    firstUseLine.emplace(std::string(name), line);
  } else if (line < found->second) {
    found->second = line;
  }
}

void RecordUses(std::string_view text, std::int32_t line, NameMap& firstUseLine) {
  const std::string stripped = StripSizedLiterals(text);
  ForEachIdentifier(stripped, [&firstUseLine, line](std::string_view identifier) {
    if (IsKeyword(identifier) || IsNumberToken(identifier)) return;
    RecordFirstUse(firstUseLine, identifier, line);
  });
}

}  // namespace quill
