#pragma once

#include "framework/windows/tip_window.h"

// The tip of a cell: its whole text beside it, in the font of the grid.
//
// Units: pixels; rectangles are on the screen. The margin lies at the left and right of the text.
// Edges: without a window nothing is shown. A tip that would leave the screen is shown farther up or left;
//   its last rectangle is where it was asked for. A closed tip has none.
// One thread: that of the user interface.
//
//   tip.SetTextMargin(5);  tip.Track(CRect(90, 40, 160, 62), _T("KL1(2) 300x600"));
class COMM_LORV_API CBCGPInplaceToolTipCtrl : public CBCGPToolTipCtrl {
  DECLARE_DYNAMIC(CBCGPInplaceToolTipCtrl)
 public:
  void SetTextMargin(int margin) { text_margin_ = margin; }
  // With it the text is broken into lines within the rectangle's width, else it stands in one.
  void SetMultiline(BOOL on = TRUE) { multiline_ = on != FALSE; }
  // Shows the text with its left top corner at that of the rectangle, which grows to the right and downwards
  // as the text asks.
  void Track(const CRect& rect, const CString& text);
  void Deactivate();
  void GetLastRect(CRect& rect) const { rect = last_; }
  const CString& GetText() const { return text_; }
  BOOL IsMultiline() const { return multiline_; }

 protected:
  void OnPaint();

  DECLARE_MESSAGE_MAP()

 private:
  UINT DrawFlags() const;
  CSize NeededFor(int width);

  CString text_;
  CRect last_;
  int text_margin_ = 0;
  bool multiline_ = false;
};
