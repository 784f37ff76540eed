#include "module/modeless.h"

#include <gtest/gtest.h>

namespace lorv {
namespace {

TEST(Modeless, IsAllowedAtTheStart) {
  EXPECT_TRUE(IsModeless());
}

TEST(Modeless, IsAllowedAgainByAsManyCalls) {
  EnableModeless(false);
  EnableModeless(false);
  EXPECT_FALSE(IsModeless());
  EnableModeless(true);
  EXPECT_FALSE(IsModeless());
  EnableModeless(true);
  EXPECT_TRUE(IsModeless());
}

}  // namespace
}  // namespace lorv
