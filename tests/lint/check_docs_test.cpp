// docs/checks.md describes every check of the table with the table's own
// words, so the page cannot drift from the engine.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "lint/check_table.h"

namespace quill {
namespace {

std::string ReadChecksPage() {
  std::ifstream file(QUILL_CHECKS_PAGE, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

std::vector<std::string> SectionNames(const std::string& page) {
  std::vector<std::string> names;
  std::istringstream lines(page);
  for (std::string line; std::getline(lines, line);) {
    if (line.rfind("## `", 0) == 0 && line.size() > 5 && line.back() == '`') {
      names.push_back(line.substr(4, line.size() - 5));
    }
  }
  return names;
}

TEST(CheckDocsTest, PageExists) {
  EXPECT_FALSE(ReadChecksPage().empty()) << QUILL_CHECKS_PAGE;
}

TEST(CheckDocsTest, OneSectionPerCheckInTableOrder) {
  std::vector<std::string> expected;
  for (const CheckInfo& check : kCheckTable) expected.emplace_back(check.name);
  EXPECT_EQ(SectionNames(ReadChecksPage()), expected);
}

TEST(CheckDocsTest, EverySectionGivesTheTablesSeverityAndSummary) {
  const std::string page = ReadChecksPage();
  for (const CheckInfo& check : kCheckTable) {
    const std::string heading = "## `" + std::string(check.name) + "`\n";
    const std::size_t start = page.find(heading);
    ASSERT_NE(start, std::string::npos) << check.name;
    const std::size_t end = page.find("\n## ", start + heading.size());
    const std::string section = page.substr(start, end == std::string::npos ? std::string::npos : end - start);
    EXPECT_NE(section.find("- **Severity:** " + std::string(SeverityName(check.severity)) + "\n"), std::string::npos)
        << check.name;
    EXPECT_NE(section.find("- **Summary:** " + std::string(check.summary) + "\n"), std::string::npos) << check.name;
    EXPECT_NE(section.find("```verilog\n"), std::string::npos) << check.name << " has no example";
  }
}

}  // namespace
}  // namespace quill
