#pragma once

#include <array>
#include <cstdarg>
#include <vector>

#include "grid/basic/basic_grid.h"
#include "grid/bridge/event_types.h"
#include "grid/records/record_set.h"

namespace lorv {

constexpr UINT kMessagePostEvent = 14847;  // posted by a grid to itself: w is a code of the dialog's

// What PointAt answers.
enum GridPlace : int { kPlaceNowhere = 0, kPlaceRowHeader = 4, kPlaceColumnHeader = 6, kPlaceCells = 9 };

// Numbers in the last column of a table that keeps a state for each row; bits of one number.
enum RowFlag : long { kRowDeleted = 2, kRowChanged = 4 };

}  // namespace lorv

// The suite's grid in the terms of the TrueDBGrid control: its events come to the event sink of the parent,
// with the numbers and arguments of lorv::kEventKinds, and its methods work on the grid's own rows.
//
// Events are raised and answered within the call that they report. A handler answers through what it gets by
//   pointer; what it raises is dropped; it may rebuild the table, end the grid or its parent, or run a
//   dialog. Without a parent there are no events.
// Units: rows and columns count from 0; a bookmark is the number of a row as VT_I4 (VT_I2 is taken too);
//   columns and keys go through 16 bits in events; points are pixels of the client area.
// Edges: bad rows, columns and dimensions are answered with -1, 0, an empty value or false; setters pass them
//   over. Tables keep their values in the grid: SetDataSource copies, once.
// One thread: that of the user interface.
//
//   grid.InsertColumns(_T("name,qty"), _T(""), 0);  grid.ReDim(3, 2)
//   grid.GetUpperBound(1)  gives 2, grid.Find(0, 0, _variant_t(_T("x")), 0, 1, 0)  -1
class COMM_LORV_API CBcgTrueDbGridCtrl : public CBCGPBasicGridCtrl {
  DECLARE_DYNCREATE(CBcgTrueDbGridCtrl)
 public:
  CBcgTrueDbGridCtrl();
  ~CBcgTrueDbGridCtrl() override;

  // The table as the control has it.
  void ReBind() { AdjustLayout(); }
  void ReBindAndRestoreGridState(int /*always_ignored*/) { AdjustLayout(); }
  // The grid shows its own values: there is nothing to fetch again or to write back.
  void Refresh() {}
  void Update() {}
  int Append() { return AddRow(TRUE); }
  // Empties the table to that many rows and columns; columns that it has keep name and width, new ones are 80
  // wide. Without columns nothing happens; rows below 0 are none.
  void ReDim(int rows, int columns);
  // Dimension 1 is the rows, 2 the columns; any other gives 0 and -1.
  int GetCount(int dimension) const;
  int GetUpperBound(int dimension) const { return GetCount(dimension) - 1; }
  int GetColCount() const { return GetColumnCount(); }
  // Copies all records: values of as many fields as the grid has columns. A grid without columns gets one a
  // field, and its rows stay blank this first time. The set stands at its first record afterwards; one that
  // stands at its end leaves the table empty. Null: nothing happens.
  void SetDataSource(CERecordset* records);

  // Where the user is. Asking for the bookmark of a row moves the selection there.
  int GetCurEditRow() const { return GetCurrentRow(); }
  // The place of the current row on the screen, 0 for the first one there; -1 where it is not to be seen.
  int GetRow() const;
  CBCGPGridRow* GetRow(int row) const override;
  _variant_t GetBookmark() const;
  void SetBookmark(const VARIANT& bookmark);
  _variant_t RowBookmark(int row);
  std::vector<int> GetSelBookmarks() const;
  int PointAt(int x, int y) const;

  // Searches a column for the first cell that compares so with the value, which stands on the left; -1: none.
  // Direction 0 goes down from `start`, 1 up. Comparisons: 1 equal, 2 greater, 3 greater or equal, 4 less, 5
  // less or equal, 6 different; they are of texts, numbers too, and never hold between different kinds of
  // values. Flags 10 and 13 make letter case count.
  int Find(int start, int column, const VARIANT& value, int direction, int comparison, int flags) const;
  // The first row whose cell equals the value.
  int FindVal(int column, const VARIANT& value) const;

  // Which columns ask for the style of their cells while a row is drawn, and whether rows do. Column 31 and
  // each 32nd after it has no switch and never asks.
  void SetFetchRowStyle(bool on) { fetch_row_style_ = on; }
  void SetFetchColumnStyle(int column, bool on) { fetch_columns_.Set(column, on); }
  void SetFetchColumnsStyle(const std::vector<int>& columns, bool on);
  void SetFetchColumnsStyle(const CUIntArray& columns, bool on);
  void SetFetchStyle(bool on) { fetch_columns_.SetAll(on); }

