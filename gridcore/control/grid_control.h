#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "framework/drawing/drawing_tools.h"
#include "framework/windows/drag_drop.h"
#include "gridcore/columns/columns_info.h"
#include "gridcore/control/colour_theme.h"
#include "gridcore/control/grid_base_window.h"
#include "gridcore/control/grid_changes.h"
#include "gridcore/control/grid_key_handler.h"
#include "gridcore/control/grid_messages.h"
#include "gridcore/control/grid_states.h"
#include "gridcore/geometry/shown_lines.h"
#include "gridcore/rows/group_row.h"
#include "gridcore/rows/row_store.h"
#include "gridcore/selection/selected_ranges.h"
#include "gridcore/table/merged_cells.h"
#include "gridcore/tips/inplace_tool_tip.h"

// A grid of cells in rows and columns, with a header above and a row header at the left.
//
// Units: rows and columns count from 0; pixels of the client area. A row's number is its place in the table,
//   hidden rows counted.
// Edges: numbers outside the table are answered with null, -1, FALSE, 0 or an empty rectangle; setters pass
//   them over. Everything works without a window as well, as if nothing could be seen.
// The grid owns its rows. A handler may rebuild the table, or destroy the grid, in every virtual operation
//   that reports a change: the grid looks its rows and cells up anew after each.
// One thread: that of the user interface.
//
//   CBCGPGridCtrl grid;  grid.InsertColumn(0, _T("梁"), 80, -1, TRUE);  grid.AddRow(TRUE)  gives 0
class COMM_LORV_API CBCGPGridCtrl : public CBCGPWnd {
  DECLARE_DYNCREATE(CBCGPGridCtrl)
 public:
  enum ClickArea { clickNothing, clickExpandBox, clickName, clickValue, clickButton };

  CBCGPGridCtrl();
  ~CBCGPGridCtrl() override;
  using CWnd::Create;
  BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

  // What descendants replace, in the order of the slots that the suite's tables name. What reports a change
  // is called after it.
  virtual const CBCGPGridColumnsInfo& GetColumnsInfo() const { return own_columns_; }
  virtual CBCGPGridColumnsInfo& GetColumnsInfo() { return own_columns_; }
  virtual CBCGPGridRow* CreateMultiLineRow(int lines);

 protected:
  virtual void OnPosSizeChanged();

 public:
  // The texts of the filter bar are others now.
  virtual void OnFilterBarChanged() {}
  virtual void OnItemChanged(CBCGPGridItem* item, int row, int column);
  // The mouse, pressed on the frame of the selection, moves on: what stands there could be dragged away.
  // TRUE: that has been done; here nothing is dragged, and the selection follows the mouse.
  virtual BOOL OnBeginDrag(CPoint /*point*/) { return FALSE; }
  virtual BOOL EditItem(CBCGPGridRow* row, const CPoint* point = nullptr);
  virtual BOOL OnClickButton(CPoint point);
  virtual BOOL EndEditItem(BOOL update = TRUE);
  virtual void AdjustLayout();
  virtual int GetExtraHierarchyOffset() const { return 0; }
  virtual int GetHierarchyLevelOffset() const { return m_nRowHeight; }
  virtual int GetLeftMarginWidth() const { return m_nRowHeight; }
  virtual void SetRowHeight();  // from the font

 protected:
  virtual BOOL OnDrawItem(CDC* dc, CBCGPGridRow* row);
  virtual void OnDraw(CDC* dc);
  virtual void OnDrawRowHeaderItem(CDC* dc, CBCGPGridRow* row);
  virtual void OnDrawHeader(CDC* dc);
  virtual void OnGetHeaderRect(CDC* dc, CRect& rect);
  virtual void OnHeaderColumnClick(int column);
  virtual BOOL OnTrackHeader(int column, int width);
  virtual void OnHeaderDividerDblClick(int column);
  virtual void OnUpdateVScrollPos(int offset, int previous);
  virtual void OnUpdateHScrollPos(int offset, int previous);
  // TRUE: the row is left out of what is shown.
  virtual BOOL FilterItem(CBCGPGridRow* row);
  virtual void OnEndInplaceEdit(CBCGPGridItem* item);
  virtual void OnAfterInplaceEditCreated(CBCGPGridItem* item, CWnd* editor);
  virtual BOOL CanEndInplaceEditOnChar(UINT key, UINT repeat, UINT flags) const;
  // TRUE: the key is used up.
  virtual BOOL OnInplaceEditKeyDown(CBCGPGridRow* row, MSG* message);
  virtual int OnInplaceEditSetSel(CBCGPGridItem* item, DWORD reason);
  virtual void OnSelChanging(const CBCGPGridRange& range, BOOL selected);
  virtual void OnSelChanged(const CBCGPGridRange& range, BOOL selected);
  virtual void OnResizeColumns();
  virtual bool RecountLines() { return false; }  // of rows, by their texts; true: some have others now
  void OnDotsChanged(int dots, int before) override;
  virtual int OnGetColumnAutoSize(int column);
  virtual BOOL SetHeaderItemWidth(int column, int width);
  virtual void TrackToolTip(CPoint point);

