#include "gridcore/tips/inplace_tool_tip.h"

#include <gtest/gtest.h>

#include "image/tool_tip.h"
#include "tests/support/headless_desk.h"

namespace {

class InplaceToolTip : public lorv_test::Desk {
 protected:
  InplaceToolTip() {
    tip.Create(&top);
    tip.SetTextMargin(5);
  }
  CRect Last() const {
    CRect rect;
    tip.GetLastRect(rect);
    return rect;
  }
  CRect Place() const {
    CRect rect;
    tip.GetWindowRect(&rect);
    return rect;
  }

  CBCGPInplaceToolTipCtrl tip;
};

}  // namespace

TEST_F(InplaceToolTip, StandsWhereItIsAskedForAndGrowsWithItsText) {
  tip.Track(CRect(200, 150, 230, 160), _T("ten units!"));
  EXPECT_TRUE(tip.IsWindowVisible());
  EXPECT_EQ(Last().TopLeft(), CPoint(200, 150));
  EXPECT_EQ(Last(), Place());
  EXPECT_GE(Last().Width(), 70 + 10);
  tip.Track(CRect(200, 150, 400, 190), _T("ten units!"));
  EXPECT_EQ(Last(), CRect(200, 150, 400, 190));
  EXPECT_EQ(tip.GetText(), _T("ten units!"));
}

TEST_F(InplaceToolTip, SeveralLinesKeepTheWidth) {
  tip.SetMultiline();
  tip.Track(CRect(200, 150, 300, 160), _T("many words that take more than one line of it"));
  EXPECT_EQ(Last().Width(), 100);
  EXPECT_GE(Last().Height(), 3 * 16);
}

TEST_F(InplaceToolTip, StaysOnTheScreenAndKeepsItsLastRectangle) {
  const CRect asked(1900, 1030, 2000, 1060);
  tip.Track(asked, _T("x"));
  EXPECT_EQ(Last(), asked);
  EXPECT_EQ(Place(), CRect(1820, 1010, 1920, 1040));
}

TEST_F(InplaceToolTip, ClosedItHasNoRectangle) {
  tip.Track(CRect(200, 150, 230, 170), _T("x"));
  tip.Deactivate();
  EXPECT_FALSE(tip.IsWindowVisible());
  EXPECT_TRUE(Last().IsRectEmpty());
  EXPECT_TRUE(tip.GetText().IsEmpty());
  tip.Deactivate();
  tip.DestroyWindow();
  tip.Track(CRect(200, 150, 230, 170), _T("x"));
  EXPECT_TRUE(Last().IsRectEmpty());
}

TEST_F(InplaceToolTip, DrawsItsText) {
  tip.Track(CRect(200, 150, 280, 172), _T("KL1"));
  Run();
  bool drawn = false;
  for (const lorv::Drawn& step : desktop.Seen(tip.m_hWnd)) drawn = drawn || step.text == _T("KL1");
  EXPECT_TRUE(drawn);
  EXPECT_TRUE(tip.IsKindOf(RUNTIME_CLASS(CBCGPToolTipCtrl)));
}
