#pragma once

#include <unordered_set>
#include <vector>

#include "framework/collections/list.h"
#include "framework/collections/map.h"
#include "framework/collections/string_array.h"
#include "grid/columns/column_mask.h"
#include "grid/editing/key_translation.h"
#include "gridcore/columns/columns_info_ex.h"
#include "gridcore/control/grid_control.h"
#include "gridcore/geometry/column_view.h"

class CBCGPGridMultiLineRow;

namespace lorv {

constexpr UINT kMessageNavigate = 1025;  // posted by a grid to itself: w is the direction to move on in

constexpr COLORREF kSelectedRowColour = RGB(200, 230, 230);
constexpr COLORREF kReadOnlyCellColour = RGB(210, 210, 210);
constexpr COLORREF kReadOnlyColour = RGB(234, 234, 234);
constexpr COLORREF kWhite = RGB(255, 255, 255);

}  // namespace lorv

// The suite's grid: columns declared by texts, one height for all rows, hidden rows, grey read-only cells, a
// coloured selected row, and a keyboard for entering data cell after cell.
//
// Units: rows and columns count from 0, widths and heights are pixels, colours 0x00BBGGRR with -1 for none.
// Edges: bad rows and columns are answered with null, an empty value, -1, 0 or false; setters pass them over.
//   Whatever needs a row or a count asks the virtual GetRow and GetRowCount, so that a descendant may show
//   fewer rows than there are.
// Usable once its window exists; without one it keeps a table that nobody sees. Rows and cells are the
//   grid's. One thread: that of the user interface.
//
//   grid.InsertColumns(_T("梁,板"), _T("100"), 0);  grid.AppendRows(2);
//   grid.SetValue(0, 1, _variant_t(_T("C30")), TRUE);  grid.GetColsWidth()  gives "100,80"
class COMM_LORV_API CBCGPBasicGridCtrl : public CBCGPGridCtrl {
  DECLARE_DYNCREATE(CBCGPBasicGridCtrl)
 public:
  CBCGPBasicGridCtrl();
  ~CBCGPBasicGridCtrl() override;

  // Columns.
  const CBCGPGridColumnsInfo& GetColumnsInfo() const override { return columns_info_; }
  CBCGPGridColumnsInfo& GetColumnsInfo() override { return columns_info_; }
  // Columns at the end; a width of 0 hides the column of that number within this call, which on a grid that
  // has columns already is an older one. A row height above 0 becomes that of all rows.
  void InsertColumns(const CString& names, const CString& widths, int row_height);
  int AddColumn(LPCTSTR name, double width, const CRuntimeClass* item_class);
  int DeleteColumn(int column);
  bool SetColsWidth(const CString& widths);
  CString GetColsWidth();

  // Rows.
  long AppendRows(int count);
  long InsertRows(int position, int count);
  long DeleteRows(int position, int count);
  int RemoveCurRow();
  int DeleteSelectedRows();
  // Hidden rows keep their numbers; the screen follows with the next layout.
  void SetRowVisible(int row, bool visible);
  bool IsRowHidden(int row) const { return hidden_index_.count(row) != 0; }
  using CBCGPGridCtrl::SetRowHeight;
  void SetRowHeight() override;
  void SetRowHeight(int height) { adjusted_row_height_ = height; }

  // Cells.
  CBCGPGridItem* GetItem(int row, int column) const;
  int ReplaceItem(int row, int column, CBCGPGridItem* item, BOOL keep_value);
  _variant_t GetValue(int row, int column) const;
  // Of the current row; without one, or without the cell, the number 0.
  _variant_t GetValue(int column) const;
  int SetText(const CString& text);
  CString GetText() const;
  int ClearAll();
  int AddStringToList(CBCGPGridItem* item, const CString* strings, int count);
  int AddStringToList(CBCGPGridItem* item, const CStringArray& strings);

