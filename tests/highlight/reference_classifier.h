// A second, deliberately plain classifier for differential tests: it follows
// the scan step by step with the C library's character tests, std::string
// copies, standard hash sets and a regular expression for the pin shape.
// Slow, but written independently of the engine's fast paths.
#ifndef QUILL_TESTS_HIGHLIGHT_REFERENCE_CLASSIFIER_H_
#define QUILL_TESTS_HIGHLIGHT_REFERENCE_CLASSIFIER_H_

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "common/pattern.h"
#include "highlight/word_lists.h"

namespace quill::test {

inline bool RefAlpha(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) != 0;
}
inline bool RefDigit(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}
inline bool RefWordChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

inline std::string RefLower(std::string_view s) {
  std::string lower(s);
  for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower;
}

struct RefSets {
  std::unordered_set<std::string> keywords, tools, flows, properties;
};

inline const RefSets& ReferenceSets() {
  static const RefSets sets = [] {
    RefSets built;
    for (std::string_view w : kConstraintKeywords) built.keywords.insert(RefLower(w));
    for (std::string_view w : kToolCommands) built.tools.insert(RefLower(w));
    for (std::string_view w : kFlowCommands) built.flows.insert(RefLower(w));
    for (std::string_view w : kPinProperties) built.properties.insert(RefLower(w));
    return built;
  }();
  return sets;
}

inline std::vector<unsigned char> ReferenceClassify(std::string_view text) {
  static const Pattern kPinShape("^(PIN_)?[A-Z]{1,3}[0-9]{1,3}(?![A-Za-z0-9_])");
  const RefSets& sets = ReferenceSets();
  const std::size_t n = text.size();
  std::vector<unsigned char> out(n, 0);
  auto fill = [&](std::size_t from, std::size_t to, unsigned char code) {
    for (std::size_t k = from; k < to; ++k) out[k] = code;
  };
  int state = 0;
  std::size_t i = 0;
  while (i < n) {
    const char c = text[i];
    const auto u = static_cast<unsigned char>(c);
    if (u >= 128) {
      ++i;
      while (i < n && (static_cast<unsigned char>(text[i]) & 0xC0) == 0x80) ++i;
    } else if (c == '#') {
      std::size_t end = text.find('\n', i);
      if (end == std::string_view::npos) end = n;
      fill(i, end, 1);
      i = end;
    } else if (c == '"') {
      std::size_t j = i + 1;
      bool closed = false;
      while (j < n && !closed) {
        if (text[j] == '\\') {
          j += 2;
        } else {
          closed = text[j] == '"';
          ++j;
        }
      }
      j = std::min(j, n);
      fill(i, j, 2);
      i = j;
    } else if (c == '{') {
      out[i] = 8;
      if (state == 0) {
        std::size_t j = i;
        while (j > 0 && (text[j - 1] == ' ' || text[j - 1] == '\t')) --j;
        if (j >= 9 && RefLower(text.substr(j - 9, 9)) == "get_ports") state = 1;
      }
      ++i;
    } else if (c == '}') {
      out[i] = 8;
      if (state == 1) state = 0;
      ++i;
    } else if (c == '[') {
      std::size_t p = i + 1;
      while (p < n && (text[p] == ' ' || text[p] == '\t')) ++p;
      if (p + 9 <= n && RefLower(text.substr(p, 9)) == "get_ports" && (p + 9 == n || !RefWordChar(text[p + 9]))) {
        fill(p, p + 9, 3);
        state = 2;
        i = p + 9;
      } else {
        ++i;
      }
    } else if (c == ']') {
      if (state == 2) state = 0;
      ++i;
    } else if (std::isspace(u) != 0 || c == ',' || c == ';') {
      ++i;
    } else if (RefDigit(c)) {
      while (i < n && (RefDigit(text[i]) || text[i] == '.')) ++i;
    } else if (RefAlpha(c) || c == '_' || (c == '-' && i + 1 < n && (RefAlpha(text[i + 1]) || text[i + 1] == '_'))) {
      const std::size_t start = i;
      std::size_t end = i + 1;
      while (end < n && RefWordChar(text[end])) ++end;
      if (end < n && text[end] == '[') {
        std::size_t k = end + 1;
        while (k < n && RefDigit(text[k])) ++k;
        if (k > end + 1 && k < n && text[k] == ']') end = k + 1;
      }
      i = end;
      if (state != 0) {
        fill(start, end, 7);
        if (state == 2) state = 0;
        continue;
      }
      const std::string word = RefLower(text.substr(start, end - start));
      if (sets.keywords.count(word) != 0) {
        fill(start, end, 3);
      } else if (sets.tools.count(word) != 0) {
        fill(start, end, 9);
      } else if (sets.flows.count(word) != 0) {
        fill(start, end, 10);
      } else if (sets.properties.count(word) != 0) {
        fill(start, end, 4);
      } else {
        std::size_t runEnd = start;
        while (runEnd < n && RefWordChar(text[runEnd])) ++runEnd;
        bool standard = false;
        for (std::string_view prefix : kIoStandardPrefixes) {
          if (n - start >= prefix.size() && RefLower(text.substr(start, prefix.size())) == RefLower(prefix) &&
              runEnd - start > prefix.size()) {
            standard = runEnd == end;
            break;
          }
        }
        if (standard) {
          fill(start, end, 5);
        } else if (std::isupper(u) != 0) {
          Match match;
          if (kPinShape.Search(text.substr(start, end - start + 1), &match) && match.Length() == end - start) {
            fill(start, end, 6);
          }
        }
      }
    } else {
      ++i;
    }
  }
  return out;
}

}  // namespace quill::test

#endif  // QUILL_TESTS_HIGHLIGHT_REFERENCE_CLASSIFIER_H_
