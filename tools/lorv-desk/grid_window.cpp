#include "tools/lorv-desk/grid_window.h"

// A window that holds a grid and nothing else, for the samples and for the table that is edited. It is made
// in the way of the suite's own windows, with message maps and a frame of the desktop.

namespace lorv::tool {

BEGIN_MESSAGE_MAP(GridWindow, CWnd)
ON_WM_SIZE()
ON_WM_SETFOCUS()
END_MESSAGE_MAP()

GridWindow::~GridWindow() {
  // Destroys the grid's own window while the grid still exists.
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

bool GridWindow::Open(LPCTSTR title, CSize size) {
  constexpr int kPlace = 80;
  const CRect frame(CPoint(kPlace, kPlace), size);
  if (Create(nullptr, title, WS_OVERLAPPEDWINDOW, frame, nullptr, 0) == FALSE) return false;
  // Known once the window is there: it may have opened on a screen of other dots than the first.
  const int dpi = GetDpi();
  size = CSize(static_cast<int>(size.cx) * dpi / kUsualDpi, static_cast<int>(size.cy) * dpi / kUsualDpi);
  CRect client;
  GetClientRect(&client);
  constexpr DWORD kGridStyle = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
  if (Grid().Create(kGridStyle, client, this, 1) == FALSE) return false;
  // What the frame took of the size.
  CRect outer;
  GetWindowRect(&outer);
  const CSize whole = size + outer.Size() - client.Size();
  SetWindowPos(nullptr, 0, 0, static_cast<int>(whole.cx), static_cast<int>(whole.cy),
               SWP_NOMOVE | SWP_NOZORDER);
  return true;
}

void GridWindow::ShowUntilClosed() {
  ShowWindow(SW_SHOW);
  // Keys go to the grid from the start.
  Grid().SetFocus();
  Desktop& desktop = DesktopInForce();
  // A handler may destroy the window; the loop then ends, whatever the desktop says.
  while (m_hWnd != nullptr && desktop.Pump(true)) {
  }
}

void GridWindow::OnSize(UINT type, int width, int height) {
  CWnd::OnSize(type, width, height);
  // The first size comes before the grid has a window.
  if (Grid().m_hWnd != nullptr) Grid().MoveWindow(0, 0, width, height);
}

void GridWindow::OnSetFocus(CWnd* /*former*/) {
  if (Grid().m_hWnd != nullptr) Grid().SetFocus();
}

}  // namespace lorv::tool
