#include "gridcore/painting/visual_manager.h"

#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/drawing/dots.h"
#include "framework/ports/desktop_port.h"
#include "gridcore/painting/open_ink.h"

// Marks are drawn of plain rectangles, so that they are crisp at every scale and alike on every system.

namespace {

// Pixels at 96 dots an inch.
constexpr int kLargestBox = 14;
constexpr int kMarkInset = 3;
constexpr int kStroke = 3;

COLORREF Colour(int index) {
  return lorv::DesktopInForce().Colour(index);
}

// A tick in the square: a short stroke down to the right, then a long one up.
void DrawTick(CDC* dc, const CRect& box, int stroke, COLORREF colour) {
  const int side = box.Width();
  const int turn = side / 3;
  for (int step = 0; step < side; ++step) {
    const int depth = step <= turn ? step : 2 * turn - step;
    const int y = static_cast<int>(box.top) + side / 3 + depth;
    const int top = std::max(static_cast<int>(box.top), y);
    dc->FillSolidRect(static_cast<int>(box.left) + step, top, 1,
                      std::min(stroke, static_cast<int>(box.bottom) - top), colour);
  }
}

}  // namespace

// Without a state one object is as good as many, and needs no making or ending.
CBCGPVisualManager* CBCGPVisualManager::GetInstance() {
  static CBCGPVisualManager instance;
  return &instance;
}

void CBCGPVisualManager::OnDrawPushButton(CDC* dc, CRect rect, const CString& text, UINT text_flags,
                                          BOOL enabled) const {
  if (rect.IsRectEmpty() != FALSE) return;
  dc->FillSolidRect(&rect, Colour(COLOR_BTNFACE));
  const COLORREF frame = Colour(COLOR_BTNSHADOW);
  dc->Draw3dRect(&rect, frame, frame);
  dc->SetTextColor(Colour(enabled != FALSE ? COLOR_BTNTEXT : COLOR_GRAYTEXT));
  dc->DrawText(text, rect, text_flags);
}

void CBCGPVisualManager::OnDrawCheckBox(CDC* dc, CRect rect, int state, BOOL enabled, COLORREF ground) const {
  // Those of the context: a box is drawn in grids, and on paper, by whoever has one.
  const int dots = dc->GetDeviceCaps(LOGPIXELSY);
  const int side = std::min({rect.Width(), rect.Height(), lorv::ForDots(kLargestBox, dots)});
  if (side <= 0) return;
  const CPoint corner = rect.CenterPoint() - CSize(side / 2, side / 2);
  CRect box(corner, CSize(side, side));
  const COLORREF ink = lorv::InkOver(ground, COLOR_WINDOWTEXT);
  const COLORREF paper = ink == Colour(COLOR_WINDOWTEXT) ? Colour(COLOR_WINDOW) : RGB(255, 255, 255);
  dc->FillSolidRect(&box, enabled != FALSE ? paper : Colour(COLOR_BTNFACE));
  const COLORREF mark = enabled != FALSE ? ink : Colour(COLOR_GRAYTEXT);
  dc->Draw3dRect(&box, mark, mark);
  const int inset = lorv::ForDots(kMarkInset, dots);
  box.DeflateRect(inset, inset);
  // In a row too low for a mark the empty box is all that fits.
  if (box.IsRectEmpty() != FALSE || state == 0) return;
  if (state == 2)
    dc->FillSolidRect(&box, mark);
  else
    DrawTick(dc, box, lorv::ForDots(kStroke, dots), mark);
}