  // Where the user is.
  void SetRow(int row);
  void SetCol(int column);
  void SetFirstRow(int row);
  int GetFirstRow() const;
  short GetVisibleRows() const;
  int GetCurrentRow() const { return GetCurSelItemID().m_nRow; }
  int GetCurRowIndex() const { return GetCurrentRow(); }
  int GetCol() const { return GetCurSelItemID().m_nColumn; }
  void GetCurSelItemIndex(int& row, int& column) const;
  void MoveFirst();
  void MoveLast();
  void MoveNext();
  void MovePrevious();
  // Nonzero: a row was hit; the column is -1 beside all of them. Else both are -1.
  int CellContaining(int x, int y, int& row, int& column) const;
  int CellContaining(CPoint point, int& row, int& column) const {
    return CellContaining(static_cast<int>(point.x), static_cast<int>(point.y), row, column);
  }
  // Ascending, each once; how many.
  long long GetSelectRows(CArray<int, int>& rows) const;
  long long GetSelectRows(CUIntArray& rows) const;
  long long GetSelectColumns(CArray<int, int>& columns) const;
  long long GetSelectColumns(CUIntArray& columns) const;
  long long GetUnionCells(CList<CBCGPGridRange, const CBCGPGridRange&>& blocks) const;

  // Behaviour and looks of cells.
  void SetColumnReadOnly(int column, bool on);
  void SetItemReadOnly(int row, int column, bool on);
  void SetRowReadOnly(int row, bool on);
  void SetColReadOnly(int column, bool on);
  void SetColumnColor(int column, COLORREF colour);
  void SetRowBackgroundColor(int row, COLORREF colour, bool force);
  void SetRowTextColor(int row, COLORREF colour);
  bool SetOddEvenColor();
  bool SetReadOnlyColor();
  void SetSelRowBKColor(COLORREF colour) { selected_row_colour_ = colour; }
  COLORREF GetSelRowBKColor() const { return selected_row_colour_; }
  bool IsSelRowBKColorEnabled() const { return selected_row_colour_ != lorv::kNoColour; }
  void InitHeaderColor();
  void SetBoldItem(int row, int column, bool bold);
  void SetRowBoldText(int row, bool bold);
  bool SetButton(int row, int column, bool on);
  void SetColumnButton(int column, bool on);

  // Lines.
  void EnableMultiLineHeader() { multi_line_header_ = true; }
  void SetHeaderLineCount(int lines);
  CBCGPGridHeaderItem* AddHeaderItem(const CArray<int, int>* columns, const CArray<int, int>* lines,
                                     CBCGPGridHeaderItem* parent, LPCTSTR text, int align, int flag);
  CBCGPGridRow* CreateMultiLineRow(int lines) override;
  int AddMultiLineRow(int max_lines, int min_lines);
  void SetMultiLineItem(int row, int column, int lines);

  // Switches.
  void SetShortCut(bool on) { shortcut_ = on; }
  void SetNotShortCutCol(const CUIntArray& columns) { no_shortcut_.Copy(columns); }
  void SetReturnToLeft(emReturnStyle style) { return_style_ = style; }
  emReturnStyle GetReturnStyle() const { return return_style_; }
  void SetTabToLeft(emReturnStyle style) { tab_style_ = style; }
  void SetReturnAddNewRow(bool on) { return_adds_row_ = on; }
  bool GetReturnAddNewRow() const { return return_adds_row_; }
  void SetDefaultSel(bool keep) { keep_selection_ = keep; }
  void SetBoldColName(bool on) { bold_names_ = on; }
  void SetTreeGrid(bool on) { tree_ = on; }
  void SetAdjustColWidth(bool on) { adjust_widths_ = on; }
  void SetDropdownShowOffset(bool on) { list_always_menu_ = on; }
  // Whether the mouse reaches the cells; of one column, or of all of them. Column 31 and each 32nd after it
  // has no switch of its own and stays as it is.
  void SetAllowFocus(bool on) { click_mask_.SetAll(!on); }
  void SetAllowFocus(int column, bool on) { click_mask_.Set(column, !on); }
  // Whether the corner of a selection can be dragged, to fill the cells beside it.
  void SetDragCopyFill(bool on) { drag_fill_ = on; }

  // The tip of the cell under the point, with that text where there is one. True: what is shown is now right
  // for the point; false: nothing was shown, or what stands there stays.
  bool ShowCellToolTips(CPoint point, const CString& text);

