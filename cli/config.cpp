#include "config.h"

#include <fstream>
#include <sstream>
#include <system_error>

#include <toml++/toml.h>

#include "precision/finding_filters.h"
#include "precision/preprocessor.h"

namespace quill::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kHiddenPattern = ".*";

// A problem found while reading the file, with the line it is on.
struct ConfigError {
  std::size_t line = 0;
  std::string message;
};

class Reader {
 public:
  Reader(Config* config, std::vector<ConfigError>* errors) : config_(config), errors_(errors) {}

  void ReadRoot(const toml::table& root) {
    for (const auto& [key, node] : root) {
      const std::string name(key.str());
      if (name == "files") {
        if (const toml::table* table = Table(node, "", name)) ReadFiles(*table);
      } else if (name == "format") {
        if (const toml::table* table = Table(node, "", name)) ReadFormat(*table);
      } else if (name == "lint") {
        if (const toml::table* table = Table(node, "", name)) ReadLint(*table);
      } else {
        Error(key.source(), "unknown section '" + name + "' (files, format or lint)");
      }
    }
  }

 private:
  void ReadFiles(const toml::table& table) {
    for (const auto& [key, node] : table) {
      const std::string name(key.str());
      if (name == "exclude") {
        config_->exclude = Globs(node, "[files] " + name);
      } else if (name == "extend-exclude") {
        config_->extendExclude = Globs(node, "[files] " + name);
      } else {
        Error(key.source(), "[files] unknown key '" + name + "' (exclude, extend-exclude)");
      }
    }
  }

  void ReadFormat(const toml::table& table) {
    for (const auto& [key, node] : table) {
      const std::string name(key.str());
      if (name == "exclude") {
        config_->formatExclude = Globs(node, "[format] " + name);
      } else {
        Error(key.source(), "[format] unknown key '" + name + "' (exclude)");
      }
    }
  }

  void ReadLint(const toml::table& table) {
    LintSettings& lint = config_->lint;
    for (const auto& [key, node] : table) {
      const std::string name(key.str());
      const std::string where = "[lint] " + name;
      if (name == "select") {
        lint.select = Checks(node, where);
      } else if (name == "ignore") {
        lint.ignore = Checks(node, where);
      } else if (name == "severity") {
        const toml::table* severities = Table(node, "lint", name);
        if (severities == nullptr) continue;
        for (const auto& [checkKey, value] : *severities) {
          const std::string check(checkKey.str());
          if (FindCheck(check) == nullptr) {
            Error(checkKey.source(), "[lint.severity] unknown check '" + check + "'");
            continue;
          }
          const std::optional<std::string> word = value.value<std::string>();
          if (!word || (*word != "error" && *word != "warning")) {
            Error(value.source(), "[lint.severity] " + check + ": expected \"error\" or \"warning\"");
            continue;
          }
          lint.severity[check] = *word == "error" ? quill::Severity::kError : quill::Severity::kWarning;
        }
      } else if (name == "per-file-ignores") {
        const toml::table* entries = Table(node, "lint", name);
        if (entries == nullptr) continue;
        for (const auto& [patternKey, value] : *entries) {
          const std::string pattern(patternKey.str());
          std::string error;
          std::optional<Glob> glob = Glob::Parse(pattern, &error);
          if (!glob) {
            Error(patternKey.source(), "[lint.per-file-ignores] " + error);
            continue;
          }
          lint.perFileIgnores.push_back(PerFileIgnore{std::move(*glob), Checks(value, "[lint.per-file-ignores] \"" + pattern + "\"")});
        }
      } else if (name == "defines") {
        lint.defines = Strings(node, where);
        for (const std::string& definition : lint.defines) {
          if (!DefineName(definition)) Error(node.source(), where + ": '" + definition + "' is not NAME or NAME=VALUE");
        }
      } else if (name == "filters") {
        lint.filters = Strings(node, where);
        for (const std::string& filter : lint.filters) {
          if (filter != "all" && !FindLintFilter(filter)) {
            Error(node.source(), where + ": unknown filter '" + filter + "' (" + LintFilterNames() + ")");
          }
        }
      } else {
        Error(key.source(),
              "[lint] unknown key '" + name + "' (select, ignore, severity, per-file-ignores, defines, filters)");
      }
    }
  }

  const toml::table* Table(const toml::node& node, std::string_view parent, const std::string& name) {
    if (const toml::table* table = node.as_table()) return table;
    const std::string full = parent.empty() ? name : std::string(parent) + "." + name;
    Error(node.source(), "'" + full + "' must be a table");
    return nullptr;
  }