  virtual void Init();
  virtual int CompareItems(const CBCGPGridItem* a, const CBCGPGridItem* b) const;
  // The direction (1, 2, 4, 8) in which an edit that ended for that reason moves on; 0: it stays.
  virtual int OnGridKeybordNavigation(CBCGPGridItem* item, DWORD reason);

 public:
  virtual CBCGPGridRow* CreateRow(int columns);

 protected:
  // Shows the drag frame where it stands now.
  virtual void OnDrawDragFrame();
  // The mouse was taken away in the middle of a gesture, or the window was asked to leave it: what follows
  // the mouse ends without a result, and tips close.
  virtual void CancelGestures();
  // Something follows the mouse, which therefore stays the grid's.
  virtual bool InGesture() const { return m_bTracking || m_bSelecting || header_press_.on; }
  // A column and its cells stand at another number: what a descendant keeps by number follows.
  virtual void OnColumnMoved(int /*from*/, int /*to*/) {}

 public:
  // Columns.
  int InsertColumn(int column, LPCTSTR name, int width = 0, int align = -1, BOOL redraw = TRUE);
  // The cells of the rows stay: the last one of each stands behind the last column then.
  int DeleteColumn(int column);
  // The column stands at the place of that number afterwards, with its cells and all that belongs to it by
  // number; those in between close up. FALSE, and nothing changes: there is none of either number, merged
  // cells or a header's cell would be torn, handlers keep an editor open.
  BOOL MoveColumn(int column, int to);
  bool CanMoveColumn(int column, int to) const;
  int GetColumnCount() const { return GetColumnsInfo().GetColumnCount(); }
  int GetColumnWidth(int column) const { return GetColumnsInfo().GetColumnWidth(column); }
  void SetColumnWidth(int column, int width);
  BOOL GetColumnVisible(int column) const { return GetColumnsInfo().GetColumnVisible(column); }
  void SetColumnVisible(int column, BOOL visible);
  CString GetColumnName(int column) const { return GetColumnsInfo().GetColumnName(column); }
  void SetColumnName(int column, LPCTSTR name);
  const CRuntimeClass* GetItemRTC(int column) const { return GetColumnsInfo().GetItemRTC(column); }
  void SetItemRTC(int column, const CRuntimeClass* item_class);

  // Rows. A row that goes in is the grid's from then on; where that fails (-1: null, or a place outside the
  // table) it stays the caller's. Places are the number of a row there is; InsertRowAfter past the end
  // appends.
  void SetupRow(CBCGPGridRow* row, int columns);
  int AddRow(BOOL relayout);                     // a fresh one; its number
  int AddRow(CBCGPGridRow* row, BOOL relayout);  // behind all others
  int InsertRowBefore(int position, CBCGPGridRow* row, BOOL relayout = TRUE);
  int InsertRowAfter(int position, CBCGPGridRow* row, BOOL relayout = TRUE);
  int RemoveRow(int position, BOOL relayout = TRUE);  // 1: it is gone, 0: there was none
  void RemoveAll(BOOL relayout = TRUE);
  // Behind the last row come those of the groups.
  CBCGPGridRow* GetRow(int position) const {
    CBCGPGridRow* const row = rows_.At(position);
    return row != nullptr ? row : RowBehindTable(position);
  }
  int GetRowCount(BOOL all = FALSE) const;
  CBCGPGridItem* GetGridItem(const CBCGPGridItemID& id) const;
  int GetRowBlockSize() const { return 16; }
  // Rows are taken out together: first the row is put on the lists (what it holds, and itself), then all go.
  void PrepareRemoveRow(int position, std::vector<CBCGPGridItem*>& items, std::vector<CBCGPGridRow*>& rows);
  int DoRemoveRows(std::vector<CBCGPGridItem*>& items, std::vector<CBCGPGridRow*>& rows);
  // Empties the cells of the range, locked ones too; how many there were.
  int ClearRange(const CBCGPGridRange& range, BOOL redraw = TRUE, BOOL report = FALSE,
                 void* always_null = nullptr);

