#pragma once

#include <memory>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/support/headless_desk.h"

namespace lorv_test {

// A desk with one of the suite's grids in a window, used by keys and texts. Descendants make the window.
template <class Grid>
class SuiteDesk : public Desk {
 protected:
  SuiteDesk() : grid(std::make_unique<Grid>()) {}

  // What the grid has reported so far is of no interest.
  virtual void Forget() {}

  static CString Names(int columns) {
    CString names = _T("c");
    for (int column = 1; column < columns; ++column) names += _T(",c");
    return names;
  }
  // Cells hold the text of 10 * row + column.
  void Fill(int rows, int columns) {
    grid->InsertColumns(Names(columns), _T(""), 0);
    grid->AppendRows(rows);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) Put(row, column, 10 * row + column);
    Run();
    grid->SetFocus();
    Run();
    Forget();
  }
  void Put(int row, int column, int number) {
    CString text;
    text.Format(_T("%d"), number);
    Put(row, column, static_cast<LPCTSTR>(text));
  }
  // Into the cell itself, past what the grid does for SetValue.
  void Put(int row, int column, LPCTSTR text) {
    grid->GetItem(row, column)->SetValue(_variant_t(text), FALSE);
  }
  void Choose(int row, int column) {
    grid->SetCurSel(CBCGPGridItemID(row, column));
    Run();
    Forget();
  }
  void Key(int key) {
    desktop.Press(key);
    Run();
  }
  void KeyWith(int modifier, int key) {
    desktop.PressWith(modifier, key);
    Run();
  }
  void Type(LPCTSTR text) {
    desktop.Type(text);
    Run();
  }
  CString Text(int row, int column) const {
    const CBCGPGridItem* item = grid->GetItem(row, column);
    return item == nullptr ? CString(_T("none")) : item->FormatItem();
  }
  CEdit* Editor() const { return dynamic_cast<CEdit*>(grid->GetInPlaceWnd()); }
  CBCGPGridItemID Current() const { return grid->GetCurSelItemID(); }
  // On the screen.
  CPoint Centre(int row, int column) const {
    const CPoint at = grid->GetItemRect({row, column}).CenterPoint();
    return On(*grid, static_cast<int>(at.x), static_cast<int>(at.y));
  }

  std::unique_ptr<Grid> grid;
};

}  // namespace lorv_test
