// A stand-in for the engine library with the same five exports and simple,
// fixed rules, so that the tool's tests can ask for exactly the findings,
// formatting changes, lost text and failures they need:
//   format     every "LOSE" is removed; trailing blanks of each line are
//              removed; "EXPAND" not followed by "x" gains 10000 "x"
//              after it (once: the result formats to itself); the text ends in
//              one LF; a text holding "FAIL_FORMAT" fails with -1; the
//              first "~~" of the text becomes "~ ~" (so "~~~~" settles
//              after three rounds); a line ending in "JOIN" is joined
//              with the next one by a space.
//   lint       a line "... FINDING <severity> <check> <message>" gives one
//              finding on that (zero-based) line; a line "LINT_RAW <text>"
//              makes <text> the whole report; "LINT_NULL" returns NULL.
//   highlight  the bytes 'a' to 'k' get the classes 0 to 10, others 0.
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "quill.h"

namespace {

std::string_view TextArgument(const char* text, int32_t length) {
  if (text == nullptr) return {};
  if (length > 0) return {text, static_cast<std::size_t>(length)};
  return {text, std::strlen(text)};
}

char* HeapCopy(std::string_view s) {
  auto* copy = static_cast<char*>(std::malloc(s.size() + 1));
  if (copy == nullptr) return nullptr;
  std::memcpy(copy, s.data(), s.size());
  copy[s.size()] = '\0';
  return copy;
}

std::string ReplaceAll(std::string text, std::string_view from, std::string_view to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
  return text;
}

std::string Format(std::string_view source) {
  std::string text = ReplaceAll(std::string(source), "LOSE", "");
  for (std::size_t at = text.find("EXPAND"); at != std::string::npos; at = text.find("EXPAND", at + 6)) {
    if (text.compare(at + 6, 1, "x") != 0) text.insert(at + 6, std::string(10000, 'x'));
  }
  if (const std::size_t tildes = text.find("~~"); tildes != std::string::npos) text.insert(tildes + 1, " ");
  text = ReplaceAll(std::move(text), "JOIN\n", "JOIN ");
  std::string out;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string::npos) end = text.size();
    std::string_view line(text.data() + start, end - start);
    while (!line.empty() && (line.back() == ' ' || line.back() == '\t' || line.back() == '\r')) {
      line.remove_suffix(1);
    }
    out.append(line);
    out.push_back('\n');
    start = end + 1;
  }
  while (!out.empty() && out.back() == '\n') out.pop_back();
  return out + "\n";
}

std::string Escape(std::string_view s) {
  std::string out;
  for (char c : s) {
    switch (c) {
      case '\t':
        out += "\\t";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\r':
        out += "\\r";
        break;
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      default:
        out.push_back(c);
        break;
    }
  }
  return out;
}

}  // namespace

extern "C" {

QUILL_API int32_t n5p8w(const char* text, int32_t length, char* out, int32_t capacity) {
  if (text == nullptr || out == nullptr || capacity < 1) return -1;
  const std::string_view source = TextArgument(text, length);
  if (source.find("FAIL_FORMAT") != std::string_view::npos) return -1;
  const std::string result = Format(source);
  const auto needed = static_cast<int32_t>(result.size() + 1);
  if (capacity < needed) return -needed;
  std::memcpy(out, result.c_str(), result.size() + 1);
  return needed - 1;
}

QUILL_API char* t2v6r(const char* text, int32_t length) {
  const std::string_view source = TextArgument(text, length);
  std::string report = "[";
  int32_t lineNumber = 0;
  for (std::size_t start = 0; start <= source.size(); ++lineNumber) {
    std::size_t end = source.find('\n', start);
    if (end == std::string_view::npos) end = source.size();
    const std::string_view line = source.substr(start, end - start);
    start = end + 1;
    if (line.find("LINT_NULL") != std::string_view::npos) return nullptr;
    if (line.starts_with("LINT_RAW ")) return HeapCopy(line.substr(9));
    const std::size_t at = line.find("FINDING ");
    if (at == std::string_view::npos) continue;
    std::string_view rest = line.substr(at + 8);
    const std::size_t s1 = rest.find(' ');
    const std::string_view severity = rest.substr(0, s1);
    rest = s1 == std::string_view::npos ? std::string_view() : rest.substr(s1 + 1);
    const std::size_t s2 = rest.find(' ');
    const std::string_view check = rest.substr(0, s2);
    const std::string_view message = s2 == std::string_view::npos ? std::string_view() : rest.substr(s2 + 1);
    if (report.size() > 1) report += ",";
    report += "{\"severity\":\"" + Escape(severity) + "\",\"line\":" + std::to_string(lineNumber) + ",\"check\":\"" +
              Escape(check) + "\",\"message\":\"" + Escape(message) + "\"}";
  }
  return HeapCopy(report + "]");
}

QUILL_API int32_t x4b7d(const char* text, int32_t length, unsigned char* out, int32_t capacity) {
  if (text == nullptr || length < 1) return 0;
  if (out == nullptr || capacity < length) return -length;
  for (int32_t i = 0; i < length; ++i) {
    const char c = text[i];
    out[i] = static_cast<unsigned char>(c >= 'a' && c <= 'k' ? c - 'a' : 0);
  }
  return length;
}

QUILL_API char* q7m2k(void) {
  return HeapCopy("fake_engine v0");
}

QUILL_API void h3x9c(char* p) {
  std::free(p);
}

}  // extern "C"