  // Order and filter. Rows are brought into the order of the column: numbers before texts, numbers by size,
  // equal ones as they stood. Each sort begins from the order at hand.
  void Sort(int column, BOOL ascending = TRUE);
  BOOL IsSorting() const { return sort_.column >= 0; }
  int GetSortColumn() const { return sort_.column; }
  BOOL IsSortedAscending() const { return sort_.ascending; }
  void RemoveSortColumn() { sort_.column = -1; }
  // Who knows the order of rows by a column better than CompareItems: gives the places of the rows in it, the
  // row at the first of them first. Anything else than each place once, and they stay. Empty: nobody.
  using RowSorter =
      std::function<std::vector<int>(const std::vector<CBCGPGridRow*>& rows, int column, bool ascending)>;
  void SetRowSorter(RowSorter sorter) { row_sorter_ = std::move(sorter); }

  // Groups. The rows are brought into the order of the group columns, then of the sorted one, and those with
  // the same text in a group column stand under a line of their own, which can be collapsed. Rows that come
  // later belong to the group that they stand in, those at the end to none, until Regroup. Group rows are
  // numbered behind the last row, belong to the grid, are never selected, and go with the next grouping.
  void InsertGroupColumn(int place, int column);  // passed over: no such column, one that groups already
  void RemoveGroupColumn(int place);
  int GetGroupColumnCount() const { return static_cast<int>(group_columns_.size()); }
  int GetGroupColumn(int place) const;  // -1: none
  bool IsGroupColumn(int column) const;
  BOOL IsGrouping() const { return group_columns_.empty() ? FALSE : TRUE; }
  void Regroup();
  int GetGroupRowCount() const { return static_cast<int>(group_rows_.size()); }
  CBCGPGridRow* GetGroupRow(int number) const;  // from above; null: none
  lorv::RowGroup GetRowsOfGroup(const CBCGPGridRow& group) const;
  // Where the text of its line is drawn, behind the box; empty: it is out of sight.
  CRect GetGroupTextRect(const CBCGPGridRow& group) const;
  // The rows in the order shown, without those of groups: nested rows behind theirs, hidden ones too.
  int GetTerminalRowCount() const { return rows_.Size(); }
  CBCGPGridRow* GetTerminalRow(int place) const { return rows_.At(place); }

  // Filter bar: a line below the header with a text for each column. FilterItem leaves out the rows whose
  // cells do not hold the texts, whatever their letter case; switched off, the texts are kept and leave
  // nothing out. A row that stays the last one is always shown.
  void EnableFilterBar(BOOL on = TRUE);
  BOOL IsFilterBarEnabled() const { return filter_.on ? TRUE : FALSE; }
  void SetFilterBarText(int column, LPCTSTR text);
  CString GetFilterBarText(int column) const;
  const CRect& GetFilterBarRect() const { return m_rectFilterBar; }

  // Virtual mode: the grid holds no rows; `fill` fills the cells of one whenever it is needed; it may ask for
  // rows, and cannot end the mode. No row comes, goes or is sorted by the grid. A row is good until
  // lorv::kMostVirtualRows others were asked for. An empty call-back ends the mode. Both ways the table is
  // empty afterwards; FALSE, and all is as it was: handlers keep an editor open.
  using VirtualFill = std::function<void(CBCGPGridRow& row, int index)>;
  BOOL EnableVirtualMode(VirtualFill fill);
  BOOL IsVirtualMode() const { return rows_.IsVirtual() ? TRUE : FALSE; }
  void SetVirtualRows(int count);                   // up to lorv::kMaxVirtualTable
  CBCGPGridRow* GetVirtualRow(int position) const;  // null outside the table and the mode
  void RefreshVirtualRows();                        // what is shown is filled anew

