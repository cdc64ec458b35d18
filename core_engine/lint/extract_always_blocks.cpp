// Finds the always blocks of the prepared text. Each keyword takes the first
// "@" at or after it, the first "(" after that, the ")" that balances it and
// then a body: a begin/end block or one statement. The searches of different
// blocks may cover the same text (an always_comb takes the list of the next
// "@", bodies may never end), so each kind of search is answered for all
// blocks together in one forward pass instead of once per block.
#include <algorithm>
#include <unordered_map>
#include <vector>

#include "common/byte_search.h"
#include "lint/always_analysis.h"
#include "lint/steps.h"
#include "lint/word_scan.h"

namespace quill {
namespace {

constexpr std::size_t kNoPosition = std::string_view::npos;

// Line numbers of positions: LF counts are kept for every kChunk bytes, and
// the rest of a chunk is counted on demand.
class LineIndex {
 public:
  explicit LineIndex(std::string_view text) : text_(text) {
    chunkLines_.reserve(text.size() / kChunk + 1);
    std::size_t lines = 0;
    for (std::size_t chunk = 0; chunk < text.size(); chunk += kChunk) {
      chunkLines_.push_back(lines);
      lines += CountLineFeeds(text.substr(chunk, kChunk));
    }
    chunkLines_.push_back(lines);
  }

  // The number of LFs before `pos`.
  std::uint32_t LineAt(std::size_t pos) const {
    pos = std::min(pos, text_.size());
    std::size_t chunk = pos / kChunk;
    std::size_t lines = chunkLines_[chunk] + CountLineFeeds(text_.substr(chunk * kChunk, pos - chunk * kChunk));
    return static_cast<std::uint32_t>(lines);
  }

