#pragma once

#include "gridcore/items/grid_item.h"

// A cell that is ticked or not; a click or the space key turns it over.
//
// Edges: an empty value counts as false; one that is no truth value at all raises `_com_error` where it is
//   drawn or turned over. A cell that cannot be edited keeps its value.
// As its base.
//
//   CBCGPGridCheckItem box(true, 0);  box.FormatItem()  gives "-1"
class COMM_LORV_API CBCGPGridCheckItem : public CBCGPGridItem {
  DECLARE_DYNCREATE(CBCGPGridCheckItem)
 public:
  explicit CBCGPGridCheckItem(bool on, DWORD_PTR data = 0);

  bool IsOn() const;
  void SetLabel(LPCTSTR label) { label_ = label; }
  const CString& GetLabel() const { return label_; }
  BOOL OnClickValue(UINT message, CPoint point) override;
  BOOL OnSpace() override;
  BOOL OnEdit(CPoint point) override;
  void OnDrawValue(CDC* dc, CRect rect) override;

 protected:
  CBCGPGridCheckItem();

 private:
  CString label_;
};