  std::vector<std::string> Strings(const toml::node& node, const std::string& where) {
    std::vector<std::string> words;
    const toml::array* array = node.as_array();
    if (array == nullptr) {
      Error(node.source(), where + ": expected an array of strings");
      return words;
    }
    for (const toml::node& item : *array) {
      if (std::optional<std::string> word = item.value<std::string>(); word && item.is_string()) {
        words.push_back(std::move(*word));
      } else {
        Error(item.source(), where + ": expected an array of strings");
      }
    }
    return words;
  }

  std::vector<std::string> Checks(const toml::node& node, const std::string& where) {
    std::vector<std::string> checks = Strings(node, where);
    const toml::array* array = node.as_array();
    for (std::size_t i = 0; i < checks.size(); ++i) {
      if (checks[i] != "all" && FindCheck(checks[i]) == nullptr) {
        const toml::node* item = array != nullptr && i < array->size() ? array->get(i) : &node;
        Error(item->source(), where + ": unknown check '" + checks[i] + "'");
      }
    }
    return checks;
  }

  std::vector<Glob> Globs(const toml::node& node, const std::string& where) {
    std::vector<Glob> globs;
    for (const std::string& pattern : Strings(node, where)) {
      std::string error;
      if (std::optional<Glob> glob = Glob::Parse(pattern, &error)) {
        globs.push_back(std::move(*glob));
      } else {
        Error(node.source(), where + ": " + error);
      }
    }
    return globs;
  }

  void Error(const toml::source_region& region, std::string message) {
    errors_->push_back(ConfigError{static_cast<std::size_t>(region.begin.line), std::move(message)});
  }

  Config* config_;
  std::vector<ConfigError>* errors_;
};

std::string TomlString(std::string_view text) {
  std::string quoted = "\"";
  static constexpr char kHex[] = "0123456789ABCDEF";
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      quoted.push_back('\\');
      quoted.push_back(c);
    } else if (byte < 0x20 || byte == 0x7F) {
      quoted += "\\u00";
      quoted.push_back(kHex[byte >> 4]);
      quoted.push_back(kHex[byte & 0x0F]);
    } else {
      quoted.push_back(c);
    }
  }
  return quoted + "\"";
}

std::string TomlArray(const std::vector<std::string>& words) {
  std::string text = "[";
  for (std::size_t i = 0; i < words.size(); ++i) text += (i > 0 ? ", " : "") + TomlString(words[i]);
  return text + "]";
}

std::string TomlArray(const std::vector<Glob>& globs) {
  std::vector<std::string> words;
  for (const Glob& glob : globs) words.push_back(glob.Text());
  return TomlArray(words);
}

bool Contains(const std::vector<std::string>& checks, std::string_view check) {
  for (const std::string& c : checks) {
    if (c == "all" || c == check) return true;
  }
  return false;
}

bool AnyMatches(const std::vector<Glob>& globs, std::string_view path, bool isFolder) {
  for (const Glob& glob : globs) {
    if (glob.MatchesPathOrParent(path, isFolder)) return true;
  }
  return false;
}

fs::path Absolute(const fs::path& path) {
  std::error_code error;
  fs::path absolute = fs::absolute(path, error);
  return (error ? path : absolute).lexically_normal();
}

}  // namespace

Config DefaultConfig(const fs::path& folder) {
  Config config;
  config.folder = Absolute(folder);
  std::string error;
  config.exclude.push_back(*Glob::Parse(kHiddenPattern, &error));
  return config;
}

std::string ShownPath(const fs::path& path) {
  std::error_code error;
  const fs::path cwd = fs::current_path(error);
  const fs::path absolute = Absolute(path);
  if (!error) {
    const fs::path relative = absolute.lexically_relative(cwd);
    if (!relative.empty() && *relative.begin() != "..") return relative.string();
  }
  return absolute.string();
}

ConfigResult ParseConfig(std::string_view text, const fs::path& file, const std::string& shownAs) {
  auto config = std::make_shared<Config>(DefaultConfig(file.parent_path()));
  config->file = Absolute(file);
  std::vector<ConfigError> errors;
  try {
    const toml::table root = toml::parse(text, shownAs);
    Reader(config.get(), &errors).ReadRoot(root);
  } catch (const toml::parse_error& e) {
    errors.push_back(ConfigError{static_cast<std::size_t>(e.source().begin.line), std::string(e.description())});
  }
  if (errors.empty()) return ConfigResult{std::move(config), ""};
  // The first problem in the file is the one reported.
  const ConfigError* first = &errors.front();
  for (const ConfigError& error : errors) {
    if (error.line < first->line) first = &error;
  }
  return ConfigResult{nullptr, shownAs + ":" + std::to_string(first->line) + ": " + first->message};
}

ConfigResult LoadConfig(const fs::path& file, const std::string& shownAs) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) return ConfigResult{nullptr, shownAs + ": cannot read the file"};
  std::ostringstream text;
  text << stream.rdbuf();
  if (stream.bad()) return ConfigResult{nullptr, shownAs + ": cannot read the file"};
  return ParseConfig(text.str(), file, shownAs);
}

