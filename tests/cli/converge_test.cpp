#include "converge.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "engine.h"

namespace quill::cli {
namespace {

// A step that appends "!" until the text holds `bangs` of them.
FormatStep AddBangsUpTo(std::size_t bangs) {
  return [bangs](std::string_view text) -> std::optional<std::string> {
    std::string next(text);
    if (std::count(next.begin(), next.end(), '!') < static_cast<std::ptrdiff_t>(bangs)) next += "!";
    return next;
  };
}

struct Case {
  const char* name;
  std::size_t bangs;
  ConvergeStatus status;
  std::string text;
  int rounds;
};

TEST(FormatUntilStable, Table) {
  const std::vector<Case> cases = {
      {"already stable: one round", 0, ConvergeStatus::kStable, "x", 1},
      {"one change, then a round that confirms it", 1, ConvergeStatus::kStable, "x!", 2},
      {"settles in the last round", 4, ConvergeStatus::kStable, "x!!!!", 5},
      {"still changing after five rounds", 5, ConvergeStatus::kUnsettled, "", 5},
      {"never settles", 100, ConvergeStatus::kUnsettled, "", 5},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const ConvergeResult result = FormatUntilStable("x", AddBangsUpTo(c.bangs));
    EXPECT_EQ(result.status, c.status);
    EXPECT_EQ(result.text, c.text);
    EXPECT_EQ(result.rounds, c.rounds);
  }
}

TEST(FormatUntilStable, StopsAtAFailedRound) {
  int calls = 0;
  const ConvergeResult result = FormatUntilStable("a", [&calls](std::string_view text) -> std::optional<std::string> {
    ++calls;
    if (calls == 2) return std::nullopt;
    return std::string(text) + "b";
  });
  EXPECT_EQ(result.status, ConvergeStatus::kStepFailed);
  EXPECT_EQ(result.text, "");
  EXPECT_EQ(result.rounds, 2);
  EXPECT_EQ(calls, 2);
}

// The stand-in engine spaces out one "~~" per call.
TEST(FormatUntilStable, WithTheEngine) {
  const FormatStep engine = [](std::string_view text) { return FormatSource(text); };
  const ConvergeResult settled = FormatUntilStable("a ~~~~ \n", engine);
  EXPECT_EQ(settled.status, ConvergeStatus::kStable);
  EXPECT_EQ(settled.text, "a ~ ~ ~ ~\n");
  EXPECT_EQ(settled.rounds, 4);
  EXPECT_EQ(FormatSource(settled.text), settled.text);

  EXPECT_EQ(FormatUntilStable("~~~~~~\n", engine).status, ConvergeStatus::kUnsettled);
  EXPECT_EQ(FormatUntilStable("FAIL_FORMAT\n", engine).status, ConvergeStatus::kStepFailed);
}

}  // namespace
}  // namespace quill::cli