  // Merged cells: shown and edited as one, by way of the top left one.
  BOOL MergeRange(const CBCGPGridRange& range);
  BOOL UnmergeAt(const CBCGPGridItemID& cell);
  CBCGPGridRange GetMergedRange(const CBCGPGridItemID& cell) const { return merged_.BlockAt(cell); }
  int GetMergedItemsInRange(const CBCGPGridRange& range, std::vector<CBCGPGridRange>& blocks) const;

  // Selection: ranges of cells, and the one cell that is current.
  CBCGPGridRow* GetCurSel() const;
  CBCGPGridItem* GetCurSelItem() const { return GetGridItem(GetCurSelItemID()); }
  CBCGPGridItem* GetCurSelItem(CBCGPGridRow* row) const;
  CBCGPGridItemID GetCurSelItemID() const;
  int GetCurRowId() const { return GetCurSelItemID().m_nRow; }
  BOOL SetCurSel(const CBCGPGridItemID& id, UINT mode = lorv::kSelectOnly, BOOL redraw = TRUE);
  // The whole row; null or a row of another grid: nothing is selected.
  BOOL SetCurSel(CBCGPGridRow* row, BOOL redraw = TRUE);
  BOOL SelectRange(const CBCGPGridRange& range, BOOL redraw = TRUE);
  BOOL SelectRow(int row, BOOL redraw = TRUE);
  BOOL SelectColumn(int column, BOOL redraw = TRUE);
  BOOL SelectAll();
  const std::vector<CBCGPGridRange>& GetSelection() const { return selection_.Ranges(); }
  int GetSelectedItems(std::vector<CBCGPGridItem*>& items) const;  // visible ones, in the order chosen
  BOOL IsItemSelected(const CBCGPGridItemID& id) const { return selection_.Holds(id); }
  // `whole`: each of its cells in a visible column; else any cell.
  BOOL IsRowSelected(int row, BOOL whole = FALSE) const;
  BOOL IsColumnSelected(int column) const;
  void EnsureVisible(CBCGPGridRow* row, BOOL partial = FALSE);
  void EnsureVisible(const CBCGPGridItemID& id);

  // Looks and behaviour.
  void EnableHeader(BOOL on, UINT flags = 0);
  void EnableRowHeader(BOOL on, int always_minus_one = -1, int width = -1);  // -1: the usual one
  BOOL IsRowHeaderEnabled() const { return switches_.row_header; }
  void EnableLineNumbers(BOOL on = TRUE);
  void EnableMarkSortedColumn(BOOL mark, BOOL redraw = TRUE);
  void EnableColumnAutoSize(BOOL on = TRUE);  // all columns share the grid's width
  BOOL IsColumnAutoSizeEnabled() const { return switches_.columns_spread; }
  void EnableInvertSelOnCtrl(BOOL on = TRUE) { switches_.ctrl_inverts = on != FALSE; }
  void SetShowDragContext(BOOL on) { switches_.shows_drag_context = on != FALSE; }
  BOOL IsShowDragContext() const { return switches_.shows_drag_context; }
  void EnableToolTips(BOOL on = TRUE);  // on at first
  BOOL IsToolTipsEnabled() const { return switches_.tips; }
  void SetReadOnly(BOOL on = TRUE) { switches_.read_only = on != FALSE; }
  BOOL IsReadOnly() const { return switches_.read_only; }
  void EnableWholeRowSel(BOOL on = TRUE) { switches_.whole_rows = on != FALSE; }
  const BCGP_GRID_COLOR_DATA& GetColorTheme() const { return theme_; }
  void SetColorTheme(const BCGP_GRID_COLOR_DATA& theme, BOOL redraw = TRUE);
  CFont* GetBoldFont();
  void SetBoldFont(const LOGFONT& face);
  COLORREF GetBkColor() const;

