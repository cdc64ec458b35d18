// quill: format, lint and highlight hardware-design files from the command
// line through the engine's C interface.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

#include <unistd.h>

#include "commands.h"
#include "engine.h"
#include "exit_codes.h"
#include "lint/check_table.h"
#include "lsp/server.h"
#include "parallel.h"
#include "precision/finding_filters.h"
#include "precision/preprocessor.h"
#include "suggest.h"

namespace {

using quill::cli::ColorMode;
using quill::cli::DefineName;
using quill::cli::FindLintFilter;
using quill::cli::LintFilterNames;
using quill::cli::ConfigOptions;
using quill::cli::DefaultJobs;
using quill::cli::EngineVersion;
using quill::cli::ErrorLine;
using quill::cli::FormatMode;
using quill::cli::FormatOptions;
using quill::cli::HighlightFormat;
using quill::cli::HighlightOptions;
using quill::cli::InputOptions;
using quill::cli::kExitClean;
using quill::cli::kExitError;
using quill::cli::LintFormat;
using quill::cli::LintOptions;
using quill::cli::RunConfig;
using quill::cli::RunFormat;
using quill::cli::RunHighlight;
using quill::cli::RunLint;
using quill::cli::Severity;

// The tool's version (the project's) and the engine's, one per line.
std::string VersionText() {
  return std::string("quill ") + QUILL_TOOL_VERSION + "\nengine: " + EngineVersion();
}

constexpr const char* kExitCodes =
    "Exit codes:\n"
    "  0  clean: no findings, no file that would change\n"
    "  1  lint findings at or above --error-on; format --check or --diff: a file would change\n"
    "  2  usage or input error (missing, unreadable or binary file, folder without matching files)\n"
    "  3  content guard: formatting would lose text (no file is written; --force overrides)\n"
    "When several apply, 2 wins over 3, and 3 over 1.";

// Each command's --help lists only the codes it can return.
constexpr const char* kFormatExitCodes =
    "Exit codes:\n"
    "  0  done; --check or --diff: no file would change\n"
    "  1  --check or --diff: a file would change\n"
    "  2  usage or input error, or a file whose formatting does not settle\n"
    "  3  refused: formatting would lose text or break a format-off region (--force overrides)\n"
    "When several apply, 2 wins over 3, and 3 over 1.";
constexpr const char* kLintExitCodes =
    "Exit codes:\n"
    "  0  no finding at or above --error-on\n"
    "  1  findings at or above --error-on\n"
    "  2  usage or input error (missing, unreadable or binary file, folder without matching files)";
constexpr const char* kHighlightExitCodes =
    "Exit codes:\n"
    "  0  every file shown\n"
    "  2  usage or input error (missing, unreadable or binary file, folder without matching files)";
constexpr const char* kVersionExitCodes =
    "Exit codes:\n"
    "  0  printed\n"
    "  2  usage error, or standard output cannot be written";

const std::vector<std::pair<std::string, ColorMode>> kColorChoices = {
    {"auto", ColorMode::kAuto}, {"always", ColorMode::kAlways}, {"never", ColorMode::kNever}};
constexpr const char* kColorHelp =
    "Colour the text output: auto (default: on a terminal unless NO_COLOR is set), always, never";

// Paths, standard input name and worker count, the same for every command.
void AddInputOptions(CLI::App* command, InputOptions* input, const std::string& extensions) {
  input->jobs = DefaultJobs();
  command->add_option("paths", input->paths, "Files, folders (walked for " + extensions + " files) or - for stdin")
      ->required()
      ->type_name("FILE|DIR|-");
  command->add_option("--stdin-name", input->stdinName, "Name shown for standard input in messages and reports")
      ->type_name("NAME")
      ->default_str("<stdin>");
  command->add_option("-j,--jobs", input->jobs, "Files processed at once (default: all cores)")
      ->type_name("N")
      ->check(CLI::Range(1u, 1024u).description(""));
  // Settings and ignore files.
  command->add_option("--config", input->configFile, "Use this quill.toml for every file instead of the nearest one")
      ->type_name("FILE");
  command->add_flag("--isolated", input->isolated, "Ignore every quill.toml (built-in defaults)");
  command->add_flag("--no-ignore", input->noIgnore, "Folder walks also take files that .gitignore ignores");
}

// An option taking one of a few words, shown as "word|word|word".
template <typename Enum>
void AddChoice(CLI::App* command, const std::string& name, Enum* value,
               const std::vector<std::pair<std::string, Enum>>& choices, const std::string& help) {
  std::string words;
  for (const auto& choice : choices) words += (words.empty() ? "" : "|") + choice.first;
  auto store = [value, choices](const std::string& word) {
    for (const auto& choice : choices) {
      if (choice.first == word) *value = choice.second;
    }
  };
  auto validate = [choices, words](std::string& word) {
    for (const auto& choice : choices) {
      if (choice.first == word) return std::string();
    }
    return "'" + word + "' is not one of " + words;
  };
  command->add_option_function<std::string>(name, store, help)->check(CLI::Validator(validate, ""))->type_name(words);
}

// The mode flags of format, which exclude each other.
struct FormatFlags {
  bool inPlace = false;
  bool check = false;
  bool diff = false;

