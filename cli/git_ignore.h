// What git ignores (.gitignore files, .git/info/exclude, core.excludesFile),
// asked of libgit2 so that git's own rules apply.
#ifndef QUILL_CLI_GIT_IGNORE_H_
#define QUILL_CLI_GIT_IGNORE_H_

#include <filesystem>
#include <memory>

struct git_repository;

namespace quill::cli {

class GitIgnore {
 public:
  // Opens the repository that holds `folder`, if any. Outside a repository
  // nothing is ignored.
  explicit GitIgnore(const std::filesystem::path& folder);
  ~GitIgnore();
  GitIgnore(const GitIgnore&) = delete;
  GitIgnore& operator=(const GitIgnore&) = delete;

  bool InRepository() const { return repository_ != nullptr; }
  bool IsIgnored(const std::filesystem::path& path, bool isFolder) const;

 private:
  struct CloseRepository {
    void operator()(git_repository* repository) const;
  };
  std::unique_ptr<git_repository, CloseRepository> repository_;
  std::filesystem::path workdir_;
};

}  // namespace quill::cli

#endif  // QUILL_CLI_GIT_IGNORE_H_
