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

#include "commands.h"
#include "engine.h"
#include "exit_codes.h"
#include "parallel.h"

namespace {

using quill::cli::ColorMode;
using quill::cli::FormatMode;
using quill::cli::HighlightFormat;
using quill::cli::LintFormat;
using quill::cli::Severity;

constexpr const char* kExitCodes =
    "Exit codes:\n"
    "  0  clean: no findings, no file that would change\n"
    "  1  lint findings at or above --error-on; format --check or --diff: a file would change\n"
    "  2  usage or input error (missing, unreadable or binary file, folder without matching files)\n"
    "  3  content guard: formatting would lose text (no file is written; --force overrides)\n"
    "When several apply, 2 wins over 3, and 3 over 1.";

// Paths, standard input name and worker count, the same for every command.
void AddInputOptions(CLI::App* command, quill::cli::InputOptions* input, const std::string& what) {
  command->add_option("paths", input->paths, "Files, folders (walked for " + what + " files) or - for standard input")
      ->required()
      ->type_name("FILE|DIR|-");
  command->add_option("--stdin-name", input->stdinName, "Name shown for standard input in messages and reports")
      ->type_name("NAME")
      ->default_str("<stdin>");
  command->add_option("-j,--jobs", input->jobs, "Files processed at once (default: all cores)")
      ->type_name("N")
      ->check(CLI::Range(1u, 1024u).description(""));
}

// An option taking one of a few words, shown as "word|word|word".
template <typename Enum>
CLI::Option* AddChoice(CLI::App* command, const std::string& name, Enum* value,
                       const std::vector<std::pair<std::string, Enum>>& choices, const std::string& help) {
  std::string words;
  for (const auto& choice : choices) words += (words.empty() ? "" : "|") + choice.first;
  return command
      ->add_option_function<std::string>(
          name,
          [value, choices](const std::string& word) {
            for (const auto& choice : choices) {
              if (choice.first == word) *value = choice.second;
            }
          },
          help)
      ->check(CLI::Validator(
          [choices, words](std::string& word) {
            for (const auto& choice : choices) {
              if (choice.first == word) return std::string();
            }
            return "'" + word + "' is not one of " + words;
          },
          ""))
      ->type_name(words);
}

std::string UsageFailure(const CLI::App*, const CLI::Error& error) {
  return quill::cli::ErrorLine(std::string(error.what()) + " (see quill --help)");
}

int CheckStandardInput(const quill::cli::InputOptions& input, bool inPlace) {
  const auto dashes = std::count(input.paths.begin(), input.paths.end(), "-");
  if (dashes > 1) {
    std::fputs(quill::cli::ErrorLine("standard input (-) may be given only once").c_str(), stderr);
    return quill::cli::kExitError;
  }
  if (dashes == 1 && inPlace) {
    std::fputs(quill::cli::ErrorLine("--in-place cannot write standard input (-)").c_str(), stderr);
    return quill::cli::kExitError;
  }
  return quill::cli::kExitClean;
}

int Run(int argc, char** argv) {
  const std::string version = quill::cli::EngineVersion();
  CLI::App app{"quill: Verilog formatter and linter, constraint and Tcl highlighter", "quill"};
  app.footer(kExitCodes);
  app.require_subcommand(1, 1);
  app.failure_message(UsageFailure);
  app.set_version_flag("--version", version, "Print the engine version and exit");

  const unsigned jobs = quill::cli::DefaultJobs();

  quill::cli::FormatOptions format;
  format.input.jobs = jobs;
  CLI::App* formatCommand =
      app.add_subcommand("format", "Format Verilog files: print the result, check, diff, or rewrite them in place");
  AddInputOptions(formatCommand, &format.input, ".v .sv .vh .svh");
  bool inPlace = false, check = false, diff = false;
  CLI::Option* inPlaceFlag = formatCommand->add_flag("-i,--in-place", inPlace, "Rewrite the files that would change");
  CLI::Option* checkFlag =
      formatCommand->add_flag("--check", check, "Write nothing; list the files that would change and exit 1 if any");
  CLI::Option* diffFlag = formatCommand->add_flag(
      "--diff", diff, "Write nothing; print a unified diff of each change and exit 1 if any file would change");
  inPlaceFlag->excludes(checkFlag)->excludes(diffFlag);
  checkFlag->excludes(diffFlag);
  formatCommand->add_flag("--force", format.force,
                          "Print or write formatted text even where it would lose text of the input");

  quill::cli::LintOptions lint;
  lint.input.jobs = jobs;
  CLI::App* lintCommand = app.add_subcommand("lint", "Lint Verilog files");
  AddInputOptions(lintCommand, &lint.input, ".v .sv .vh .svh");
  AddChoice(lintCommand, "--format", &lint.format,
            {{"text", LintFormat::kText}, {"json", LintFormat::kJson}, {"sarif", LintFormat::kSarif}},
            "text (default): path:LINE:1: severity: message [check], one-based lines\n"
            "json: the engine's array for each file, one per line, zero-based lines\n"
            "sarif: one SARIF 2.1.0 log, one-based lines");
  lintCommand->add_option("--max-findings", lint.maxFindings, "Print at most N findings in the whole run")
      ->type_name("N")
      ->check(CLI::Validator(
          [](std::string& word) {
            const bool digits = !word.empty() && word.find_first_not_of("0123456789") == std::string::npos;
            return digits ? std::string() : "'" + word + "' is not a whole number of 0 or more";
          },
          ""));
  AddChoice(lintCommand, "--error-on", &lint.errorOn, {{"warning", Severity::kWarning}, {"error", Severity::kError}},
            "Lowest severity that makes the exit code 1 (default: warning)");
  AddChoice(lintCommand, "--color", &lint.color,
            {{"auto", ColorMode::kAuto}, {"always", ColorMode::kAlways}, {"never", ColorMode::kNever}},
            "Colour the text output: auto (default: on a terminal unless NO_COLOR is set), always, never");

  quill::cli::HighlightOptions highlight;
  highlight.input.jobs = jobs;
  CLI::App* highlightCommand = app.add_subcommand("highlight", "Show constraint and Tcl files with syntax colours");
  AddInputOptions(highlightCommand, &highlight.input, ".xdc .sdc .tcl .qsf .cst .pcf .lpf .ucf");
  AddChoice(highlightCommand, "--format", &highlight.format,
            {{"text", HighlightFormat::kText}, {"json", HighlightFormat::kJson}},
            "text (default): the file with one ANSI colour per token class\n"
            "json: one line per file: {\"file\",\"runs\":[{\"offset\",\"length\",\"class\"},...]}");
  AddChoice(highlightCommand, "--color", &highlight.color,
            {{"auto", ColorMode::kAuto}, {"always", ColorMode::kAlways}, {"never", ColorMode::kNever}},
            "Colour the text output: auto (default: on a terminal unless NO_COLOR is set), always, never");

  app.add_subcommand("version", "Print the engine version");

  try {
    app.parse(argc, argv);
  } catch (const CLI::CallForHelp& e) {
    // The top-level help lists every command with all its options.
    if (app.get_subcommands().empty()) {
      std::cout << app.help("", CLI::AppFormatMode::All);
      return quill::cli::kExitClean;
    }
    return app.exit(e);
  } catch (const CLI::ParseError& e) {
    return app.exit(e) == 0 ? quill::cli::kExitClean : quill::cli::kExitError;
  }

  if (app.got_subcommand("version")) {
    std::cout << version << '\n';
    return quill::cli::kExitClean;
  }
  if (formatCommand->parsed()) {
    format.mode = inPlace ? FormatMode::kInPlace
                  : check ? FormatMode::kCheck
                  : diff  ? FormatMode::kDiff
                          : FormatMode::kPrint;
    if (int code = CheckStandardInput(format.input, inPlace); code != 0) return code;
    return quill::cli::RunFormat(format);
  }
  if (lintCommand->parsed()) {
    if (int code = CheckStandardInput(lint.input, false); code != 0) return code;
    return quill::cli::RunLint(lint);
  }
  if (int code = CheckStandardInput(highlight.input, false); code != 0) return code;
  return quill::cli::RunHighlight(highlight);
}

}  // namespace

int main(int argc, char** argv) {
  try {
    const int code = Run(argc, argv);
    std::fflush(stdout);
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