  // Layout.
  int GetRowHeight() const { return m_nLargeRowHeight; }
  const CRect& GetListRect() const { return m_rectList; }
  const CRect& GetHeaderRect() const { return m_rectHeader; }
  const CRect& GetRowHeaderRect() const { return m_rectRowHeader; }
  CRect GetItemRect(const CBCGPGridItemID& id) const;  // of merged cells: the whole block
  CRect GetRowRect(int row) const;
  CRect GetColumnRect(int column) const;  // with its header; empty: hidden, or scrolled below frozen ones
  bool IsRowShown(int row) const { return heights_.SizeOf(row) > 0; }  // hidden by nothing
  CRect GetRangeRect(const CBCGPGridRange& range) const;  // of visible columns and rows, unclipped
  CRect PaintedRect(const CBCGPGridRange& range) const;   // the same with merged cells that begin there
  // Around the range that was selected last; empty where its right bottom corner is out of sight.
  CRect GetSelectionBorder() const;
  const CRect& GetDragFrame() const { return m_rectDragFrame; }
  int GetVertScrollOffset() const { return m_nVertScrollOffset; }
  int GetHorzScrollOffset() const { return m_nHorzScrollOffset; }
  int GetVertScrollTotal() const { return m_nVertScrollTotal; }
  int GetHorzScrollTotal() const { return m_nHorzScrollTotal; }
  // The room at the left of the cells for the boxes of groups and of rows that others are nested in.
  int GetHierarchyOffset() const;
  bool DrawPiece(CDC* dc, CSize size, CPoint from);  // for paper, behind its headers; false: the grid ended
  int LineEdgeAt(int place) const;                   // the upper edge of the line there
  CRect GetRangePlace(const CBCGPGridRange& range) const;  // from the table's corner, with nothing frozen
  // The first columns stay while the others scroll sideways, as many of them as leave room for those.
  void SetFrozenColumns(int count);
  int GetFrozenColumns() const { return frozen_.columns; }
  void ShowVertScrollBar(BOOL on);
  void ShowHorzScrollBar(BOOL on);

  // What lies under a point.
  CBCGPGridItem* HitTest(CPoint point) const;
  BOOL HitTest(CPoint point, CBCGPGridItemID& id, CRect& rect) const;
  ClickArea HitTestArea(CPoint point) const;
  int HitTestRow(CPoint point) const;                     // in the list or the row header; -1: none
  int HitTestRowHeader(CPoint point, CRect& rect) const;  // -1: none
  int HitTestHeader(CPoint point) const;                  // the column, -1: none

  // Editing.
  CBCGPGridItem* GetEditingItem() const { return editing_; }
  CWnd* GetInPlaceWnd() const { return editor_.get(); }
  // The item's editor: it is shown, the grid's and counts as editing. Of an item of this grid only.
  BOOL ShowEditor(CBCGPGridItem* item, std::unique_ptr<CWnd> editor);
  void DropList(BOOL show);
  // What a fresh editor of the cell begins with: its text, or the character that opens it.
  CString FirstEditorText(const CBCGPGridItem& item) const;
  BOOL IsEditableNow(const CBCGPGridItem* item) const;
  // Nothing was typed since the editor was opened over the whole text. A native edit may hold the text in
  // another form than the cell (line breaks, control characters): the cell then keeps its own.
  bool EditorUntouched() const;

  // Who lets columns be dragged by their headers; null: nobody. It takes itself off before its end.
  void SetColumnTaker(lorv::ColumnTaker* taker);
  lorv::ColumnTaker* GetColumnTaker() const { return header_press_.taker; }
  // Who is asked for keys before the grid; nobody at first.
  lorv::GridKeyHandlers& KeyHandlers() { return key_handlers_; }

  void InvalidateItem(const CBCGPGridItem* item);
  bool IsBeyondView(const CBCGPGridRow& row) const;  // nothing of it is on the screen
  // For cells and rows, which report what becomes of them.
  void ItemGone(const CBCGPGridItem& item);
  void RowGone(CBCGPGridRow& row);
  // Closes the editor where it is one of the row's. That moves the focus, and runs handlers: false where they
  // took the row out of the table, or ended the grid.
  bool CloseEditorIn(const CBCGPGridRow& row);
  // Puts the row behind all that is nested in the parent, which is a row of this grid.
  int PutSubRow(CBCGPGridRow& parent, CBCGPGridRow* row, BOOL relayout);
  void RowExpanded(CBCGPGridRow& row, BOOL relayout);
  int IndexOfRow(const CBCGPGridRow& row) const {
    const int index = rows_.IndexOf(row);
    return index >= 0 ? index : IdOutsideTable(row);
  }
  void RowLinesChanged(const CBCGPGridRow& row, BOOL relayout);
  std::weak_ptr<int> Watch() const { return life_.Watch(); }  // expires with the grid
  lorv::GridChanges& Changes() { return changes_; }
  lorv::AccessibleCells* GetAccessibleCells() override;  // the table for screen readers
  CWnd* EditorOf(const CBCGPGridRow& row) const;
  CComboBox* ComboOf(const CBCGPGridRow& row) const;
  int GetButtonWidth() const { return Scaled(lorv::kItemButtonWidth); }
  int DoDrawText(CDC* dc, const CString& text, CRect rect, UINT flags) const;
  COLORREF BackColourOf(const CBCGPGridItem& item) const;  // in its present state
  COLORREF TextColourOf(const CBCGPGridItem& item) const;

