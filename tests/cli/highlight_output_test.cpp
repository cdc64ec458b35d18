#include "highlight_output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quill::cli {
namespace {

TEST(ClassName, AllCodes) {
  const std::vector<std::string> names = {"plain",    "comment",      "string",      "keyword",
                                          "property", "io-standard",  "pin-name",    "port-name",
                                          "brace",    "tool-command", "flow-command"};
  for (unsigned char code = 0; code < names.size(); ++code) EXPECT_EQ(ClassName(code), names[code]);
  EXPECT_EQ(ClassName(11), "unknown");
  EXPECT_EQ(ClassName(255), "unknown");
}

TEST(RenderAnsi, OneColourPerRun) {
  EXPECT_EQ(RenderAnsi("set x", {3, 3, 3, 0, 0}), "\x1b[34mset\x1b[0m x");
  EXPECT_EQ(RenderAnsi("{W5}", {8, 6, 6, 8}), "\x1b[91m{\x1b[0m\x1b[95mW5\x1b[0m\x1b[91m}\x1b[0m");
}

TEST(RenderAnsi, ColourClosedAtLineFeed) {
  EXPECT_EQ(RenderAnsi("#a\n#b", {1, 1, 1, 1, 1}), "\x1b[90m#a\x1b[0m\n\x1b[90m#b\x1b[0m");
}

TEST(RenderAnsi, PlainAndEmpty) {
  EXPECT_EQ(RenderAnsi("", {}), "");
  EXPECT_EQ(RenderAnsi("a b\n", {0, 0, 0, 0}), "a b\n");
  EXPECT_EQ(RenderAnsi("x", {200}), "x");
}

TEST(RenderJsonRuns, RunsCoverTheText) {
  EXPECT_EQ(RenderJsonRuns("pins.xdc", {3, 3, 0, 6, 6}),
            "{\"file\":\"pins.xdc\",\"runs\":[{\"offset\":0,\"length\":2,\"class\":\"keyword\"},"
            "{\"offset\":2,\"length\":1,\"class\":\"plain\"},{\"offset\":3,\"length\":2,\"class\":\"pin-name\"}]}\n");
  EXPECT_EQ(RenderJsonRuns("e.tcl", {}), "{\"file\":\"e.tcl\",\"runs\":[]}\n");
}

TEST(RenderJsonRuns, PathIsEscaped) {
  EXPECT_EQ(RenderJsonRuns("a\"b\xff.xdc", {}), "{\"file\":\"a\\\"b\xef\xbf\xbd.xdc\",\"runs\":[]}\n");
}

}  // namespace
}  // namespace quill::cli
