#include "framework/text/char_class.h"

#include <gtest/gtest.h>

namespace lorv {
namespace {

TEST(CharClass, DigitsAreAsciiDigitsOnly) {
  EXPECT_TRUE(IsDigit('0'));
  EXPECT_TRUE(IsDigit('9'));
  EXPECT_FALSE(IsDigit('0' - 1));
  EXPECT_FALSE(IsDigit('9' + 1));
  EXPECT_FALSE(IsDigit(0xFF10));  // full-width zero
}

TEST(CharClass, ChineseCharactersAreNeitherLetterNorBlank) {
  EXPECT_FALSE(IsAsciiLetter(0x5899));
  EXPECT_FALSE(IsNameChar(0x5899));
  EXPECT_FALSE(IsBlank(0x3000));
}

TEST(CharClass, CaseFoldsForAsciiLettersOnly) {
  EXPECT_EQ(ToUpper('a'), 'A');
  EXPECT_EQ(ToUpper('{'), '{');
  EXPECT_EQ(ToLower('Z'), 'z');
  EXPECT_EQ(ToUpper(0xE9), 0xE9);
  EXPECT_EQ(ToLower(0xC9), 0xC9);
}

}  // namespace
}  // namespace lorv
