#include "grid/dialog_place.h"

#include <gtest/gtest.h>

using lorv::DialogPlaceAt;

namespace {

constexpr int kWide = 1024;
constexpr int kHigh = 768;

CPoint Place(const CRect& cell) {
  return DialogPlaceAt(cell, {200, 100}, {kWide, kHigh});
}

}  // namespace

TEST(DialogPlace, HeaderExample) {
  EXPECT_EQ(Place(CRect(10, 40, 90, 60)), CPoint(11, 60));
}

TEST(DialogPlace, MovesLeftWhereTheScreenEnds) {
  EXPECT_EQ(Place(CRect(823, 40, 900, 60)), CPoint(824, 60)) << "823 + 200 + 1 is the width";
  EXPECT_EQ(Place(CRect(824, 40, 900, 60)), CPoint(824, 60));
  EXPECT_EQ(Place(CRect(1000, 40, 1100, 60)), CPoint(824, 60));
}

TEST(DialogPlace, MovesUpWhereTheScreenEnds) {
  EXPECT_EQ(Place(CRect(10, 600, 90, 648)), CPoint(11, 648)) << "648 + 100 + 20 is the height";
  EXPECT_EQ(Place(CRect(10, 600, 90, 649)), CPoint(11, 648));
}

TEST(DialogPlace, ADialogLargerThanTheScreenShowsItsCorner) {
  EXPECT_EQ(DialogPlaceAt(CRect(0, 0, 10, 10), {2000, 1000}, {kWide, kHigh}),
            CPoint(kWide - 2000, kHigh - 1020));
}
