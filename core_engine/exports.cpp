// The five C entry points. Each checks its arguments, runs one service on a
// copy of the text and hands the result over by the documented contract;
// nothing thrown inside ever crosses this boundary.
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

#include "format/format_text.h"
#include "highlight/classify_constraint_text.h"
#include "lint/lint_text.h"
#include "quill.h"

namespace {

// "core_engine v<major>.<minor>", from the project version (CMakeLists.txt).
constexpr char kVersion[] = QUILL_ENGINE_VERSION;

// The text by the length rule: `length` bytes when positive, else up to the
// NUL.
std::string_view TextArgument(const char* text, int32_t length) {
  if (text == nullptr) return {};
  if (length > 0) return {text, static_cast<std::size_t>(length)};
  return {text, std::strlen(text)};
}

bool IsAllBlank(std::string_view text) {
  return text.find_first_not_of(" \t\n\r") == std::string_view::npos;
}

// A heap copy the host releases with h3x9c; null when allocation fails.
char* HeapCopy(std::string_view s) {
  auto* copy = static_cast<char*>(std::malloc(s.size() + 1));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, s.data(), s.size());
  copy[s.size()] = '\0';
  return copy;
}

int32_t CopyResult(std::string_view result, char* out, int32_t capacity) {
  // A result that cannot be described by a 32-bit size is as unusable as an
  // allocation failure.
  if (result.size() >= static_cast<std::size_t>(INT32_MAX)) return -1;
  const auto needed = static_cast<int32_t>(result.size() + 1);
  if (capacity < needed) return -needed;
  std::memcpy(out, result.data(), result.size());
  out[result.size()] = '\0';
  return needed - 1;
}

}  // namespace

extern "C" {

QUILL_API int32_t n5p8w(const char* text, int32_t length, char* out, int32_t capacity) {
  if (text == nullptr || out == nullptr || capacity < 1) return -1;
  try {
    std::string_view source = TextArgument(text, length);
    if (IsAllBlank(source)) return CopyResult("\n", out, capacity);
    if (quill::IsForeignSource(source)) return CopyResult(source, out, capacity);
    return CopyResult(quill::FormatText(source), out, capacity);
  } catch (...) {
    return -1;
  }
}

QUILL_API char* t2v6r(const char* text, int32_t length) {
  try {
    return HeapCopy(quill::LintText(TextArgument(text, length)));
  } catch (...) {
    return nullptr;
  }
}

QUILL_API int32_t x4b7d(const char* text, int32_t length, unsigned char* out, int32_t capacity) {
  if (text == nullptr || length < 1) return 0;
  if (out == nullptr || capacity < length) return -length;
  try {
    quill::ClassifyConstraintText(text, static_cast<std::size_t>(length), out);
  } catch (...) {
    // Classification allocates only its word sets; without them every byte
    // stays plain.
    std::memset(out, 0, static_cast<std::size_t>(length));
  }
  return length;
}

QUILL_API char* q7m2k(void) { return HeapCopy(kVersion); }

QUILL_API void h3x9c(char* p) { std::free(p); }

}  // extern "C"
