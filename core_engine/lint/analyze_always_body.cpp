#include <algorithm>
#include <array>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "lint/always_analysis.h"
#include "lint/identifiers.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

constexpr std::size_t kNoPosition = std::string_view::npos;
constexpr std::string_view kEndcase = "endcase";

// The body without a leading "^\s*begin\b" and then without a trailing
// "\bend\s*$" (both ignoring case). Both only cut the ends, so the result is
// a view of the body.
std::string_view WorkCopy(std::string_view body) {
  std::size_t first = 0;
  while (first < body.size() && IsSpaceByte(body[first])) ++first;
  if (HasWordAtIgnoreCase(body, first, "begin") && IsWordBoundary(body, first + 5)) body.remove_prefix(first + 5);
  std::size_t last = body.size();
  while (last > 0 && IsSpaceByte(body[last - 1])) --last;
  if (last >= 3 && HasWordAtIgnoreCase(body, last - 3, "end") && IsWordBoundary(body, last - 3)) {
    body = body.substr(0, last - 3);
  }
  return body;
}

// The targets found so far, by exact spelling, as views into the scanned
// text. A body assigns a few targets, found in a short list without an
// allocation; past that, a hash set takes over.
class TargetSet {
 public:
  // True when `name` is new.
  bool Insert(std::string_view name) {
    if (!hashed_.empty()) return hashed_.insert(name).second;
    const auto listed = first_.begin() + static_cast<std::ptrdiff_t>(count_);
    if (std::find(first_.begin(), listed, name) != listed) return false;
    if (count_ < first_.size()) {
      first_[count_++] = name;
    } else {
      hashed_.insert(first_.begin(), first_.end());
      hashed_.insert(name);
    }
    return true;
  }

 private:
  std::array<std::string_view, 16> first_;
  std::size_t count_ = 0;
  std::unordered_set<std::string_view> hashed_;
};

// Counts the matches of "(\w+)\s*<=" over `text`, then those of
// "(\w+)\s*=\s*(?!\s*=)", and lists the targets in that order. Every match
// begins at the start of a maximal word run, and no run lies inside another
// match, so each run is tested on its own; a run is followed by "<" or "="
// but not both, so one walk finds the matches of both and the blocking ones
// wait until the others are listed.
void CollectTargets(std::string_view text, AlwaysBlock& block) {
  TargetSet assigned;
  std::vector<std::string_view> blockingTargets;
  ForEachWordRun(text, [&](std::size_t begin, std::size_t end) {
    std::size_t i = end;
    while (i < text.size() && IsSpaceByte(text[i])) ++i;
    const bool blocking = i < text.size() && text[i] == '=';
    if (blocking) {
      ++i;
      while (i < text.size() && IsSpaceByte(text[i])) ++i;
      if (i < text.size() && text[i] == '=') return;
    } else if (i + 1 >= text.size() || text[i] != '<' || text[i + 1] != '=') {
      return;
    }
    std::string_view name = text.substr(begin, end - begin);
    if (IsKeyword(name)) return;
    if (blocking) {
      blockingTargets.push_back(name);
      return;
    }
    if (assigned.Insert(name)) block.assignedSignals.emplace_back(name);
    ++block.nonBlockingCount;
  });
  for (std::string_view name : blockingTargets) {
    if (assigned.Insert(name)) block.assignedSignals.emplace_back(name);
    ++block.blockingCount;
  }
}

void AddLatchReason(AlwaysBlock& block, std::string_view reason) {
  block.latchRisk = true;
  if (!block.latchReason.empty()) block.latchReason.append("; ");
  block.latchReason.append(reason);
}

// Compares the "if" and "else" counts after every "\belse\s+if\b" has been
// removed. Removing one joins two non-word bytes, so the other words stay as
// they are: an "else" run followed by white space and an "if" run is one
// removed pair, and the remaining runs are counted.
void CheckIfElseBalance(std::string_view work, AlwaysBlock& block) {
  long long ifs = 0;
  long long elses = 0;
  std::size_t pendingElseEnd = kNoPosition;
  ForEachWordRun(work, [&](std::size_t begin, std::size_t end) {
    std::string_view word = work.substr(begin, end - begin);
    bool isIf = EqualsIgnoreCase(word, "if");
    if (isIf && pendingElseEnd != kNoPosition && pendingElseEnd < begin) {
      bool allSpace = true;
      for (std::size_t i = pendingElseEnd; i < begin && allSpace; ++i) allSpace = IsSpaceByte(work[i]);
      if (allSpace) {
        --elses;
        pendingElseEnd = kNoPosition;
        return;
      }
    }
    pendingElseEnd = kNoPosition;
    if (isIf) {
      ++ifs;
    } else if (EqualsIgnoreCase(word, "else")) {
      ++elses;
      pendingElseEnd = end;
    }
  });
  if (ifs > elses) {
    AddLatchReason(block, "if without else (if:" + std::to_string(ifs) + " else:" + std::to_string(elses) + ")");
  }
}

