#include <QScreen>

#include "framework/drawing/device_context.h"
#include "framework/windows/dialog.h"
#include "framework/windows/tip_window.h"
#include "grid/basic/basic_grid.h"
#include "grid/items/presentation_item.h"
#include "tests/platform/qt/qt_fixture.h"

// Windows that are moved to a screen of other dots an inch, while they are open. The program stands on four:
// the first has 96, the others 192, 120 and 144.

namespace lorv::test {
namespace {

class ScreenWindow : public CWnd {
 public:
  std::vector<WPARAM> dots;
  CRect place;
  bool ends = false;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_DPICHANGED) {
      dots.push_back(w);
      place = *reinterpret_cast<const RECT*>(l);
      if (ends) DestroyWindow();
    }
    return CWnd::WindowProc(message, w, l);
  }
};

class QtScreens : public QtTest {
 protected:
  void MoveTo(HWND window, int screen) {
    const auto peer = desktop_->Find(window);
    const CRect place(peer->WindowRect());
    constexpr int kWithin[] = {100, 1700, 4900, 6900};
    peer->Place(CRect(CPoint(kWithin[screen], 100), place.Size()));
    Settle();
  }
  static CRect PlaceOf(const CWnd& window) {
    CRect place;
    window.GetWindowRect(place);
    return place;
  }
};

TEST_F(QtScreens, ATopWindowHearsOfAnotherScreenWithThePlaceThatKeepsItsSize) {
  ASSERT_EQ(QGuiApplication::screens().size(), 4);
  ScreenWindow window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(10, 20, 210, 120), nullptr, 0);
  ScreenWindow child;
  child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &window, 1);
  Settle();
  EXPECT_EQ(window.GetDpi(), 96);
  const CRect before = PlaceOf(window);
  MoveTo(window.m_hWnd, 1);
  ASSERT_EQ(window.dots, (std::vector<WPARAM>{MAKEWPARAM(192, 192)}));
  EXPECT_EQ(window.place.Size(), CSize(before.Width() * 2, before.Height() * 2));
  EXPECT_EQ(PlaceOf(window), window.place) << "left to the system, it is taken";
  EXPECT_EQ(window.place.left, 1700);
  EXPECT_EQ(window.GetDpi(), 192);
  EXPECT_EQ(child.GetDpi(), 192);
  EXPECT_TRUE(child.dots.empty());
  CClientDC dc(&child);
  EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSY), 192);
  CFont font;
  font.CreatePointFont(90, _T("SimSun"), &dc);
  EXPECT_EQ(font.Face().lfHeight, -24);
  MoveTo(window.m_hWnd, 0);
  EXPECT_EQ(window.dots.back(), MAKEWPARAM(96, 96));
  EXPECT_EQ(PlaceOf(window).Size(), before.Size());
  EXPECT_EQ(child.GetDpi(), 96);
}

TEST_F(QtScreens, WhatIsMadeInAWindowHasTheDotsOfItsScreen) {
  ScreenWindow window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(10, 20, 210, 120), nullptr, 0);
  Settle();
  MoveTo(window.m_hWnd, 1);
  ScreenWindow child;
  child.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 50), &window, 1);
  EXPECT_EQ(child.GetDpi(), 192);
  CClientDC dc(&child);
  EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSX), 192);
}

TEST_F(QtScreens, AWindowMadeOnAScreenHasItsDotsFromTheBeginning) {
  for (CWnd* const owner : {static_cast<CWnd*>(nullptr), CWnd::FromHandle(top.window)}) {
    ScreenWindow window;
    window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(1700, 20, 1900, 120), owner, 0);
    EXPECT_EQ(window.GetDpi(), 192);
    EXPECT_EQ(PeerOf(window.m_hWnd)->Font().lfHeight, 2 * PeerOf(top.window)->Font().lfHeight);
    CClientDC dc(&window);
    EXPECT_EQ(dc.GetDeviceCaps(LOGPIXELSY), 192);
    Settle();
    EXPECT_TRUE(window.dots.empty()) << "it is where it began";
  }
  // Without an area, and beyond all screens.
  ScreenWindow none, beyond;
  none.Create(nullptr, _T("t"), WS_POPUP, CRect(1700, 20, 1700, 20), nullptr, 0);
  EXPECT_EQ(none.GetDpi(), 96);
  beyond.Create(nullptr, _T("t"), WS_POPUP, CRect(-9000, -9000, -8000, -8000), nullptr, 0);
  EXPECT_EQ(beyond.GetDpi(), 96);
}

// As wide as its screen allows, which is not the first one's measure.
TEST_F(QtScreens, ATipIsAsLargeAsItsOwnScreen) {
  CBCGPToolTipCtrl tip;
  ASSERT_TRUE(tip.Create(nullptr));
  tip.SetWindowText(CString(_T('W'), 2000));
  tip.ShowAt(CPoint(1650, 50));
  EXPECT_EQ(PlaceOf(tip).Size(), CSize(3200, PlaceOf(tip).Height()));
  EXPECT_EQ(tip.GetDpi(), 192);
  tip.ShowAt(CPoint(50, 50));
  EXPECT_EQ(PlaceOf(tip).Width(), 1600);
  EXPECT_EQ(PlaceOf(tip).TopLeft(), CPoint(50, 50));
}

