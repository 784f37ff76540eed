#include "tools/lorv/text/folded_text.h"

#include <gtest/gtest.h>

namespace lorv::tool {
namespace {

TEST(Folded, CutsBlanksAroundAndMakesAsciiSmall) {
  EXPECT_EQ(Folded(" Wall\t"), "wall");
  EXPECT_EQ(Folded("\r\nA b\tC \r\n"), "a b\tc") << "blanks between stay";
  EXPECT_EQ(Folded("[Z@`a"), "[z@`a") << "only letters change";
  EXPECT_EQ(Folded(""), "");
  EXPECT_EQ(Folded(" \t\r\n"), "");
}

TEST(Folded, LeavesEverythingBesideAscii) {
  EXPECT_EQ(Folded("墙 Ä"), "墙 Ä");
  EXPECT_EQ(Folded("\xFF"
                   "A\xE5"),
            "\xFF"
            "a\xE5")
      << "bytes that are no UTF-8";
  EXPECT_EQ(Folded("　A"), "　a") << "a full-width blank is a character like others";
}

}  // namespace
}  // namespace lorv::tool
