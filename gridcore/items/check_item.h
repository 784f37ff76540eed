#pragma once

#include "gridcore/items/grid_item.h"

// A cell that is ticked or not; a click or the space key turns it over.
//
// Edges: an empty value counts as off, and so does one that is no truth value at all, such as a text that was
//   filled in: a table with it can be painted. A cell that cannot be edited keeps its value.
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
