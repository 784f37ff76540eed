#pragma once

#include "framework/drawing/dots.h"
#include "gridcore/items/check_item.h"

// A check box with a third state: ticked, but not for all that it stands for.
//
// Edges: the third state shows only on a value that is true. As its base.
class COMM_LORV_API CBCGPGridCheckItemEx : public CBCGPGridCheckItem {
  DECLARE_DYNCREATE(CBCGPGridCheckItemEx)
 public:
  explicit CBCGPGridCheckItemEx(bool on, DWORD_PTR data = 0);

  void EnableNotAllSelIcon(bool on);
  // What the painter is given: 0, 1, or 2 for the third state. Raises `_com_error` for a value that is no
  // truth value.
  int DrawnState() const;
  void OnDrawValue(CDC* dc, CRect rect) override;

 protected:
  CBCGPGridCheckItemEx();

 private:
  bool not_all_ = false;
};

namespace lorv {

// Where the box stands in a cell: cut to 20 pixels of height around the middle, two pixels less above and
// below, both for 96 dots an inch; `width` wide; centred where the cell has no label.
COMM_LORV_API CRect CheckBoxPlace(CRect cell, int width, bool labelled, int dots = kUsualDpi);

}  // namespace lorv
