#pragma once

#include "framework/collections/string_array.h"
#include "grid/items/presentation_item.h"

// A cell with a button at its right end, or one that is a row of push buttons.
//
// Units: buttons count from 0; of n buttons each is the n-th part of the cell's width in whole pixels, and
//   what is left over goes to both sides.
// In buttons mode a press runs the grid's button hook with the point. Which button it was the owner finds out
//   from GetBtnNames and the cell's rectangle. Such a cell has no editor.
// As its base.
//
//   CBCGPGridButtonItem cell(_variant_t(), 2);  cell.AppendButton(_T("增"));  cell.AppendButton(_T("删"));
class COMM_LORV_API CBCGPGridButtonItem : public CBCGPGridPresentationItem {
  DECLARE_DYNCREATE(CBCGPGridButtonItem)
 public:
  // The style is the cell's flags, lorv::ItemFlag.
  CBCGPGridButtonItem(const _variant_t& value, int style);

  void EnableButton(bool on) { button_on_ = on; }
  // On: the present text becomes one more name, empty or not. Off: the button at the right end is there
  // again.
  void SetButtonItem(bool on);
  // Turns buttons mode on; the cell's text becomes no name.
  void AppendButton(LPCTSTR name);
  bool IsButtonItem() const { return buttons_; }
  CStringArray& GetBtnNames() { return names_; }
  const CStringArray& GetBtnNames() const { return names_; }

  void OnDrawValue(CDC* dc, CRect rect) override;
  void OnClickButton(CPoint point) override;
  BOOL OnClickValue(UINT message, CPoint point) override;
  BOOL OnSetCursor() const override;
  CWnd* CreateInPlaceEdit(CRect rect, BOOL& default_format) override;

 protected:
  CBCGPGridButtonItem();

 private:
  bool button_on_ = true;
  bool buttons_ = false;
  CStringArray names_;
};

namespace lorv {

// The places of `count` buttons in a row of that rectangle, left to right; none for a count of 0 or below.
//
//   ButtonPlaces(CRect(0, 0, 100, 18), 3)  begins at 1, each 33 wide with a pixel between
COMM_LORV_API std::vector<CRect> ButtonPlaces(const CRect& row, int count);

}  // namespace lorv
