#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "framework/windows/event_sink.h"
#include "framework/windows/window.h"

// A window whose event sink hears every event of a table: it notes each with its arguments, and answers as
// the test wants. Its handlers are the ones that a dialog of the suite writes.
namespace lorv_test {

constexpr UINT kTableId = 7;

class EventSheet : public CWnd {
 public:
  std::vector<std::string> notes;
  std::set<int> muted;          // events that are not noted
  std::set<int> cancelled;      // events that are answered with a cancel
  std::function<void(int)> on;  // anything that a handler does; the sheet may be gone afterwards
  std::function<void(VARIANT&)> on_old;
  std::function<void(short&)> on_key;
  CString tip;

  std::vector<std::string> Taken() { return std::exchange(notes, {}); }
  // The noise of moving the mouse and painting.
  void MuteNoise() { muted = {-606, 13, 28, 29, 36, 38, 49, 51}; }
  void OnlyHear(const std::set<int>& wanted);

 protected:
  void OnClick() { Say(-600, ""); }
  void OnDblClick() { Say(-601, ""); }
  void OnKeyDownTdbgrid(short* key, short shift) { SayKey(-602, *key, shift); }
  void OnKeyPress(short* key) { Say(-603, Text({*key})); }
  void OnKeyUpTdbgrid(short* key, short shift) { Say(-604, Text({*key, shift})); }
  void OnMouseDownTdbgrid(short button, short shift, long x, long y) {
    Say(-605, Text({button, shift, x, y}));
  }
  void OnMouseMove(short button, short shift, long x, long y) { Say(-606, Text({button, shift, x, y})); }
  void OnMouseUpGrid(short button, short shift, long x, long y) { Say(-607, Text({button, shift, x, y})); }
  void OnAfterColUpdate(short column) { Say(1, Text({column})); }
  void OnAfterUpdate() { Say(4, ""); }
  void OnBeforeColUpdate(short column, VARIANT* old, short* cancel);
  void OnBeforeUpdateGrid(short* cancel) { SayWithAnswer(8, "", *cancel); }
  void OnColResizeTable(short column, short* cancel) { SayWithAnswer(9, Text({column}), *cancel); }
  void OnHeadClickGrid(short column) { Say(10, Text({column})); }
  void OnRowColChange(VARIANT* bookmark, short column) { Say(11, Text({bookmark->lVal, column})); }
  void OnRowResize(short* cancel) { SayWithAnswer(13, "", *cancel); }
  void OnSelChangeGrid(short* cancel) { SayWithAnswer(15, "", *cancel); }
  void OnChange() { Say(16, ""); }
  void OnAfterColEdit(short column) { Say(25, Text({column})); }
  void OnBeforeColEdit(short column, short key, short* cancel) {
    SayWithAnswer(26, Text({column, key}), *cancel);
  }
  void OnFirstRowChange(short row) { Say(28, Text({row})); }
  void OnLeftColChange(short column) { Say(29, Text({column})); }
  void OnFormatText(short column, VARIANT* /*bookmark*/, VARIANT* /*text*/) { Say(30, Text({column})); }
  void OnDragCell(short split, VARIANT* bookmark, short column) {
    Say(32, Text({split, bookmark->lVal, column}));
  }
  void OnButtonClickGrid(short column) { Say(33, Text({column})); }
  void OnComboSelect(short column) { Say(34, Text({column})); }
  void OnFetchCellStyle(short condition, short split, VARIANT* bookmark, short column, LPDISPATCH style);
  void OnPaintGrid() { Say(38, ""); }
  void OnPostEvent(short code) { Say(40, Text({code})); }
  void OnFetchCellTipsGrid(short split, short column, long row, BSTR* text, BOOL full, LPDISPATCH style);
  void OnFetchRowStyle(short split, VARIANT* bookmark, LPDISPATCH style);
  void OnOwnerDrawCell(long /*dc*/, const VARIANT& /*bookmark*/, short column, short /*left*/, short /*top*/,
                       short /*right*/, short /*bottom*/, short /*state*/, short* /*done*/) {
    Say(55, Text({column}));
  }
  void OnOLEDragDrop(LPDISPATCH /*data*/, LONG* /*effect*/, short* /*button*/, short* /*shift*/, float* /*x*/,
                     float* /*y*/) {
    Say(57, "");
  }
  void OnOLEDragOver(LPDISPATCH /*data*/, LONG* /*effect*/, short* /*button*/, short* /*shift*/, float* /*x*/,
                     float* /*y*/, short* /*state*/) {
    Say(58, "");
  }
  void OnBeforeRowColChange(short* cancel) { SayWithAnswer(63, "", *cancel); }
  void OnFilterChange() { Say(75, ""); }

  DECLARE_EVENTSINK_MAP()

 private:
  static std::string Text(std::initializer_list<long> numbers);
  // Notes the event, gives the answer that is asked for, and lets the test act, which ends the sheet's turn.
  void SayWithAnswer(int event, const std::string& arguments, short& cancel);
  void SayKey(int event, short& key, short shift);
  void Say(int event, const std::string& arguments);
};

}  // namespace lorv_test