 private:
  static constexpr std::size_t kChunk = 256;
  std::string_view text_;
  std::vector<std::size_t> chunkLines_;
};

struct Candidate {
  std::size_t keyword = 0;  // first byte of the always keyword
  std::size_t at = 0;       // the "@" its sensitivity list starts with
  std::size_t open = 0;     // the first "(" at or after the "@"
  std::size_t close = 0;    // the ")" that balances it, or `open` itself
  std::size_t bodyStart = 0;
  std::size_t bodyEnd = kNoPosition;  // exclusive; kNoPosition: no block
};

bool IsAlwaysKeyword(std::string_view word) {
  return EqualsIgnoreCase(word, "always") || EqualsIgnoreCase(word, "always_comb") ||
         EqualsIgnoreCase(word, "always_ff") || EqualsIgnoreCase(word, "always_latch");
}

// One candidate per match of "\balways(_(comb|ff|latch))?\b" (ignoring case)
// that has an "@" and then a "(" somewhere after it. Both searches move
// forward with the keywords, and once one fails it fails for all later ones.
// Every keyword spelling holds a "y", so only the word runs with one are read.
std::vector<Candidate> FindCandidates(std::string_view text) {
  std::vector<Candidate> candidates;
  std::size_t at = kNoPosition;
  std::size_t open = kNoPosition;
  bool exhausted = false;
  ForEachWordRunHolding(text, 'y', 'Y', [&](std::size_t begin, std::size_t end) {
    if (exhausted || !IsAlwaysKeyword(text.substr(begin, end - begin))) return;
    if (at == kNoPosition || at < begin) {
      at = text.find('@', begin);
      if (at == kNoPosition) {
        exhausted = true;
        return;
      }
      if (open == kNoPosition || open < at) open = text.find('(', at);
    }
    if (open == kNoPosition) {
      exhausted = true;
      return;
    }
    Candidate candidate;
    candidate.keyword = begin;
    candidate.at = at;
    candidate.open = open;
    candidates.push_back(candidate);
  });
  return candidates;
}

// The balancing ")" of each "(" in `opens` (ascending, distinct), or the "("
// itself when the text ends first. The unanswered opens form a stack whose
// levels rise towards the top, so a ")" can only answer the top one.
std::vector<std::size_t> MatchClosers(std::string_view text, const std::vector<std::size_t>& opens) {
  std::vector<std::size_t> closers(opens);
  struct Waiting {
    long long level;
    std::size_t index;
  };
  std::vector<Waiting> waiting;
  std::size_t next = 0;
  long long level = 0;
  // Every open is a "(", so the walk can go from parenthesis to parenthesis.
  for (std::size_t i = FindParenthesis(text, opens.front()); i != kNoPosition; i = FindParenthesis(text, i + 1)) {
    if (next < opens.size() && opens[next] == i) waiting.push_back({level, next++});
    if (text[i] == '(') {
      ++level;
    } else {
      --level;
      if (!waiting.empty() && waiting.back().level == level) {
        closers[waiting.back().index] = i;
        waiting.pop_back();
      }
    }
    if (next == opens.size() && waiting.empty()) break;
  }
  return closers;
}

// After the list: white space, then optionally ":" and white space again.
std::size_t BodyStartAfter(std::string_view text, std::size_t close) {
  std::size_t i = close + 1;
  while (i < text.size() && IsSpaceByte(text[i])) ++i;
  if (i < text.size() && text[i] == ':') {
    ++i;
    while (i < text.size() && IsSpaceByte(text[i])) ++i;
  }
  return i;
}

// The exclusive end of each begin/end body starting at `starts` (ascending,
// distinct): just after the "end" that brings the body's own count from 1 to
// 0, or the end of the text. The words are those of "\bbegin\b|\bend\b"
// (ignoring case); exactly "begin", "Begin" and "BEGIN" count up, every other
// spelling counts down. A body waits under the running level it started at,
// and a word that falls to that level ends it. Both words hold an "n", and
// only they change the level, so the runs without one are passed over: a
// body that starts among them waits under the same level either way.
std::vector<std::size_t> BeginEndBodyEnds(std::string_view text, const std::vector<std::size_t>& starts) {
  std::vector<std::size_t> ends(starts.size(), text.size());
  std::unordered_map<long long, std::vector<std::size_t>> waiting;
  std::size_t waitingCount = 0;
  std::size_t next = 0;
  long long level = 0;
  std::string_view rest = text.substr(starts.front());
  const std::size_t offset = starts.front();
  bool done = false;
  auto enter = [&](std::size_t upTo) {
    while (next < starts.size() && starts[next] <= upTo) {
      waiting[level].push_back(next++);
      ++waitingCount;
    }
  };
  ForEachWordRunHolding(rest, 'n', 'N', [&](std::size_t begin, std::size_t end) {
    if (done) return;
    enter(offset + begin);
    if (next == starts.size() && waitingCount == 0) {
      done = true;
      return;
    }
    std::string_view word = rest.substr(begin, end - begin);
    if (word == "begin" || word == "Begin" || word == "BEGIN") {
      ++level;
    } else if (EqualsIgnoreCase(word, "begin") || EqualsIgnoreCase(word, "end")) {
      --level;
      auto found = waiting.find(level);
      if (found != waiting.end()) {
        for (std::size_t index : found->second) ends[index] = offset + end;
        waitingCount -= found->second.size();
        waiting.erase(found);
      }
    }
  });
  return ends;
}

// The exclusive end of each one-statement body starting at `starts`
// (ascending, distinct): just after the first ";", or kNoPosition.
std::vector<std::size_t> StatementBodyEnds(std::string_view text, const std::vector<std::size_t>& starts) {
  std::vector<std::size_t> ends(starts.size(), kNoPosition);
  std::size_t semicolon = kNoPosition;
  bool searched = false;
  for (std::size_t k = 0; k < starts.size(); ++k) {
    if (!searched || (semicolon != kNoPosition && semicolon < starts[k])) {
      semicolon = text.find(';', starts[k]);
      searched = true;
    }
    if (semicolon == kNoPosition) break;
    ends[k] = semicolon + 1;
  }
  return ends;
}

bool IsBeginBody(std::string_view text, std::size_t start) {
  return text.compare(start, 5, "begin") == 0;
}

void FindBodyEnds(std::string_view text, std::vector<Candidate>& candidates) {
  std::vector<std::size_t> beginStarts;
  std::vector<std::size_t> statementStarts;
  for (const Candidate& candidate : candidates) {
    (IsBeginBody(text, candidate.bodyStart) ? beginStarts : statementStarts).push_back(candidate.bodyStart);
  }
  for (std::vector<std::size_t>* starts : {&beginStarts, &statementStarts}) {
    std::sort(starts->begin(), starts->end());
    starts->erase(std::unique(starts->begin(), starts->end()), starts->end());
  }
  std::vector<std::size_t> beginEnds;
  if (!beginStarts.empty()) beginEnds = BeginEndBodyEnds(text, beginStarts);
  std::vector<std::size_t> statementEnds = StatementBodyEnds(text, statementStarts);
  for (Candidate& candidate : candidates) {
    bool isBegin = IsBeginBody(text, candidate.bodyStart);
    const std::vector<std::size_t>& starts = isBegin ? beginStarts : statementStarts;
    const std::vector<std::size_t>& ends = isBegin ? beginEnds : statementEnds;
    auto found = std::lower_bound(starts.begin(), starts.end(), candidate.bodyStart);
    candidate.bodyEnd = ends[static_cast<std::size_t>(found - starts.begin())];
  }
}

bool Contains(std::string_view text, std::string_view piece) {
  return text.find(piece) != kNoPosition;
}

// The result of a body analysis, kept when the next block has the same body.
// Blocks that share a body and a kind (always_comb blocks that take the same
// later list) get the same result, and repeating the analysis would only
// record the same uses again.
struct AnalysisCache {
  bool valid = false;
  std::size_t bodyStart = 0;
  std::size_t bodyEnd = 0;
  bool isCombinational = false;
  std::vector<std::string> assignedSignals;
  std::vector<AssignmentRecord> assignments;
  std::uint32_t blockingCount = 0;
  std::uint32_t nonBlockingCount = 0;
  bool latchRisk = false;
  std::string latchReason;
  std::uint64_t recordBytes = 0;
};

// About how many bytes the results of a block's body analysis take.
std::uint64_t RecordBytes(const AlwaysBlock& block) {
  std::uint64_t bytes = sizeof(AlwaysBlock) + block.latchReason.size();
  for (const std::string& name : block.assignedSignals) bytes += sizeof(std::string) + name.size();
  for (const AssignmentRecord& record : block.assignments) {
    bytes += sizeof(AssignmentRecord) + record.target.size();
  }
  return bytes;
}

constexpr std::uint64_t kBudgetBase = 64u << 20;
constexpr std::uint64_t kBudgetPerByte = 32;

}  // namespace

std::uint64_t AlwaysAnalysisBudget(std::size_t textSize) {
  return kBudgetBase + kBudgetPerByte * textSize;
}

std::vector<AlwaysBlock> ExtractAlwaysBlocks(std::string_view text, std::uint64_t budget, NameMap& firstUseLine) {
  std::vector<AlwaysBlock> blocks;
  std::vector<Candidate> candidates = FindCandidates(text);
  if (candidates.empty()) return blocks;

  std::vector<std::size_t> opens;
  for (const Candidate& candidate : candidates) {
    if (opens.empty() || opens.back() != candidate.open) opens.push_back(candidate.open);
  }
  const std::vector<std::size_t> closers = MatchClosers(text, opens);
  std::size_t openIndex = 0;
  for (Candidate& candidate : candidates) {
    while (opens[openIndex] != candidate.open) ++openIndex;
    candidate.close = closers[openIndex];
    candidate.bodyStart = BodyStartAfter(text, candidate.close);
  }
  FindBodyEnds(text, candidates);

  // Every candidate may give a block; sized once, a large text's blocks are
  // not moved at each growth.
  blocks.reserve(candidates.size());
  const LineIndex lines(text);
  AnalysisCache cache;
  for (std::size_t k = 0; k < candidates.size(); ++k) {
    const Candidate& candidate = candidates[k];
    if (candidate.bodyEnd == kNoPosition) continue;
    AlwaysBlock block;
    block.startLine = lines.LineAt(candidate.keyword);
    block.endLine = lines.LineAt(candidate.bodyEnd);
    block.sensitivity = std::string(text.substr(candidate.at, candidate.close + 1 - candidate.at));
    std::string_view head = text.substr(candidate.keyword, 20);
    bool clocked = Contains(block.sensitivity, "posedge") || Contains(block.sensitivity, "negedge");
    block.isSequential = clocked || Contains(head, "always_ff");
    block.isCombinational = Contains(block.sensitivity, "*") || Contains(head, "always_comb") ||
                            Contains(head, "always_latch") || !block.isSequential;

    const bool reused = cache.valid && cache.bodyStart == candidate.bodyStart &&
                        cache.bodyEnd == candidate.bodyEnd && cache.isCombinational == block.isCombinational;
    // A reused analysis costs the copy of its records; a new one, its body.
    const std::uint64_t cost = reused ? cache.recordBytes : candidate.bodyEnd - candidate.bodyStart;
    if (cost > budget) break;
    budget -= cost;
    if (reused) {
      block.assignedSignals = cache.assignedSignals;
      block.assignments = cache.assignments;
      block.blockingCount = cache.blockingCount;
      block.nonBlockingCount = cache.nonBlockingCount;
      block.latchRisk = cache.latchRisk;
      block.latchReason = cache.latchReason;
    } else {
      std::string_view body = text.substr(candidate.bodyStart, candidate.bodyEnd - candidate.bodyStart);
      AnalyzeAlwaysBody(body, block, lines.LineAt(candidate.bodyStart), firstUseLine);
      cache.valid = false;
      bool nextSharesBody = k + 1 < candidates.size() && candidates[k + 1].bodyStart == candidate.bodyStart &&
                            candidates[k + 1].bodyEnd == candidate.bodyEnd;
      if (nextSharesBody) {
        cache.valid = true;
        cache.bodyStart = candidate.bodyStart;
        cache.bodyEnd = candidate.bodyEnd;
        cache.isCombinational = block.isCombinational;
        cache.assignedSignals = block.assignedSignals;
        cache.assignments = block.assignments;
        cache.blockingCount = block.blockingCount;
        cache.nonBlockingCount = block.nonBlockingCount;
        cache.latchRisk = block.latchRisk;
        cache.latchReason = block.latchReason;
        cache.recordBytes = RecordBytes(block);
      }
    }
    blocks.push_back(std::move(block));
  }
  return blocks;
}

}  // namespace quill
