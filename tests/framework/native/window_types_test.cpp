#include "framework/native/window_types.h"

#include <gtest/gtest.h>

TEST(WindowTypes, StructuresHaveTheSystemsSizes) {
  EXPECT_EQ(sizeof(MSG), 48U);
  EXPECT_EQ(sizeof(CREATESTRUCT), 80U);
  EXPECT_EQ(sizeof(NMHDR), 24U);
  EXPECT_EQ(sizeof(SCROLLINFO), 28U);
  EXPECT_EQ(sizeof(LOGFONT), 92U);
  EXPECT_EQ(sizeof(TEXTMETRIC), 60U);
  EXPECT_EQ(sizeof(PAINTSTRUCT), 72U);
  EXPECT_EQ(sizeof(WINDOWPOS), 40U);
  EXPECT_EQ(sizeof(MINMAXINFO), 40U);
  EXPECT_EQ(sizeof(DRAWITEMSTRUCT), 64U);
}

TEST(WindowTypes, HalvesGoInAndComeOut) {
  const LPARAM point = MAKELPARAM(-3, 70000);
  EXPECT_EQ(static_cast<short>(LOWORD(point)), -3);
  EXPECT_EQ(HIWORD(point), 70000 - 65536);
  const WPARAM command = MAKEWPARAM(1002, EN_CHANGE);
  EXPECT_EQ(LOWORD(command), 1002);
  EXPECT_EQ(HIWORD(command), EN_CHANGE);
  EXPECT_EQ(MAKEWPARAM(0, 0x8000), 0x80000000U);
}

TEST(WindowTypes, ColoursHaveBlueOnTop) {
  const COLORREF colour = RGB(1, 2, 250);
  EXPECT_EQ(colour, 0x00FA0201U);
  EXPECT_EQ(GetRValue(colour), 1);
  EXPECT_EQ(GetGValue(colour), 2);
  EXPECT_EQ(GetBValue(colour), 250);
}
