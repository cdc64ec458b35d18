#include <memory>
#include <unordered_map>

#include "common/byte_search.h"
#include "lint/always_analysis.h"
#include "lint/identifiers.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

constexpr std::size_t kNoPosition = std::string_view::npos;

// Keeps the bytes at depth zero; the brackets themselves never stay, and an
// unmatched closer holds the depth below zero until an opener restores it.
// Only the brackets change the depth, so the walk goes from one to the next
// and keeps the run before it whole.
std::string StripNested(std::string_view text, char open, char close) {
  std::string kept;
  kept.reserve(text.size());
  long long depth = 0;
  std::size_t i = 0;
  while (i < text.size()) {
    const std::size_t bracket = FindEitherByte(text, i, open, close);
    const std::size_t runEnd = bracket == kNoPosition ? text.size() : bracket;
    if (depth == 0) kept.append(text, i, runEnd - i);
    if (bracket == kNoPosition) break;
    depth += text[bracket] == open ? 1 : -1;
    i = bracket + 1;
  }
  return kept;
}

// Finds the "[" that a backward walk from the "]" at `close` reaches when its
// depth returns to zero, or kNoPosition when the walk runs off the start.
// Results are kept per "]": a later walk that meets one of them skips its
// whole (balanced) group, or knows at once that it cannot close either. So
// every byte is walked over at most once per scan.
class BracketWalker {
 public:
  explicit BracketWalker(std::string_view text) : text_(text) {}

  std::size_t OpenerOf(std::size_t close) {
    std::size_t opener = kNoPosition;
    long long depth = 0;
    std::size_t i = close + 1;
    while (i > 0) {
      --i;
      char c = text_[i];
      if (c == ']') {
        if (i != close) {
          auto known = openers_.find(i);
          if (known != openers_.end()) {
            if (known->second == kNoPosition) break;
            i = known->second;
            continue;
          }
        }
        ++depth;
      } else if (c == '[') {
        if (--depth == 0) {
          opener = i;
          break;
        }
      }
    }
    openers_[close] = opener;
    return opener;
  }

 private:
  std::string_view text_;
  std::unordered_map<std::size_t, std::size_t> openers_;
};

struct Target {
  std::string_view name;
  bool indexed = false;
};

// The identifier written by the operator at `op`: walk back over white space,
// over one bracketed select if there is one, over white space again, and then
// over word bytes.
Target TargetBefore(std::string_view text, std::size_t op, BracketWalker& brackets) {
  Target target;
  std::size_t i = op;
  while (i > 0 && IsSpaceByte(text[i - 1])) --i;
  if (i > 0 && text[i - 1] == ']') {
    target.indexed = true;
    std::size_t opener = brackets.OpenerOf(i - 1);
    if (opener == kNoPosition) return target;
    i = opener;
    while (i > 0 && IsSpaceByte(text[i - 1])) --i;
  }
  std::size_t end = i;
  while (i > 0 && IsWordByte(text[i - 1])) --i;
  target.name = text.substr(i, end - i);
  return target;
}

// The right-hand sides of the operators before one ";" or LF (the links of
// an "a = b = c" chain) share their end, and each is a suffix of the one
// before it. What depends only on that end is worked out once per end: where
// the trimmed text stops, and the uses, since a suffix holds no identifier
// or sized literal that the longer text, on the same line, did not.
class SharedEnd {
 public:
  // Moves on to the right-hand sides ending at `end`.
  void Reset(std::size_t end) {
    trimmedEnd_ = kNoPosition;
    searchedTo_ = end;
    usesRecorded_ = false;
  }

  // The end of the right-hand side from `begin` without trailing space, TAB
  // and CR, or `begin` when nothing else is left. `begin` only grows between
  // calls for one end.
  std::size_t TrimmedEnd(std::string_view text, std::size_t begin) {
    while (trimmedEnd_ == kNoPosition && searchedTo_ > begin) {
      const char c = text[searchedTo_ - 1];
      if (c != ' ' && c != '\t' && c != '\r') {
        trimmedEnd_ = searchedTo_;
      } else {
        --searchedTo_;
      }
    }
    return trimmedEnd_ != kNoPosition && trimmedEnd_ > begin ? trimmedEnd_ : begin;
  }

  // Whether the uses of a right-hand side ending here still need recording.
  bool TakeUses() {
    if (usesRecorded_) return false;
    usesRecorded_ = true;
    return true;
  }

 private:
  std::size_t trimmedEnd_ = kNoPosition;
  std::size_t searchedTo_ = 0;
  bool usesRecorded_ = false;
};

}  // namespace

std::string StripParenthesized(std::string_view text) {
  return StripNested(text, '(', ')');
}

std::string StripBracketed(std::string_view text) {
  return StripNested(text, '[', ']');
}

void ScanAssignments(const std::shared_ptr<const std::string>& shared, std::string_view op, std::uint32_t startLine,
                     NameMap& firstUseLine, AlwaysBlock& block) {
  const std::string_view text = *shared;
  if (op.empty()) return;
  const bool blocking = op == "=";
  BracketWalker brackets(text);
  SharedEnd sharedEnd;
  std::size_t linesBefore = 0;
  std::size_t countedTo = 0;
  std::size_t stop = kNoPosition;
  bool stopKnown = false;
  std::size_t pos = 0;
  while (true) {
    std::size_t q = text.find(op, pos);
    if (q == kNoPosition) return;
    if (blocking && q + 1 < text.size() && text[q + 1] == '=') {
      pos = q + 2;
      continue;
    }
    pos = q + op.size();
    for (; countedTo < q; ++countedTo) {
      if (text[countedTo] == '\n') ++linesBefore;
    }
    Target target = TargetBefore(text, q, brackets);
    if (target.name.empty() || IsKeyword(target.name) || IsNumberToken(target.name)) continue;
    if (!stopKnown || stop < q) {
      stop = FindEitherByte(text, q, ';', '\n');
      stopKnown = true;
      sharedEnd.Reset(stop == kNoPosition ? text.size() : stop);
    }
    const std::size_t rhsEnd = stop == kNoPosition ? text.size() : stop;
    const std::uint32_t line = startLine + static_cast<std::uint32_t>(linesBefore);
    if (sharedEnd.TakeUses()) RecordUses(text.substr(pos, rhsEnd - pos), static_cast<std::int32_t>(line), firstUseLine);
    std::size_t begin = pos;
    while (begin < rhsEnd && (text[begin] == ' ' || text[begin] == '\t' || text[begin] == '\r')) ++begin;
    const std::size_t end = sharedEnd.TrimmedEnd(text, begin);
    AssignmentRecord record;
    record.target = std::string(target.name);
    record.rhs = TextPiece(shared, begin, end - begin);
    record.line = line;
    record.indexed = target.indexed;
    block.assignments.push_back(std::move(record));
  }
}

}  // namespace quill
