#pragma once

#include <functional>
#include <memory>
#include <string>

#include "tests/grid/suite_desk.h"

namespace lorv_test {

// The auto-row grid, which does what the test wants before and after its virtual operations.
class AutoRowGrid : public CBcgTrueDbGridCtrlEx {
 public:
  std::function<void(const std::string&)> on;

  using CBcgTrueDbGridCtrlEx::GetRow;
  using CBcgTrueDbGridCtrlEx::OnChangeItemValue;

  int AddRow(CBCGPGridRow* row, int relayout) override { return CBcgTrueDbGridCtrlEx::AddRow(row, relayout); }
  int AddRow(int relayout) override {
    const auto life = Watch();
    Say("adding");
    if (life.expired()) return -1;
    const int added = CBcgTrueDbGridCtrlEx::AddRow(relayout);
    if (!life.expired()) Say("added");
    return added;
  }
  int RemoveRow(int row, int relayout) override {
    const auto life = Watch();
    Say("removing");
    if (life.expired()) return 0;
    const int removed = CBcgTrueDbGridCtrlEx::RemoveRow(row, relayout);
    if (!life.expired()) Say("removed");
    return removed;
  }
  void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE) override {
    const auto life = Watch();
    CBcgTrueDbGridCtrlEx::SetValue(row, column, value, redraw);
    if (!life.expired()) Say("set");
  }
  int Listed() const { return CBCGPGridCtrl::GetRowCount(); }
  CBCGPGridRow* At(int row) const { return CBCGPGridCtrl::GetRow(row); }

 protected:
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override {
    const auto life = Watch();
    CBcgTrueDbGridCtrlEx::OnSelChanged(range, selected);
    if (!life.expired()) Say("selected");
  }
  void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) override {
    const auto life = Watch();
    CBcgTrueDbGridCtrlEx::OnAfterInplaceEditCreated(item, editor);
    if (!life.expired()) Say("opened");
  }

 private:
  void Say(const std::string& what) {
    const auto copy = on;
    if (copy) copy(what);
  }
};

class AutoRowDesk : public SuiteDesk<AutoRowGrid> {
 protected:
  AutoRowDesk() { MakeGrid(3); }
  void MakeGrid(int columns) {
    grid = std::make_unique<AutoRowGrid>();
    grid->Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 400, 300), &top, 7);
    grid->InsertColumns(Names(columns), _T(""), 0);
    grid->SetFocus();
    Run();
  }
  // Rows of the table whose first cells hold r0, r1 ..., above a prepare row.
  void Fill(int rows) {
    for (int row = 0; row < rows; ++row) {
      grid->AddRow(FALSE);
      CString text;
      text.Format(_T("r%d"), row);
      grid->SetValue(row, 0, _variant_t(text), FALSE);
    }
    grid->AdjustLayout();
    grid->SetAutoAddRow(true);
    Run();
  }
  void Choose(int row, int column) {
    grid->SetCurSel(CBCGPGridItemID(row, column));
    // A handler of the test may have ended it.
    if (grid != nullptr && grid->GetInPlaceWnd() == nullptr) grid->SetFocus();
    Run();
  }
  std::string Text(int row, int column) const { return SuiteDesk::Text(row, column).ToUtf8(); }
};

}  // namespace lorv_test
