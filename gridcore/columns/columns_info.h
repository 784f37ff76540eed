#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

#include "framework/objects/object.h"
#include "framework/text/cstring.h"
#include "gridcore/geometry/line_sizes.h"

namespace lorv {

// A column is never wider: ten thousand of them still lie within 32 bits.
constexpr int kMaxColumnWidth = 100000;
constexpr int kMostTotalWidth = 1 << 30;

}  // namespace lorv

// The columns of a grid: what they are called, how wide they are, and what their new cells are made of.
//
// Units: columns count from 0; widths and places are pixels, places from the left edge of the first column.
// Edges: a column that does not exist has no name, width 0 and no item class, and setters pass it over. A
//   width below 0 counts as 0, one beyond lorv::kMaxColumnWidth as that. A hidden column has the width 0 and
//   shows with the width last set. Without a visible column GetFirstVisibleColumn and
//   GetLastVisibleColumn give -1.
// Plain data without a window; the grid that owns it repeats its layout after changes. One thread at a time.
//
//   CBCGPGridColumnsInfo info;  info.InsertColumn(0, _T("梁"), 80);  info.InsertColumn(1, _T("板"), 50);
//   info.HitTestColumn(80)  gives 1, info.GetTotalWidth()  130
class COMM_LORV_API CBCGPGridColumnsInfo : public CObject {
 public:
  int GetColumnCount() const { return static_cast<int>(columns_.size()); }
  bool HasColumn(int column) const { return column >= 0 && column < GetColumnCount(); }

  // In front of the column of that number, at the end for the count itself; FALSE, and nothing changes, for
  // any other number. `align` is -1 (as the value's kind asks), or one of DT_LEFT, DT_CENTER, DT_RIGHT.
  virtual BOOL InsertColumn(int column, LPCTSTR name, int width = 0, int align = -1);
  // `count` columns without a name; how many there are now more.
  int InsertColumns(int column, int count, int width);
  virtual BOOL DeleteColumn(int column);
  virtual void DeleteAllColumns();

  // The column has that number afterwards, and those in between close up; FALSE, and nothing changes, where
  // one of the numbers is none or CanMoveColumn says no.
  BOOL MoveColumn(int column, int to);
  virtual bool CanMoveColumn(int column, int to) const { return HasColumn(column) && HasColumn(to); }
  // The number that the column would have if none had been moved, and where the one of such a number stands
  // now; -1: there is none.
  int GetUnmovedColumn(int column) const;
  int FindUnmovedColumn(int number) const;
  bool AreColumnsMoved() const { return !unmoved_.empty(); }

  CString GetColumnName(int column) const;
  void SetColumnName(int column, LPCTSTR name);
  int GetColumnAlign(int column) const;  // -1 for a column that does not exist, too
  void SetColumnAlign(int column, int align);
  int GetColumnWidth(int column) const;
  void SetColumnWidth(int column, int width);
  // No column is dragged or fitted below it; 0 at first.
  int GetMinWidth(int column) const;
  void SetMinWidth(int column, int width);
  BOOL GetColumnVisible(int column) const;
  void SetColumnVisible(int column, BOOL visible);
  // Takes up the room that is left over in the grid.
  BOOL GetColumnWidthAutoSize(int column) const;
  void SetColumnWidthAutoSize(int column, BOOL on);
  BOOL IsAutoSize(int column) const { return GetColumnWidthAutoSize(column); }
  int GetAutoSizeCount() const;
  const CRuntimeClass* GetItemRTC(int column) const;  // null: plain cells
  void SetItemRTC(int column, const CRuntimeClass* item_class);
  // Whether any column names a class; the others have plain cells.
  bool HasItemClasses() const;

  int GetFirstVisibleColumn() const;
  int GetLastVisibleColumn() const;
  // The next visible column to the right (forward) or left; -1 where there is none.
  int GetNextVisibleColumn(int column, BOOL forward) const;
  int GetVisibleColumnCount() const;
  // Both stop at lorv::kMostTotalWidth: places on the screen are added to them.
  int GetTotalWidth() const { return Bounded(widths_.Total()); }
  int GetColumnLeft(int column) const { return Bounded(widths_.OffsetOf(column)); }
  // Of as many of the first `count` columns as are not wider than `most` together.
  int GetWidthOfFirst(int count, int most) const;
  // The column on which that place lies, -1 beside all of them.
  int HitTestColumn(int place) const { return widths_.LineAt(place); }
  // The column whose right edge is at most `reach` pixels away, the last one where several are; else -1.
  int HitTestDivider(int place, int reach) const;

  // Lays the columns out in a room of that width: with `spread` all visible columns share it by their widths,
  // else those marked auto-size share what the others leave. What is not asked for stays as it is.
  void Resize(int room, BOOL spread);

 protected:
  // Columns went in or out: what belongs to columns by number goes with them.
  virtual void ColumnsMoved(int column, int count);
  // One stands at another number.
  virtual void ColumnMoved(int /*from*/, int /*to*/) {}

 private:
  struct Column {
    CString name;
    int width = 0;
    int least = 0;
    int align = -1;
    bool visible = true;
    bool auto_size = false;
    const CRuntimeClass* item_class = nullptr;
  };

  static int Bounded(std::int64_t place) {
    return static_cast<int>(std::min<std::int64_t>(place, lorv::kMostTotalWidth));
  }
  const Column* Find(int column) const;
  Column* Find(int column);
  void Place(int column);
  void Share(const std::vector<int>& sharing, int room);
  void UnmovedInserted(int column);
  void UnmovedDeleted(int column);

  std::vector<Column> columns_;
  lorv::LineSizes widths_;    // of what is visible
  std::vector<int> unmoved_;  // by column; empty while each stands where it would
};
