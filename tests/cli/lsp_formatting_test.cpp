#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lsp/features.h"

namespace quill::lsp {
namespace {

struct Case {
  const char* name;
  std::string text;
  std::string edits;  // the edits as compact JSON
  std::string refusal;
};

// The server formats as `quill format` does; the stand-in engine removes
// trailing blanks, spreads one "~~" per round and joins a line ending in JOIN.
TEST(FormattingEdits, Table) {
  const std::vector<Case> cases = {
      {"nothing to do", "a\n", "[]", ""},
      {"CR LF kept in the edits", "a  \r\nb\r\n",
       R"([{"newText":"a\r\n","range":{"end":{"character":0,"line":1},"start":{"character":0,"line":0}}}])", ""},
      {"rounds until stable", "~~~~\n",
       R"([{"newText":"~ ~ ~ ~\n","range":{"end":{"character":0,"line":1},"start":{"character":0,"line":0}}}])", ""},
      {"a format-off region is left alone", "// quill: format off\na  \n// quill: format on\nb  \n",
       R"([{"newText":"b\n","range":{"end":{"character":0,"line":4},"start":{"character":0,"line":3}}}])", ""},
      {"a region that cannot be kept", "x JOIN\n// quill: format off\nb\n// quill: format on\n", "[]",
       "quill did not format: the result would move text across the format-off region on lines 2 to 4"},
      {"a text that does not settle", "~~~~~~~~\n", "[]",
       "quill did not format: the result still changes after 5 rounds"},
      {"lost text", "LOSE a\n", "[]", "quill did not format: the result would lose text on line 1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const FormattingResult result = FormattingEdits(c.text, std::nullopt);
    EXPECT_EQ(result.edits.dump(), c.edits);
    EXPECT_EQ(result.refusal, c.refusal);
  }
}

}  // namespace
}  // namespace quill::lsp