std::optional<std::string> RelativeToConfig(const Config& config, const fs::path& path) {
  const fs::path relative = Absolute(path).lexically_relative(config.folder);
  if (relative.empty() || *relative.begin() == "..") return std::nullopt;
  const std::string text = relative.generic_string();
  if (text == ".") return std::nullopt;
  return text;
}

bool IsExcluded(const Config& config, const fs::path& path, bool isFolder, CommandKind command) {
  // The repository's own records are never walked, whatever the patterns.
  if (path.filename() == ".git") return true;
  const std::optional<std::string> relative = RelativeToConfig(config, path);
  // Outside the config's folder only the entry's own name can match.
  const std::string name = relative ? *relative : path.filename().string();
  if (AnyMatches(config.exclude, name, isFolder) || AnyMatches(config.extendExclude, name, isFolder)) return true;
  return command == CommandKind::kFormat && AnyMatches(config.formatExclude, name, isFolder);
}

bool IsCheckEnabled(const Config& config, const fs::path& path, std::string_view check) {
  const LintSettings& lint = config.lint;
  if (!Contains(lint.select, check) || Contains(lint.ignore, check)) return false;
  if (lint.perFileIgnores.empty()) return true;
  const std::optional<std::string> relative = RelativeToConfig(config, path);
  if (!relative) return true;
  for (const PerFileIgnore& entry : lint.perFileIgnores) {
    if (Contains(entry.checks, check) && entry.glob.MatchesPathOrParent(*relative, false)) return false;
  }
  return true;
}

std::optional<quill::Severity> SeverityOverride(const Config& config, std::string_view check) {
  const auto it = config.lint.severity.find(check);
  if (it == config.lint.severity.end()) return std::nullopt;
  return it->second;
}

std::string DescribeConfig(const Config& config) {
  std::string text = config.file.empty() ? "# built-in defaults (no quill.toml applies)\n"
                                         : "# from " + config.file.string() + "\n";
  text += "\n[files]\nexclude = " + TomlArray(config.exclude) + "\n";
  text += "extend-exclude = " + TomlArray(config.extendExclude) + "\n";
  text += "\n[format]\nexclude = " + TomlArray(config.formatExclude) + "\n";
  text += "\n[lint]\nselect = " + TomlArray(config.lint.select) + "\n";
  text += "ignore = " + TomlArray(config.lint.ignore) + "\n";
  text += "defines = " + TomlArray(config.lint.defines) + "\n";
  text += "filters = " + TomlArray(config.lint.filters) + "\n";
  text += "\n[lint.severity]\n";
  for (const auto& [check, severity] : config.lint.severity) {
    text += check + " = " + TomlString(SeverityName(severity)) + "\n";
  }
  text += "\n[lint.per-file-ignores]\n";
  for (const PerFileIgnore& entry : config.lint.perFileIgnores) {
    text += TomlString(entry.glob.Text()) + " = " + TomlArray(entry.checks) + "\n";
  }
  return text;
}

ConfigFinder MakeConfigFinder(const std::string& configFile, bool isolated) {
  if (isolated) return ConfigFinder(ConfigFinder::Mode::kIsolated, {});
  if (!configFile.empty()) return ConfigFinder(ConfigFinder::Mode::kExplicit, configFile);
  return ConfigFinder();
}

ConfigFinder::ConfigFinder(Mode mode, fs::path explicitFile) : mode_(mode), explicitFile_(std::move(explicitFile)) {}

ConfigResult ConfigFinder::Load(const fs::path& file) {
  std::error_code error;
  const auto time = fs::last_write_time(file, error);
  const std::uintmax_t size = error ? 0 : fs::file_size(file, error);
  auto it = files_.find(file);
  if (it != files_.end() && it->second.time == time && it->second.size == size) return it->second.result;
  ConfigResult result = LoadConfig(file, ShownPath(file));
  files_[file] = Cached{time, size, result};
  return result;
}

ConfigResult ConfigFinder::ForPath(const fs::path& path, bool isFolder) {
  if (mode_ == Mode::kExplicit) return Load(Absolute(explicitFile_));
  const fs::path absolute = Absolute(path);
  fs::path folder = isFolder ? absolute : absolute.parent_path();
  if (mode_ == Mode::kSearch) {
    for (fs::path dir = folder;; dir = dir.parent_path()) {
      std::error_code error;
      const fs::path candidate = dir / kConfigFileName;
      if (fs::is_regular_file(candidate, error)) return Load(candidate);
      if (dir == dir.parent_path() || dir.empty()) break;
    }
  }
  return ConfigResult{std::make_shared<Config>(DefaultConfig(folder)), ""};
}

}  // namespace quill::cli
