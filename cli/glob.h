// Path patterns of quill.toml, with .gitignore's rules:
//   *  any run of bytes but '/'      ?  one byte but '/'      [a-z] [!a-z]  a class
//   ** as a whole segment: any number of folders ("**/x", "x/**", "a/**/b")
//   a pattern with no '/' but a trailing one matches a name at any depth;
//   one with a '/' (a leading "/" included) is anchored at the config's folder;
//   a trailing '/' matches folders only; a backslash escapes the next byte.
// A pattern that matches a folder matches everything inside it.
#ifndef QUILL_CLI_GLOB_H_
#define QUILL_CLI_GLOB_H_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quill::cli {

class Glob {
 public:
  // nullopt, with `error` set, for an empty pattern or an unclosed class.
  static std::optional<Glob> Parse(std::string_view pattern, std::string* error);

  // `path` is relative to the config's folder, '/'-separated, without "./".
  bool Matches(std::string_view path, bool isFolder) const;
  // Matches the path itself or one of its parent folders.
  bool MatchesPathOrParent(std::string_view path, bool isFolder) const;

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
  std::vector<std::string> segments_;
  bool folderOnly_ = false;
};

// Matches one path segment against one pattern segment (no "**").
bool MatchSegment(std::string_view pattern, std::string_view name);

}  // namespace quill::cli

#endif  // QUILL_CLI_GLOB_H_
