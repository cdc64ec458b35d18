// The check shared by every class table (rows instantiated in the other files).
#include <gtest/gtest.h>

#include "class_notation.h"

namespace quill::test {
namespace {

TEST_P(ClassTableTest, ClassifiesEveryByte) {
  const ClassCase& row = GetParam();
  ASSERT_EQ(row.text.size(), row.classes.size()) << "malformed row";
  EXPECT_EQ(Classes(row.text), row.classes) << "text: " << row.text;
}

}  // namespace
}  // namespace quill::test
