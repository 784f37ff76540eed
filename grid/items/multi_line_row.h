#pragma once

#include "gridcore/rows/grid_row.h"

class CDC;

// A row that grows with the lines of its cells' texts, between a least and a greatest number.
//
// Units: lines of the grid's font. The least number counts for more than the greatest.
// Edges: setters pass numbers below 1 over. A row that stands in no grid does not count.
// As its base.
//
//   row.SetMaxLines(3);  a text of five lines  gives 3
class COMM_LORV_API CBCGPGridMultiLineRow : public CBCGPGridRow {
  DECLARE_DYNCREATE(CBCGPGridMultiLineRow)
 public:
  CBCGPGridMultiLineRow() = default;
  CBCGPGridMultiLineRow(int room, DWORD_PTR data, int flags);

  void SetMaxLines(int lines);
  int GetMaxLines() const { return most_; }
  void SetMinLines(int lines);
  int GetMinLines() const { return least_; }
  CBCGPGridItem* CreateItem(int row, int column) override;
  // Counts the lines anew; with `notify` the grid is asked to lay out again where their number changed.
  virtual void OnItemUpdate(int notify);

 private:
  int GetRowLines(CDC* dc, int width, const CString& text) const;
  int LinesOf(CDC* dc, const CBCGPGridItem& item) const;

  int most_ = 1;
  int least_ = 1;
  int reported_ = 1;
};