  FormatMode Mode() const {
    if (inPlace) return FormatMode::kInPlace;
    if (check) return FormatMode::kCheck;
    if (diff) return FormatMode::kDiff;
    return FormatMode::kPrint;
  }
};

CLI::App* AddFormatCommand(CLI::App* app, FormatOptions* options, FormatFlags* flags) {
  CLI::App* command =
      app->add_subcommand("format", "Format Verilog files: print the result, check, diff, or rewrite them in place");
  AddInputOptions(command, &options->input, ".v .sv .vh .svh");
  CLI::Option* inPlace = command->add_flag("-i,--in-place", flags->inPlace, "Rewrite the files that would change");
  CLI::Option* check =
      command->add_flag("--check", flags->check, "Write nothing; list the files that would change and exit 1 if any");
  CLI::Option* diff = command->add_flag(
      "--diff", flags->diff, "Write nothing; print a unified diff of each change and exit 1 if any file would change");
  inPlace->excludes(check)->excludes(diff);
  check->excludes(diff);
  command->add_flag("--force", options->force,
                    "Print or write formatted text even where it would lose text of the input or format "
                    "a format-off region that cannot be kept");
  command->footer(kFormatExitCodes);
  return command;
}

CLI::App* AddLintCommand(CLI::App* app, LintOptions* options) {
  CLI::App* command = app->add_subcommand("lint", "Lint Verilog files");
  AddInputOptions(command, &options->input, ".v .sv .vh .svh");
  AddChoice(command, "--format", &options->format,
            {{"text", LintFormat::kText},
             {"github", LintFormat::kGithub},
             {"json", LintFormat::kJson},
             {"raw", LintFormat::kRaw},
             {"sarif", LintFormat::kSarif}},
            "text (default): path:LINE:1: severity: message [check], one-based lines, summary on stderr\n"
            "github: GitHub Actions annotations (::error file=PATH,line=N,title=CHECK::MESSAGE)\n"
            "json: one array of {path, line (one-based), check, severity, message}\n"
            "raw: the engine's array for each file, one per line, zero-based lines\n"
            "sarif: one SARIF 2.1.0 log, one-based lines");
  auto wholeNumber = [](std::string& word) {
    const bool digits = !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
    return digits ? std::string() : "'" + word + "' is not a whole number of 0 or more";
  };
  command->add_option("--max-findings", options->maxFindings, "Print at most N findings in the whole run")
      ->type_name("N")
      ->check(CLI::Validator(wholeNumber, ""));
  AddChoice(command, "--error-on", &options->errorOn, {{"warning", Severity::kWarning}, {"error", Severity::kError}},
            "Lowest severity that makes the exit code 1 (default: warning)");
  AddChoice(command, "--color", &options->color, kColorChoices, kColorHelp);
  // Module-by-module linting, suppressions and the list of checks.
  command->add_flag("--whole-file", options->wholeFile, "Lint each file with one call instead of module by module");
  command->add_flag("--report-unused-suppressions", options->reportUnusedSuppressions,
                    "Warn about suppression comments that quieted nothing");
  // Precision: `ifdef evaluation and the filters that drop disproved findings.
  command->add_option("-D,--define", options->defines, "Define a macro for `ifdef evaluation")
      ->type_name("NAME[=VALUE]")
      ->check(CLI::Validator(
          [](std::string& word) { return DefineName(word) ? std::string() : "'" + word + "' is not NAME or NAME=VALUE"; },
          ""));
  command->add_option("-U,--undefine", options->undefines, "Undefine a macro given by -D or quill.toml")
      ->type_name("NAME");
  command->add_option("--no-filter", options->disabledFilters, "Turn off one lint filter (" + LintFilterNames() + ")")
      ->type_name("NAME")
      ->check(CLI::Validator(
          [](std::string& word) {
            return FindLintFilter(word) ? std::string() : "unknown filter '" + word + "' (" + LintFilterNames() + ")";
          },
          ""));
  command->add_flag("--statistics", options->statistics, "Print how many findings each filter dropped, per check");
  command->add_flag("--exact", options->exact,
                    "The library's report untouched: whole file, no `ifdef evaluation, no filters, suppressions "
                    "or quill.toml");
  std::string checks = "Checks (for quill.toml and '// quill: disable-line CHECK'; 'all' means every one):\n";
  for (const quill::CheckInfo& check : quill::kCheckTable) {
    checks += "  " + std::string(check.name) + std::string(18 - std::min<std::size_t>(17, check.name.size()), ' ') +
              std::string(quill::SeverityName(check.severity)) + "  " + std::string(check.summary) + "\n";
  }
  command->footer(checks + "\n" + kLintExitCodes);
  return command;
}

// quill config [PATH]: the settings in force for a path.
CLI::App* AddConfigCommand(CLI::App* app, ConfigOptions* options) {
  CLI::App* command = app->add_subcommand("config", "Print the settings in force for a path (as TOML) and their file");
  command->add_option("path", options->path, "A file or folder (default: the working folder)")->type_name("PATH");
  command->add_option("--config", options->configFile, "Use this quill.toml instead of the nearest one")
      ->type_name("FILE");
  command->add_flag("--isolated", options->isolated, "Ignore every quill.toml (built-in defaults)");
  return command;
}

CLI::App* AddHighlightCommand(CLI::App* app, HighlightOptions* options) {
  CLI::App* command = app->add_subcommand("highlight", "Show constraint and Tcl files with syntax colours");
  AddInputOptions(command, &options->input, ".xdc .sdc .tcl .qsf .cst .pcf .lpf .ucf");
  AddChoice(command, "--format", &options->format, {{"text", HighlightFormat::kText}, {"json", HighlightFormat::kJson}},
            "text (default): the file with one ANSI colour per token class\n"
            "json: one line per file: {\"file\",\"runs\":[{\"offset\",\"length\",\"class\"},...]}");
  AddChoice(command, "--color", &options->color, kColorChoices, kColorHelp);
  command->footer(kHighlightExitCodes);
  return command;
}

std::string UsageFailure(const CLI::App*, const CLI::Error& error) {
  return ErrorLine(std::string(error.what()) + " (see quill --help)");
}

// "-" at most once, and never to be written in place.
bool CheckStandardInput(const InputOptions& input, bool inPlace) {
  const auto dashes = std::count(input.paths.begin(), input.paths.end(), "-");
  const char* problem = dashes > 1               ? "standard input (-) may be given only once"
                        : dashes == 1 && inPlace ? "--in-place cannot write standard input (-)"
                                                 : nullptr;
  if (problem != nullptr) std::fputs(ErrorLine(problem).c_str(), stderr);
  return problem == nullptr;
}

// The first argument that is not an option, which names the command (the
// program itself has flags only); "" when there is none.
std::string CommandWord(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (!word.starts_with('-')) return word;
  }
  return "";
}

