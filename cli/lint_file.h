// Linting one file as the tool and the language server report it: module by
// module, filtered by the inline suppressions and the config, with lines
// counted in the whole file.
#ifndef QUILL_CLI_LINT_FILE_H_
#define QUILL_CLI_LINT_FILE_H_

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "config.h"
#include "precision/finding_filters.h"
#include "lint_output.h"
#include "suppressions.h"

namespace quill::cli {

struct LintFileOptions {
  bool wholeFile = false;  // one library call for the whole text
  // The library's report untouched: one call, no `ifdef evaluation, no
  // filter, no suppression, no configuration.
  bool exact = false;
  std::vector<std::string> defines;    // -D NAME[=VALUE], added to [lint] defines
  std::vector<std::string> undefines;  // -U NAME
  std::vector<std::string> disabledFilters;  // --no-filter NAME
};

// A finding that a lint filter dropped.
struct DroppedFinding {
  LintFilter filter;
  std::string check;
};

struct FileReport {
  std::vector<Finding> findings;  // zero-based lines of the file
  std::vector<SuppressionProblem> problems;
  std::vector<Suppression> unusedSuppressions;
  std::vector<DroppedFinding> dropped;
  // Conditional directives that do not nest: the text was linted as written.
  std::optional<std::uint32_t> preprocessorProblemLine;
  std::string preprocessorProblem;
  std::string error;  // the library failed: no findings
};

// The design-unit stretches of a text: offsets where each begins. The first
// starts at 0 and takes any text before the second unit; the last takes
// the rest. One stretch (at 0) when the text has at most one unit.
std::vector<std::size_t> UnitStretches(const std::vector<std::size_t>& unitStarts);

// `path` is the file's path for the per-file settings (empty for standard
// input, which only the global settings apply to).
FileReport LintFile(std::string_view text, const std::filesystem::path& path, const Config& config,
                    const LintFileOptions& options);

// What an editor shows for one document: the findings, the problems of its
// suppression comments, and the error of a config that cannot be read (the
// built-in defaults apply then).
struct DocumentReport {
  FileReport file;
  std::string configError;
};

// Lints an open document for the language server. `path` is the document's
// file path (empty when it has none: only the defaults apply); the nearest
// quill.toml is found through `configs`, which re-reads changed files.
DocumentReport LintDocument(const std::filesystem::path& path, std::string_view text, ConfigFinder& configs,
                            const LintFileOptions& options);

}  // namespace quill::cli

#endif  // QUILL_CLI_LINT_FILE_H_
