#include "highlight/classify_constraint_text.h"

#include <cstring>
#include <string_view>

#include "highlight/ascii_class.h"
#include "highlight/token_class.h"
#include "highlight/word_lists.h"
#include "highlight/word_sets.h"

namespace quill {

namespace {

// What the scan expects of the next word.
enum class ScanState {
  kNormal,
  kInPortBraces,    // inside "get_ports {...}": every word is a port
  kAfterPortsCall,  // right after "[get_ports": the next word is a port
};

constexpr std::string_view kGetPorts = "get_ports";
constexpr std::string_view kPinPrefix = "PIN_";

bool EqualsIgnoringCase(const unsigned char* at, std::string_view word) {
  for (std::size_t k = 0; k < word.size(); ++k) {
    if (LowerAsciiByte(at[k]) != LowerAsciiByte(static_cast<unsigned char>(word[k]))) return false;
  }
  return true;
}

bool IsSpaceOrTab(unsigned char c) {
  return c == ' ' || c == '\t';
}

void Mark(unsigned char* out, std::size_t begin, std::size_t end, TokenClass tokenClass) {
  std::memset(out + begin, static_cast<unsigned char>(tokenClass), end - begin);
}

// Whether the "{" at `brace` follows "get_ports", with only spaces and tabs
// between.
bool FollowsGetPorts(const unsigned char* text, std::size_t brace) {
  std::size_t end = brace;
  while (end > 0 && IsSpaceOrTab(text[end - 1])) --end;
  return end >= kGetPorts.size() && EqualsIgnoringCase(text + end - kGetPorts.size(), kGetPorts);
}

// Where "[get_ports" ends when the "[" at `bracket` opens one, else 0. Blanks
// may stand between; the name must not run on into a longer word.
std::size_t EndOfPortsCall(const unsigned char* text, std::size_t length, std::size_t bracket) {
  std::size_t p = bracket + 1;
  while (p < length && IsSpaceOrTab(text[p])) ++p;
  if (length - p < kGetPorts.size() || !EqualsIgnoringCase(text + p, kGetPorts)) return 0;
  const std::size_t end = p + kGetPorts.size();
  if (end < length && IsWordByte(text[end])) return 0;
  return end;
}

// Where the double-quoted string opened at `quote` ends: after the first
// quote not taken by a backslash, or at the end of the text.
std::size_t EndOfString(const unsigned char* text, std::size_t length, std::size_t quote) {
  std::size_t k = quote + 1;
  while (k < length) {
    if (text[k] == '\\') {
      k += 2;
    } else if (text[k] == '"') {
      return k + 1;
    } else {
      ++k;
    }
  }
  return length;
}

// Whether the word is an I/O standard: its run of letters, digits and "_"
// (`runLength` bytes, the word without a bit select) must go on past the
// first listed prefix that it starts with, and must be the whole word.
bool IsIoStandard(const unsigned char* word, std::size_t runLength, std::size_t wordLength) {
  for (std::string_view prefix : kIoStandardPrefixes) {
    if (runLength > prefix.size() && EqualsIgnoringCase(word, prefix)) return runLength == wordLength;
  }
  return false;
}

// Whether the word from `start` to `end` has the shape of a package pin:
// an optional "PIN_", one to three upper-case letters, one to three digits.
bool IsPinName(const unsigned char* text, std::size_t length, std::size_t start, std::size_t end) {
  std::size_t k = start;
  if (length - start >= kPinPrefix.size() && std::memcmp(text + k, kPinPrefix.data(), kPinPrefix.size()) == 0) {
    k += kPinPrefix.size();
  }
  std::size_t letters = 0;
  while (k < length && letters <= 3 && IsAsciiUpper(text[k])) ++k, ++letters;
  if (letters == 0 || letters > 3) return false;
  std::size_t digits = 0;
  while (k < length && digits <= 3 && IsAsciiDigit(text[k])) ++k, ++digits;
  if (digits == 0 || digits > 3) return false;
  if (k < length && IsWordByte(text[k])) return false;
  return k == end;
}

}  // namespace

void ClassifyConstraintText(const char* text, std::size_t length, unsigned char* out) {
  if (length == 0) return;
  std::memset(out, static_cast<unsigned char>(TokenClass::kPlain), length);
  const WordSets& sets = GetWordSets();
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  ScanState state = ScanState::kNormal;
  std::size_t i = 0;
  while (i < length) {
    const unsigned char c = bytes[i];
    if (c >= 0x80) {
      // A lead byte and its UTF-8 continuation bytes stay plain.
      ++i;
      while (i < length && (bytes[i] & 0xC0) == 0x80) ++i;
      continue;
    }
    switch (c) {
      case '#': {
        const void* lineFeed = std::memchr(bytes + i, '\n', length - i);
        const std::size_t end = lineFeed != nullptr
                                    ? static_cast<std::size_t>(static_cast<const unsigned char*>(lineFeed) - bytes)
                                    : length;
        Mark(out, i, end, TokenClass::kComment);
        i = end;
        continue;
      }
      case '"': {
        const std::size_t end = EndOfString(bytes, length, i);
        Mark(out, i, end, TokenClass::kString);
        i = end;
        continue;
      }
      case '{':
        out[i] = static_cast<unsigned char>(TokenClass::kBrace);
        if (state == ScanState::kNormal && FollowsGetPorts(bytes, i)) state = ScanState::kInPortBraces;
        ++i;
        continue;
      case '}':
        out[i] = static_cast<unsigned char>(TokenClass::kBrace);
        if (state == ScanState::kInPortBraces) state = ScanState::kNormal;
        ++i;
        continue;
      case '[': {
        const std::size_t end = EndOfPortsCall(bytes, length, i);
        if (end == 0) {
          ++i;
          continue;
        }
        Mark(out, end - kGetPorts.size(), end, TokenClass::kKeyword);
        state = ScanState::kAfterPortsCall;
        i = end;
        continue;
      }
      case ']':
        if (state == ScanState::kAfterPortsCall) state = ScanState::kNormal;
        ++i;
        continue;
      default:
        break;
    }
    if (IsAsciiDigit(c)) {
      // Numbers such as "100", "3.3" and "10.000" stay plain.
      ++i;
      while (i < length && (IsAsciiDigit(bytes[i]) || bytes[i] == '.')) ++i;
      continue;
    }
    const bool isOption = c == '-' && i + 1 < length && IsWordStartByte(bytes[i + 1]);
    if (!IsWordStartByte(c) && !isOption) {
      ++i;
      continue;
    }
    const std::size_t start = i;
    std::size_t end = i + 1;
    while (end < length && IsWordByte(bytes[end])) ++end;
    // The run of letters, digits and "_" from the word's first byte: empty
    // for an option, which starts with "-".
    const std::size_t runEnd = isOption ? start : end;
    if (end < length && bytes[end] == '[') {
      // A bit select such as "led[3]" belongs to the word.
      std::size_t k = end + 1;
      while (k < length && IsAsciiDigit(bytes[k])) ++k;
      if (k > end + 1 && k < length && bytes[k] == ']') end = k + 1;
    }
    i = end;
    if (state != ScanState::kNormal) {
      Mark(out, start, end, TokenClass::kPortName);
      if (state == ScanState::kAfterPortsCall) state = ScanState::kNormal;
      continue;
    }
    TokenClass wordClass = ClassifyListedWord(sets, bytes + start, end - start);
    if (wordClass == TokenClass::kPlain) {
      if (IsIoStandard(bytes + start, runEnd - start, end - start)) {
        wordClass = TokenClass::kIoStandard;
      } else if (IsPinName(bytes, length, start, end)) {
        wordClass = TokenClass::kPinName;
      }
    }
    if (wordClass != TokenClass::kPlain) Mark(out, start, end, wordClass);
  }
}

}  // namespace quill
