#include <gtest/gtest.h>

#include "framework/drawing/device_context.h"
#include "platform/headless/services/headless_printing.h"
#include "tests/support/headless_desk.h"

// The screen's dots an inch, cursors of the program's own, pages.

namespace {

class HeadlessScreen : public lorv_test::Desk {};

class Told : public CWnd {
 public:
  std::vector<WPARAM> dots;
  CRect place;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_DPICHANGED) {
      dots.push_back(w);
      place = *reinterpret_cast<const RECT*>(l);
    }
    return CWnd::WindowProc(message, w, l);
  }
};

}  // namespace

TEST_F(HeadlessScreen, ItsDotsAreThoseOfWindowsAndContexts) {
  EXPECT_EQ(top.GetDpi(), 96);
  desktop.SetDpi(144);
  EXPECT_EQ(top.GetDpi(), 144);
  CClientDC dc(&top);
  EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSX), 144);
  CFont font;
  font.CreatePointFont(90, _T("SimSun"), &dc);
  EXPECT_EQ(font.Face().lfHeight, -18);
  CBitmap bitmap;
  bitmap.CreateCompatibleBitmap(&dc, 5, 5);
  EXPECT_EQ(bitmap.Surface()->Dpi(), 144);
}

TEST_F(HeadlessScreen, ATopWindowIsToldOfAnotherScreenOnce) {
  Told window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW, CRect(10, 20, 210, 120), nullptr, 0);
  Told child;
  child.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 50, 50), &window, 1);
  desktop.RunUntilIdle();
  desktop.SetDpi(192);
  desktop.SetDpi(192);
  ASSERT_EQ(window.dots, (std::vector<WPARAM>{MAKEWPARAM(192, 192)}));
  EXPECT_EQ(window.place, CRect(10, 20, 410, 220));
  EXPECT_TRUE(child.dots.empty());
  EXPECT_EQ(child.GetDpi(), 192);
  EXPECT_NE(window.GetUpdateRect(nullptr), FALSE);
  desktop.SetDpi(96);
  EXPECT_EQ(window.place, CRect(10, 20, 110, 70));
}

TEST_F(HeadlessScreen, AWindowMayEndWhereItIsToldOfAnotherScreen) {
  class Ending : public CWnd {
   protected:
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message == WM_DPICHANGED) DestroyWindow();
      return CWnd::WindowProc(message, w, l);
    }
  };
  Ending window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW, CRect(10, 20, 210, 120), nullptr, 0);
  desktop.SetDpi(120);
  EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST_F(HeadlessScreen, CursorsOfOnesOwnHaveNumbers) {
  const DWORD pixels[4] = {};
  const int cursor = desktop.MakeCursor({2, 2, pixels}, {1, 1});
  EXPECT_GE(cursor, lorv::kFirstOwnCursor);
  EXPECT_NE(desktop.MakeCursor({2, 2, pixels}, {0, 0}), cursor);
  desktop.SetCursor(cursor);
  EXPECT_EQ(desktop.Cursor(), cursor);
  desktop.EndCursor(cursor);
  EXPECT_EQ(desktop.Cursor(), lorv::kCursorArrow);
  desktop.EndCursor(cursor);
}

TEST_F(HeadlessScreen, CursorsHaveLimits) {
  const std::vector<DWORD> pixels(static_cast<std::size_t>(lorv::kMaxCursorSide + 1));
  EXPECT_EQ(desktop.MakeCursor({1, 1, nullptr}, {0, 0}), 0);
  EXPECT_EQ(desktop.MakeCursor({0, 1, pixels.data()}, {0, 0}), 0);
  EXPECT_EQ(desktop.MakeCursor({lorv::kMaxCursorSide + 1, 1, pixels.data()}, {0, 0}), 0);
  for (std::size_t i = 0; i < lorv::kMaxOwnCursors; ++i)
    EXPECT_NE(desktop.MakeCursor({lorv::kMaxCursorSide, 1, pixels.data()}, {0, 0}), 0);
  EXPECT_EQ(desktop.MakeCursor({1, 1, pixels.data()}, {0, 0}), 0);
}

TEST_F(HeadlessScreen, PagesAreDrawnOnThroughAContext) {
  lorv::HeadlessPrinting printing;
  const auto job = printing.Ask(nullptr, 0);
  ASSERT_TRUE(job->BeginPages(_T("list")));
  for (int i = 0; i < 2; ++i) {
    CPrintDC page(job->NextPage());
    EXPECT_NE(page.IsPrinting(), FALSE);
    EXPECT_EQ(page.GetDeviceCaps(HORZRES), 794);
    page.DrawText(i == 0 ? _T("梁") : _T("墙"), CRect(10, 10, 100, 30), DT_SINGLELINE);
  }
  job->End();
  ASSERT_EQ(printing.pages.size(), 2U);
  EXPECT_EQ(printing.pages[0]->List().back().text, CString(_T("梁")));
  EXPECT_EQ(printing.pages[1]->List().back().text, CString(_T("墙")));
  EXPECT_EQ(printing.asked.back(), CString(_T("end")));
}

TEST_F(HeadlessScreen, AWindowThatAlwaysAsksForPaintingLetsTheQueueRest) {
  class Restless : public CWnd {
   public:
    int paints = 0;

   protected:
    LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
      if (message != WM_PAINT) return CWnd::WindowProc(message, w, l);
      ++paints;
      CPaintDC dc(this);
      Invalidate();
      return 0;
    }
  };
  Restless window;
  window.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &top, 1);
  desktop.RunUntilIdle();
  EXPECT_GT(window.paints, 1);
  window.DestroyWindow();
}
