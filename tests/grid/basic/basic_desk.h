#pragma once

#include <functional>
#include <memory>
#include <string>

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/support/headless_desk.h"

namespace lorv_test {

// The suite's grid in a window, with notes of what descendants are told.
class BasicGrid : public CBCGPBasicGridCtrl {
 public:
  std::vector<std::string> notes;
  std::function<void(const std::string&)> on;
  bool quiet_selection = true;

  std::vector<std::string> Taken() { return std::exchange(notes, {}); }
  void OnComboItemSelect() override { Say("combo"); }
  BOOL OnClickButton(CPoint point) override {
    // The test may end the grid here.
    const auto life = Watch();
    Say("button");
    return life.expired() ? FALSE : CBCGPBasicGridCtrl::OnClickButton(point);
  }
  using CBCGPBasicGridCtrl::CanEndInplaceEditOnChar;
  using CBCGPBasicGridCtrl::FilterItem;
  using CBCGPBasicGridCtrl::OnGetColumnAutoSize;
  using CBCGPBasicGridCtrl::OnHeaderDividerDblClick;
  using CBCGPBasicGridCtrl::OnResizeColumns;

 protected:
  void Say(const std::string& what) {
    notes.push_back(what);
    const auto copy = on;
    if (copy) copy(what);
  }
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override {
    Say("changed " + std::to_string(row) + "," + std::to_string(column) + " " + item->FormatItem().ToUtf8());
  }
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override {
    if (!quiet_selection)
      Say((selected != FALSE ? "chosen " : "left ") + std::to_string(range.m_nTop) + "," +
          std::to_string(range.m_nLeft));
    CBCGPBasicGridCtrl::OnSelChanged(range, selected);
  }
};

class BasicDesk : public Desk {
 protected:
  BasicDesk() : grid(std::make_unique<BasicGrid>()) { Make(); }
  void Make() {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), &top, 7);
    Run();
  }
  // Cells hold the text of 10 * row + column.
  void Fill(int rows, int columns) {
    CString names = _T("c");
    for (int column = 1; column < columns; ++column) names += _T(",c");
    grid->InsertColumns(names, _T(""), 0);
    grid->AppendRows(rows);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column) {
        CString text;
        text.Format(_T("%d"), 10 * row + column);
        grid->SetValue(row, column, _variant_t(text), FALSE);
      }
    Run();
    grid->SetFocus();
    Run();
    grid->Taken();
  }
  void Choose(int row, int column) {
    grid->SetCurSel(CBCGPGridItemID(row, column));
    Run();
    grid->Taken();
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
  CPoint Centre(int row, int column) const {
    const CPoint at = grid->GetItemRect({row, column}).CenterPoint();
    return On(*grid, static_cast<int>(at.x), static_cast<int>(at.y));
  }

  std::unique_ptr<BasicGrid> grid;
};

}  // namespace lorv_test
