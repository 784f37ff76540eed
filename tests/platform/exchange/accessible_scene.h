#pragma once

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "framework/ports/desktop_port.h"
#include "framework/windows/controls.h"
#include "tests/support/print.h"

// What the suites of accessible objects look at, and how.
namespace lorv_test {

// An object as a reader of that desktop sees it, in our own words.
struct SeenObject {
  bool there = false;
  lorv::AccessRole role = lorv::AccessRole::Pane;
  CString name;
  CString value;
  unsigned state = 0;
  CRect place;
  int children = 0;
  bool Has(unsigned bits) const { return (state & bits) == bits; }
};

// An object that a reader holds, by whatever interface its desktop has.
class HeldObject {
 public:
  HeldObject() = default;
  HeldObject(const HeldObject&) = delete;
  HeldObject& operator=(const HeldObject&) = delete;
  virtual ~HeldObject() = default;
  using Ref = std::unique_ptr<HeldObject>;

  virtual SeenObject See() const = 0;
  virtual Ref Child(int index) const = 0;
  virtual Ref Parent() const = 0;
  virtual Ref At(POINT screen) const = 0;
  virtual Ref Focused() const = 0;
  virtual std::vector<Ref> Selected() const = 0;
  virtual bool SetValue(const CString& value) = 0;
  virtual void DoFirstAction() = 0;
};

// A reader of one kind of desktop.
class AccessReader {
 public:
  AccessReader() = default;
  AccessReader(const AccessReader&) = delete;
  AccessReader& operator=(const AccessReader&) = delete;
  virtual ~AccessReader() = default;
  virtual HeldObject::Ref Of(HWND window) = 0;
  // What was reported of that window since, as "focus 6" with the object's number.
  virtual std::vector<std::string> TakeEvents(HWND window) = 0;
};

inline const char* NameOfEvent(lorv::AccessEvent event) {
  constexpr const char* kNames[] = {"focus", "name", "value", "selection", "state", "structure"};
  return kNames[static_cast<int>(event)];
}

// A table of quantities that draws itself: 3 columns, cells of 60 x 20 behind headers of 30 and 20.
class CellsWindow : public CWnd, public lorv::AccessibleCells {
 public:
  SIZE count = {3, 4};
  lorv::CellAddress current = {1, 1};
  std::map<std::pair<int, int>, CString> texts;
  std::vector<std::string> done;
  std::vector<lorv::CellAddress> chosen = {{1, 1}, {2, 0}};

  lorv::AccessibleCells* GetAccessibleCells() override { return this; }
  SIZE CellCount() const override { return count; }
  CString TableName() const override { return _T("构件"); }
  CString ColumnHeader(int column) const override {
    const CString names[] = {_T("名称"), _T("长度"), _T("计算")};
    return column < 3 ? names[column] : CString(_T("列"));
  }
  CString RowHeader(int row) const override {
    CString text;
    text.Format(_T("%d"), row + 1);
    return text;
  }
  CString CellText(lorv::CellAddress cell) const override {
    const auto found = texts.find({cell.row, cell.column});
    return found == texts.end() ? CString() : found->second;
  }
  // The first column cannot be written, the last one is a check box.
  unsigned CellState(lorv::CellAddress cell) const override {
    unsigned state = lorv::kAccessFocusable | lorv::kAccessSelectable;
    if (cell == current) state |= lorv::kAccessFocused;
    for (const lorv::CellAddress at : chosen)
      if (cell == at) state |= lorv::kAccessSelected;
    if (cell.column == 0) state |= lorv::kAccessReadOnly;
    if (cell.column == 2) state |= lorv::kAccessCheckable;
    if (cell.column == 2 && cell.row == 0) state |= lorv::kAccessChecked;
    if (cell.row == 3 && cell.column == 1) state |= lorv::kAccessExpandable | lorv::kAccessExpanded;
    return state;
  }
  RECT CellPlace(lorv::CellAddress cell) const override {
    if (cell.row > 3) return {0, 0, 0, 0};
    const int left = cell.column < 0 ? 0 : 30 + cell.column * 60;
    const int top = cell.row < 0 ? 0 : 20 + cell.row * 20;
    return {left, top, left + (cell.column < 0 ? 30 : 60), top + 20};
  }
  lorv::CellAddress CellAt(POINT at) const override {
    if (at.x >= 30 + count.cx * 60 || at.y >= 20 + count.cy * 20) return {};
    return {at.y < 20 ? -1 : static_cast<int>((at.y - 20) / 20),
            at.x < 30 ? -1 : static_cast<int>((at.x - 30) / 60)};
  }
  lorv::CellAddress CurrentCell() const override { return current; }
  std::vector<lorv::CellAddress> SelectedCells(std::size_t /*most*/) const override { return chosen; }
  bool SetCellText(lorv::CellAddress cell, const CString& text) override {
    if (text == _T("throw")) throw std::runtime_error("refused");
    texts[{cell.row, cell.column}] = text;
    return true;
  }
  bool SelectCell(lorv::CellAddress cell, bool on) override {
    chosen.clear();
    if (on) chosen.push_back(cell);
    return true;
  }
  std::vector<lorv::AccessAction> CellActions(lorv::CellAddress cell) const override {
    if (cell.column == 0 || cell.row < 0) return {};
    return {cell.column == 2 ? lorv::AccessAction::Toggle : lorv::AccessAction::Edit};
  }
  bool DoAtCell(lorv::CellAddress cell, lorv::AccessAction action) override {
    done.push_back((action == lorv::AccessAction::Edit ? "edit " : "toggle ") + std::to_string(cell.row));
    return true;
  }
};

// A frame that notes what its controls report.
class NotedFrame : public CWnd {
 public:
  std::vector<std::string> reported;

