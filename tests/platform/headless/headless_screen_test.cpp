#include <gtest/gtest.h>

#include "framework/drawing/device_context.h"
#include "framework/windows/dialog.h"
#include "platform/headless/services/headless_printing.h"
#include "tests/support/headless_desk.h"

// The screen's dots an inch, cursors of the program's own, pages.

namespace {

class HeadlessScreen : public lorv_test::Desk {};

class Report : public CWnd {
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

TEST_F(HeadlessScreen, ATopWindowIsReportedAnotherScreenOnce) {
  Report window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW, CRect(10, 20, 210, 120), nullptr, 0);
  Report child;
  child.Create(nullptr, nullptr, WS_CHILD, CRect(0, 0, 50, 50), &window, 1);
  desktop.RunUntilIdle();
  desktop.SetDpi(192);
  desktop.SetDpi(192);
  ASSERT_EQ(window.dots, (std::vector<WPARAM>{MAKEWPARAM(192, 192)}));
  EXPECT_EQ(window.place, CRect(10, 20, 410, 220));
  EXPECT_TRUE(child.dots.empty());
  EXPECT_EQ(child.GetDpi(), 192);
  EXPECT_NE(window.GetUpdateRect(nullptr), FALSE);
  CRect now;
  window.GetWindowRect(now);
  EXPECT_EQ(now, window.place) << "left to the system, it is taken";
  desktop.SetDpi(96);
  EXPECT_EQ(window.place, CRect(10, 20, 210, 120));
}

TEST_F(HeadlessScreen, ADialogGrowsWithAllThatStandsInIt) {
  static const lorv::DialogItem items[] = {
      {lorv::WindowKind::Edit, 1002, 8, 8, 40, 16, WS_TABSTOP, _T("")},
      {lorv::WindowKind::Button, IDOK, 8, 32, 40, 16, WS_TABSTOP | BS_DEFPUSHBUTTON, _T("OK")}};
  static const lorv::DialogTemplate form = {2000, _T("t"), 80, 64, _T("SimSun"), 9, items};
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, &top));
  CButton late;
  late.Create(_T("late"), WS_CHILD | WS_VISIBLE, CRect(10, 20, 60, 44), &dialog, 5);
  CRect client, edit;
  dialog.GetClientRect(client);
  dialog.GetDlgItem(1002)->GetWindowRect(edit);
  dialog.ScreenToClient(edit);
  desktop.SetDpi(192);
  CRect grown, grown_edit, grown_late;
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown.Size(), CSize(client.Width() * 2, client.Height() * 2));
  dialog.GetDlgItem(1002)->GetWindowRect(grown_edit);
  dialog.ScreenToClient(grown_edit);
  EXPECT_EQ(grown_edit, CRect(edit.left * 2, edit.top * 2, edit.right * 2, edit.bottom * 2));
  EXPECT_EQ(lorv::PeerOf(dialog.GetDlgItem(IDOK)->m_hWnd)->Font().lfHeight, -24);
  late.GetWindowRect(grown_late);
  dialog.ScreenToClient(grown_late);
  EXPECT_EQ(grown_late, CRect(20, 40, 120, 88)) << "what was put in later, too";
  CRect units(4, 8, 8, 16);
  dialog.MapDialogRect(units);
  EXPECT_EQ(units, CRect(14, 32, 28, 64));
  desktop.SetDpi(96);
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown, client) << "and back";
}

TEST_F(HeadlessScreen, ADialogIsMeasuredForTheScreenWhereItBegins) {
  static const lorv::DialogItem items[] = {{lorv::WindowKind::Edit, 1002, 8, 8, 40, 16, WS_TABSTOP, _T("")}};
  static const lorv::DialogTemplate form = {2000, _T("t"), 80, 64, _T("SimSun"), 9, items};
  desktop.SetDpi(144);
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, &top));
  EXPECT_EQ(lorv::PeerOf(dialog.GetDlgItem(1002)->m_hWnd)->Font().lfHeight, -18);
}

TEST_F(HeadlessScreen, AWindowMayEndWhereItIsNotifiedOfAnotherScreen) {
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