  // Editing.
  void SetCurEditingItem(int row, int column);
  // A long list of options as a menu at the point; false: the list of the editor is the right one.
  bool ShowItemStringList(CPoint point);
  void ShowDlg(CWnd* window);

  BOOL EndEditItem(BOOL update = TRUE) override;
  BOOL OnClickButton(CPoint point) override;
  void AdjustLayout() override;
  int GetExtraHierarchyOffset() const override;
  int GetHierarchyLevelOffset() const override { return GetRowHeight(); }
  int GetLeftMarginWidth() const override { return GetRowHeight(); }
  int OnGetColumnAutoSize(int column) override;

  // New virtual operations, in the order that descendants know.
  virtual void SetValue(int row, int column, const _variant_t& value, BOOL redraw = TRUE);
  // Exchange with a spreadsheet; false: there is none.
  virtual bool ToExcel(int mode);
  virtual bool FromExcel(int mode);
  virtual CBCGPGridRow* GetRow(int row) const;
  virtual int AddRow(CBCGPGridRow* row, int relayout);
  virtual int AddRow(int relayout);
  virtual int RemoveRow(int row, int relayout);
  virtual void RemoveAll();
  virtual int GetRowCount(int all = FALSE) const;
  virtual void OnComboItemSelect() {}
  virtual void OnItemUpdate();
  virtual void InitGridSetting();

