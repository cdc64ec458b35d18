#include "highlight/classify_constraint_text.h"

#include <cstdint>
#include <cstring>
#include <string_view>

#include "highlight/ascii_class.h"
#include "highlight/byte_kind.h"
#include "highlight/listed_words.h"
#include "highlight/token_class.h"
#include "highlight/word_run.h"
#include "highlight/word_shapes.h"

namespace quill {

namespace {

// What the scan expects of the next word.
enum class ScanState {
  kNormal,
  kInPortBraces,    // inside "get_ports {...}": every word is a port
  kAfterPortsCall,  // right after "[get_ports": the next word is a port
};

constexpr std::string_view kGetPorts = "get_ports";

bool EqualsIgnoringCase(const unsigned char* at, std::string_view word) {
  for (std::size_t k = 0; k < word.size(); ++k) {
    if (LowerAsciiByte(at[k]) != LowerAsciiByte(static_cast<unsigned char>(word[k]))) return false;
  }
  return true;
}

bool IsSpaceOrTab(unsigned char c) {
  return c == ' ' || c == '\t';
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

// Where the line holding `from` ends: at its LF, or at the end of the text.
std::size_t EndOfLine(const unsigned char* text, std::size_t length, std::size_t from) {
  const void* lineFeed = std::memchr(text + from, '\n', length - from);
  return lineFeed != nullptr ? static_cast<std::size_t>(static_cast<const unsigned char*>(lineFeed) - text) : length;
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

// Sets `count` bytes at `at` to `value`. Most tokens are a few bytes long,
// where two overlapping stores cost less than a call to memset.
void FillBytes(unsigned char* at, std::size_t count, unsigned char value) {
  if (count > 16) {
    std::memset(at, value, count);
    return;
  }
  const std::uint64_t eight = 0x0101010101010101u * value;
  if (count >= 8) {
    std::memcpy(at, &eight, 8);
    std::memcpy(at + count - 8, &eight, 8);
  } else if (count >= 4) {
    const auto four = static_cast<std::uint32_t>(eight);
    std::memcpy(at, &four, 4);
    std::memcpy(at + count - 4, &four, 4);
  } else if (count >= 2) {
    const auto two = static_cast<std::uint16_t>(eight);
    std::memcpy(at, &two, 2);
    std::memcpy(at + count - 2, &two, 2);
  } else if (count == 1) {
    *at = value;
  }
}

// One left-to-right pass over a text. Between tokens the scan skips plain
// bytes in a tight table loop; each Step classifies the token that starts at
// `at` and returns the position after it.
class ConstraintScanner {
 public:
  ConstraintScanner(const unsigned char* text, std::size_t length, unsigned char* out)
      : text_(text), length_(length), out_(out) {}

  void Run() {
    // Locals rather than members: no call can change them, so the plain-byte
    // loop keeps them in registers.
    const unsigned char* const text = text_;
    const std::size_t length = length_;
    std::size_t i = 0;
    while (i < length) {
      while (kByteKinds[text[i]] == ByteKind::kPlain) {
        if (++i == length) return;
      }
      i = Step(i);
    }
  }

 private:
  std::size_t Step(std::size_t at) {
    switch (kByteKinds[text_[at]]) {
      case ByteKind::kHash: {
        const std::size_t end = EndOfLine(text_, length_, at);
        Mark(at, end, TokenClass::kComment);
        return end;
      }
      case ByteKind::kQuote: {
        const std::size_t end = EndOfString(text_, length_, at);
        Mark(at, end, TokenClass::kString);
        return end;
      }
      case ByteKind::kOpenBrace:
        out_[at] = static_cast<unsigned char>(TokenClass::kBrace);
        if (state_ == ScanState::kNormal && FollowsGetPorts(text_, at)) state_ = ScanState::kInPortBraces;
        return at + 1;
      case ByteKind::kCloseBrace:
        out_[at] = static_cast<unsigned char>(TokenClass::kBrace);
        if (state_ == ScanState::kInPortBraces) state_ = ScanState::kNormal;
        return at + 1;
      case ByteKind::kOpenBracket:
        return ScanOpenBracket(at);
      case ByteKind::kCloseBracket:
        if (state_ == ScanState::kAfterPortsCall) state_ = ScanState::kNormal;
        return at + 1;
      case ByteKind::kDash:
        if (at + 1 < length_ && kByteKinds[text_[at + 1]] == ByteKind::kWordStart) return ScanWord(at, true);
        return at + 1;
      case ByteKind::kWordStart:
        return ScanWord(at, false);
      case ByteKind::kPlain:
        break;
    }
    return at + 1;
  }

  // "[get_ports" makes the next word a port; any other "[" stays plain.
  std::size_t ScanOpenBracket(std::size_t at) {
    const std::size_t end = EndOfPortsCall(text_, length_, at);
    if (end == 0) return at + 1;
    Mark(end - kGetPorts.size(), end, TokenClass::kKeyword);
    state_ = ScanState::kAfterPortsCall;
    return end;
  }

  // A word: letters, digits and "_" after a letter, "_" or (for an option)
  // "-", with a bit select such as "[3]" right after it.
  std::size_t ScanWord(std::size_t start, bool isOption) {
    std::size_t end = EndOfWordRun(text_, length_, start + 1);
    // The run of letters, digits and "_" from the word's first byte, which an
    // option's "-" leaves empty.
    const std::size_t runEnd = isOption ? start : end;
    if (end < length_ && text_[end] == '[') {
      std::size_t k = end + 1;
      while (k < length_ && IsAsciiDigit(text_[k])) ++k;
      if (k > end + 1 && k < length_ && text_[k] == ']') end = k + 1;
    }
    if (state_ != ScanState::kNormal) {
      Mark(start, end, TokenClass::kPortName);
      if (state_ == ScanState::kAfterPortsCall) state_ = ScanState::kNormal;
      return end;
    }
    Mark(start, end, ClassifyWord(start, runEnd, end));
    return end;
  }

  // Listed words first, in the order of the lists, then I/O standards, then
  // package pins.
  TokenClass ClassifyWord(std::size_t start, std::size_t runEnd, std::size_t end) const {
    const TokenClass listed = ClassifyListedWord(text_ + start, end - start);
    if (listed != TokenClass::kPlain) return listed;
    if (IsIoStandard(text_ + start, runEnd - start, end - start)) return TokenClass::kIoStandard;
    if (IsAsciiUpper(text_[start]) && IsPinName(text_, length_, start, end)) return TokenClass::kPinName;
    return TokenClass::kPlain;
  }

  void Mark(std::size_t begin, std::size_t end, TokenClass tokenClass) {
    if (tokenClass == TokenClass::kPlain) return;
    FillBytes(out_ + begin, end - begin, static_cast<unsigned char>(tokenClass));
  }

  const unsigned char* text_;
  std::size_t length_;
  unsigned char* out_;
  ScanState state_ = ScanState::kNormal;
};

}  // namespace

void ClassifyConstraintText(const char* text, std::size_t length, unsigned char* out) {
  if (length == 0) return;
  std::memset(out, static_cast<unsigned char>(TokenClass::kPlain), length);
  ConstraintScanner(reinterpret_cast<const unsigned char*>(text), length, out).Run();
}

}  // namespace quill
