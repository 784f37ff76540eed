#pragma once

#include <memory>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/objects/object.h"
#include "gridcore/items/cell_block.h"
#include "gridcore/items/grid_item.h"
#include "gridcore/rows/packed_values.h"
#include "gridcore/rows/sub_rows.h"
#include "gridcore/table/blocked_list.h"

class CBCGPGridColumnsInfo;
class CComboBox;

namespace lorv {

class CellBlock;
class GridRestore;

// A row that stands for a group of rows; a flag of rows.
constexpr int kGroupRow = 0x100;

}  // namespace lorv

// A row of cells.
//
// Units: cells count from 0, as the columns that they stand in; heights are lines of the grid's font.
// Edges: GetItem gives null outside the row. A row that stands in no grid has the id -1. AddItem(null) and a
//   replacement by null are refused.
// Nesting: a row may hold others, which stand behind it in the table with numbers of their own; a collapsed
//   one hides them. Taking a row away takes those nested in it along.
// Memory: a plain cell that a grid makes, or AddValue, is made when somebody first asks for it, and the
// others
//   of its row when a second one is asked for. Until then the row holds their values alone: a large table
//   takes a third of the memory, and half of the time to fill it. What is said of values below leaves it so.
// The row owns its cells and the rows nested in it; the grid owns the others. One thread: that of the user
// interface.
//
//   CBCGPGridRow row;  row.AddItem(new CBCGPGridItem(_variant_t(7)));  row.GetItem(0)->GetColumnId()  gives 0
class COMM_LORV_API CBCGPGridRow : public CObject {
  DECLARE_DYNCREATE(CBCGPGridRow)
 public:
  CBCGPGridRow() = default;
  // Room for so many cells; nothing is made yet. The last number is the caller's.
  explicit CBCGPGridRow(int room, DWORD_PTR data = 0, int flags = 0);
  ~CBCGPGridRow() override;
  CBCGPGridRow(const CBCGPGridRow&) = delete;
  CBCGPGridRow& operator=(const CBCGPGridRow&) = delete;

  int GetItemCount() const { return static_cast<int>(items_.size()) + values_.Count(); }
  // The same object each time, until it is replaced or removed.
  CBCGPGridItem* GetItem(int column) const;
  // Null where the cell was not made yet as well: it has no list, no colour and no behaviour of its own.
  CBCGPGridItem* FindItem(int column) const;
  bool HasItem(int column) const { return column >= 0 && column < GetItemCount(); }
  // The row takes the cell over and puts it behind its last one; its number.
  int AddItem(CBCGPGridItem* item);
  // The same of a plain cell with the value.
  int AddValue(const _variant_t& value);
  // Puts the cell in place of the one there; the old one is deleted with `delete_old`, else the caller's.
  // Refused (FALSE), and the cell stays the caller's: outside the row, null.
  BOOL ReplaceItem(int column, CBCGPGridItem* item, BOOL redraw = TRUE, BOOL keep_old = FALSE);
  void RemoveAllItems();
  // A cell for the column, as the grid's column asks; null if its OnCreate refuses.
  virtual CBCGPGridItem* CreateItem(int row, int column);

  // The value of a cell, its kind, and the text that it shows. Empty: there is no such cell.
  _variant_t CopyValue(int column) const;
  VARTYPE GetValueType(int column) const;
  CString GetCellText(int column) const;
  // The same text without a copy where it stands somewhere; else it is made in `room`. It stands until the
  // row or the room is changed, or a cell is asked for.
  lorv::TextView ShownText(int column, CString& room) const;
  // Sets the value of a cell that was not made yet, as CBCGPGridItem::SetValueAndType would, without drawing
  // anything. false, nothing done: the cell is there, or must be, as somebody observes the table or the value
  // is more than a number or a text.
  bool PutValue(int column, const _variant_t& value);

  int GetRowId() const;
  CBCGPGridCtrl* GetOwnerList() const { return owner_; }
  DWORD_PTR GetData() const { return data_; }
  void SetData(DWORD_PTR data) { data_ = data; }
  int GetFlags() const { return flags_; }
  CRect GetRect() const;  // without its row header; empty for a hidden row
  int GetLinesNumber() const { return lines_; }
  // At least 1; the rows stand anew with the next layout, or at once.
  void SetLinesNumber(int lines, BOOL relayout = TRUE);
  BOOL IsEnabled() const { return enabled_; }
  void Enable(BOOL on = TRUE) { enabled_ = on != FALSE; }

