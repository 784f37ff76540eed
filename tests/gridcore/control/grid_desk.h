#pragma once

#include <functional>
#include <memory>
#include <string>

#include "gridcore/control/grid_control.h"
#include "tests/support/headless_desk.h"

namespace lorv_test {

// A grid that notes what it is notified of, and does what the test wants in the middle of it.
class NotingGrid : public CBCGPGridCtrl {
 public:
  std::vector<std::string> notes;
  std::function<void(const std::string&)> on;
  bool leaves_out_odd_rows = false;

  std::vector<std::string> Taken() { return std::exchange(notes, {}); }
  using CBCGPGridCtrl::OnKeyDown;

 protected:
  void Say(const std::string& what) {
    notes.push_back(what);
    const auto copy = on;
    if (copy) copy(what);
  }
  static std::string Of(const CBCGPGridRange& range) {
    const auto text = [](int number) { return std::to_string(number); };
    std::string name = text(range.m_nTop) + "," + text(range.m_nLeft);
    if (!range.IsSingle()) name += "-" + text(range.m_nBottom) + "," + text(range.m_nRight);
    return name;
  }
  void OnSelChanging(const CBCGPGridRange& range, BOOL selected) override {
    Say((selected != FALSE ? "choosing " : "leaving ") + Of(range));
  }
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override {
    Say((selected != FALSE ? "chosen " : "left ") + Of(range));
  }
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override {
    Say("changed " + std::to_string(row) + "," + std::to_string(column) + " " + item->FormatItem().ToUtf8());
  }
  void OnEndInplaceEdit(CBCGPGridItem* item) override {
    const auto life = Watch();
    Say("ended");
    if (!life.expired() && !notes_only_end) CBCGPGridCtrl::OnEndInplaceEdit(item);
  }
  void OnHeaderColumnClick(int column) override { Say("header " + std::to_string(column)); }
  void OnResizeColumns() override { Say("resized"); }
  BOOL FilterItem(CBCGPGridRow* row) override {
    return leaves_out_odd_rows && row->GetRowId() % 2 == 1 ? TRUE : FALSE;
  }

 public:
  bool notes_only_end = false;
};

class GridDesk : public Desk {
 protected:
  GridDesk() : grid(std::make_unique<NotingGrid>()) {
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    Run();
  }
  // Cells hold 10 * row + column.
  void Fill(int rows, int columns, int width = 80) {
    for (int column = 0; column < columns; ++column) grid->InsertColumn(column, _T("c"), width);
    for (int row = 0; row < rows; ++row) grid->AddRow(FALSE);
    for (int row = 0; row < rows; ++row)
      for (int column = 0; column < columns; ++column)
        At(row, column)->SetValue(_variant_t(10 * row + column));
    grid->AdjustLayout();
    grid->Taken();
  }
  CBCGPGridItem* At(int row, int column) const { return grid->GetGridItem({row, column}); }
  CPoint Centre(int row, int column) const {
    const CPoint at = grid->GetItemRect({row, column}).CenterPoint();
    return On(*grid, static_cast<int>(at.x), static_cast<int>(at.y));
  }
  void ClickOn(int row, int column) {
    desktop.Click(Centre(row, column));
    Run();
  }
  void Key(int key) {
    desktop.Press(key);
    Run();
  }
  void Choose(int row, int column) {
    grid->SetFocus();
    grid->SetCurSel({row, column});
    Run();
    grid->Taken();
  }
  CEdit* Editor() const { return dynamic_cast<CEdit*>(grid->GetInPlaceWnd()); }

  std::unique_ptr<NotingGrid> grid;
};

}  // namespace lorv_test
