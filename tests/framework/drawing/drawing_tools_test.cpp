#include "framework/drawing/drawing_tools.h"

#include <string>

#include "framework/drawing/device_context.h"
#include "tests/support/headless_desk.h"

namespace {

using DrawingTools = lorv_test::Desk;

std::string NameOf(const CFont& font) {
  return CString(font.Face().lfFaceName).ToUtf8();
}

}  // namespace

TEST_F(DrawingTools, PensHaveAWidthAtLeast) {
  CPen pen(PS_DASH, -3, RGB(1, 2, 3));
  EXPECT_EQ(pen.Stroke().width, 1);
  EXPECT_EQ(pen.Stroke().style, PS_DASH);
  EXPECT_EQ(pen.Stroke().colour, RGB(1, 2, 3));
  EXPECT_NE(pen.CreatePen(PS_SOLID, 5, 0), FALSE);
  EXPECT_EQ(pen.Stroke().width, 5);
}

TEST_F(DrawingTools, DeletedOnesDrawNothing) {
  CPen pen(PS_SOLID, 1, 0);
  CBrush brush(RGB(9, 9, 9));
  EXPECT_NE(pen.DeleteObject(), FALSE);
  EXPECT_NE(brush.DeleteObject(), FALSE);
  EXPECT_EQ(pen.Stroke().style, PS_NULL);
  EXPECT_FALSE(brush.IsSolid());
  CClientDC dc(&top);
  const std::size_t before = desktop.Seen(top.m_hWnd).size();
  dc.SelectObject(&pen);
  dc.SelectObject(&brush);
  dc.Rectangle(10, 10, 50, 50);
  dc.FillRect(CRect(0, 0, 9, 9), &brush);
  dc.FillRect(CRect(0, 0, 9, 9), nullptr);
  EXPECT_EQ(desktop.Seen(top.m_hWnd).size(), before);
  // Made anew it draws again.
  brush.CreateSolidBrush(RGB(1, 1, 1));
  dc.FillRect(CRect(0, 0, 9, 9), &brush);
  EXPECT_EQ(desktop.Seen(top.m_hWnd).back().colour, RGB(1, 1, 1));
}

TEST_F(DrawingTools, FontsAreMeasuredInPoints) {
  CFont font;
  EXPECT_NE(font.CreatePointFont(90, _T("SimSun")), FALSE);
  EXPECT_EQ(font.Face().lfHeight, -12);
  EXPECT_EQ(NameOf(font), "SimSun");
  EXPECT_EQ(font.Face().lfCharSet, DEFAULT_CHARSET);
  font.CreatePointFont(100, nullptr);
  EXPECT_EQ(font.Face().lfHeight, -13);
  EXPECT_EQ(NameOf(font), "");
}

TEST_F(DrawingTools, FontsOfAContextHaveItsDots) {
  desktop.SetDpi(192);
  CClientDC dc(&top);
  CFont font;
  font.CreatePointFont(90, _T("SimSun"), &dc);
  EXPECT_EQ(font.Face().lfHeight, -24);
}

TEST_F(DrawingTools, LongFaceNamesAreCutAndEnd) {
  CFont font;
  for (const int length : {LF_FACESIZE - 2, LF_FACESIZE - 1, LF_FACESIZE, 1000}) {
    font.CreatePointFont(90, CString(_T('x'), length));
    EXPECT_EQ(NameOf(font).size(), static_cast<std::size_t>(std::min(length, LF_FACESIZE - 1))) << length;
  }
}

TEST_F(DrawingTools, FontsGiveTheirDescription) {
  LOGFONT face = {};
  face.lfHeight = -20;
  face.lfWeight = FW_BOLD;
  CFont font;
  EXPECT_EQ(font.CreateFontIndirect(nullptr), FALSE);
  EXPECT_NE(font.CreateFontIndirect(&face), FALSE);
  LOGFONT got = {};
  EXPECT_EQ(font.GetLogFont(&got), static_cast<int>(sizeof(LOGFONT)));
  EXPECT_EQ(got.lfHeight, -20);
  EXPECT_EQ(got.lfWeight, FW_BOLD);
  EXPECT_EQ(font.GetLogFont(nullptr), 0);
  font.DeleteObject();
  EXPECT_EQ(font.Face().lfHeight, 0);
}

TEST_F(DrawingTools, BitmapsHaveTheirSizeUntilTheyGo) {
  CBitmap bitmap;
  EXPECT_EQ(bitmap.GetSize(), CSize(0, 0));
  EXPECT_EQ(bitmap.CreateCompatibleBitmap(nullptr, -1, 5), FALSE);
  EXPECT_EQ(bitmap.CreateCompatibleBitmap(nullptr, 5, -1), FALSE);
  EXPECT_EQ(bitmap.Surface(), nullptr);
  EXPECT_NE(bitmap.CreateCompatibleBitmap(nullptr, 30, 20), FALSE);
  EXPECT_EQ(bitmap.GetSize(), CSize(30, 20));
  EXPECT_NE(bitmap.CreateCompatibleBitmap(nullptr, 0, 0), FALSE);
  EXPECT_EQ(bitmap.GetSize(), CSize(0, 0));
  bitmap.DeleteObject();
  EXPECT_EQ(bitmap.Surface(), nullptr);
}

TEST_F(DrawingTools, AContextOutlivesTheBitmapItDrawsOn) {
  CDC memory;
  EXPECT_NE(memory.CreateCompatibleDC(nullptr), FALSE);
  {
    CBitmap bitmap;
    bitmap.CreateCompatibleBitmap(&memory, 10, 10);
    memory.SelectObject(&bitmap);
  }
  memory.FillSolidRect(CRect(0, 0, 10, 10), RGB(1, 2, 3));
  EXPECT_EQ(memory.Surface().Pixels(CRect(5, 5, 6, 6)).at(0), 0xFF010203U);
}
