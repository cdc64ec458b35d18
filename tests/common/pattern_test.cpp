#include "common/pattern.h"

#include <gtest/gtest.h>

namespace quill {
namespace {

TEST(PatternTest, DollarMatchesOnlyAtTheVeryEnd) {
  Pattern p("a$");
  EXPECT_TRUE(p.Search("xa"));
  EXPECT_FALSE(p.Search("xa\n"));
}

}  // namespace
}  // namespace quill
