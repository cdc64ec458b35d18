// Turning command-line paths into the list of files to process, reading
// them, and writing formatted files back.
#ifndef QUILL_CLI_FILES_H_
#define QUILL_CLI_FILES_H_

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "config.h"

namespace quill::cli {

// One file to process. An entry whose `error` is set stands for an argument
// that could not be expanded; it is reported in its place in the order.
struct InputFile {
  std::string displayName;
  std::filesystem::path path;
  bool isStdin = false;
  std::string error;
};

// File name extensions (lower case, with the dot) that a folder walk picks up.
using ExtensionList = std::vector<std::string_view>;

inline const ExtensionList kVerilogExtensions = {".v", ".sv", ".vh", ".svh"};
inline const ExtensionList kConstraintExtensions = {".xdc", ".sdc", ".tcl", ".qsf", ".cst", ".pcf", ".lpf", ".ucf"};

// How folders are walked: which command walks them (for its own
// exclusions), where the settings come from, and whether git's ignore rules
// apply.
struct WalkOptions {
  CommandKind command = CommandKind::kLint;
  ConfigFinder* configs = nullptr;  // null: the built-in defaults
  bool gitIgnore = true;
};

// Expands the arguments in order: "-" is standard input (shown as
// `stdinName`), a folder becomes its matching files in byte order of their
// paths, and anything else is taken as a file whatever its extension. A walk
// skips what the governing quill.toml excludes (by default hidden entries),
// what git ignores, and symbolic links to folders. A file reached twice is
// listed once, at its first place. A config that cannot be read is an error
// entry, once, and the folders it governs are skipped.
std::vector<InputFile> ExpandInputs(const std::vector<std::string>& arguments, const ExtensionList& extensions,
                                    std::string_view stdinName, const WalkOptions& walk = {});

struct ReadResult {
  std::string text;
  std::string error;  // "NAME: reason" when the file cannot be used
};

// Reads a whole file (or standard input) and rejects binary files, those
// with a NUL byte in their first 8 kB, and files too large for the engine.
ReadResult ReadInput(const InputFile& input);

// Replaces the file's content, keeping the file itself (permissions, links).
// Returns "" on success, else "NAME: reason".
std::string WriteOutput(const InputFile& input, std::string_view content);

}  // namespace quill::cli

#endif  // QUILL_CLI_FILES_H_
