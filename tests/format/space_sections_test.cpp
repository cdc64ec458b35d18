#include "format/passes/space_sections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace quill {
namespace {

struct SpacingCase {
  const char* name;
  std::string input;
  std::string expected;
};

class SpaceSectionsTest : public testing::TestWithParam<SpacingCase> {};

TEST_P(SpaceSectionsTest, InsertsEmptyLinesBetweenSections) {
  EXPECT_EQ(SpaceSections(GetParam().input), GetParam().expected);
}

const SpacingCase kCases[] = {
    {"OneRunOfSignalsIsOneSection", "wire a;\nwire b;\nreg c;", "wire a;\nwire b;\nreg c;"},
    {"LoneParameterBeforeSignalIsNotSetApart", "parameter W = 8;\nwire [W-1:0] d;",
     "parameter W = 8;\nwire [W-1:0] d;"},
    {"AssignAfterTwoSignalsIsSetApart", "wire a;\nwire b;\nassign x = a;", "wire a;\nwire b;\n\nassign x = a;"},
    {"LoneSignalAfterAssignsIsNotSetApart", "assign a = b;\nassign c = d;\nwire x;",
     "assign a = b;\nassign c = d;\nwire x;"},
    {"ConsecutiveAlwaysBlocksAreSetApart", "always @(posedge clk) begin\nq <= d;\nend\nalways @(*) begin\ny = a;\nend",
     "always @(posedge clk) begin\nq <= d;\nend\n\nalways @(*) begin\ny = a;\nend"},
    {"EmptyLineAlreadySeparatesAlwaysBlocks", "always @(*) begin\ny = a;\nend\n\nalways @(*) z = b;",
     "always @(*) begin\ny = a;\nend\n\nalways @(*) z = b;"},
    {"CommentAlreadySeparatesAlwaysBlocks", "always @(*) y = a;\n// next\nalways @(*) z = b;",
     "always @(*) y = a;\n// next\nalways @(*) z = b;"},
    {"BlockCommentStartSeparates", "always @(*) y = a;\n  /* next */\nalways @(*) z = b;",
     "always @(*) y = a;\n  /* next */\nalways @(*) z = b;"},
    {"BlankLineOfTabsSeparates", "always @(*) y = a;\n \t \nalways @(*) z = b;",
     "always @(*) y = a;\n \t \nalways @(*) z = b;"},
    {"CommentAfterVerticalTabSeparates", "always @(*) y = a;\n\v// next\nalways @(*) z = b;",
     "always @(*) y = a;\n\v// next\nalways @(*) z = b;"},
    {"LoneVerticalTabIsNoSeparator", "always @(*) y = a;\n\v\nalways @(*) z = b;",
     "always @(*) y = a;\n\v\n\nalways @(*) z = b;"},
    {"PlaceholderLineIsNoSeparator", "wire a;\nwire b;\n__BLKCMT_0__\nassign x = a;",
     "wire a;\nwire b;\n__BLKCMT_0__\n\nassign x = a;"},
    {"EmptyLineGoesDirectlyBeforeTheSection", "wire a;\nwire b;\nx = 1;\nassign c = d;",
     "wire a;\nwire b;\nx = 1;\n\nassign c = d;"},
    {"LinesOfNoKindDoNotEndASection", "wire a;\nx = 1;\n// note\nwire b;\nassign c = d;",
     "wire a;\nx = 1;\n// note\nwire b;\n\nassign c = d;"},
    {"EachInstanceIsASection", "u_a a (\n.x(y)\n);\nu_b b (\n.x(y)\n);", "u_a a (\n.x(y)\n);\n\nu_b b (\n.x(y)\n);"},
    {"SectionsOfOneKindOnBothSidesOfAnother", "wire a;\nwire b;\nassign c = d;\nwire e;\nwire f;",
     "wire a;\nwire b;\n\nassign c = d;\n\nwire e;\nwire f;"},
    {"PortsThenSignals", "input a,\ninput b\n);\nwire c;\nwire d;", "input a,\ninput b\n);\n\nwire c;\nwire d;"},
    {"IntegersAndGenvarsAreOneSection", "integer i;\ngenvar g;\nassign x = 1;",
     "integer i;\ngenvar g;\n\nassign x = 1;"},
    {"CrBeforeLfIsDroppedWhenSpacing", "wire a;\r\nwire b;\r\nassign x = a;\r\n",
     "wire a;\nwire b;\n\nassign x = a;\n"},
    {"OneSectionComesBackByteForByte", "wire a;\r\n\r\nwire b;  \r\n", "wire a;\r\n\r\nwire b;  \r\n"},
    {"NoSectionComesBackByteForByte", "module m;\r\nendmodule\r\n", "module m;\r\nendmodule\r\n"},
    {"EmptyText", "", ""},
};

INSTANTIATE_TEST_SUITE_P(Texts, SpaceSectionsTest, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<SpacingCase>& param) { return param.param.name; });

TEST(SpaceSectionsRecordTest, LabelGroups) {
  EXPECT_EQ(kBlockLabels.size(), 5u);
  EXPECT_EQ(kDeclLabels.size(), 3u);
  EXPECT_NE(std::find(kBlockLabels.begin(), kBlockLabels.end(), "INST"), kBlockLabels.end());
  EXPECT_EQ(std::find(kDeclLabels.begin(), kDeclLabels.end(), "ASSIGN"), kDeclLabels.end());
}

TEST(SpaceSectionsPathologicalTest, ManySectionsEachGetOneEmptyLine) {
  std::string input;
  std::string expected;
  for (int i = 0; i < 50'000; ++i) {
    input += "wire a;\nwire b;\nassign c = d;\n";
    expected += (i == 0 ? "" : "\n");
    expected += "wire a;\nwire b;\n\nassign c = d;\n";
  }
  EXPECT_EQ(SpaceSections(input), expected);
}

TEST(SpaceSectionsPathologicalTest, MegabyteLinesAreKept) {
  const std::string longLine(1'000'000, 'x');
  const std::string input = "wire a;\nwire b;\n" + longLine + "\nassign c = d;";
  EXPECT_EQ(SpaceSections(input), "wire a;\nwire b;\n" + longLine + "\n\nassign c = d;");
}

TEST(SpaceSectionsPathologicalTest, LongGapWithoutSeparator) {
  std::string gap;
  for (int i = 0; i < 100'000; ++i) gap += "x = 1;\n";
  const std::string input = "always @(*) y = a;\n" + gap + "always @(*) z = b;";
  EXPECT_EQ(SpaceSections(input), "always @(*) y = a;\n" + gap + "\nalways @(*) z = b;");
}

}  // namespace
}  // namespace quill