// An unknown or missing command: the error line, the nearest command name
// when one is close, and the list of commands.
int ReportCommandError(const CLI::App& app, const std::string& word, const std::vector<std::string>& names) {
  std::string message = word.empty() ? std::string("a command is required") : "unknown command '" + word + "'";
  const std::string closest = word.empty() ? "" : quill::cli::ClosestName(word, names);
  if (!closest.empty()) message += "; did you mean '" + closest + "'?";
  std::string text = ErrorLine(message) + "Commands:\n";
  for (const CLI::App* command : app.get_subcommands({})) {
    std::string name = command->get_name();
    name.resize(std::max<std::size_t>(name.size(), 11), ' ');
    text += "  " + name + command->get_description() + "\n";
  }
  text += "Run 'quill COMMAND --help' for a command's options.\n";
  std::fputs(text.c_str(), stderr);
  return kExitError;
}

// True when the arguments ask for help or the version of the program itself.
bool AsksProgram(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    const std::string word = argv[i];
    if (word == "-h" || word == "--help" || word == "--version") return true;
  }
  return false;
}

int Run(int argc, char** argv) {
  const std::string version = VersionText();
  CLI::App app{"quill: Verilog formatter and linter, constraint and Tcl highlighter", "quill"};
  app.footer(kExitCodes);
  app.require_subcommand(1, 1);
  app.failure_message(UsageFailure);
  app.set_version_flag("--version", version, "Print the tool's and the engine's versions and exit");

  FormatOptions format;
  FormatFlags formatFlags;
  LintOptions lint;
  HighlightOptions highlight;
  CLI::App* formatCommand = AddFormatCommand(&app, &format, &formatFlags);
  CLI::App* lintCommand = AddLintCommand(&app, &lint);
  CLI::App* highlightCommand = AddHighlightCommand(&app, &highlight);
  ConfigOptions config;
  CLI::App* configCommand = AddConfigCommand(&app, &config);
  configCommand->footer(
      "Exit codes:\n"
      "  0  printed\n"
      "  2  usage error, missing path or unusable quill.toml");
  CLI::App* versionCommand = app.add_subcommand("version", "Print the tool's and the engine's versions");
  versionCommand->footer(kVersionExitCodes);
  CLI::App* lspCommand = app.add_subcommand(
      "lsp", "Serve the Language Server Protocol on standard input and output (for editors)");
  lspCommand->footer(
      "Exit codes:\n"
      "  0  the client asked to shut down, then to exit\n"
      "  1  the client exited without asking to shut down, or the input ended\n"
      "  2  usage error");

  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands({})) names.push_back(command->get_name());
  const std::string word = CommandWord(argc, argv);
  const bool known = std::find(names.begin(), names.end(), word) != names.end();
  if (word.empty() ? !AsksProgram(argc, argv) : !known) return ReportCommandError(app, word, names);

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    // The top-level help lists every command with all its options.
    if (app.get_subcommands().empty()) {
      std::cout << app.help("", CLI::AppFormatMode::All);
      return kExitClean;
    }
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? kExitClean : kExitError;
  }

  if (lspCommand->parsed()) return quill::lsp::RunLanguageServer(STDIN_FILENO, STDOUT_FILENO);
  if (versionCommand->parsed()) {
    std::cout << version << '\n';
    return kExitClean;
  }
  if (formatCommand->parsed()) {
    format.mode = formatFlags.Mode();
    return CheckStandardInput(format.input, formatFlags.inPlace) ? RunFormat(format) : kExitError;
  }
  if (configCommand->parsed()) return RunConfig(config);
  if (lintCommand->parsed()) return CheckStandardInput(lint.input, false) ? RunLint(lint) : kExitError;
  if (highlightCommand->parsed()) {
    return CheckStandardInput(highlight.input, false) ? RunHighlight(highlight) : kExitError;
  }
  return kExitError;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int code = Run(argc, argv);
    std::cout.flush();
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0 || !std::cout) {
      std::fputs(quill::cli::ErrorLine("cannot write to standard output").c_str(), stderr);
      return quill::cli::kExitError;
    }
    return code;
  } catch (const std::exception& e) {
    std::fflush(stdout);
    std::fputs(quill::cli::ErrorLine(std::string("internal error: ") + e.what()).c_str(), stderr);
  } catch (...) {
    std::fflush(stdout);
    std::fputs(quill::cli::ErrorLine("internal error").c_str(), stderr);
  }
  return quill::cli::kExitError;
}
