#include "tests/conformance/grid/bridge_steps.h"

#include "grid/CBcgTrueDbGridCtrl.h"
#include "tests/conformance/grid/bridge_trace_table.inc"
#include "tests/support/event_sheet.h"

namespace lorv_test {
namespace {

class BridgeScene {
 public:
  explicit BridgeScene(BehaviourDriver& driver) : driver_(driver) {
    sheet_.Create(nullptr, _T("sheet"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(50, 50, 560, 460), nullptr,
                  0);
    grid_.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 430, 300), &sheet_, kTableId);
    grid_.ReDim(3, 2);
    for (int row = 0; row < 3; ++row)
      for (int column = 0; column < 2; ++column)
        grid_.SetValue(row, column, _variant_t(CString(static_cast<TCHAR>(_T('a') + 2 * row + column))));
    driver_.Settle();
    grid_.SetFocus();
    driver_.Settle();
    // What the mouse, the painting and the letting go of keys tell differs in number only.
    sheet_.MuteNoise();
    for (const int event : {-603, -604, -605, -607}) sheet_.muted.insert(event);
  }

  // Opens the editor of a cell, and takes a step that the trace is of.
  template <class Action>
  void Step(const char* name, int row, int column, Action action) {
    grid_.EndEditItem(FALSE);
    grid_.SetCurSel(CBCGPGridItemID(row == 0 ? 1 : 0, column));
    grid_.SetCurSel(CBCGPGridItemID(row, column));
    driver_.Settle();
    driver_.Press(VK_F2);
    CString text;
    text.Format(_T("typed %d"), number_);
    if (CWnd* const editor = grid_.GetInPlaceWnd()) editor->SetWindowText(text);
    sheet_.Taken();
    action();
    driver_.Settle();
    trace_.push_back(std::to_string(++number_) + " " + name);
    for (const std::string& note : sheet_.Taken()) trace_.push_back("  " + note);
    const CBCGPGridItemID id = grid_.GetCurSelItemID();
    trace_.push_back("  = " + std::to_string(id.m_nRow) + "," + std::to_string(id.m_nColumn) + " of " +
                     std::to_string(grid_.GetRowCount()) +
                     (grid_.GetEditingItem() != nullptr ? " in the editor" : ""));
  }
  void Play() {
    const auto press = [this](int key) { return [this, key] { driver_.Press(key); }; };
    Step("one edit, from a key to the next cell", 0, 1, press(VK_DOWN));
    Step("the same to the right", 1, 0, [this] {
      if (auto* const edit = dynamic_cast<CEdit*>(grid_.GetInPlaceWnd())) edit->SetSel(7, 7);
      driver_.Press(VK_RIGHT);
    });
    Step("Return above the last row", 1, 0, press(VK_RETURN));
    grid_.SetReturnAddNewRow(true);
    Step("Return on the last row, which adds one", 2, 1, press(VK_RETURN));
    sheet_.cancelled = {5};
    Step("an edit that the dialog cancels", 0, 0, press(VK_RETURN));
    sheet_.cancelled.clear();
    grid_.SetAllowUpdate(false);
    Step("an edit of a table that is not updated", 0, 1, press(VK_RETURN));
    grid_.SetAllowUpdate(true);
    Step("Escape", 0, 0, press(VK_ESCAPE));
    sheet_.cancelled = {26};
    Step("a key that the dialog holds", 0, 0, press(VK_DELETE));
    sheet_.cancelled.clear();
    sheet_.on = [this](int event) {
      if (event == 1) grid_.RemoveAll();
    };
    Step("a dialog that empties the table", 1, 1, press(VK_RETURN));
    sheet_.on = nullptr;
  }
  std::vector<std::string> Trace() const { return trace_; }

 private:
  BehaviourDriver& driver_;
  EventSheet sheet_;
  CBcgTrueDbGridCtrl grid_;
  std::vector<std::string> trace_;
  int number_ = 0;
};

}  // namespace

std::vector<std::string> PlayBridge(BehaviourDriver& driver) {
  BridgeScene scene(driver);
  scene.Play();
  return scene.Trace();
}

std::vector<std::string> KeptBridgeTrace() {
  return {std::begin(kBridgeTrace), std::end(kBridgeTrace)};
}

}  // namespace lorv_test
