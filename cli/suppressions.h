// Inline suppression comments in Verilog source:
//   // quill: disable-next-line CHECK[, CHECK...]   the line after the comment
//   // quill: disable-line CHECK...                 the comment's own line
//   // quill: disable CHECK...  ...  // quill: enable CHECK...   a region
//   // quill: disable-file CHECK...                 the whole file
// "all" stands for every check; block comments work the same; text after
// " -- " is a free reason. Lines are zero-based, as the linter reports them.
#ifndef QUILL_CLI_SUPPRESSIONS_H_
#define QUILL_CLI_SUPPRESSIONS_H_

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "source_scan.h"

namespace quill::cli {

enum class SuppressionKind { kNextLine, kLine, kRegion, kFile };

struct Suppression {
  SuppressionKind kind = SuppressionKind::kLine;
  std::string check;         // a check name or "all"
  int64_t commentLine = 0;   // where the comment is
  int64_t firstLine = 0;     // the lines it covers, inclusive
  int64_t lastLine = 0;
  bool used = false;
};

// A comment that looks like a suppression but is not a valid one.
struct SuppressionProblem {
  int64_t line = 0;
  std::string message;
};

// What every suppression comment starts with: a text without it has none.
constexpr std::string_view kSuppressionMarker = "quill:";

class Suppressions {
 public:
  // Reads the suppression comments among the scanned comments of `text`.
  Suppressions(std::string_view text, const std::vector<Comment>& comments);

  // True when a suppression covers this finding; every covering one is
  // marked used.
  bool Covers(int64_t line, std::string_view check);

  const std::vector<Suppression>& Entries() const { return entries_; }
  const std::vector<SuppressionProblem>& Problems() const { return problems_; }

 private:
  void ReadComment(std::string_view body, int64_t firstLine, int64_t lastLine);

  std::vector<Suppression> entries_;
  std::vector<SuppressionProblem> problems_;
  std::vector<std::size_t> openRegions_;  // indices into entries_
};

// "disable-line" and so on, as written in the comments.
std::string_view SuppressionKindName(SuppressionKind kind);

}  // namespace quill::cli

#endif  // QUILL_CLI_SUPPRESSIONS_H_
