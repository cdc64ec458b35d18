#include "suggest.h"

#include <algorithm>
#include <numeric>

namespace quill::cli {

std::size_t EditDistance(std::string_view a, std::string_view b) {
  // One row of the classic table at a time.
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 1; i <= a.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const std::size_t above = row[j];
      row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
      diagonal = above;
    }
  }
  return row[b.size()];
}

std::string ClosestName(std::string_view word, const std::vector<std::string>& candidates) {
  constexpr std::size_t kMaxDistance = 2;
  std::string best;
  std::size_t bestDistance = kMaxDistance + 1;
  for (const std::string& candidate : candidates) {
    const std::size_t distance = EditDistance(word, candidate);
    if (distance < bestDistance && distance < word.size()) {
      best = candidate;
      bestDistance = distance;
    }
  }
  if (!best.empty() || word.size() < 2) return best;
  const auto starts = [word](const std::string& candidate) { return candidate.starts_with(word); };
  if (std::count_if(candidates.begin(), candidates.end(), starts) != 1) return "";
  return *std::find_if(candidates.begin(), candidates.end(), starts);
}

}  // namespace quill::cli
