#include "framework/drawing/device_context.h"
#include "framework/windows/dialog.h"
#include "gridcore/control/grid_control.h"
#include "tests/platform/win32/real_input.h"

// A screen of other dots an inch, while windows are open. There is one screen here, so that the system's
// message is sent as the system sends it to a window that was moved to another.

using lorv::DialogItem;
using lorv::DialogTemplate;
using lorv::WindowKind;

namespace {

class Notified : public CWnd {
 public:
  std::vector<WPARAM> dots;
  bool ends = false;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_DPICHANGED) dots.push_back(w);
    if (message == WM_DPICHANGED && ends) DestroyWindow();
    return CWnd::WindowProc(message, w, l);
  }
};

void Report(HWND window, int dots, RECT place) {
  SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(dots, dots), reinterpret_cast<LPARAM>(&place));
}

CRect PlaceIn(const CWnd& child, const CWnd& parent) {
  CRect place;
  child.GetWindowRect(place);
  parent.ScreenToClient(place);
  return place;
}

}  // namespace

class Win32Dpi : public RealWindows {};

TEST_F(Win32Dpi, ATopWindowTakesThePlaceThatTheSystemSuggests) {
  Notified window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(110, 120, 310, 220), nullptr, 0);
  Notified child;
  child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &window, 1);
  const CRect suggested(40, 50, 440, 250);
  Report(window.m_hWnd, 192, suggested);
  EXPECT_EQ(window.dots, (std::vector<WPARAM>{MAKEWPARAM(192, 192)}));
  CRect now;
  window.GetWindowRect(now);
  EXPECT_EQ(now, suggested);
  EXPECT_TRUE(child.dots.empty());
}

TEST_F(Win32Dpi, AWindowMayEndWhereItIsNotified) {
  Notified window;
  window.ends = true;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(110, 120, 310, 220), nullptr, 0);
  Report(window.m_hWnd, 192, CRect(40, 50, 440, 250));
  EXPECT_EQ(window.m_hWnd, nullptr);
}

TEST_F(Win32Dpi, ContextsHaveTheDotsOfTheirWindowsScreen) {
  const auto dots = static_cast<int>(GetDpiForWindow(top.window));
  EXPECT_EQ(top.Peer()->Dpi(), dots);
  EXPECT_EQ(top.Peer()->ClientCanvas()->Dpi(), dots);
  top.Peer()->Invalidate(nullptr);
  int painted = 0;
  top.on = [&](const Probe::Message& m, LRESULT&) {
    if (m.number != WM_PAINT) return false;
    RECT dirty = {};
    painted = top.Peer()->PaintCanvas(dirty)->Dpi();
    return true;
  };
  top.Peer()->Update();
  EXPECT_EQ(painted, dots);
  Probe gone;
  MakeChild(gone, WindowKind::Custom, 0, {0, 0, 5, 5}, 9);
  const auto canvas = gone.Peer()->ClientCanvas();
  gone.Peer()->Destroy();
  EXPECT_EQ(canvas->Dpi(), lorv::kUsualDpi);
}

TEST_F(Win32Dpi, FramesAndFontsAreThoseOfTheWindowsScreen) {
  const UINT dots = GetDpiForWindow(top.window);
  RECT whole = {0, 0, 100, 50};
  AdjustWindowRectExForDpi(&whole, top.Peer()->Style(), FALSE, top.Peer()->ExStyle(), dots);
  const SIZE frame = top.Peer()->FrameSize({100, 50});
  EXPECT_EQ(frame.cx, whole.right - whole.left);
  EXPECT_EQ(frame.cy, whole.bottom - whole.top);
  Probe edit;
  MakeChild(edit, WindowKind::Edit, 0, {10, 10, 110, 34}, 31);
  NONCLIENTMETRICSW metrics = {};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0, dots);
  EXPECT_EQ(edit.Peer()->Font().lfHeight, metrics.lfMessageFont.lfHeight);
}

// Its columns follow the dots of its own screen, which is the same one here; its rows follow the font.
TEST_F(Win32Dpi, RowsOfAGridGrowWithTheFontOfItsDialog) {
  static const DialogTemplate form = {2000, _T("t"), 200, 100, _T("SimSun"), 9, {}};
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, CWnd::FromHandle(top.window)));
  CBCGPGridCtrl grid;
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 210, 110), &dialog, 7);
  grid.SetFont(dialog.GetFont(), FALSE);
  grid.InsertColumn(0, _T("梁"), 100);
  grid.AddRow(TRUE);
  const int height = grid.GetRowHeight();
  Report(dialog.m_hWnd, 192, CRect(10, 20, 410, 220));
  EXPECT_GT(grid.GetRowHeight(), height * 3 / 2);
  Report(dialog.m_hWnd, 96, CRect(10, 20, 210, 120));
  EXPECT_EQ(grid.GetRowHeight(), height);
}

TEST_F(Win32Dpi, ADialogGrowsWithAllThatStandsInItAndBack) {
  static const DialogItem items[] = {{WindowKind::Edit, 1002, 8, 8, 40, 16, WS_TABSTOP, _T("")},
                                     {WindowKind::Button, IDOK, 8, 32, 40, 16, WS_TABSTOP, _T("OK")}};
  static const DialogTemplate form = {2000, _T("t"), 80, 64, _T("SimSun"), 9, items};
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, CWnd::FromHandle(top.window)));
  CRect client;
  dialog.GetClientRect(client);
  const CRect edit = PlaceIn(*dialog.GetDlgItem(1002), dialog);
  const LONG height = lorv::PeerOf(dialog.GetDlgItem(IDOK)->m_hWnd)->Font().lfHeight;
  Report(dialog.m_hWnd, 192, CRect(10, 20, 410, 220));
  CRect grown;
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown.Size(), CSize(client.Width() * 2, client.Height() * 2));
  EXPECT_EQ(PlaceIn(*dialog.GetDlgItem(1002), dialog),
            CRect(edit.left * 2, edit.top * 2, edit.right * 2, edit.bottom * 2));
  EXPECT_EQ(lorv::PeerOf(dialog.GetDlgItem(IDOK)->m_hWnd)->Font().lfHeight, height * 2);
  dialog.GetWindowRect(grown);
  EXPECT_EQ(grown.TopLeft(), CPoint(10, 20));
  Report(dialog.m_hWnd, 96, CRect(10, 20, 210, 120));
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown, client);
}
