#include <gtest/gtest.h>

TEST(SmokeTest, Builds) { SUCCEED(); }
