// quill config: the settings in force for a path, and where they come from.
#include <cstdio>
#include <system_error>

#include "commands.h"
#include "config.h"
#include "exit_codes.h"
#include "parallel.h"

namespace quill::cli {

int RunConfig(const ConfigOptions& options) {
  namespace fs = std::filesystem;
  std::error_code error;
  const bool isFolder = fs::is_directory(options.path, error);
  if (!isFolder && !fs::exists(options.path, error)) {
    WriteBytes(stderr, ErrorLine(options.path + ": " + std::generic_category().message(ENOENT)));
    return kExitError;
  }
  ConfigFinder finder = MakeConfigFinder(options.configFile, options.isolated);
  const ConfigResult result = finder.ForPath(options.path, isFolder);
  if (!result.config) {
    WriteBytes(stderr, ErrorLine(result.error));
    return kExitError;
  }
  WriteBytes(stdout, "# settings for " + options.path + "\n" + DescribeConfig(*result.config));
  return kExitClean;
}

}  // namespace quill::cli
