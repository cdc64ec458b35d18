#include <algorithm>
#include <cstdint>
#include <functional>
#include <unordered_map>

#include "lint/checks/check_helpers.h"
#include "lint/checks/checks.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

// Whether "\b" + name + "\b", ignoring ASCII letter case, matches somewhere
// in `text`, the name taken literally. An empty name matches wherever \b
// holds, that is whenever the text holds a word byte.
bool ContainsWholeWord(std::string_view text, std::string_view name) {
  if (name.size() > text.size()) return false;
  for (std::size_t pos = 0; pos + name.size() <= text.size(); ++pos) {
    if (IsWordBoundary(text, pos) && HasWordAtIgnoreCase(text, pos, name) && IsWordBoundary(text, pos + name.size())) {
      return true;
    }
  }
  return false;
}

// Answers ContainsWholeWord for the right-hand sides of always-block
// assignments. Those that end at the same byte of the same text are
// suffixes of one another (the links of an "a = b = c" chain); for them the
// words are gathered once, each with the start of its last occurrence, and a
// target occurs in a suffix when its last occurrence starts inside it.
class FeedbackFinder {
 public:
  bool Contains(const TextPiece& rhs, std::string_view target) {
    const std::string* text = rhs.Text();
    // Short texts, and pieces that do not start at a word boundary of their
    // text, are read directly.
    if (rhs.size() <= kDirectLimit || target.empty() || (rhs.Begin() > 0 && IsWordByte((*text)[rhs.Begin() - 1]))) {
      return ContainsWholeWord(rhs.View(), target);
    }
    Words& words = words_[Key{text, rhs.End()}];
    if (words.from == kNotRead) {
      words.from = rhs.End();
      Gather(*text, rhs.Begin(), rhs.End(), words, /*later=*/true);
    } else if (rhs.Begin() < words.from) {
      Gather(*text, rhs.Begin(), words.from, words, /*later=*/false);
    }
    words.from = std::min(words.from, rhs.Begin());
    auto found = words.lastStart.find(target);
    return found != words.lastStart.end() && static_cast<std::size_t>(found->second) >= rhs.Begin();
  }

 private:
  static constexpr std::size_t kDirectLimit = 256;
  static constexpr std::size_t kNotRead = static_cast<std::size_t>(-1);

  struct Key {
    const std::string* text;
    std::size_t end;
    bool operator==(const Key& other) const { return text == other.text && end == other.end; }
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<const void*>()(key.text) ^ (key.end * 0x9E3779B97F4A7C15ull);
    }
  };
  struct Words {
    std::size_t from = kNotRead;
    NameMap lastStart;
  };

  // Enters the words of [begin, end); a word read from text after what was
  // read before replaces an earlier start, one read from text before it does
  // not.
  static void Gather(std::string_view text, std::size_t begin, std::size_t end, Words& words, bool later) {
    const std::string_view stretch = text.substr(begin, end - begin);
    ForEachWordRun(stretch, [&](std::size_t wordBegin, std::size_t wordEnd) {
      const std::string_view word = stretch.substr(wordBegin, wordEnd - wordBegin);
      const auto start = static_cast<std::int32_t>(begin + wordBegin);
      if (later) {
        words.lastStart[word] = start;
      } else {
        words.lastStart.emplace(word, start);
      }
    });
  }

  std::unordered_map<Key, Words, KeyHash> words_;
};

}  // namespace

std::vector<Diagnostic> CheckCombLoop(const ModuleModel& model) {
  std::vector<Diagnostic> findings;
  for (const ContAssign& assign : model.assigns) {
    for (const std::string& name : assign.lhsNames) {
      if (!ContainsWholeWord(assign.rhs, name)) continue;
      findings.push_back(MakeDiagnostic(CheckId::kCombLoop, assign.line, "assign '" + name + "' feeds back to itself"));
    }
  }
  FeedbackFinder finder;
  for (const AlwaysBlock& block : model.alwaysBlocks) {
    if (block.isSequential) continue;
    for (const AssignmentRecord& record : block.assignments) {
      if (!finder.Contains(record.rhs, record.target)) continue;
      findings.push_back(MakeDiagnostic(CheckId::kCombLoop, record.line,
                                        "signal '" + record.target + "' feeds back to itself in always"));
    }
  }
  return findings;
}

}  // namespace quill
