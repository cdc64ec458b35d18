#include "contracts.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "quill.h"

namespace quill::fuzz {
namespace {

constexpr unsigned char kSentinel = 0xA5;
constexpr std::size_t kExactCheckLimit = 1 << 20;
constexpr std::string_view kCheckNames[] = {
    "latch",        "multi-driver",   "width-mismatch",   "blocking-assign",
    "dupli-define", "repeated-assig", "used-bef-declare", "comb-loop",
    "dupli-inst",   "reg-assign",     "wire-always",      "cpp-exception",
};

struct ContractBroken : std::runtime_error {
  using std::runtime_error::runtime_error;
};

void Expect(bool ok, const char* what) {
  if (!ok) throw ContractBroken(what);
}

template <typename Check>
std::string Verdict(Check check) {
  try {
    check();
    return {};
  } catch (const ContractBroken& broken) {
    return broken.what();
  }
}

bool Untouched(const std::vector<unsigned char>& buffer, std::size_t from) {
  for (std::size_t i = from; i < buffer.size(); ++i) {
    if (buffer[i] != kSentinel) return false;
  }
  return true;
}

// The engine's text: the input as given, or an empty NUL-terminated string.
struct Input {
  const char* text;
  std::int32_t length;
};

Input TextOf(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return {"", 0};
  return {reinterpret_cast<const char*>(data), static_cast<std::int32_t>(size)};
}

// A strict reader for the report's fixed shape:
// [{"severity":"...","line":N,"check":"...","message":"..."},...]
class ReportReader {
 public:
  explicit ReportReader(std::string_view text) : text_(text) {}

  void ReadAll() {
    Literal("[");
    if (Peek(']')) {
      Literal("]");
    } else {
      do ReadFinding();
      while (Consume(','));
      Literal("]");
    }
    Expect(pos_ == text_.size(), "report has text after its array");
  }