 protected:
  BOOL OnCommand(WPARAM w, LPARAM l) override {
    reported.push_back(std::to_string(LOWORD(w)) + ":" + std::to_string(HIWORD(w)));
    return CWnd::OnCommand(w, l);
  }
};

// The windows of the suite: labels before an edit, a list, a choice; buttons; a table.
class AccessScene : public testing::Test {
 protected:
  explicit AccessScene(std::unique_ptr<lorv::Desktop> desktop)
      : desktop_(std::move(desktop)), scope_(*desktop_) {
    frame.Create(nullptr, _T("楼层"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 700, 500), nullptr,
                 0);
    constexpr DWORD kSeen = WS_CHILD | WS_VISIBLE;
    label.Create(_T("长度(&L)"), kSeen, CRect(10, 10, 90, 30), &frame, 1);
    edit.Create(kSeen | WS_TABSTOP | ES_AUTOHSCROLL, CRect(100, 10, 200, 32), &frame, 2);
    shut.Create(kSeen | ES_READONLY | ES_AUTOHSCROLL, CRect(210, 10, 300, 32), &frame, 3);
    secret.Create(kSeen | ES_PASSWORD | ES_AUTOHSCROLL, CRect(310, 10, 400, 32), &frame, 4);
    press.Create(_T("&Press && go"), kSeen | WS_TABSTOP | BS_PUSHBUTTON, CRect(10, 40, 90, 64), &frame, 5);
    check.Create(_T("凸出"), kSeen | WS_TABSTOP | BS_AUTOCHECKBOX, CRect(100, 40, 200, 64), &frame, 6);
    radio.Create(_T("左"), kSeen | BS_AUTORADIOBUTTON, CRect(210, 40, 300, 64), &frame, 7);
    box.Create(_T("组"), kSeen | BS_GROUPBOX, CRect(310, 40, 400, 64), &frame, 8);
    list.Create(kSeen | WS_TABSTOP | LBS_NOTIFY, CRect(10, 70, 90, 150), &frame, 9);
    choice.Create(kSeen | WS_TABSTOP | CBS_DROPDOWNLIST, CRect(100, 70, 200, 200), &frame, 10);
    cells.Create(nullptr, nullptr, kSeen, CRect(10, 160, 400, 300), &frame, 11);
    for (const LPCTSTR item : {_T("C20"), _T("C25"), _T("C30")}) list.AddString(item), choice.AddString(item);
    cells.texts[{1, 1}] = _T("3600");
    Settle();
    frame.reported.clear();
  }
  void Settle() {
    for (int i = 0; i < 300 && desktop_->Pump(false); ++i) {
    }
  }
  POINT OnCells(int x, int y) const {
    POINT at = {x, y};
    cells.ClientToScreen(&at);
    return at;
  }
  // Dispatches messages until it is so: some do what they are asked a moment later.
  template <class Done>
  bool DispatchUntil(Done is_so) {
    const DWORD start = desktop_->Ticks();
    for (int i = 0; i < 1000000 && !is_so() && desktop_->Ticks() - start < 5000; ++i) desktop_->Pump(false);
    return is_so();
  }

  std::unique_ptr<lorv::Desktop> desktop_;
  lorv::ScopedDesktop scope_;
  NotedFrame frame;
  CStatic label;
  CEdit edit, shut, secret;
  CButton press, check, radio, box;
  CListBox list;
  CComboBox choice;
  CellsWindow cells;
};

}  // namespace lorv_test
