#pragma once

#include "gridcore/items/grid_item.h"

namespace lorv {

// What SetPresentationStyle makes of a cell.
enum PresentationStyle : int { kPlainCell = 0, kListCell = 1, kButtonCell = 2, kSpinCell = 4 };

}  // namespace lorv

// A text cell of the suite: it can be bold and of several lines, and opens a long list of options as a menu.
//
// A button is clicked in this order: the grid's button hook; the long list as a menu; else what a plain cell
//   does. The hook may rebuild the table: the cell is looked up anew by its place after it. A click that
//   changes the cell's text counts as a change.
// As its base.
//
//   CBCGPGridPresentationItem cell(_variant_t(_T("C30")));  cell.SetPresentationStyle(lorv::kListCell);
class COMM_LORV_API CBCGPGridPresentationItem : public CBCGPGridItem {
  DECLARE_DYNCREATE(CBCGPGridPresentationItem)
 public:
  explicit CBCGPGridPresentationItem(const _variant_t& value);

  void SetBold(int on);
  int IsBold() const { return bold_; }
  void SetMultiLineItem(int on);
  int IsMultiLineItem() const { return multi_line_; }
  // Takes the cell's flags back and adds that of the style; any number that is no style does nothing at all.
  void SetPresentationStyle(int style);

  void OnDrawValue(CDC* dc, CRect rect) override;
  void OnDrawButton(CDC* dc, CRect rect) override;
  BOOL OnUpdateValue() override;
  void SetItemChanged() override;
  void SetInPlaceEditFont() override;
  void DoClickButton(CPoint point) override;
  void OnClickButton(CPoint point) override;
  // Three pixels wider than a plain cell's.
  void AdjustButtonRect(CRect& rect) override;
  CEdit* NewInPlaceEdit() override;

 protected:
  CBCGPGridPresentationItem();

 private:
  bool CalcArithmeticExp(CString& text) const;

  int bold_ = 0;
  int multi_line_ = 0;
};
