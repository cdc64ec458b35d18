#include "files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <set>
#include <system_error>

#include "engine.h"
#include "git_ignore.h"

namespace quill::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kBinaryProbeSize = 8192;

struct CloseFile {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

std::string SystemMessage(int code) {
  return std::generic_category().message(code);
}

std::string Lowercase(std::string s) {
  for (char& c : s) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return s;
}

bool HasExtension(const fs::path& path, const ExtensionList& extensions) {
  const std::string extension = Lowercase(path.extension().string());
  return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
}

std::string ExtensionWords(const ExtensionList& extensions) {
  std::string words;
  for (std::size_t i = 0; i < extensions.size(); ++i) {
    if (i > 0) words += i + 1 == extensions.size() ? " or " : ", ";
    words += extensions[i];
  }
  return words;
}

// The matching files under a folder, sorted; or entries with errors.
std::vector<InputFile> WalkFolder(const std::string& argument, const ExtensionList& extensions,
                                  const WalkOptions& walk) {
  std::vector<std::string> found;
  std::vector<InputFile> configErrors;
  std::set<std::string> reported;
  const GitIgnore ignore(walk.gitIgnore ? fs::path(argument) : fs::path());
  ConfigFinder defaults(ConfigFinder::Mode::kIsolated, {});
  ConfigFinder* configs = walk.configs != nullptr ? walk.configs : &defaults;
  std::error_code error;
  fs::recursive_directory_iterator it(argument, fs::directory_options::skip_permission_denied, error);
  for (; !error && it != fs::recursive_directory_iterator(); it.increment(error)) {
    const fs::directory_entry& entry = *it;
    std::error_code typeError;
    const bool isFolder = entry.is_directory(typeError);
    const ConfigResult config = configs->ForPath(entry.path().parent_path(), true);
    const bool skip = !config.config || IsExcluded(*config.config, entry.path(), isFolder, walk.command) ||
                      (walk.gitIgnore && ignore.IsIgnored(entry.path(), isFolder));
    if (!config.config && reported.insert(config.error).second) {
      configErrors.push_back(InputFile{config.error, {}, false, config.error});
    }
    if (skip) {
      if (isFolder) it.disable_recursion_pending();
      continue;
    }
    if (entry.is_regular_file(typeError) && HasExtension(entry.path(), extensions)) {
      found.push_back(entry.path().string());
    }
  }
  if (error) return {InputFile{argument, argument, false, argument + ": " + SystemMessage(error.value())}};
  if (!configErrors.empty() && found.empty()) return configErrors;
  if (found.empty()) {
    return {
        InputFile{argument, argument, false, argument + ": folder holds no " + ExtensionWords(extensions) + " files"}};
  }
  std::sort(found.begin(), found.end());
  std::vector<InputFile> files = std::move(configErrors);
  files.reserve(files.size() + found.size());
  for (std::string& name : found) {
    fs::path path(name);
    files.push_back(InputFile{std::move(name), std::move(path), false, ""});
  }
  return files;
}

// A key that is equal for two names of the same file.
std::string IdentityOf(const InputFile& file) {
  if (file.isStdin) return "\x01stdin";
  if (!file.error.empty()) return "\x01error:" + file.displayName;
  std::error_code error;
  fs::path canonical = fs::weakly_canonical(file.path, error);
  return error ? file.path.lexically_normal().string() : canonical.string();
}

std::string TooLargeMessage(const std::string& name) {
  return name + ": file too large (the engine takes at most 2 GiB)";
}

}  // namespace

std::vector<InputFile> ExpandInputs(const std::vector<std::string>& arguments, const ExtensionList& extensions,
                                    std::string_view stdinName, const WalkOptions& walk) {
  std::vector<InputFile> files;
  std::set<std::string> seen;
  auto add = [&](InputFile file) {
    if (seen.insert(IdentityOf(file)).second) files.push_back(std::move(file));
  };
  for (const std::string& argument : arguments) {
    if (argument == "-") {
      add(InputFile{std::string(stdinName), {}, true, ""});
      continue;
    }
    std::error_code error;
    if (fs::is_directory(argument, error)) {
      for (InputFile& file : WalkFolder(argument, extensions, walk)) add(std::move(file));
    } else {
      add(InputFile{argument, argument, false, ""});
    }
  }
  return files;
}

ReadResult ReadInput(const InputFile& input) {
  ReadResult result;
  if (!input.error.empty()) {
    result.error = input.error;
    return result;
  }
  FileHandle owned;
  std::FILE* stream = stdin;
  if (!input.isStdin) {
    std::error_code error;
    if (fs::is_directory(input.path, error)) {
      result.error = input.displayName + ": " + SystemMessage(EISDIR);
      return result;
    }
    owned.reset(std::fopen(input.path.c_str(), "rb"));
    if (!owned) {
      result.error = input.displayName + ": " + SystemMessage(errno);
      return result;
    }
    stream = owned.get();
  }
  char chunk[65536];
  for (;;) {
    const std::size_t n = std::fread(chunk, 1, sizeof chunk, stream);
    if (n > 0) {
      if (result.text.size() + n > kMaxEngineText) {
        result.text.clear();
        result.error = TooLargeMessage(input.displayName);
        return result;
      }
      result.text.append(chunk, n);
    }
    if (n < sizeof chunk) break;
  }
  if (std::ferror(stream)) {
    const int code = errno;
    result.text.clear();
    result.error = input.displayName + ": " + SystemMessage(code != 0 ? code : EIO);
    return result;
  }
  const std::size_t probe = std::min(result.text.size(), kBinaryProbeSize);
  if (std::memchr(result.text.data(), '\0', probe) != nullptr) {
    result.text.clear();
    result.error = input.displayName + ": binary file (a NUL byte in its first 8 kB), skipped";
  }
  return result;
}

std::string WriteOutput(const InputFile& input, std::string_view content) {
  FileHandle file(std::fopen(input.path.c_str(), "wb"));
  if (!file) return input.displayName + ": cannot write: " + SystemMessage(errno);
  const std::size_t written = std::fwrite(content.data(), 1, content.size(), file.get());
  const int writeError = written == content.size() ? 0 : errno;
  std::FILE* raw = file.release();
  const int closeResult = std::fclose(raw);
  if (writeError != 0 || closeResult != 0) {
    return input.displayName + ": cannot write: " + SystemMessage(writeError != 0 ? writeError : errno);
  }
  return "";
}

}  // namespace quill::cli
