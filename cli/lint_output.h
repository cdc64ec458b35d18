// Reading the engine's lint report and writing it as compiler-style text,
// GitHub workflow annotations, JSON or SARIF.
#ifndef QUILL_CLI_LINT_OUTPUT_H_
#define QUILL_CLI_LINT_OUTPUT_H_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

struct Finding {
  std::string severity;
  int64_t line = 0;  // zero-based, as the engine reports it
  std::string check;
  std::string message;
  std::string raw;  // the finding's JSON object as the engine wrote it
};

// Parses the engine's array. Lenient where the engine is: raw control and
// non-UTF-8 bytes inside strings are kept, and the "cpp-exception" fallback
// with an unescaped quote in its message is understood. nullopt when the
// text is not an array of findings at all.
std::optional<std::vector<Finding>> ParseFindings(std::string_view report);

// True for "error" and for any severity the tool does not know.
bool IsErrorSeverity(std::string_view severity);

// "path:LINE:1: severity: message [check]" and an LF, LINE one-based (at
// least 1); control bytes of the message become spaces. With `color`,
// ANSI colours as compilers use them.
std::string FormatTextFinding(std::string_view path, const Finding& finding, bool color);

// "[" + the findings' objects as the engine wrote them + "]".
std::string FormatJsonArray(const std::vector<Finding>& findings, std::size_t count);

// "::warning file=PATH,line=N,title=CHECK::MESSAGE" and an LF ("::error"
// for errors), N one-based, escaped as GitHub's workflow commands want.
std::string FormatGithubFinding(std::string_view path, const Finding& finding);

struct FileFindings {
  std::string path;
  std::vector<Finding> findings;
};

// One JSON array for the whole run, one object per line:
// {"path","line","check","severity","message"}, lines one-based.
std::string FormatJsonDocument(const std::vector<FileFindings>& files);

// "12 findings in 3 files (9 warnings, 3 errors)" or "No findings.", LF.
std::string FormatSummary(std::size_t warnings, std::size_t errors, std::size_t files);

// A SARIF 2.1.0 log with one run: a rule per check of the check table (and
// any other name seen) and a result per finding, with one-based lines.
std::string FormatSarif(const std::vector<FileFindings>& files, std::string_view engineVersion);

// "core_engine v1.25" -> "1.25"; the text itself when it has no number.
std::string NumericVersion(std::string_view engineVersion);

// Where the documentation of a check lives, for SARIF's helpUri.
std::string CheckHelpUri(std::string_view check);

// A path as a URI reference: relative paths stay relative, absolute ones
// become file:// URIs; bytes outside the unreserved set are %-escaped.
std::string PathToUri(std::string_view path);

}  // namespace quill::cli

#endif  // QUILL_CLI_LINT_OUTPUT_H_
