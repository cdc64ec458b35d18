#include "git_ignore.h"

#include <git2.h>

#include <mutex>
#include <system_error>

namespace quill::cli {
namespace {

namespace fs = std::filesystem;

// libgit2 is set up once for the process and left set up.
void InitializeLibgit2() {
  static std::once_flag once;
  std::call_once(once, [] { git_libgit2_init(); });
}

}  // namespace

void GitIgnore::CloseRepository::operator()(git_repository* repository) const {
  git_repository_free(repository);
}

GitIgnore::GitIgnore(const fs::path& folder) {
  if (folder.empty()) return;
  InitializeLibgit2();
  std::error_code error;
  const fs::path absolute = fs::weakly_canonical(folder, error);
  if (error) return;
  git_repository* repository = nullptr;
  if (git_repository_open_ext(&repository, absolute.c_str(), 0, nullptr) != 0) return;
  repository_.reset(repository);
  const char* workdir = git_repository_workdir(repository);
  if (workdir == nullptr) {
    repository_.reset();  // a bare repository has no files to walk
    return;
  }
  std::string root = workdir;
  while (root.size() > 1 && root.back() == '/') root.pop_back();
  workdir_ = fs::weakly_canonical(fs::path(root), error);
  if (error) repository_.reset();
}

GitIgnore::~GitIgnore() = default;

bool GitIgnore::IsIgnored(const fs::path& path, bool isFolder) const {
  if (!repository_) return false;
  std::error_code error;
  // Through any symbolic link, as the repository's folder is known.
  const fs::path absolute = fs::weakly_canonical(path, error);
  if (error) return false;
  const fs::path relative = absolute.lexically_relative(workdir_);
  if (relative.empty() || *relative.begin() == "..") return false;
  std::string name = relative.generic_string();
  if (name == "." || name.empty()) return false;
  // A trailing slash lets patterns that match folders only apply.
  if (isFolder) name += "/";
  int ignored = 0;
  if (git_ignore_path_is_ignored(&ignored, repository_.get(), name.c_str()) != 0) return false;
  return ignored == 1;
}

}  // namespace quill::cli
