#include "tests/conformance/grid/grid_points.h"

namespace lorv_test {

void FillByPlace(CBCGPBasicGridCtrl& grid, int rows, int columns) {
  for (int row = 0; row < rows; ++row)
    for (int column = 0; column < columns; ++column) {
      CString text;
      text.Format(_T("%c%d"), _T('a') + row % 26, column);
      grid.SetValue(row, column, _variant_t(text), FALSE);
    }
}

POINT PointIn(const CBCGPBasicGridCtrl& grid, const CPoint& client) {
  POINT at = client;
  grid.ClientToScreen(&at);
  return at;
}

POINT CellPoint(const CBCGPBasicGridCtrl& grid, int row, int column) {
  return PointIn(grid, grid.GetItemRect({row, column}).CenterPoint());
}

POINT ButtonPoint(const CBCGPBasicGridCtrl& grid, int row, int column) {
  return PointIn(grid, grid.GetItem(row, column)->GetButtonRect().CenterPoint());
}

POINT HeaderPoint(const CBCGPBasicGridCtrl& grid, int column) {
  const CRect cell =
      grid.GetItemRect({grid.HitTestRow(CPoint(grid.GetListRect().left, grid.GetListRect().top)), column});
  return PointIn(
      grid, {static_cast<int>(cell.CenterPoint().x), static_cast<int>(grid.GetHeaderRect().CenterPoint().y)});
}

POINT RowHeaderPoint(const CBCGPBasicGridCtrl& grid, int row) {
  return PointIn(grid, {static_cast<int>(grid.GetRowHeaderRect().CenterPoint().x),
                        static_cast<int>(grid.GetRowRect(row).CenterPoint().y)});
}

POINT DividerPoint(const CBCGPBasicGridCtrl& grid, int column) {
  const CRect cell = grid.GetItemRect({0, column});
  return PointIn(grid,
                 {static_cast<int>(cell.right) - 1, static_cast<int>(grid.GetHeaderRect().CenterPoint().y)});
}

}  // namespace lorv_test
