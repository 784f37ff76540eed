#pragma once

#include "framework/text/cstring.h"
#include "gridcore/rows/grid_row.h"

namespace lorv {

// The line above rows that have the same text in a column by which the grid is grouped. It has no cells.
// The grid's own: it comes and goes with the grouping, and with its last row.
class COMM_LORV_API GroupRow : public CBCGPGridRow {
 public:
  GroupRow(int column, CString name, CString value)
      : CBCGPGridRow(0, 0, kGroupRow), column_(column), name_(std::move(name)), value_(std::move(value)) {}

  BOOL IsGroup() const override { return TRUE; }
  // What its line shows: the name of the column, the text, and how many rows the group has.
  CString GetText() const;
  CString GetValueTooltip() const override { return GetText(); }
  CRect GetTooltipRect() const override;
  int GetColumn() const { return column_; }
  const CString& GetName() const { return name_; }    // of the column
  const CString& GetValue() const { return value_; }  // that its rows share, as a text
  int GetNumber() const { return number_; }           // among the groups, from above
  void SetNumber(int number) { number_ = number; }

 private:
  int column_;
  CString name_;
  CString value_;
  int number_ = -1;
};

}  // namespace lorv
