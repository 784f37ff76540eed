#include "framework/drawing/dots.h"

#include <gtest/gtest.h>

namespace {

using lorv::ForDots;

TEST(Dots, HeaderExample) {
  EXPECT_EQ(ForDots(17, 144), 26);
  EXPECT_EQ(ForDots(26, 96, 144), 17);
}

TEST(Dots, FromAFinerScreenBackALengthIsItself) {
  for (const int dots : {96, 120, 144, 192, 288})
    for (int length = -400; length <= 400; ++length)
      ASSERT_EQ(ForDots(ForDots(length, dots), 96, dots), length) << dots;
}

TEST(Dots, LengthsAreRoundedAwayFromZeroAndDoNotOverflow) {
  EXPECT_EQ(ForDots(1, 144), 2);
  EXPECT_EQ(ForDots(-1, 144), -2);
  EXPECT_EQ(ForDots(1, 120), 1);
  EXPECT_EQ(ForDots(0, 192), 0);
  EXPECT_EQ(ForDots(1 << 29, 192), 1 << 30);
}

}  // namespace
