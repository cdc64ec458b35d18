#include "engine.h"

#include <cstdint>
#include <memory>

#include "quill.h"

namespace quill::cli {
namespace {

// A string the engine allocated; released through the engine, never free().
struct ReleaseEngineString {
  void operator()(char* p) const { h3x9c(p); }
};
using EngineString = std::unique_ptr<char, ReleaseEngineString>;

// A first buffer that fits most results: formatting re-spaces text, so the
// result is usually a little longer than the input.
std::size_t FirstCapacity(std::size_t textSize) {
  const std::size_t wanted = textSize + textSize / 4 + 4096;
  return wanted < kMaxEngineText + 1 ? wanted : kMaxEngineText + 1;
}

}  // namespace

std::optional<std::string> FormatSource(std::string_view text) {
  if (text.size() > kMaxEngineText) return std::nullopt;
  // A length of 0 means a NUL-terminated text, which "" is.
  const char* source = text.empty() ? "" : text.data();
  const auto length = static_cast<int32_t>(text.size());
  std::string out(FirstCapacity(text.size()), '\0');
  // The result does not depend on the buffer, so the second call, with the
  // size the first one asked for, fits; the loop bound is only a guard.
  for (int attempt = 0; attempt < 3; ++attempt) {
    const int32_t n = n5p8w(source, length, out.data(), static_cast<int32_t>(out.size()));
    if (n >= 0) {
      out.resize(static_cast<std::size_t>(n));
      return out;
    }
    if (n == -1) return std::nullopt;
    out.assign(static_cast<std::size_t>(-static_cast<int64_t>(n)), '\0');
  }
  return std::nullopt;
}

std::optional<std::string> LintSource(std::string_view text) {
  if (text.size() > kMaxEngineText) return std::nullopt;
  // A null text with length 0 is the empty text.
  EngineString report(t2v6r(text.empty() ? nullptr : text.data(), static_cast<int32_t>(text.size())));
  if (!report) return std::nullopt;
  return std::string(report.get());
}

std::optional<std::vector<unsigned char>> ClassifySource(std::string_view text) {
  if (text.size() > kMaxEngineText) return std::nullopt;
  if (text.empty()) return std::vector<unsigned char>();
  std::vector<unsigned char> classes(text.size());
  const auto length = static_cast<int32_t>(text.size());
  if (x4b7d(text.data(), length, classes.data(), length) != length) return std::nullopt;
  return classes;
}

std::string EngineVersion() {
  EngineString version(q7m2k());
  return version ? std::string(version.get()) : std::string("unknown");
}

}  // namespace quill::cli
