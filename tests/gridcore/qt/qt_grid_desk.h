#pragma once

#include "gridcore/control/grid_control.h"
#include "tests/platform/qt/qt_fixture.h"

namespace lorv_test {

// A grid in a window of the widget set.
class QtGridDesk : public lorv::test::QtTest {
 protected:
  QtGridDesk() {
    grid.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), CWnd::FromHandle(top.window), 7);
    for (const LPCTSTR name : {_T("名称"), _T("长度"), _T("备注")})
      grid.InsertColumn(grid.GetColumnCount(), name, 80);
    for (int row = 0; row < 5; ++row) grid.AddRow(FALSE);
    for (int row = 0; row < 5; ++row)
      for (int column = 0; column < 3; ++column) At(row, column)->SetValue(_variant_t(_T("板")));
    grid.AdjustLayout();
    grid.SetFocus();
    Settle();
  }
  CBCGPGridItem* At(int row, int column) const { return grid.GetGridItem({row, column}); }
  CString Value(int row, int column) const { return At(row, column)->FormatItem(); }
  CEdit* Editor() const { return dynamic_cast<CEdit*>(grid.GetInPlaceWnd()); }
  QWidget* Focused() const { return WidgetOf(desktop_->Focus()); }

  CBCGPGridCtrl grid;
};

}  // namespace lorv_test
