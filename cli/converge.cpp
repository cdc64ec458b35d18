#include "converge.h"

namespace quill::cli {

ConvergeResult FormatUntilStable(std::string_view text, const FormatStep& step) {
  ConvergeResult result;
  std::string current(text);
  while (result.rounds < kMaxFormatRounds) {
    std::optional<std::string> next = step(current);
    ++result.rounds;
    if (!next) {
      result.status = ConvergeStatus::kStepFailed;
      return result;
    }
    if (*next == current) {
      result.status = ConvergeStatus::kStable;
      result.text = std::move(current);
      return result;
    }
    current = std::move(*next);
  }
  result.status = ConvergeStatus::kUnsettled;
  return result;
}

}  // namespace quill::cli