TEST_F(QtScreens, ADialogGrowsWithItsScreenAndBack) {
  static const DialogItem items[] = {{WindowKind::Edit, 1002, 8, 8, 40, 16, WS_TABSTOP, _T("")},
                                     {WindowKind::Button, IDOK, 8, 32, 40, 16, WS_TABSTOP, _T("OK")}};
  static const DialogTemplate form = {2000, _T("t"), 80, 64, _T("SimSun"), 9, items};
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, CWnd::FromHandle(top.window)));
  dialog.ShowWindow(SW_SHOW);
  Settle();
  CRect client, edit;
  dialog.GetClientRect(client);
  dialog.GetDlgItem(1002)->GetWindowRect(edit);
  dialog.ScreenToClient(edit);
  MoveTo(dialog.m_hWnd, 1);
  CRect grown, grown_edit;
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown.Size(), CSize(client.Width() * 2, client.Height() * 2));
  dialog.GetDlgItem(1002)->GetWindowRect(grown_edit);
  dialog.ScreenToClient(grown_edit);
  EXPECT_EQ(grown_edit, CRect(edit.left * 2, edit.top * 2, edit.right * 2, edit.bottom * 2));
  EXPECT_EQ(PeerOf(dialog.GetDlgItem(IDOK)->m_hWnd)->Font().lfHeight, -24);
  MoveTo(dialog.m_hWnd, 0);
  dialog.GetClientRect(grown);
  EXPECT_EQ(grown, client);
}

// Below and beside a cell there is a line of one pixel.
void ExpectThinLines(const CBCGPGridCtrl& grid) {
  CSize size;
  const std::vector<DWORD> picture = PeerOf(grid.m_hWnd)->Picture(size);
  const auto pixel = [&](LONG x, LONG y) {
    return picture[static_cast<std::size_t>(y) * static_cast<std::size_t>(size.cx) +
                   static_cast<std::size_t>(x)];
  };
  // The picture has the window's border, too.
  CRect frame;
  grid.GetWindowRect(frame);
  CPoint corner;
  grid.ClientToScreen(&corner);
  const CRect cell = grid.GetItemRect({1, 0}) + (corner - frame.TopLeft());
  for (const LONG along : {4, 9, 30}) {
    EXPECT_NE(pixel(cell.left + along, cell.bottom - 1), pixel(cell.left + along, cell.bottom - 2));
    EXPECT_NE(pixel(cell.left + along, cell.bottom - 1), pixel(cell.left + along, cell.bottom));
  }
  EXPECT_NE(pixel(cell.right - 1, cell.top + 2), pixel(cell.right - 2, cell.top + 2));
  EXPECT_NE(pixel(cell.right - 1, cell.top + 2), pixel(cell.right, cell.top + 2));
}

TEST_F(QtScreens, AGridInADialogIsTheSameOnEachScreenAndBack) {
  static const DialogTemplate form = {2000, _T("t"), 300, 200, _T("SimSun"), 9, {}};
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, CWnd::FromHandle(top.window)));
  CBCGPGridCtrl grid;
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(10, 10, 410, 250), &dialog, 7);
  grid.SetFont(dialog.GetFont(), FALSE);
  grid.EnableRowHeader(TRUE, -1, 30);
  grid.EnableLineNumbers();
  for (const LPCTSTR name : {_T("构件名称"), _T("混凝土强度")})
    grid.InsertColumn(grid.GetColumnCount(), name, 120);
  for (int row = 0; row < 4; ++row) grid.AddRow(FALSE);
  for (int row = 0; row < 4; ++row)
    for (int column = 0; column < 2; ++column)
      grid.GetGridItem({row, column})->SetValue(_variant_t(_T("剪力墙 C30 g")));
  grid.AdjustLayout();
  dialog.ShowWindow(SW_SHOW);
  Settle();
  const auto picture = [&] {
    grid.UpdateWindow();
    Settle();
    CSize size;
    return PeerOf(grid.m_hWnd)->Picture(size);
  };
  const auto expect_whole_texts = [&] {
    CClientDC dc(&grid);
    dc.SelectObject(grid.GetFont());
    const CString text = grid.GetGridItem({1, 0})->FormatItem();
    const CRect cell = grid.GetItemRect({1, 0});
    EXPECT_LE(dc.GetTextExtent(text).cx + 6, cell.Width());
    EXPECT_LE(dc.GetTextExtent(grid.GetColumnName(1)).cx + 6, cell.Width());
    EXPECT_LE(dc.GetTextExtent(text).cy, cell.Height());
    EXPECT_LE(dc.GetTextExtent(text).cy, grid.GetHeaderRect().Height());
  };
  const std::vector<DWORD> before = picture();
  const int row_height = grid.GetRowHeight();
  expect_whole_texts();
  constexpr int kDots[] = {96, 192, 120, 144};
  for (const int screen : {1, 2, 3}) {
    const int dots = kDots[screen];
    MoveTo(dialog.m_hWnd, screen);
    EXPECT_EQ(grid.GetDpi(), dots);
    EXPECT_EQ(grid.GetColumnWidth(0), 120 * dots / 96);
    EXPECT_EQ(grid.GetRowHeaderRect().Width(), (30 * dots + 48) / 96);
    EXPECT_GT(grid.GetRowHeight(), row_height * dots / 96 * 5 / 6);
    expect_whole_texts();
    picture();
    ExpectThinLines(grid);
    MoveTo(dialog.m_hWnd, 0);
    EXPECT_EQ(grid.GetColumnWidth(0), 120);
    EXPECT_EQ(grid.GetRowHeight(), row_height);
    EXPECT_EQ(picture(), before);
  }
}

