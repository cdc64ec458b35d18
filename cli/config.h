// quill.toml: the settings of the tool for the files below the folder that
// holds it. Found by walking up from each file (the nearest wins), or given
// with --config; --isolated uses the built-in defaults only.
#ifndef QUILL_CLI_CONFIG_H_
#define QUILL_CLI_CONFIG_H_

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "glob.h"
#include "lint/check_table.h"

namespace quill::cli {

inline constexpr std::string_view kConfigFileName = "quill.toml";

// Which command walks the folders: each may have its own exclusions.
enum class CommandKind { kFormat, kLint, kHighlight };

struct PerFileIgnore {
  Glob glob;
  std::vector<std::string> checks;  // check names or "all"
};

struct LintSettings {
  std::vector<std::string> select = {"all"};  // check names or "all"
  std::vector<std::string> ignore;
  std::map<std::string, quill::Severity, std::less<>> severity;  // check -> reported severity
  std::vector<PerFileIgnore> perFileIgnores;
  std::vector<std::string> defines;  // "NAME" or "NAME=VALUE", as -D takes them
  std::vector<std::string> filters = {"all"};  // lint filter names or "all"
};

struct Config {
  std::filesystem::path file;    // empty for the built-in defaults
  std::filesystem::path folder;  // the patterns are relative to it
  std::vector<Glob> exclude;     // [files] exclude; defaults to ".*"
  std::vector<Glob> extendExclude;
  std::vector<Glob> formatExclude;
  LintSettings lint;
};

// The built-in defaults, relative to `folder`.
Config DefaultConfig(const std::filesystem::path& folder);

struct ConfigResult {
  std::shared_ptr<const Config> config;  // null when `error` is set
  std::string error;                     // "quill.toml:3: [lint] unknown key 'selct'"
};

// Reads and checks one quill.toml; `shownAs` names it in errors.
ConfigResult LoadConfig(const std::filesystem::path& file, const std::string& shownAs);
ConfigResult ParseConfig(std::string_view text, const std::filesystem::path& file, const std::string& shownAs);

// `path` relative to the config's folder, '/'-separated; nullopt when it
// lies outside that folder.
std::optional<std::string> RelativeToConfig(const Config& config, const std::filesystem::path& path);

// Whether a folder walk skips this entry for this command.
bool IsExcluded(const Config& config, const std::filesystem::path& path, bool isFolder, CommandKind command);

// Whether findings of `check` in the file at `path` are reported, and with
// which severity.
bool IsCheckEnabled(const Config& config, const std::filesystem::path& path, std::string_view check);
std::optional<quill::Severity> SeverityOverride(const Config& config, std::string_view check);

// The settings as TOML, with a comment naming where they come from.
std::string DescribeConfig(const Config& config);

// Finds the config that governs each path. Results are cached by folder and
// by file; a config file whose time stamp or size changed is read again, so
// a long-running server sees edits without a reload.
class ConfigFinder {
 public:
  enum class Mode { kSearch, kExplicit, kIsolated };

  ConfigFinder() = default;
  ConfigFinder(Mode mode, std::filesystem::path explicitFile);

  // The config for a file or folder (for a file, the walk starts at its
  // folder; for a folder, at the folder itself).
  ConfigResult ForPath(const std::filesystem::path& path, bool isFolder);

 private:
  struct Cached {
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;
    ConfigResult result;
  };
  ConfigResult Load(const std::filesystem::path& file);

  Mode mode_ = Mode::kSearch;
  std::filesystem::path explicitFile_;
  std::map<std::filesystem::path, Cached> files_;
};

// The finder for --config FILE (when not empty) or --isolated.
ConfigFinder MakeConfigFinder(const std::string& configFile, bool isolated);

// A path as it is shown in messages: relative to the working folder when it
// lies inside it, else absolute.
std::string ShownPath(const std::filesystem::path& path);

}  // namespace quill::cli

#endif  // QUILL_CLI_CONFIG_H_