 protected:
  void PreSubclassWindow() override;
  BOOL PreTranslateMessage(MSG* message) override;
  // Makes the window one that takes what is dragged over it; descendants of the target say what a drop does.
  void RegisterDropTarget();
  // The last row stays the last one, whatever the rows are brought into order by.
  void KeepLastRow(bool on) { switches_.keeps_last_row = on; }
  // While what it gives lives, layouts take the heights of the rows as they stand, each row that came or went
  // counted: for who knows that no filter has changed. A layout then costs the same for any number of rows.
  [[nodiscard]] lorv::ScopeMark<bool> TrustRowHeights(bool on = true) {
    return {height_notes_.trusted, Watch(), on};
  }
  // What FilterItem answers is another thing now, for rows that stand in the table.
  void FilterChanged() { height_notes_.known = false; }
  void ForgetFollowed();  // nothing of the grid's own follows the mouse any more
  bool DragsColumn() const { return header_press_.on && header_press_.moves; }
  void ClearBeginEditReason() { m_dwBeginEditReason = 0; }
  void ClearEndEditReason() { m_dwEndEditReason = 0; }
  void OnSelectCombo();

  int OnCreate(LPCREATESTRUCT request);
  void OnDestroy();
  void OnPaint();
  void OnSize(UINT type, int width, int height);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  void OnChar(UINT unit, UINT repeat, UINT flags);
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnLButtonDblClk(UINT flags, CPoint point);
  void OnRButtonDown(UINT flags, CPoint point);
  void OnRButtonUp(UINT flags, CPoint point);
  void OnMouseMove(UINT flags, CPoint point);
  BOOL OnMouseWheel(UINT flags, short delta, CPoint point);
  BOOL OnSetCursor(CWnd* window, UINT hit, UINT message);
  void OnVScroll(UINT code, UINT position, CWnd* bar);
  void OnHScroll(UINT code, UINT position, CWnd* bar);
  void OnSetFocus(CWnd* former);
  void OnKillFocus(CWnd* next);
  void OnCancelMode();
  void OnCaptureChanged(CWnd* next);
  UINT OnGetDlgCode();
  void OnEditorLeft();
  void OnListClosed();
  LRESULT OnComposition(UINT message, WPARAM w, LPARAM l);
  LRESULT OnAdjustLayoutMessage(WPARAM w, LPARAM l);
  void SetScrollSizes();
  void ScrollTo(int across, int down);
  void SetHorzScrollTotal(int total);  // of the bar below, until the next layout

  // The mouse is the grid's alone, or anybody's again; giving it back is no loss of it.
  void HoldMouse();
  void FreeMouse();
  // Made at the first call; null without a window.
  CBCGPInplaceToolTipCtrl* ToolTip();
  bool IsToolTipShown() const;
  CRect LastToolTipRect() const;
  void CloseToolTip();
  void SetDragFrame(const CRect& frame) { m_rectDragFrame = frame; }
  void HideDragFrame();
  // The cell at a place of the client area, in sight or not; merged cells by their first one.
  CBCGPGridItemID CellAtPlace(CPoint point) const;
  int GetRowBottom(int row) const;  // hidden or not

