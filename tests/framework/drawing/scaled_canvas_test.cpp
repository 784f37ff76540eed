#include "framework/drawing/scaled_canvas.h"

#include <limits>

#include "framework/drawing/device_context.h"
#include "platform/headless/drawing/headless_canvas.h"
#include "tests/support/headless_desk.h"
#include "tests/support/print.h"

namespace lorv_test {
namespace {

class ScaledCanvas : public Desk {
 protected:
  std::shared_ptr<lorv::HeadlessSurface> surface = std::make_shared<lorv::HeadlessSurface>(SIZE{400, 300});
  std::shared_ptr<lorv::Canvas> Paper() const {
    return std::make_shared<lorv::HeadlessCanvas>(surface, CRect(0, 0, 400, 300));
  }
  CRect LastBounds() const { return surface->List().back().bounds; }
};

TEST_F(ScaledCanvas, PlacesAndSizesAreScaled) {
  lorv::ScaledCanvas canvas(Paper(), 2.0);
  EXPECT_EQ(canvas.Size().cx, 200);
  EXPECT_EQ(canvas.Size().cy, 150);
  EXPECT_EQ(canvas.Dpi(), 48) << "an inch is half as many pixels of the drawing";
  canvas.Fill({10, 20, 15, 21}, RGB(1, 2, 3));
  EXPECT_EQ(LastBounds(), CRect(20, 40, 30, 42));
  canvas.Frame({5, 5, 25, 25}, RGB(1, 2, 4), 1);
  EXPECT_EQ(LastBounds(), CRect(10, 10, 50, 50));
  canvas.Text({30, 40}, _T("ab"), RGB(0, 0, 0));
  EXPECT_EQ(LastBounds().TopLeft(), CPoint(60, 80));
  EXPECT_EQ(canvas.Extent(_T("abc")).cx, 11) << "21 pixels of the surface, rounded up";
  EXPECT_EQ(canvas.Metrics().tmHeight, 8);
}

TEST_F(ScaledCanvas, WhatTouchesTouchesAndLinesStay) {
  lorv::ScaledCanvas canvas(Paper(), 0.3);
  canvas.Fill({0, 0, 7, 10}, RGB(1, 0, 0));
  const LONG end = LastBounds().right;
  canvas.Fill({7, 0, 20, 10}, RGB(2, 0, 0));
  EXPECT_EQ(LastBounds().left, end);
  canvas.Fill({20, 0, 21, 10}, RGB(3, 0, 0));
  EXPECT_EQ(LastBounds().Width(), 1) << "a line of one pixel has one";
  canvas.Line({0, 40}, {30, 40}, {RGB(9, 9, 9), 1, PS_SOLID});
  EXPECT_FALSE(LastBounds().IsRectEmpty());
}

TEST_F(ScaledCanvas, ClipsAreScaled) {
  lorv::ScaledCanvas canvas(Paper(), 2.0);
  const RECT clip = {0, 0, 10, 10};
  canvas.SetClip(&clip);
  EXPECT_TRUE(canvas.Shows({5, 5, 6, 6}));
  EXPECT_FALSE(canvas.Shows({10, 10, 20, 20}));
  canvas.Fill({5, 5, 50, 50}, RGB(7, 7, 7));
  EXPECT_EQ(LastBounds(), CRect(10, 10, 20, 20));
  canvas.SetClip(nullptr);
  EXPECT_TRUE(canvas.Shows({10, 10, 20, 20}));
}

TEST_F(ScaledCanvas, PicturesAndCopiesFillTheScaledRectangle) {
  lorv::ScaledCanvas canvas(Paper(), 2.0);
  const DWORD pixels[] = {0xFFFF0000, 0xFFFF0000};
  canvas.Image({2, 1, pixels}, {10, 10, 12, 11});
  EXPECT_EQ(surface->Pixels({20, 20, 21, 21})[0], 0xFFFF0000U);
  EXPECT_EQ(surface->Pixels({23, 21, 24, 22})[0], 0xFFFF0000U);
  auto source = desktop.MakeCanvas({4, 4});
  source->Fill({0, 0, 4, 4}, RGB(0, 0, 255));
  canvas.Copy({40, 40, 44, 44}, *source, {0, 0});
  EXPECT_EQ(surface->Pixels({87, 87, 88, 88})[0], 0xFF0000FFU);
}

TEST_F(ScaledCanvas, ADeviceContextDrawsOnIt) {
  CDC dc(std::make_shared<lorv::ScaledCanvas>(Paper(), 2.0));
  dc.SetViewportOrg(10, 10);
  dc.DrawText(_T("梁"), CRect(0, 0, 60, 20), DT_LEFT | DT_TOP | DT_SINGLELINE);
  EXPECT_EQ(surface->List().back().text, CString(_T("梁")));
  EXPECT_EQ(LastBounds().TopLeft(), CPoint(20, 20));
}

TEST_F(ScaledCanvas, AScaleThatIsNoneCountsAsOne) {
  for (const double scale :
       {0.0, -2.0, std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
    EXPECT_EQ(lorv::ScaledCanvas(Paper(), scale).Size().cx, 400) << scale;
  lorv::ScaledCanvas canvas(Paper(), 1e300);
  canvas.Fill({1, 1, 2, 2}, 0);
  canvas.Text({1 << 30, 1 << 30}, _T("x"), 0);
}

}  // namespace
}  // namespace lorv_test
