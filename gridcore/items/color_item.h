#pragma once

#include "gridcore/items/grid_item.h"

class CPalette;

// A cell whose value is a colour, a number 0x00BBGGRR, or -1 for the automatic one.
//
// Units: its text is six hexadecimal digits: red, green, blue; the automatic colour has none.
// Edges: a value that is no number counts as the automatic colour.
// The palette is taken for callers that have one, and not used. As its base.
//
//   CBCGPGridColorItem(RGB(255, 0, 0), nullptr, 0).FormatItem()  gives "FF0000"
class COMM_LORV_API CBCGPGridColorItem : public CBCGPGridItem {
  DECLARE_DYNCREATE(CBCGPGridColorItem)
 public:
  CBCGPGridColorItem(COLORREF colour, CPalette* palette, DWORD_PTR data = 0);

  COLORREF GetColor() const;
  virtual void SetColor(COLORREF colour);
  COLORREF GetAutomaticColor() const { return automatic_; }
  void SetAutomaticColor(COLORREF colour) { automatic_ = colour; }
  CString FormatItem() const override;
  void OnDrawValue(CDC* dc, CRect rect) override;

 protected:
  CBCGPGridColorItem();
  _variant_t ValueOfText(const CString& text) const override;

 private:
  COLORREF automatic_ = 0;
};

namespace lorv {

// Reads up to three numbers of two hexadecimal digits as red, green and blue. A part that is missing is that
// of `before`.
//
//   ColourOfText(_T("FF0000"), 0)  gives RGB(255, 0, 0)
COMM_LORV_API COLORREF ColourOfText(const CString& text, COLORREF before);

}  // namespace lorv
