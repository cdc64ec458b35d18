// The tool's exit codes.
#ifndef QUILL_CLI_EXIT_CODES_H_
#define QUILL_CLI_EXIT_CODES_H_

namespace quill::cli {

enum ExitCode : int {
  kExitClean = 0,     // nothing to report
  kExitFindings = 1,  // lint findings at or above --error-on, or files that would change
  kExitError = 2,     // usage or input error
  kExitGuard = 3,     // formatting would lose text (content guard)
};

// The more serious of two codes: 2, then 3, then 1, then 0.
inline int WorseExit(int a, int b) {
  auto rank = [](int code) { return code == kExitError ? 3 : code == kExitGuard ? 2 : code; };
  return rank(a) >= rank(b) ? a : b;
}

}  // namespace quill::cli

#endif  // QUILL_CLI_EXIT_CODES_H_
