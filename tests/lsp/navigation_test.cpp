#include "lsp/navigation.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "lsp/documents.h"
#include "lsp/features.h"
#include "lsp/workspace_index.h"

namespace quill::lsp {
namespace {

using Json = nlohmann::json;

const char* const kTop =
    "module top(input clk, output [3:0] q);\n"  // 0
    "  wire [3:0] count;\n"                      // 1
    "  counter #(.W(4)) u_count (.clk(clk), .q(count));\n"  // 2
    "  assign q = count;\n"                      // 3
    "endmodule\n";
const char* const kCounter =
    "// counts clock edges\n"                    // 0
    "module counter #(parameter W = 8) (\n"      // 1
    "  input clk,\n"                             // 2
    "  output reg [W-1:0] q\n"                   // 3
    ");\n"                                       // 4
    "  always @(posedge clk) begin\n"            // 5
    "    q = q + 1;\n"                           // 6
    "  end\n"                                    // 7
    "endmodule\n";

struct Workspace {
  FilePtr top = std::make_shared<IndexedFile>("file:///w/top.v", kTop);
  FilePtr counter = std::make_shared<IndexedFile>("file:///w/counter.v", kCounter);
  std::vector<FilePtr> files{top, counter};
};

Json Range(int l1, int c1, int l2, int c2) {
  return {{"start", {{"line", l1}, {"character", c1}}}, {"end", {{"line", l2}, {"character", c2}}}};
}
Json Location(const std::string& uri, int l1, int c1, int l2, int c2) {
  return {{"uri", uri}, {"range", Range(l1, c1, l2, c2)}};
}

TEST(DocumentKindTest, ExtensionWinsOverLanguageId) {
  const struct {
    const char* id;
    const char* uri;
    DocumentKind kind;
  } cases[] = {
      {"tcl", "file:///a/top.v", DocumentKind::kVerilog},
      {"xdc", "file:///a/top.SV", DocumentKind::kVerilog},
      {"verilog", "file:///a/pins.xdc", DocumentKind::kConstraint},
      {"systemverilog", "file:///a/t.sdc", DocumentKind::kConstraint},
      {"verilog", "untitled:1", DocumentKind::kVerilog},
      {"tcl", "untitled:2", DocumentKind::kConstraint},
      {"conf", "file:///a/readme", DocumentKind::kOther},
  };
  for (const auto& c : cases) EXPECT_EQ(KindOf(c.id, c.uri), c.kind) << c.id << " " << c.uri;
}

TEST(NavigationTest, DefinitionOfAnInstanceTypeIsTheModuleInAnotherFile) {
  Workspace w;
  EXPECT_EQ(Definition(*w.top, {2, 4}, w.files), Json::array({Location("file:///w/counter.v", 1, 7, 1, 14)}));
}

TEST(NavigationTest, DefinitionOfASignalIsItsDeclaration) {
  Workspace w;
  EXPECT_EQ(Definition(*w.top, {3, 13}, w.files), Json::array({Location("file:///w/top.v", 1, 13, 1, 18)}));
  EXPECT_EQ(Definition(*w.top, {3, 9}, w.files), Json::array({Location("file:///w/top.v", 0, 35, 0, 36)}));
  EXPECT_EQ(Definition(*w.top, {4, 3}, w.files), Json::array());    // endmodule
  EXPECT_EQ(Definition(*w.top, {99, 0}, w.files), Json::array());   // past the end
}

TEST(NavigationTest, ReferencesOfAModuleAndOfASignal) {
  Workspace w;
  EXPECT_EQ(References(*w.counter, {1, 9}, w.files, true),
            Json::array({Location("file:///w/top.v", 2, 2, 2, 9), Location("file:///w/counter.v", 1, 7, 1, 14)}));
  EXPECT_EQ(References(*w.top, {1, 14}, w.files, false),
            Json::array({Location("file:///w/top.v", 2, 42, 2, 47), Location("file:///w/top.v", 3, 13, 3, 18)}));
}

TEST(NavigationTest, HoverShowsTheDeclarationOrTheModuleHeader) {
  Workspace w;
  EXPECT_EQ(Hover(*w.top, {3, 14}, w.files)["contents"]["value"], "```verilog\nwire [3:0] count;\n```");
  EXPECT_EQ(Hover(*w.top, {2, 3}, w.files)["contents"]["value"],
            "```verilog\nmodule counter #(W = 8) (\n  input clk,\n  output reg [W-1:0] q\n);\n```");
  EXPECT_TRUE(Hover(*w.top, {0, 0}, w.files).is_null());
}

TEST(NavigationTest, HighlightsWithinTheModule) {
  Workspace w;
  EXPECT_EQ(DocumentHighlights(*w.top, {0, 18}, w.files),
            Json::array({{{"range", Range(0, 17, 0, 20)}, {"kind", 1}},
                         {{"range", Range(2, 33, 2, 36)}, {"kind", 1}}}));
}

TEST(NavigationTest, OutlineIsHierarchical) {
  Workspace w;
  const Json symbols = DocumentSymbols(*w.counter);
  ASSERT_EQ(symbols.size(), 1u);
  EXPECT_EQ(symbols[0]["name"], "counter");
  EXPECT_EQ(symbols[0]["kind"], 2);
  std::vector<std::string> children;
  for (const Json& c : symbols[0]["children"]) children.push_back(c["name"].get<std::string>() + "/" + c["detail"].get<std::string>());
  EXPECT_EQ(children, (std::vector<std::string>{"clk/input", "q/output reg [W-1:0]", "W/parameter 8", "always/always"}));
}

TEST(NavigationTest, WorkspaceSymbolsByQuery) {
  Workspace w;
  const Json found = WorkspaceSymbols(w.files, "COUNT", 10);
  ASSERT_EQ(found.size(), 2u);
  EXPECT_EQ(found[0]["name"], "u_count");
  EXPECT_EQ(found[1]["name"], "counter");
  EXPECT_EQ(WorkspaceSymbols(w.files, "", 1).size(), 1u);
}

TEST(NavigationTest, FoldingRanges) {
  Workspace w;
  EXPECT_EQ(FoldingRanges(*w.counter), Json::array({{{"startLine", 1}, {"endLine", 8}},
                                                   {{"startLine", 5}, {"endLine", 7}}}));
  const auto comments = std::make_shared<IndexedFile>("file:///c.v", "// a\n// b\nmodule m;\nendmodule\n");
  EXPECT_EQ(FoldingRanges(*comments), Json::array({{{"startLine", 0}, {"endLine", 1}, {"kind", "comment"}},
                                                   {{"startLine", 2}, {"endLine", 3}}}));
}

Json Finding(int line, const char* code, const char* message) {
  return {{"range", Range(line, 0, line, 10)}, {"code", code}, {"message", message}, {"source", "quill"}};
}

std::vector<std::string> Titles(const Json& actions) {
  std::vector<std::string> titles;
  for (const Json& a : actions) titles.push_back(a["title"]);
  return titles;
}

TEST(CodeActionTest, BlockingAssignInASequentialBlock) {
  Workspace w;
  const Json actions = CodeActions(*w.counter, {5, 5},
                                   Json::array({Finding(5, "blocking-assign", "sequential always uses '=' (1x), suggest '<='")}));
  ASSERT_EQ(Titles(actions), (std::vector<std::string>{"Use '<=' in this sequential block",
                                                       "Disable blocking-assign on this line"}));
  EXPECT_EQ(actions[0]["edit"]["changes"]["file:///w/counter.v"],
            Json::array({{{"range", Range(6, 6, 6, 7)}, {"newText", "<="}}}));
  EXPECT_EQ(actions[1]["edit"]["changes"]["file:///w/counter.v"],
            Json::array({{{"range", Range(5, 29, 5, 29)}, {"newText", " // quill: disable-line blocking-assign"}}}));
}

TEST(CodeActionTest, BlockingAssignOnlyWhenCertain) {
  Workspace w;
  // The count in the message disagrees with the block: no fix, only the comment.
  const Json actions = CodeActions(*w.counter, {5, 5},
                                   Json::array({Finding(5, "blocking-assign", "sequential always uses '=' (2x), suggest '<='")}));
  EXPECT_EQ(Titles(actions), (std::vector<std::string>{"Disable blocking-assign on this line"}));
}

TEST(CodeActionTest, RegAndWireDeclarations) {
  const auto file = std::make_shared<IndexedFile>(
      "file:///r.v", "module r(input a);\n  reg x;\n  reg y, z;\n  wire w;\n  assign x = a;\n  assign y = a;\n"
                     "  always @* w = a;\nendmodule\n");
  const Json regX = CodeActions(*file, {4, 4}, Json::array({Finding(4, "reg-assign", "reg signal 'x' cannot be assigned by continuous assignment (use wire instead)")}));
  ASSERT_EQ(Titles(regX), (std::vector<std::string>{"Declare 'x' as wire", "Disable reg-assign on this line"}));
  EXPECT_EQ(regX[0]["edit"]["changes"]["file:///r.v"], Json::array({{{"range", Range(1, 2, 1, 5)}, {"newText", "wire"}}}));
  // y shares its declaration with z: changing it would change z.
  const Json regY = CodeActions(*file, {5, 5}, Json::array({Finding(5, "reg-assign", "reg signal 'y' cannot be assigned by continuous assignment (use wire instead)")}));
  EXPECT_EQ(Titles(regY), (std::vector<std::string>{"Disable reg-assign on this line"}));
  const Json wireW = CodeActions(*file, {6, 6}, Json::array({Finding(6, "wire-always", "wire signal 'w' cannot be assigned in always block (use reg instead)")}));
  ASSERT_EQ(Titles(wireW), (std::vector<std::string>{"Declare 'w' as reg", "Disable wire-always on this line"}));
  EXPECT_EQ(wireW[0]["edit"]["changes"]["file:///r.v"], Json::array({{{"range", Range(3, 2, 3, 6)}, {"newText", "reg"}}}));
}

TEST(CodeActionTest, FindingsOutsideTheRangeOrMalformedAreIgnored) {
  Workspace w;
  const Json junk = Json::array({1, "x", Json::object(), {{"range", 5}}, Finding(7, "latch", "m")});
  EXPECT_EQ(CodeActions(*w.counter, {0, 3}, junk), Json::array());
}

TEST(RangeFormattingTest, OnlyLinesInsideTheRangeChange) {
  // Lines 1 to 5 are one aligned group; asking for lines 2-3 changes those only.
  const std::string text = "module m;\nwire a;\nreg [7:0]  b;\nwire   c;\nreg d;\nwire [1:0]   e;\nendmodule\n";
  const FormattingResult whole = FormattingEdits(text, std::nullopt);
  ASSERT_TRUE(whole.refusal.empty());
  const FormattingResult ranged = FormattingEdits(text, LineRange{2, 3});
  ASSERT_TRUE(ranged.refusal.empty());
  ASSERT_FALSE(ranged.edits.empty());
  for (const Json& edit : ranged.edits) {
    EXPECT_GE(edit["range"]["start"]["line"].get<int>(), 2) << edit;
    EXPECT_LE(edit["range"]["end"]["line"].get<int>(), 4) << edit;
    if (edit["range"]["end"]["line"].get<int>() == 4) {
      EXPECT_EQ(edit["range"]["end"]["character"], 0) << edit;
    }
  }
}

TEST(UriTest, FileUrisAndPaths) {
  EXPECT_EQ(UriToPath("file:///a%20b/c.v"), std::optional<std::string>("/a b/c.v"));
  EXPECT_EQ(UriToPath("file:///x%2"), std::optional<std::string>("/x%2"));
  EXPECT_EQ(UriToPath("untitled:1"), std::nullopt);
  EXPECT_EQ(PathToFileUri("/a b/c.v"), "file:///a%20b/c.v");
}

}  // namespace
}  // namespace quill::lsp
