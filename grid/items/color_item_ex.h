#pragma once

#include "gridcore/items/color_item.h"

// A colour cell that is edited as six hexadecimal digits: red, green, blue. As its base.
class COMM_LORV_API CBCGPGridColorItemEx : public CBCGPGridColorItem {
  DECLARE_DYNCREATE(CBCGPGridColorItemEx)
 public:
  CBCGPGridColorItemEx(COLORREF colour, CPalette* palette, DWORD_PTR data = 0);

  void OnDrawValue(CDC* dc, CRect rect) override;
  BOOL OnUpdateValue() override;
  BOOL OnEdit(CPoint point) override;

 protected:
  CBCGPGridColorItemEx();
};