// The case-end walk counts +1 wherever "case" (lower case) stands before a
// non-word byte, with no test of the byte before it, so the "case" inside a
// lower-case "endcase" counts too, and -1 wherever "endcase" (any case) does.
// Each statement ends at the first -1 that takes its own count from 1 to 0.
// All statements are served by one pass: a statement waits under the running
// level it started at, and a -1 that falls to that level ends it.
std::vector<std::size_t> CaseEnds(std::string_view work, const std::vector<std::size_t>& starts) {
  std::vector<std::size_t> ends(starts.size(), kNoPosition);
  std::unordered_map<long long, std::vector<std::size_t>> waiting;
  std::size_t waitingCount = 0;
  std::size_t next = 0;
  long long level = 0;
  for (std::size_t i = starts.front(); i < work.size(); ++i) {
    while (next < starts.size() && starts[next] == i) {
      waiting[level].push_back(next++);
      ++waitingCount;
    }
    if (next == starts.size() && waitingCount == 0) break;
    if (work[i] == 'c' && work.compare(i, 4, "case") == 0 && IsWordBoundary(work, i + 4)) {
      ++level;
    } else if (HasWordAtIgnoreCase(work, i, kEndcase) && IsWordBoundary(work, i + kEndcase.size())) {
      --level;
      auto found = waiting.find(level);
      if (found != waiting.end()) {
        for (std::size_t index : found->second) ends[index] = i;
        waitingCount -= found->second.size();
        waiting.erase(found);
      }
    }
  }
  return ends;
}

// Positions of the matches of "\bdefault\s*:" (ignoring case): a "default"
// word run followed by optional white space and ":".
std::vector<std::size_t> DefaultLabels(std::string_view work) {
  std::vector<std::size_t> labels;
  ForEachWordRun(work, [&](std::size_t begin, std::size_t end) {
    if (!EqualsIgnoreCase(work.substr(begin, end - begin), "default")) return;
    std::size_t i = end;
    while (i < work.size() && IsSpaceByte(work[i])) ++i;
    if (i < work.size() && work[i] == ':') labels.push_back(begin);
  });
  return labels;
}

void CheckCaseDefaults(std::string_view work, AlwaysBlock& block) {
  std::vector<std::size_t> starts;
  ForEachWordRun(work, [&](std::size_t begin, std::size_t end) {
    if (EqualsIgnoreCase(work.substr(begin, end - begin), "case")) starts.push_back(begin);
  });
  if (starts.empty()) return;
  const std::vector<std::size_t> ends = CaseEnds(work, starts);
  const std::vector<std::size_t> labels = DefaultLabels(work);
  for (std::size_t k = 0; k < starts.size(); ++k) {
    std::size_t textEnd = ends[k] == kNoPosition ? work.size() : std::min(ends[k] + kEndcase.size(), work.size());
    auto label = std::lower_bound(labels.begin(), labels.end(), starts[k]);
    if (label == labels.end() || *label >= textEnd) AddLatchReason(block, "case without default");
  }
}

}  // namespace

void AnalyzeAlwaysBody(std::string_view body, AlwaysBlock& block, std::uint32_t bodyStartLine, NameMap& firstUseLine) {
  const std::string_view work = WorkCopy(body);
  RecordUses(work, static_cast<std::int32_t>(bodyStartLine), firstUseLine);

  // Shared with the assignment records, whose right-hand sides are pieces of it.
  const auto unparenthesized = std::make_shared<const std::string>(StripParenthesized(work));
  const std::string bare = StripBracketed(*unparenthesized);
  CollectTargets(bare, block);

  if (block.isCombinational) {
    CheckIfElseBalance(work, block);
    CheckCaseDefaults(work, block);
  }

  // The assignments counted above are about those the scans record: the
  // list is sized once instead of growing from one.
  block.assignments.reserve(block.assignments.size() + block.nonBlockingCount + block.blockingCount);
  ScanAssignments(unparenthesized, "<=", bodyStartLine, firstUseLine, block);
  ScanAssignments(unparenthesized, "=", bodyStartLine, firstUseLine, block);
}

}  // namespace quill
