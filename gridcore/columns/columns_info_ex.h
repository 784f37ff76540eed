#pragma once

#include <memory>

#include "framework/collections/array.h"
#include "framework/drawing/geometry.h"
#include "gridcore/columns/columns_info.h"

// A cell of a header of several lines: it stands over one or more columns, and is as high as its lines.
struct CBCGPGridHeaderItem {
  std::vector<int> columns;  // by number, ascending
  std::vector<int> lines;    // from the top, ascending
  CString text;
  int align = 0;
  int flag = 0;  // the caller's
  CBCGPGridHeaderItem* parent = nullptr;
  // From the first visible column's left edge to the last one's right edge, from the left of the first
  // column and the top of the header. Empty while all its columns are hidden.
  CRect rect;
};

// The same columns under a header of several lines.
//
// Units: lines count from 0 at the top; their common height is given to ReposHeaderItems, in pixels.
// Edges: a line count below 1 counts as 1, above kMaxHeaderLines as that. AddHeaderItem gives null, and
//   adds nothing, without a column, for a column that does not exist, and for a line outside the header. A
//   column without a cell of its own has its name over all lines that nothing else covers.
// The cells are the object's and stay until RemoveAllHeaderItems, or until their last column is deleted.
// One thread at a time.
//
//   info.SetHeaderLineCount(2);  info.AddHeaderItem(&columns_0_1, &line_0, nullptr, _T("尺寸"), DT_CENTER, 0)
class COMM_LORV_API CBCGPGridColumnsInfoEx : public CBCGPGridColumnsInfo {
 public:
  static constexpr int kMaxHeaderLines = 64;

  void SetHeaderLineCount(int lines);
  int GetHeaderLineCount() const { return lines_; }
  CBCGPGridHeaderItem* AddHeaderItem(const CArray<int, int>* columns, const CArray<int, int>* lines,
                                     CBCGPGridHeaderItem* parent, LPCTSTR text, int align, int flag);
  int GetHeaderItemCount() const { return static_cast<int>(items_.size()); }
  CBCGPGridHeaderItem* GetHeaderItem(int index) const;
  // The one that covers the column in that line, the last one added where several do; else null.
  CBCGPGridHeaderItem* GetHeaderItemAt(int column, int line) const;
  void RemoveAllHeaderItems() { items_.clear(); }
  // The lines of the column that no cell covers, as one piece from the first of them down; false: none.
  bool GetOwnHeaderLines(int column, int& first, int& last) const;
  // Gives all cells their places again, for lines of that height.
  void ReposHeaderItems(int line_height);
  // No cell of the header that stands over several columns is torn, or gets another column into it.
  bool CanMoveColumn(int column, int to) const override;

 protected:
  void ColumnsMoved(int column, int count) override;
  void ColumnMoved(int from, int to) override;

 private:
  int lines_ = 1;
  std::vector<std::unique_ptr<CBCGPGridHeaderItem>> items_;
};
