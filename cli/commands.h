// The commands. Each returns the process exit code.
#ifndef QUILL_CLI_COMMANDS_H_
#define QUILL_CLI_COMMANDS_H_

#include <cstddef>
#include <string>
#include <vector>

#include "terminal.h"

namespace quill::cli {

struct InputOptions {
  std::vector<std::string> paths;
  std::string stdinName = "<stdin>";
  unsigned jobs = 1;
  std::string configFile;  // --config: this quill.toml for every file
  bool isolated = false;   // --isolated: no quill.toml at all
  bool noIgnore = false;   // --no-ignore: walks do not skip what git ignores
};

enum class FormatMode { kPrint, kInPlace, kCheck, kDiff };

struct FormatOptions {
  InputOptions input;
  FormatMode mode = FormatMode::kPrint;
  bool force = false;
};

enum class LintFormat { kText, kGithub, kJson, kRaw, kSarif };
enum class Severity { kWarning, kError };

struct LintOptions {
  InputOptions input;
  LintFormat format = LintFormat::kText;
  std::size_t maxFindings = static_cast<std::size_t>(-1);
  Severity errorOn = Severity::kWarning;
  ColorMode color = ColorMode::kAuto;
  bool wholeFile = false;                // one library call per file, not per module
  bool reportUnusedSuppressions = false;
  bool exact = false;       // the library's report untouched
  bool statistics = false;  // count what each filter dropped
  std::vector<std::string> defines;          // -D NAME[=VALUE]
  std::vector<std::string> undefines;        // -U NAME
  std::vector<std::string> disabledFilters;  // --no-filter NAME
};

enum class HighlightFormat { kText, kJson };

struct HighlightOptions {
  InputOptions input;
  HighlightFormat format = HighlightFormat::kText;
  ColorMode color = ColorMode::kAuto;
};

struct ConfigOptions {
  std::string path = ".";
  std::string configFile;
  bool isolated = false;
};

int RunFormat(const FormatOptions& options);
int RunLint(const LintOptions& options);
int RunHighlight(const HighlightOptions& options);
// Prints the settings in force for a path, as TOML.
int RunConfig(const ConfigOptions& options);

// "quill: error: " + message + LF, the form of every error line.
inline std::string ErrorLine(const std::string& message) {
  return "quill: error: " + message + "\n";
}
// "quill: warning: " + message + LF.
inline std::string WarningLine(const std::string& message) {
  return "quill: warning: " + message + "\n";
}

}  // namespace quill::cli

#endif  // QUILL_CLI_COMMANDS_H_