  CRect m_rectList;
  CRect m_rectHeader;
  CRect m_rectFilterBar;  // empty: there is none
  CRect m_rectRowHeader;
  int m_nRowHeight = 20;       // of a line, from the font
  int m_nLargeRowHeight = 20;  // of a row
  int m_nHeaderHeight = 20;    // the third height
  int m_nVertScrollOffset = 0;
  int m_nVertScrollTotal = 0;
  int m_nVertScrollPage = 0;
  int m_nHorzScrollOffset = 0;
  int m_nHorzScrollTotal = 0;
  int m_nHorzScrollPage = 0;
  DWORD m_dwBeginEditReason = 0;
  DWORD m_dwEndEditReason = 0;
  bool m_bTracking = false;   // a column divider follows the mouse
  bool m_bSelecting = false;  // the selection follows it
  int m_nTrackColumn = -1;
  int m_nTrackRow = -1;   // whose lower divider is under the mouse, or follows it
  CRect m_rectTrackRow;   // the line that follows the mouse
  CRect m_rectDragFrame;  // empty: none is shown

  DECLARE_MESSAGE_MAP()

 private:
  friend class lorv::GridRestore;
  // Rows.
  int PutRow(int index, CBCGPGridRow* row, BOOL relayout);
  int PutBeside(CBCGPGridRow& sibling, int step, CBCGPGridRow* row, BOOL relayout);
  void PutTree(int index, CBCGPGridRow& row);
  void PutOne(int index, CBCGPGridRow& row);
  void TakeTree(int index);
  void TakeOne(int index);
  void PutAndReport(int index, CBCGPGridRow& row);
  lorv::RowPlace PlaceOfRow(const CBCGPGridRow& row, int index) const;
  lorv::RowArrangement Arrangement();
  bool EditsIn(const CBCGPGridRow& row) const;
  void CountLevel(const CBCGPGridRow& row, int step);
  using RowList = std::vector<CBCGPGridRow*>;
  // Brings rows into an order, those that are nested within their row.
  void ArrangeRows(const std::function<void(RowList&)>& arrange);
  void ArrangeRows();  // by the group columns and the sorted one
  void FollowRow(const CBCGPGridRow* row);
  CBCGPGridRow* RowBehindTable(int position) const;
  int IdOutsideTable(const CBCGPGridRow& row) const;

  // Groups.
  class GroupMaker;
  void MakeGroups();
  void ForgetGroups();
  void GroupGone(int number);
  void GroupColumnsMove(int column, int step);
  int GroupRowId(const CBCGPGridRow& row) const;
  void Own(CBCGPGridRow& row);
  bool IsInCollapsedGroup(int row) const { return heights_.Groups().IsRowHidden(row); }
  void AppendGroupedHeights();

  // The filter bar.
  void FilterColumnsMove(int column, int step);
  CRect FilterCell(int column) const;
  bool PressInFilterBar(CPoint point);
  void OpenFilterEditor(int column);
  void CloseFilterEditor();
  void PlaceFilterEditor();
  void OnFilterTyped();
  void OnFilterLeft();
  bool EndsFilterEditor(const MSG& message) const;
  void DrawFilterBar(CDC* dc, const CRect& dirty);
  void DrawFilterCells(CDC* dc);

  // The room at the left of the cells.
  int RoomBeforeCells() const { return GetHierarchyOffset() + GetExtraHierarchyOffset(); }
  int CellsLeft() const;  // where the first column begins
  CRect BoxOf(const CBCGPGridRow& row) const;
  bool PressOnBox(CPoint point);
  void DrawBranch(CDC* dc, const CBCGPGridRow& row);
  void DrawGroupRow(CDC* dc, const CBCGPGridRow& row);
  int HeightOf(CBCGPGridRow& row);
  int ShownHeightOf(const CBCGPGridRow& row) const;  // where nothing hides it
  void KeepCurrentWithRows(int first, int count);
  void RebuildHeights();

  // Frozen columns.
  class PaneTurn;
  lorv::ColumnPanes Panes() const;
  int MostFrozenWidth() const;
  CRect RectIn(const lorv::ColumnPanes& panes, const CBCGPGridRange& range) const;
  int ColumnAt(int x) const;   // -1: none
  int DividerAt(int x) const;  // whose right edge is there; -1: none
  int HiddenBeforeEdge(int x) const;
  void DrawFrozenEdge(CDC* dc) const;

  // Layout.
  bool LayOut(bool other_dots = false);
  void SizeColumns();
  int TextHeight();  // of the font that is set
  void TakeFontAlong();
  bool FitToDots();
  void MeasureAreas();
  void PlaceEditor();
  void SetBars();
  int LargestOffset(int total, int page) const { return total > page ? total - page : 0; }
  int NextShownRow(int row, int step) const;
  CBCGPGridItemID MainCell(const CBCGPGridItemID& id) const;