// In a window that is no dialog nobody sets fonts for the other screen.
TEST_F(QtScreens, AGridInAPlainWindowTakesItsFontAndSizesAlong) {
  ScreenWindow window;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 560, 400), nullptr, 0);
  CBCGPBasicGridCtrl grid;
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 240), &window, 7);
  grid.InsertColumns(_T("构件名称,混凝土强度"), _T("120,120"), 32);
  grid.AppendRows(5);
  auto* const list = new CBCGPGridPresentationItem(_variant_t(_T("剪力墙 C30 g")));
  list->SetPresentationStyle(kListCell);
  list->AddOption(_T("C30"));
  grid.ReplaceItem(1, 0, list, FALSE);
  grid.AdjustLayout();
  Settle();
  const LONG font = grid.GetFont()->Face().lfHeight;
  const std::vector<int> before = {grid.GetRowHeight(), static_cast<int>(grid.GetHeaderRect().Height()),
                                   grid.GetColumnWidth(1)};
  ASSERT_EQ(before, (std::vector<int>{32, 32, 120}));
  constexpr int kDots[] = {96, 192, 120, 144};
  for (const int screen : {1, 2, 3}) {
    const int dots = kDots[screen];
    SCOPED_TRACE(dots);
    MoveTo(window.m_hWnd, screen);
    grid.MoveWindow(0, 0, ForDots(400, dots), ForDots(240, dots));
    EXPECT_EQ(grid.GetFont()->Face().lfHeight, ForDots(font, dots));
    EXPECT_EQ(grid.GetRowHeight(), ForDots(32, dots));
    EXPECT_EQ(grid.GetHeaderRect().Height(), ForDots(32, dots));
    EXPECT_EQ(list->GetButtonRect().Width(), ForDots(17, dots) + ForDots(3, dots));
    grid.UpdateWindow();
    Settle();
    ExpectThinLines(grid);
    CClientDC dc(&grid);
    dc.SelectObject(grid.GetFont());
    const CRect cell = grid.GetItemRect({1, 0});
    EXPECT_LE(dc.GetTextExtent(list->FormatItem()).cx + 2 * ForDots(3, dots),
              list->GetButtonRect().left - cell.left);
    MoveTo(window.m_hWnd, 0);
    grid.MoveWindow(0, 0, 400, 240);
    EXPECT_EQ(grid.GetFont()->Face().lfHeight, font);
    EXPECT_EQ((std::vector<int>{grid.GetRowHeight(), static_cast<int>(grid.GetHeaderRect().Height()),
                                grid.GetColumnWidth(1)}),
              before);
  }
}

TEST_F(QtScreens, ADialogIsMeasuredForTheScreenOfItsOwner) {
  static const DialogItem items[] = {{WindowKind::Edit, 1002, 8, 8, 40, 16, WS_TABSTOP, _T("")}};
  static const DialogTemplate form = {2000, _T("t"), 80, 64, _T("SimSun"), 9, items};
  CDialog plain;
  ASSERT_TRUE(plain.Create(form, CWnd::FromHandle(top.window)));
  CRect small;
  plain.GetClientRect(small);
  MoveTo(top.window, 1);
  CDialog dialog;
  ASSERT_TRUE(dialog.Create(form, CWnd::FromHandle(top.window)));
  EXPECT_EQ(dialog.GetDpi(), 192);
  EXPECT_EQ(PeerOf(dialog.GetDlgItem(1002)->m_hWnd)->Font().lfHeight, -24);
  CRect client;
  dialog.GetClientRect(client);
  // Letters of the double height are about twice as wide.
  EXPECT_NEAR(client.Width(), small.Width() * 2, small.Width() / 4.0);
}

TEST_F(QtScreens, AWindowMayEndWhereItHearsOfAnotherScreen) {
  ScreenWindow window;
  window.ends = true;
  window.Create(nullptr, _T("t"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(10, 20, 210, 120), nullptr, 0);
  Settle();
  MoveTo(window.m_hWnd, 1);
  EXPECT_EQ(window.m_hWnd, nullptr);
}

}  // namespace
}  // namespace lorv::test
