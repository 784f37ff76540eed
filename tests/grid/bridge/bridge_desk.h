#pragma once

#include <memory>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/support/event_sheet.h"
#include "tests/support/headless_desk.h"

namespace lorv_test {

// The grid with what only descendants may call.
class OpenedBridge : public CBcgTrueDbGridCtrl {
 public:
  using CBcgTrueDbGridCtrl::OnDrawRowHeaderItem;
  using CBcgTrueDbGridCtrl::OnSelChanged;
  using CBcgTrueDbGridCtrl::OnSelChanging;
  using CBcgTrueDbGridCtrl::SetHeaderItemWidth;
  using CBcgTrueDbGridCtrl::TrackToolTip;
};

// The bridge's grid in a window that hears its events.
class BridgeDesk : public Desk {
 protected:
  BridgeDesk() {
    MakeSheet();
    MakeGrid();
  }
  ~BridgeDesk() override {
    if (sheet != nullptr) sheet->on = nullptr;
    grid.reset();
  }

  void MakeSheet() {
    sheet = std::make_unique<EventSheet>();
    sheet->Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(0, 0, 500, 400), nullptr, 0);
    sheet->MuteNoise();
    Run();
  }
  void MakeGrid() {
    grid = std::make_unique<OpenedBridge>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), sheet.get(), kTableId);
    Run();
  }
  // Cells hold the text of 10 * row + column; no cell is current where `quiet`.
  void Fill(int rows, int columns) {
    CString names = _T("c");
    for (int column = 1; column < columns; ++column) names += _T(",c");
    grid->InsertColumns(names, _T(""), 0);
    grid->AppendRows(rows);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) Put(row, column, 10 * row + column);
    Run();
    grid->SetFocus();
    Run();
    sheet->Taken();
  }
  void Put(int row, int column, int number) {
    CString text;
    text.Format(_T("%d"), number);
    grid->SetValue(row, column, _variant_t(text), FALSE);
  }
  void Choose(int row, int column) {
    grid->SetCurSel(CBCGPGridItemID(row, column));
    Run();
    sheet->Taken();
  }
  void Key(int key) {
    desktop.Press(key);
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
  CPoint Centre(int row, int column) const {
    const CPoint at = grid->GetItemRect({row, column}).CenterPoint();
    return On(*grid, static_cast<int>(at.x), static_cast<int>(at.y));
  }
  void Click(CPoint screen) {
    desktop.MoveMouse(screen);
    Run();
    desktop.MouseDown();
    Run();
    desktop.MouseUp();
    Run();
  }

  std::unique_ptr<EventSheet> sheet;
  std::unique_ptr<OpenedBridge> grid;
};

}  // namespace lorv_test
