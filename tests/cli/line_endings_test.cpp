#include "line_endings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

struct DetectCase {
  const char* name;
  std::string text;
  LineEnding ending;
};

TEST(DetectLineEnding, Table) {
  const std::vector<DetectCase> cases = {
      {"empty", "", LineEnding::kLf},
      {"no line end", "a;", LineEnding::kLf},
      {"a lone CR is no line end", "a;\r", LineEnding::kLf},
      {"LF", "a;\nb;\n", LineEnding::kLf},
      {"CR LF", "a;\r\nb;\r\n", LineEnding::kCrLf},
      {"CR LF, last line open", "a;\r\nb;", LineEnding::kCrLf},
      {"mixed", "a;\r\nb;\n", LineEnding::kLf},
      {"LF first", "\na;\r\n", LineEnding::kLf},
      {"CR CR LF", "a;\r\r\n", LineEnding::kCrLf},
  };
  for (const DetectCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(DetectLineEnding(c.text), c.ending);
  }
}

struct ConvertCase {
  const char* name;
  std::string crlf;
  std::string lf;
};

TEST(LineEndingConversion, Table) {
  const std::vector<ConvertCase> cases = {
      {"empty", "", ""},
      {"lines", "a\r\nb\r\n", "a\nb\n"},
      {"open last line", "a\r\nb", "a\nb"},
      {"other CRs stay", "a\r\r\nb\rc\r\n", "a\r\nb\rc\n"},
      {"empty lines", "\r\n\r\n", "\n\n"},
  };
  for (const ConvertCase& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(ToLf(c.crlf), c.lf);
    EXPECT_EQ(ToCrLf(c.lf), c.crlf);
    EXPECT_EQ(WithLineEnding(c.lf, LineEnding::kCrLf), c.crlf);
    EXPECT_EQ(WithLineEnding(c.lf, LineEnding::kLf), c.lf);
  }
}

TEST(LineEndingConversion, RoundTripKeepsEveryText) {
  for (const std::string text : {"", "\r", "\n", "\r\n", "\r\r\n\n", "a\rb\n\r", "\n\r\r"}) {
    SCOPED_TRACE(text);
    EXPECT_EQ(ToLf(ToCrLf(text)), text);
  }
}

}  // namespace
}  // namespace quill::cli
