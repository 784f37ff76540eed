#include "tests/support/event_sheet.h"

#include "framework/values/variant_text.h"
#include "grid/events/event_table.h"

namespace lorv_test {

BEGIN_EVENTSINK_MAP(EventSheet, CWnd)
ON_EVENT(EventSheet, kTableId, -600, OnClick, VTS_NONE)
ON_EVENT(EventSheet, kTableId, -601, OnDblClick, VTS_NONE)
ON_EVENT(EventSheet, kTableId, -602, OnKeyDownTdbgrid, VTS_PI2 VTS_I2)
ON_EVENT(EventSheet, kTableId, -603, OnKeyPress, VTS_PI2)
ON_EVENT(EventSheet, kTableId, -604, OnKeyUpTdbgrid, VTS_PI2 VTS_I2)
ON_EVENT(EventSheet, kTableId, -605, OnMouseDownTdbgrid, VTS_I2 VTS_I2 VTS_I4 VTS_I4)
ON_EVENT(EventSheet, kTableId, -606, OnMouseMove, VTS_I2 VTS_I2 VTS_I4 VTS_I4)
ON_EVENT(EventSheet, kTableId, -607, OnMouseUpGrid, VTS_I2 VTS_I2 VTS_I4 VTS_I4)
ON_EVENT(EventSheet, kTableId, 1, OnAfterColUpdate, VTS_I2)
ON_EVENT(EventSheet, kTableId, 4, OnAfterUpdate, VTS_NONE)
ON_EVENT(EventSheet, kTableId, 5, OnBeforeColUpdate, VTS_I2 VTS_PVARIANT VTS_PI2)
ON_EVENT(EventSheet, kTableId, 8, OnBeforeUpdateGrid, VTS_PI2)
ON_EVENT(EventSheet, kTableId, 9, OnColResizeTable, VTS_I2 VTS_PI2)
ON_EVENT(EventSheet, kTableId, 10, OnHeadClickGrid, VTS_I2)
ON_EVENT(EventSheet, kTableId, 11, OnRowColChange, VTS_PVARIANT VTS_I2)
ON_EVENT(EventSheet, kTableId, 13, OnRowResize, VTS_PI2)
ON_EVENT(EventSheet, kTableId, 15, OnSelChangeGrid, VTS_PI2)
ON_EVENT(EventSheet, kTableId, 16, OnChange, VTS_NONE)
ON_EVENT(EventSheet, kTableId, 25, OnAfterColEdit, VTS_I2)
ON_EVENT(EventSheet, kTableId, 26, OnBeforeColEdit, VTS_I2 VTS_I2 VTS_PI2)
ON_EVENT(EventSheet, kTableId, 28, OnFirstRowChange, VTS_I2)
ON_EVENT(EventSheet, kTableId, 29, OnLeftColChange, VTS_I2)
ON_EVENT(EventSheet, kTableId, 30, OnFormatText, VTS_I2 VTS_PVARIANT VTS_PVARIANT)
ON_EVENT(EventSheet, kTableId, 32, OnDragCell, VTS_I2 VTS_PVARIANT VTS_I2)
ON_EVENT(EventSheet, kTableId, 33, OnButtonClickGrid, VTS_I2)
ON_EVENT(EventSheet, kTableId, 34, OnComboSelect, VTS_I2)
ON_EVENT(EventSheet, kTableId, 36, OnFetchCellStyle, VTS_I2 VTS_I2 VTS_PVARIANT VTS_I2 VTS_DISPATCH)
ON_EVENT(EventSheet, kTableId, 38, OnPaintGrid, VTS_NONE)
ON_EVENT(EventSheet, kTableId, 40, OnPostEvent, VTS_I2)
ON_EVENT(EventSheet, kTableId, 49, OnFetchCellTipsGrid, VTS_I2 VTS_I2 VTS_I4 VTS_PBSTR VTS_BOOL VTS_DISPATCH)
ON_EVENT(EventSheet, kTableId, 51, OnFetchRowStyle, VTS_I2 VTS_PVARIANT VTS_DISPATCH)
ON_EVENT(EventSheet, kTableId, 55, OnOwnerDrawCell,
         VTS_I4 VTS_VARIANT VTS_I2 VTS_I2 VTS_I2 VTS_I2 VTS_I2 VTS_I2 VTS_PI2)
ON_EVENT(EventSheet, kTableId, 57, OnOLEDragDrop, VTS_DISPATCH VTS_PI4 VTS_PI2 VTS_PI2 VTS_PR4 VTS_PR4)
ON_EVENT(EventSheet, kTableId, 58, OnOLEDragOver,
         VTS_DISPATCH VTS_PI4 VTS_PI2 VTS_PI2 VTS_PR4 VTS_PR4 VTS_PI2)
ON_EVENT(EventSheet, kTableId, 63, OnBeforeRowColChange, VTS_PI2)
ON_EVENT(EventSheet, kTableId, 75, OnFilterChange, VTS_NONE)
END_EVENTSINK_MAP()

void EventSheet::OnlyHear(const std::set<int>& wanted) {
  muted.clear();
  for (const lorv::EventKind& kind : lorv::kEventKinds)
    if (wanted.count(kind.id) == 0) muted.insert(kind.id);
}

std::string EventSheet::Text(std::initializer_list<long> numbers) {
  std::string text;
  for (const long number : numbers) text += (text.empty() ? "" : ",") + std::to_string(number);
  return text;
}

void EventSheet::Say(int event, const std::string& arguments) {
  if (muted.count(event) == 0) {
    std::string note(lorv::FindEvent(event)->name);
    if (!arguments.empty()) note += " " + arguments;
    notes.push_back(note);
  }
  const auto copy = on;
  if (copy) copy(event);
}

void EventSheet::SayWithAnswer(int event, const std::string& arguments, short& cancel) {
  if (cancelled.count(event) != 0) cancel = 1;
  Say(event, arguments);
}

void EventSheet::SayKey(int event, short& key, short shift) {
  const std::string arguments = Text({key, shift});
  if (on_key) on_key(key);
  Say(event, arguments);
}

void EventSheet::OnBeforeColUpdate(short column, VARIANT* old, short* cancel) {
  const std::string arguments = Text({column}) + " \"" + VariantToText(*old).ToUtf8() + "\"";
  if (on_old) on_old(*old);
  SayWithAnswer(5, arguments, *cancel);
}

void EventSheet::OnFetchCellStyle(short condition, short split, VARIANT* bookmark, short column,
                                  LPDISPATCH style) {
  const std::string object = style == nullptr ? "" : " object";
  Say(36, Text({condition, split, bookmark->lVal, column}) + object);
}

void EventSheet::OnFetchRowStyle(short split, VARIANT* bookmark, LPDISPATCH style) {
  const std::string object = style == nullptr ? "" : " object";
  Say(51, Text({split, bookmark->lVal}) + object);
}

void EventSheet::OnFetchCellTipsGrid(short split, short column, long row, BSTR* text, BOOL full,
                                     LPDISPATCH style) {
  const bool empty = *text != nullptr && SysStringLen(*text) == 0;
  if (!tip.IsEmpty()) {
    SysFreeString(*text);
    *text = SysAllocString(tip);
  }
  const std::string object = style == nullptr && empty ? "" : " object";
  Say(49, Text({split, column, row, full}) + object);
}

}  // namespace lorv_test