 protected:
  void PreSubclassWindow() override;
  BOOL PreTranslateMessage(MSG* message) override;
  void OnPosSizeChanged() override;
  void OnDrawHeader(CDC* dc) override;
  void OnGetHeaderRect(CDC* dc, CRect& rect) override;
  BOOL OnTrackHeader(int /*column*/, int /*width*/) override { return FALSE; }
  void OnHeaderDividerDblClick(int column) override;
  BOOL FilterItem(CBCGPGridRow* row) override;
  void OnEndInplaceEdit(CBCGPGridItem* item) override;
  void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor) override;
  BOOL CanEndInplaceEditOnChar(UINT key, UINT repeat, UINT flags) const override;
  BOOL OnInplaceEditKeyDown(CBCGPGridRow* row, MSG* message) override;
  int OnInplaceEditSetSel(CBCGPGridItem* item, DWORD reason) override;
  // False on a cell that the mouse passes over.
  bool CanMouseClick(CPoint point) const;
  void OnSelChanged(const CBCGPGridRange& range, BOOL selected) override;
  void OnResizeColumns() override;
  bool RecountLines() override;
  void OnDotsChanged(int dots, int before) override;
  void TrackToolTip(CPoint point) override;
  void CancelGestures() override;
  void OnColumnMoved(int from, int to) override;
  bool InGesture() const override { return DragsRowOrFill() || CBCGPGridCtrl::InGesture(); }

  int OnCreate(LPCREATESTRUCT request);
  void OnSize(UINT type, int width, int height);
  void OnDestroy();
  void OnRButtonUp(UINT flags, CPoint point);
  void OnRButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnLButtonDown(UINT flags, CPoint point);
  BOOL OnSetCursor(CWnd* window, UINT hit, UINT message);
  void OnMouseMove(UINT flags, CPoint point);
  LRESULT OnEndLabelEdit(WPARAM w, LPARAM record);
  LRESULT OnNavigateItem(WPARAM direction, LPARAM l);
  void OnItemEditUpdate() { OnItemUpdate(); }
  void OnSelectCombo();

  DECLARE_MESSAGE_MAP()

 private:
  const CBCGPGridRow* RowWithItem(int row, int column) const;
  CString ValueText(int row, int column) const;
  bool PutValue(int row, int column, const _variant_t& value, BOOL redraw);
  std::vector<int> SelectedRowIds() const;
  std::vector<int> SelectedColumnIds() const;
  void MoveTo(int row);
  void AddCellsForColumn(const CRuntimeClass* item_class);
  void CloseUpCells(CBCGPGridRow& row, int column);
  void MoveLanguages(int from, int to);
  void KeepSelectionOverLayout();
  bool IsCanShortCutCol(int column, bool current_only) const;
  void CopyFromAbove(UINT key);
  bool ContinueInplaceEditing();
  void InplaceEditNavigation(CBCGPGridItem* item, int direction);
  void TakeOption(CBCGPGridItem* item, int option, const CString& text);

  // The library sees no button then.
  bool DragsRowOrFill() const { return adjusting_row_height_ || drag_fill_running_; }
  bool MovesWithoutButton(UINT flags, CPoint point) const;

  // Dividers of rows.
  bool IsInRowHeaderDivider(CPoint point);
  bool OnLBtnDownAdjustRowHeight(UINT flags, CPoint point);
  bool OnLBtnUpAdjustRowHeight(UINT flags, CPoint point);
  void TrackRowHeader(int y);
  void DrawAdjustingRowRefLn();
  void MoveRowLine(int y);
  void EndRowLine();

  // Dividers of columns: one column takes the room that is left over, the last one while a divider moves.
  bool DealWithTrackBestFitCol(bool down);
  bool LendBestFit();
  bool SettleLastColumn();
  bool ReturnBestFit();
  int WidestText(int column);

  // Filling.
  bool OnLBtnDownDragCopyFill(UINT flags, CPoint point);
  bool OnLBtnUpDragCopyFill(UINT flags, CPoint point);
  bool DrawDragCopyFillFrame(UINT flags, CPoint point);
  bool IsInDragCopyFillStart(CPoint point) const;
  bool CopyRangeValue(const CBCGPGridRange& source, const CBCGPGridRange& target, bool by_column,
                      bool forward);
  bool CopyCellValue(const CBCGPGridItemID& from, const CBCGPGridItemID& to);
  CString GetDragCopyFillTips(const CBCGPGridRange& source, const CRect& source_rect,
                              const CRect& frame_rect) const;
  int GetInVisibleColCount(int first, int last) const;
  int GetOffsetVisibleCol(int column, int offset) const;
  bool EndFill();
  void ShowFillTip(const CBCGPGridRange& source, const CRect& source_rect, CPoint tip);
  void SelectFilled(const CBCGPGridRange& source, const CBCGPGridRange& filled);
  lorv::ColumnView ColumnsShown() const;

  // Tips and clicks.
  struct TipSubject;
  bool TipAt(CPoint point, const CString& text);
  bool FindTipSubject(CPoint point, TipSubject& subject) const;
  bool ShowTip(const TipSubject& subject, const CString& text);
  void ScrollHomeIfAllFits();
  void OpenByClick(CPoint point);
  bool IsAmongSelected(int row, int column) const;

  template <class Change>
  void ForColumn(int column, Change change);
  template <class Change>
  void ForRow(int row, Change change);

  // In the order that the suite keeps them in.
  CBCGPGridColumnsInfoEx columns_info_;
  // Keyboard layouts by cell: the row in the high, the column in the low half of the key.
  CMap<long long, long long, HKL, HKL> languages_{10};
  int adjusted_row_height_ = 0;
  bool shortcut_ = false;
  CUIntArray no_shortcut_;
  emReturnStyle return_style_ = emReturnDown;
  emReturnStyle tab_style_ = emReturnRight;
  bool return_adds_row_ = false;
  bool multi_line_header_ = false;
  bool keep_selection_ = false;
  bool bold_names_ = true;
  bool tree_ = false;
  COLORREF selected_row_colour_ = lorv::kNoColour;
  lorv::ColumnMask click_mask_;  // columns that the mouse passes over
  bool adjusting_row_height_ = false;
  bool adjust_widths_ = false;
  short best_fit_column_ = -1;  // whose room the last column has for the while
  bool list_always_menu_ = false;
  CList<int, int> hidden_rows_{10};
  bool drag_fill_ = false;
  bool drag_fill_running_ = false;
  // What the tip that is shown belongs to: a cell, or a row's name (column -2) or value (-1).
  CBCGPGridItemID tip_cell_;
  // The same numbers once more: a layout asks for every row of the table.
  std::unordered_set<int> hidden_index_;
};