 private:
  void ReadFinding() {
    Literal("{\"severity\":");
    std::string severity = String();
    Expect(severity == "error" || severity == "warning", "severity is error or warning");
    Literal(",\"line\":");
    Expect(pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9', "line is 0 or more");
    while (pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '9') ++pos_;
    Literal(",\"check\":");
    std::string check = String();
    bool known = false;
    for (std::string_view name : kCheckNames) known = known || check == name;
    Expect(known, "check name is one of the eleven or cpp-exception");
    Literal(",\"message\":");
    String();
    Literal("}");
  }

  std::string String() {
    Literal("\"");
    std::string value;
    while (pos_ < text_.size() && text_[pos_] != '"') {
      if (text_[pos_] == '\\') {
        ++pos_;
        Expect(pos_ < text_.size(), "escape at end of report");
        char e = text_[pos_];
        Expect(e == 't' || e == 'n' || e == 'r' || e == '"' || e == '\\', "known escape");
      }
      value.push_back(text_[pos_++]);
    }
    Literal("\"");
    return value;
  }

  bool Peek(char c) const { return pos_ < text_.size() && text_[pos_] == c; }
  bool Consume(char c) {
    if (!Peek(c)) return false;
    ++pos_;
    return true;
  }
  void Literal(std::string_view s) {
    Expect(text_.substr(pos_, s.size()) == s, "report has its fixed shape");
    pos_ += s.size();
  }

  std::string_view text_;
  std::size_t pos_ = 0;
};

// The checks on a formatted result of length n in a sentinel-filled buffer.
void ExpectFormattedResult(std::string_view source, const std::vector<unsigned char>& out, std::int32_t n) {
  const auto length = static_cast<std::size_t>(n);
  Expect(n >= 1 && length < out.size(), "the result fits the buffer");
  Expect(out[length] == 0, "the result is NUL-terminated");
  Expect(Untouched(out, length + 1), "nothing is written past the NUL");
  std::string_view result(reinterpret_cast<const char*>(out.data()), length);
  if (result == source) return;  // foreign source passes through unchanged
  Expect(result.back() == '\n', "the result ends with LF");
  Expect(length == 1 || result[length - 2] != '\n', "the result ends with exactly one LF");
  Expect(result.find("\r\n") == std::string_view::npos, "no CR before an LF");
}

}  // namespace

std::string CheckFormatContract(const std::uint8_t* data, std::size_t size) {
  return Verdict([&] {
    if (size > static_cast<std::size_t>(INT32_MAX)) return;
    Input in = TextOf(data, size);
    std::string_view source(in.text, size);
    // With size 0 the engine reads up to the NUL; with embedded NULs, all bytes.
    std::int32_t probe = 0;
    if (size <= kExactCheckLimit) {
      std::vector<unsigned char> tiny(4, kSentinel);
      probe = n5p8w(in.text, in.length, reinterpret_cast<char*>(tiny.data()), 1);
      Expect(probe <= -2, "capacity 1 never fits a result");
      Expect(Untouched(tiny, 0), "a too-small buffer is untouched");
      std::vector<unsigned char> exact(static_cast<std::size_t>(-probe) - 1, kSentinel);
      Expect(n5p8w(in.text, in.length, reinterpret_cast<char*>(exact.data()),
                   static_cast<std::int32_t>(exact.size())) == probe,
             "capacity n is too small by one");
      Expect(Untouched(exact, 0), "a buffer one byte short is untouched");
    } else {
      // Each call costs a whole format run; a large input is asked once with
      // room to spare, and again only if that was not enough.
      const std::size_t roomy = std::min<std::size_t>(INT32_MAX, 2 * size + 4096);
      std::vector<unsigned char> first(roomy, kSentinel);
      probe = n5p8w(in.text, in.length, reinterpret_cast<char*>(first.data()), static_cast<std::int32_t>(roomy));
      if (probe >= 0) return ExpectFormattedResult(source, first, probe);
      Expect(probe <= -2, "a result needs at least two bytes");
      Expect(Untouched(first, 0), "a too-small buffer is untouched");
    }
    const auto needed = static_cast<std::size_t>(-probe);
    std::vector<unsigned char> out(needed + 8, kSentinel);
    std::int32_t n = n5p8w(in.text, in.length, reinterpret_cast<char*>(out.data()), static_cast<std::int32_t>(needed));
    Expect(n == probe * -1 - 1, "the result length matches the size asked for");
    ExpectFormattedResult(source, out, n);
  });
}

std::string CheckLintContract(const std::uint8_t* data, std::size_t size) {
  return Verdict([&] {
    if (size > static_cast<std::size_t>(INT32_MAX)) return;
    Input in = TextOf(data, size);
    char* report = t2v6r(in.text, in.length);
    Expect(report != nullptr, "the report is allocated");
    std::string copy(report);
    h3x9c(report);
    ReportReader(copy).ReadAll();
  });
}

std::string CheckHighlightContract(const std::uint8_t* data, std::size_t size) {
  return Verdict([&] {
    if (size == 0 || size > static_cast<std::size_t>(INT32_MAX) - 8) return;
    const char* text = reinterpret_cast<const char*>(data);
    const auto length = static_cast<std::int32_t>(size);
    std::vector<unsigned char> small(size - 1 + 4, kSentinel);
    Expect(x4b7d(text, length, small.data(), length - 1) == -length, "capacity length - 1 is too small");
    Expect(Untouched(small, 0), "a too-small class buffer is untouched");

    std::vector<unsigned char> out(size + 8, kSentinel);
    Expect(x4b7d(text, length, out.data(), length) == length, "every byte is classified");
    for (std::size_t i = 0; i < size; ++i) Expect(out[i] <= 10, "class codes run from 0 to 10");
    Expect(Untouched(out, size), "exactly length bytes are written");
  });
}

}  // namespace quill::fuzz