  // Selection.
  bool Choose(const CBCGPGridRange& range, const CBCGPGridItemID& current, bool add, BOOL redraw);
  bool ReportLeft();
  void InvalidateSelection();
  void InvalidateRange(const CBCGPGridRange& range);

  // Keys and the mouse.
  bool AskForKey(UINT key, bool editing = false);
  bool TakesWheel(UINT flags, int& delta);
  bool TakesKeyOfEditor(MSG* message);
  bool MoveByKey(UINT key, bool may_extend = true);
  CBCGPGridItemID CellByKey(UINT key, CBCGPGridItemID from) const;
  CBCGPGridItemID PageAway(CBCGPGridItemID from, int pages) const;
  void Go(const CBCGPGridItemID& to, bool extend);
  bool PressInHeader(UINT flags, CPoint point);
  void ClickHeader(UINT flags, int column);
  void ShiftColumn(int column, int to);
  int DropPlaceAt(CPoint point, int& mark) const;
  void DragColumn(CPoint point);
  void DropColumn(const lorv::HeaderPress& press, CPoint point);
  bool PressInRowHeader(UINT flags, CPoint point);
  void PressInCell(UINT flags, CPoint point, const CBCGPGridItemID& id);
  bool OnSelectionFrame(CPoint point) const;
  bool StartsNothing() const;
  bool DragFrame(CPoint point);
  void DragSelection(CPoint point);
  void TrackDivider(CPoint point);

  // Editing.
  void CloseEditor();
  bool CloseEditors();
  void Retire(std::unique_ptr<CWnd> window);
  DWORD EndReasonOfKey(UINT key) const;
  bool StaysInEditor(UINT key) const;

  // Painting.
  void EachRowIn(const CDC& dc, const CRect& part, const std::function<void(CBCGPGridRow&)>& draw);
  void DrawRowHeader(CDC* dc, const CRect& dirty);
  void DrawRows(CDC* dc, const CRect& dirty);
  void DrawMerged(CDC* dc, const CRect& dirty);
  void DrawCells(CDC* dc, const CBCGPGridRow& row);
  void DrawCell(CDC* dc, CBCGPGridItem& item, const CRect& cell);
  void DrawDragMarks(CDC* dc);
  void DrawHeaderCells(CDC* dc);
  void DrawHeaderCell(CDC* dc, const CRect& cell, const CString& text, int align, bool selected);
  COLORREF Themed(COLORREF colour, int system) const;

  lorv::LifeToken life_;
  lorv::GridKeyHandlers key_handlers_;
  lorv::GridChanges changes_;
  std::unique_ptr<lorv::GridCells> cells_;  // made when somebody asks for it
  COleDropTarget drop_target_;
  CBCGPGridColumnsInfo own_columns_;
  lorv::RowStore rows_;
  VirtualFill virtual_fill_;
  lorv::ShownLines heights_;
  std::vector<int> group_columns_;
  std::vector<std::unique_ptr<lorv::GroupRow>> group_rows_;
  bool regroup_wanted_ = false;
  lorv::FilterState filter_;
  lorv::FrozenState frozen_;
  lorv::HeightNotes height_notes_;
  std::vector<int> nested_at_;  // how many rows stand at level 1, 2 ...
  lorv::MeasuredFont measured_;
  lorv::MergedCells merged_;
  lorv::SelectedRanges selection_;
  CBCGPGridItemID current_;
  CBCGPGridItemID anchor_;
  RowSorter row_sorter_;
  lorv::SortState sort_;
  lorv::GridSwitches switches_;
  BCGP_GRID_COLOR_DATA theme_;
  CFont bold_;
  bool own_bold_ = false;

  CBCGPGridItem* editing_ = nullptr;
  CBCGPGridItem* ended_ = nullptr;  // whose edit is being ended
  std::unique_ptr<CWnd> editor_;
  std::unique_ptr<CComboBox> combo_;
  std::vector<std::unique_ptr<CWnd>> retired_;  // closed editors, whose handlers may still be running
  bool ending_edit_ = false;
  lorv::EditorOpening opening_;
  bool laying_out_ = false;
  std::unique_ptr<CBCGPInplaceToolTipCtrl> tip_;
  lorv::PressWatch press_;
  lorv::HeaderPress header_press_;
};