  // Nested rows. The row takes another one over, with all that is nested in it, and puts it behind those that
  // it has; its place among them. -1, and it stays the caller's: null, one that stands in a grid or a row,
  // deeper than lorv::kMaxRowLevels, or the grid takes no rows now.
  int AddSubItem(CBCGPGridRow* row, BOOL relayout = TRUE);
  int GetSubItemsCount() const { return sub_ == nullptr ? 0 : static_cast<int>(sub_->rows.size()); }
  CBCGPGridRow* GetSubItem(int index) const;
  BOOL HasSubItems() const { return GetSubItemsCount() > 0; }
  // The row of that number among those nested in it, at any level; null: it is none of them.
  CBCGPGridRow* FindSubItemById(int id) const;
  CBCGPGridRow* GetParentRow() const { return parent_; }
  int GetLevel() const;  // 0 for a row that is nested in none
  int GetAllSubItemsCount() const { return sub_ == nullptr ? 0 : sub_->below; }  // at all levels
  // A collapsed row keeps what is nested in it out of sight. The current cell moves out of there to the row.
  void Expand(BOOL on = TRUE, BOOL relayout = TRUE);
  BOOL IsExpanded() const { return sub_ == nullptr || sub_->expanded; }
  BOOL IsInCollapsed() const;  // out of sight for that
  // A line of the grid's own above rows that belong together.
  virtual BOOL IsGroup() const { return FALSE; }
  // The row itself or one that is nested in it.
  bool Holds(const CBCGPGridRow* row) const;

  // The open editor of one of its cells, and the list that belongs to it; null where there is none.
  CWnd* GetInPlaceWnd() const;
  CComboBox* GetComboWnd() const;
  BOOL IsInPlaceEditing() const { return GetInPlaceWnd() != nullptr; }

  // Tips: of the row's name, and of the value of a row that is a group; nothing here.
  virtual CString GetNameTooltip() const { return CString(); }
  virtual CRect GetNameTooltipRect() const { return {}; }
  virtual CString GetValueTooltip() const { return CString(); }
  virtual CRect GetTooltipRect() const { return GetRect(); }

  // A cell of it was changed by the user.
  virtual void OnItemChanged(CBCGPGridItem* item, int row, int column);

 private:
  friend class CBCGPGridCtrl;
  friend class lorv::GridRestore;
  void Adopt(CBCGPGridItem* item, int column);
  // Makes the cells that it lacks of so many; `row` is its place in the table, now or soon.
  void AddItems(int row, int columns);
  CBCGPGridItem* NewItem(int column);
  CBCGPGridItem* NewPlainItem(int column);
  int CountPlainColumns(int first) const;
  bool MayHoldValues(int count) const;
  bool HoldsValues() const { return !values_.IsEmpty(); }
  void MakeFirstItem(int column) const;
  void MakeItems() const;
  void MoveItem(int from, int to);
  void ArrangeItems(const CBCGPGridColumnsInfo& columns);
  bool TakesSubItem(const CBCGPGridRow* row) const;
  int PlaceOf(const CBCGPGridRow& row) const;
  void Nest(CBCGPGridRow& row, int place);
  void LeaveParent();
  void GrowBelow(int rows);

  // Cells, or the values of all of them, of which one may have been asked for: then its value is the cell's.
  // Asking for a cell changes how the row holds it, and nothing that can be seen.
  mutable std::vector<std::unique_ptr<CBCGPGridItem>> items_;
  mutable lorv::PackedValues values_;
  mutable std::unique_ptr<CBCGPGridItem> first_;
  CBCGPGridCtrl* owner_ = nullptr;
  CBCGPGridRow* parent_ = nullptr;
  std::unique_ptr<lorv::SubRows> sub_;
  DWORD_PTR data_ = 0;
  lorv::CellBlockUser block_;  // of the cells that AddItems makes

 public:
  // Where the grid's list of rows has it; nobody else's.
  lorv::ListPlace list_place;

 private:
  int lines_ = 1;
  int flags_ = 0;
  int room_ = 0;       // of a row that was made for so many cells
  int making_to_ = 0;  // the columns below it are those that AddItems makes
  bool enabled_ = true;
};

namespace lorv {

using RowList = BlockedList<CBCGPGridRow, &CBCGPGridRow::list_place>;

}  // namespace lorv
