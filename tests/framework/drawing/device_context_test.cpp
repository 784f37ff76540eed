#include "framework/drawing/device_context.h"

#include "tests/support/headless_desk.h"

namespace {

using lorv::Drawn;

class DeviceContext : public lorv_test::Desk {
 protected:
  std::vector<Drawn> Seen() const { return desktop.Seen(top.m_hWnd); }
  DWORD PixelAt(int x, int y) const {
    CClientDC dc(const_cast<lorv_test::NotingWindow*>(&top));
    return dc.Surface().Pixels(CRect(x, y, x + 1, y + 1)).at(0);
  }
};

}  // namespace

TEST_F(DeviceContext, HeaderExample) {
  CClientDC dc(&top);
  dc.DrawText(_T("梁"), CRect(0, 0, 90, 20), DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  ASSERT_EQ(Seen().back().kind, Drawn::Kind::Text);
  EXPECT_EQ(Seen().back().bounds, CRect(38, 2, 52, 18));
}

TEST_F(DeviceContext, DrawsFromItsOrigin) {
  CClientDC dc(&top);
  EXPECT_EQ(dc.SetWindowOrg(100, 50), CPoint(0, 0));
  dc.SetViewportOrg(1, 2);
  dc.FillSolidRect(CRect(100, 50, 110, 60), RGB(1, 2, 3));
  EXPECT_EQ(Seen().back().bounds, CRect(1, 2, 11, 12));
  EXPECT_EQ(PixelAt(1, 2), 0xFF010203U);
  EXPECT_EQ(PixelAt(0, 2), 0xFFFFFFFFU);
  EXPECT_EQ(dc.GetBkColor(), RGB(1, 2, 3));
}

TEST_F(DeviceContext, KeepsWithinItsClip) {
  CClientDC dc(&top);
  EXPECT_EQ(dc.IntersectClipRect(CRect(5, 5, 15, 15)), SIMPLEREGION);
  EXPECT_EQ(dc.IntersectClipRect(CRect(10, 0, 50, 50)), SIMPLEREGION);
  CRect box;
  dc.GetClipBox(box);
  EXPECT_EQ(box, CRect(10, 5, 15, 15));
  EXPECT_EQ(dc.RectVisible(CRect(0, 0, 10, 20)), FALSE);
  dc.FillSolidRect(CRect(0, 0, 99, 99), 0);
  EXPECT_EQ(PixelAt(10, 5), 0xFF000000U);
  EXPECT_EQ(PixelAt(9, 5), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(15, 14), 0xFFFFFFFFU);
  dc.SelectClipRgn(nullptr);
  dc.FillSolidRect(CRect(0, 0, 1, 1), 0);
  EXPECT_EQ(PixelAt(0, 0), 0xFF000000U);
}

TEST_F(DeviceContext, ToolsAreKeptAsTheyWere) {
  CClientDC dc(&top);
  CPen* before = nullptr;
  {
    CPen red(PS_SOLID, 1, RGB(255, 0, 0));
    before = dc.SelectObject(&red);
    red.CreatePen(PS_SOLID, 1, RGB(0, 0, 255));
  }
  ASSERT_NE(before, nullptr);
  dc.MoveTo(0, 0);
  dc.LineTo(5, 0);
  EXPECT_EQ(PixelAt(4, 0), 0xFFFF0000U);
  EXPECT_EQ(PixelAt(5, 0), 0xFFFFFFFFU);
  dc.SelectObject(before);
  dc.LineTo(5, 5);
  EXPECT_EQ(PixelAt(5, 3), 0xFF000000U);
}

TEST_F(DeviceContext, SavesAndRestores) {
  CClientDC dc(&top);
  const int saved = dc.SaveDC();
  dc.SetTextColor(RGB(9, 9, 9));
  dc.SetWindowOrg(5, 5);
  dc.SaveDC();
  EXPECT_NE(dc.RestoreDC(saved), 0);
  EXPECT_EQ(dc.GetTextColor(), 0U);
  EXPECT_EQ(dc.GetWindowOrg(), CPoint(0, 0));
  EXPECT_EQ(dc.RestoreDC(-1), FALSE);
}

TEST_F(DeviceContext, MeasuresAndCalculates) {
  CClientDC dc(&top);
  EXPECT_EQ(dc.GetTextExtent(_T("KL梁")), CSize(28, 16));
  CRect rect(10, 10, 20, 20);
  EXPECT_EQ(dc.DrawText(_T("ab\ncde"), static_cast<LPRECT>(rect), DT_CALCRECT), 32);
  EXPECT_EQ(rect, CRect(10, 10, 31, 42));
  TEXTMETRIC metrics = {};
  EXPECT_NE(dc.GetTextMetrics(&metrics), 0);
  EXPECT_EQ(metrics.tmHeight, 16);
}

TEST_F(DeviceContext, CopiesFromMemoryWithWhatIsSeen) {
  CClientDC dc(&top);
  CDC memory;
  CBitmap bitmap;
  memory.CreateCompatibleDC(&dc);
  bitmap.CreateCompatibleBitmap(&dc, 50, 20);
  CBitmap* const before = memory.SelectObject(&bitmap);
  memory.FillSolidRect(CRect(0, 0, 50, 20), RGB(0, 255, 0));
  memory.SetBkMode(TRANSPARENT);
  memory.TextOut(2, 2, _T("ok"));
  EXPECT_NE(dc.BitBlt(100, 100, 50, 20, &memory, 0, 0, SRCCOPY), 0);
  memory.SelectObject(before);
  EXPECT_EQ(PixelAt(100, 100), 0xFF00FF00U);
  EXPECT_EQ(Seen().back().text, CString(_T("ok")));
  EXPECT_EQ(Seen().back().bounds, CRect(102, 102, 116, 118));
  EXPECT_EQ(bitmap.GetSize(), CSize(50, 20));
}

TEST_F(DeviceContext, InvertedTwiceIsGone) {
  CClientDC dc(&top);
  const std::size_t before = Seen().size();
  dc.DrawFocusRect(CRect(1, 1, 20, 20));
  EXPECT_EQ(Seen().size(), before + 4);
  EXPECT_EQ(PixelAt(1, 1), 0xFF000000U);
  dc.DrawFocusRect(CRect(1, 1, 20, 20));
  EXPECT_EQ(Seen().size(), before);
  EXPECT_EQ(PixelAt(1, 1), 0xFFFFFFFFU);
}

TEST_F(DeviceContext, AlignsTextsAtTheirPoint) {
  CClientDC dc(&top);
  dc.SetTextAlign(TA_RIGHT | TA_BASELINE);
  dc.SetBkMode(TRANSPARENT);
  dc.TextOut(100, 50, _T("ab"));
  EXPECT_EQ(Seen().back().bounds, CRect(86, 37, 100, 53));
  dc.SetTextAlign(TA_CENTER);
  dc.TextOut(100, 50, _T("ab"));
  EXPECT_EQ(Seen().back().bounds, CRect(93, 50, 107, 66));
}

TEST_F(DeviceContext, ShapesFillAndFrame) {
  CClientDC dc(&top);
  CBrush brush(RGB(0, 0, 255));
  dc.SelectObject(&brush);
  dc.Rectangle(10, 10, 20, 20);
  EXPECT_EQ(PixelAt(10, 10), 0xFF000000U);
  EXPECT_EQ(PixelAt(15, 15), 0xFF0000FFU);
  const POINT corners[] = {{30, 10}, {50, 10}, {30, 30}};
  dc.Polygon(corners, 3);
  EXPECT_EQ(PixelAt(33, 13), 0xFF0000FFU);
  EXPECT_EQ(PixelAt(48, 28), 0xFFFFFFFFU);
  dc.GradientRect(CRect(60, 10, 70, 20), 0, RGB(90, 90, 90), FALSE);
  EXPECT_EQ(PixelAt(60, 12), 0xFF000000U);
  EXPECT_EQ(PixelAt(69, 12), 0xFF5A5A5AU);
  dc.Draw3dRect(CRect(80, 10, 90, 20), RGB(1, 1, 1), RGB(2, 2, 2));
  EXPECT_EQ(PixelAt(80, 10), 0xFF010101U);
  EXPECT_EQ(PixelAt(89, 19), 0xFF020202U);
}

TEST_F(DeviceContext, ImagesAreScaledAndLaidOver) {
  CClientDC dc(&top);
  const DWORD pixels[] = {0xFFFF0000, 0x80000000};
  dc.DrawImage({2, 1, pixels}, CRect(0, 0, 20, 10));
  EXPECT_EQ(PixelAt(9, 9), 0xFFFF0000U);
  EXPECT_EQ(PixelAt(10, 0), 0xFF7F7F7FU);
}

TEST_F(DeviceContext, OutlivesItsWindow) {
  CClientDC dc(&top);
  top.DestroyWindow();
  dc.FillSolidRect(CRect(0, 0, 10, 10), 0);
  EXPECT_EQ(dc.GetTextExtent(_T("ab")), CSize(14, 16));
}
