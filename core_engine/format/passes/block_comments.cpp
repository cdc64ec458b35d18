#include "format/passes/block_comments.h"

#include <algorithm>
#include <cstdint>

#include "common/byte_search.h"
#include "common/text_utils.h"

namespace quill {
namespace {

constexpr std::string_view kPlaceholderHead = "__BLKCMT_";
constexpr std::string_view kPlaceholderTail = "__";
// Restored comments may hold placeholder text that expands again, in
// principle without bound. Past this size (only reached by texts made for
// it) placeholders inside restored comments are left as they are.
constexpr std::uint64_t kMaxExpandedBase = 64u << 20;
constexpr std::uint64_t kMaxExpandedPerByte = 16;

std::size_t CountLines(std::string_view text) { return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n')) + 1; }

// One placeholder occurrence in a piece of text.
struct Occurrence {
  std::size_t pos;
  std::size_t length;
  std::size_t index;  // the comment it stands for
};

// Occurrences of placeholders of comments `minIndex` and up, by position.
// Two may overlap by the "__" that ends one and starts the next.
std::vector<Occurrence> FindOccurrences(std::string_view text, std::size_t minIndex,
                                        const std::vector<std::size_t>& lineCounts) {
  std::vector<Occurrence> found;
  const std::size_t count = lineCounts.size();
  // The head starts with a byte common in names: FindText tests its first
  // and last bytes eight places at a time instead of stopping at each one.
  for (std::size_t at = FindText(text, kPlaceholderHead, 0); at != std::string_view::npos;
       at = FindText(text, kPlaceholderHead, at + 1)) {
    std::size_t p = at + kPlaceholderHead.size();
    std::size_t digitsStart = p;
    std::uint64_t index = 0;
    while (p < text.size() && text[p] >= '0' && text[p] <= '9' && p - digitsStart < 20) {
      index = index * 10 + static_cast<std::uint64_t>(text[p] - '0');
      ++p;
    }
    const std::size_t digits = p - digitsStart;
    if (digits == 0 || (digits > 1 && text[digitsStart] == '0') || digits >= 20) continue;
    if (index < minIndex || index >= count) continue;
    if (text.substr(p, kPlaceholderTail.size()) != kPlaceholderTail) continue;
    p += kPlaceholderTail.size();
    const std::size_t lineFeeds = lineCounts[index] - 1;
    if (text.size() - p < lineFeeds ||
        text.substr(p, lineFeeds).find_first_not_of('\n') != std::string_view::npos) {
      continue;
    }
    found.push_back({at, p + lineFeeds - at, static_cast<std::size_t>(index)});
  }
  return found;
}

// Which occurrences the turn-by-turn replacement takes: turns run by comment
// number, each left to right, and an occurrence is lost when an overlapping
// one was replaced before it.
std::vector<bool> SelectReplaced(const std::vector<Occurrence>& found) {
  std::vector<std::size_t> order(found.size());
  for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
  std::stable_sort(order.begin(), order.end(),
                   [&found](std::size_t a, std::size_t b) { return found[a].index < found[b].index; });
  std::vector<bool> taken(found.size(), false);
  auto overlaps = [&found](std::size_t left, std::size_t right) {
    return found[right].pos < found[left].pos + found[left].length;
  };
  for (std::size_t k : order) {
    const bool prevTaken = k > 0 && taken[k - 1] && overlaps(k - 1, k);
    const bool nextTaken = k + 1 < found.size() && taken[k + 1] && overlaps(k, k + 1);
    taken[k] = !prevTaken && !nextTaken;
  }
  return taken;
}

struct Expansion {
  std::vector<Occurrence> occurrences;
  std::vector<bool> taken;
};

Expansion PlanExpansion(std::string_view text, std::size_t minIndex, const std::vector<std::size_t>& lineCounts) {
  Expansion plan;
  plan.occurrences = FindOccurrences(text, minIndex, lineCounts);
  plan.taken = SelectReplaced(plan.occurrences);
  return plan;
}

std::uint64_t ExpandedSize(std::string_view text, const Expansion& plan, const std::vector<std::uint64_t>& sizes,
                           std::uint64_t cap) {
  std::uint64_t size = text.size();
  for (std::size_t k = 0; k < plan.occurrences.size(); ++k) {
    if (!plan.taken[k]) continue;
    size = std::min(cap + 1, size - plan.occurrences[k].length + sizes[plan.occurrences[k].index]);
  }
  return size;
}

// Writes `text` with its replaced occurrences expanded. Restored comments
// are expanded where they land, depth first with an explicit stack, so a
// chain of comments that name each other costs only the output it makes.
void Emit(std::string_view text, const Expansion& plan, const BlockCommentList& comments,
          const std::vector<Expansion>* nestedPlans, std::string& out) {
  struct Frame {
    std::string_view text;
    const Expansion* plan;
    std::size_t next = 0;    // next occurrence to look at
    std::size_t copied = 0;  // bytes of text written so far
  };
  std::vector<Frame> stack{{text, &plan}};
  while (!stack.empty()) {
    Frame& frame = stack.back();
    const std::vector<Occurrence>& found = frame.plan->occurrences;
    while (frame.next < found.size() && !frame.plan->taken[frame.next]) ++frame.next;
    if (frame.next == found.size()) {
      out.append(frame.text.substr(frame.copied));
      stack.pop_back();
      continue;
    }
    const Occurrence& o = found[frame.next++];
    out.append(frame.text.substr(frame.copied, o.pos - frame.copied));
    frame.copied = o.pos + o.length;
    if (nestedPlans == nullptr) {
      out.append(comments[o.index]);
    } else {
      stack.push_back({comments[o.index], &(*nestedPlans)[o.index]});
    }
  }
}

}  // namespace

std::string BlockCommentPlaceholder(std::size_t index, std::size_t lineCount) {
  std::string placeholder(kPlaceholderHead);
  placeholder.append(std::to_string(index));
  placeholder.append(kPlaceholderTail);
  if (lineCount > 1) placeholder.append(lineCount - 1, '\n');
  return placeholder;
}

std::string ProtectBlockComments(std::string_view text, BlockCommentList* comments) {
  return ReplaceEachMatch(text, [comments](std::string_view comment) {
    comments->emplace_back(comment);
    return BlockCommentPlaceholder(comments->size() - 1, CountLines(comment));
  });
}

std::string RestoreBlockComments(std::string_view text, const BlockCommentList& comments) {
  const std::size_t count = comments.size();
  if (count == 0) return std::string(text);
  std::vector<std::size_t> lineCounts(count);
  bool nested = false;
  std::size_t commentBytes = 0;
  for (std::size_t i = 0; i < count; ++i) {
    lineCounts[i] = CountLines(comments[i]);
    commentBytes += comments[i].size();
    nested = nested || comments[i].find(kPlaceholderHead) != std::string::npos;
  }
  const Expansion top = PlanExpansion(text, 0, lineCounts);
  // Each comment takes the place of a shorter placeholder.
  std::string restored;
  restored.reserve(text.size() + commentBytes);
  if (!nested) {
    Emit(text, top, comments, nullptr, restored);
    return restored;
  }

  // A comment's own placeholder text is restored only by later comments, so
  // each comment expands the same wherever it lands; sizes come from the last
  // comment back.
  const std::uint64_t cap = kMaxExpandedBase + kMaxExpandedPerByte * text.size();
  std::vector<Expansion> plans(count);
  std::vector<std::uint64_t> sizes(count);
  for (std::size_t i = count; i-- > 0;) {
    plans[i] = PlanExpansion(comments[i], i + 1, lineCounts);
    sizes[i] = ExpandedSize(comments[i], plans[i], sizes, cap);
  }
  const bool expandNested = ExpandedSize(text, top, sizes, cap) <= cap;
  Emit(text, top, comments, expandNested ? &plans : nullptr, restored);
  return restored;
}

}  // namespace quill