  // With updates off each edit is reported and taken back.
  void SetAllowUpdate(bool on) { allow_update_ = on; }
  void SetLocked(int row, int column, bool locked);
  // Of a cell with a list.
  void SetDropDownList(int row, int column, bool read_only);
  // Cuts the zeros at the end of a number's decimals.
  void ChangeValueItem(CString& text) const;
  COLORREF GetBackColor() const { return GetBkColor(); }
  // Marks the row as changed, and reports whether it is deleted: by the number in its last column. A last
  // cell that holds no number stays as it is, and its row is not deleted.
  void Change(int row);
  bool IsDelete(int row) const;
  // The way out of a handler that must not change the table: event 40 comes with the code once it has ended.
  void PostMsg(int code) { PostMessage(lorv::kMessagePostEvent, static_cast<WPARAM>(code)); }

  void OnFilterBarChanged() override;
  void OnItemChanged(CBCGPGridItem* item, int row, int column) override;
  BOOL OnBeginDrag(CPoint point) override;
  BOOL EditItem(CBCGPGridRow* row, const CPoint* point = nullptr) override;
  BOOL OnClickButton(CPoint point) override;
  BOOL EndEditItem(BOOL update = TRUE) override;
  void OnComboItemSelect() override;

 protected:
  BOOL PreTranslateMessage(MSG* message) override;
  BOOL OnDrawItem(CDC* dc, CBCGPGridRow* row) override;
  void OnDraw(CDC* dc) override;
  void OnDrawRowHeaderItem(CDC* dc, CBCGPGridRow* row) override;
  void OnHeaderColumnClick(int column) override;
  void OnUpdateVScrollPos(int offset, int previous) override;
  void OnUpdateHScrollPos(int offset, int previous) override;
  BOOL OnInplaceEditKeyDown(CBCGPGridRow* row, MSG* message) override;
  void OnSelChanging(const CBCGPGridRange& range, BOOL selected) override;
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override;
  BOOL SetHeaderItemWidth(int column, int width) override;
  void TrackToolTip(CPoint point) override;
  void OnColumnMoved(int from, int to) override;

  void OnLButtonDown(UINT flags, CPoint point);
  void OnRButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnRButtonUp(UINT flags, CPoint point);
  void OnMouseMove(UINT flags, CPoint point);
  void OnChar(UINT unit, UINT repeat, UINT flags);
  void OnKeyUp(UINT key, UINT repeat, UINT flags);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  LRESULT OnPostMsg(WPARAM code, LPARAM l);

  DECLARE_MESSAGE_MAP()

 private:
  // Notify the parent. `types` and the arguments are those of lorv::kEventKinds; the grid may be gone
  // afterwards.
  void FireEvent(DISPID event, const BYTE* types, ...);
  void FireEventV(DISPID event, const BYTE* types, va_list arguments);
  // The same for an event of the table, whose types the compiler compares with those of the arguments.
  template <int event, class... Values>
  void Raise(Values... values);

  void MouseDownToDbGrid(UINT flags, CPoint point);
  void MouseUpToDbGrid(UINT flags, CPoint point);
  bool ReportOfKey(short key);
  void GiveBack(const CBCGPGridItemID& id, const _variant_t& value);
  int CurrentColumn() const;
  void FitColumns(int columns);
  void TakeRecords(CERecordset& records, int fields);
  // True where the row flags of the last column are a number.
  bool RowFlags(int row, long& flags) const;
  static bool ValueCompare(long comparison, bool match_case, const VARIANT& a, const VARIANT& b);

  // In the order that the suite keeps them in.
  int first_row_seen_ = 0;
  int left_column_seen_ = 0;
  int row_height_seen_ = 16;
  int current_row_seen_ = -1;
  int current_column_seen_ = -1;
  _variant_t old_value_;  // of the current cell, when it became current
  lorv::ColumnMask fetch_columns_;
  bool fetch_row_style_ = false;
  bool allow_update_ = true;
};

template <int event, class... Values>
void CBcgTrueDbGridCtrl::Raise(Values... values) {
  static constexpr lorv::EventKind kKind = lorv::KnownEvent(event);
  static_assert(kKind.id == event && lorv::EventTakes<Values...>(kKind), "not the arguments of the event");
  // Ended by 0, which nine arguments in the table are not.
  static constexpr auto kTypes = lorv::EndedTypes(kKind);
  FireEvent(event, kTypes.data(), values...);
}
