#include <cstdio>

#include "gridcore/control/grid_control.h"
#include "gridcore/items/check_item.h"
#include "platform/qt/desktop/qt_desktop.h"

// A window with a grid, for a reader from outside: it says that it is there and lives until it is ended.

int main() {
  const auto desktop = lorv::MakeQtDesktop();
  const lorv::ScopedDesktop scope(*desktop);
  CWnd top;
  CBCGPGridCtrl grid;
  top.Create(nullptr, _T("readers"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(50, 50, 550, 450), nullptr, 0);
  grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
  grid.SetWindowText(_T("beams"));
  for (const LPCTSTR name : {_T("name"), _T("length"), _T("done")})
    grid.InsertColumn(grid.GetColumnCount(), name, 80);
  for (int row = 0; row < 1000; ++row) grid.AddRow(FALSE);
  for (int row = 0; row < 1000; ++row) grid.GetGridItem({row, 1})->SetValue(_variant_t(_T("3600")), FALSE);
  grid.GetRow(2)->ReplaceItem(2, new CBCGPGridCheckItem(false));
  grid.AdjustLayout();
  grid.SetFocus();
  std::puts("ready");
  std::fflush(stdout);
  while (!desktop->QuitCode()) desktop->Pump(true);
  return 0;
}
