// Formatting until the text stops changing. The engine's formatter is not
// always idempotent: a second pass over its own output can still move text.
// The tool applies a formatting step repeatedly so that what it writes is
// a fixed point, and `format --check` after `format --in-place` passes.
#ifndef QUILL_CLI_CONVERGE_H_
#define QUILL_CLI_CONVERGE_H_

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace quill::cli {

// At most this many applications of the step per text.
inline constexpr int kMaxFormatRounds = 5;

enum class ConvergeStatus {
  kStable,      // the last round returned its input unchanged
  kUnsettled,   // still changing after kMaxFormatRounds rounds
  kStepFailed,  // a round failed (the step returned nullopt)
};

struct ConvergeResult {
  ConvergeStatus status = ConvergeStatus::kStable;
  std::string text;  // the stable text when kStable; otherwise empty
  int rounds = 0;    // applications of the step made
};

// One formatting round: the new text, or nullopt on failure.
using FormatStep = std::function<std::optional<std::string>(std::string_view)>;

// Applies `step` to `text`, then to its result, and so on, until a round
// returns its input unchanged (the text is then stable: one more round
// would change nothing) or kMaxFormatRounds rounds were made.
ConvergeResult FormatUntilStable(std::string_view text, const FormatStep& step);

}  // namespace quill::cli

#endif  // QUILL_CLI_CONVERGE_H_
