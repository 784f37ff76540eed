#include "grid/gestures/cell_tip.h"

// Where the tip of a cell stands and what it shows: the cell's own text where that is cut off, else what
// the application gave. The rule of the width is the suite's.

namespace lorv {
namespace {

// A text that sticks out by less than that stays in one line.
constexpr int kWrapSlack = 20;
constexpr int kAroundLine = 6;

}  // namespace

CellTip PlanCellTip(const CString& own, const CString& given, const CRect& place, int column_width,
                    int text_width, int font_height, int dots) {
  CellTip tip;
  int wrap = text_width - ForDots(kWrapSlack, dots);
  tip.multiline = column_width < wrap;
  if (tip.multiline) wrap = column_width;
  if (place.Width() <= text_width) tip.text = own;
  if (!given.IsEmpty()) tip.text = given;
  if (tip.text.IsEmpty()) return tip;
  tip.rect = place;
  if (tip.multiline) tip.rect.right = tip.rect.left + wrap * 2 / 3;
  tip.rect.bottom = tip.rect.top + font_height + ForDots(kAroundLine, dots);
  const int distance = ForDots(kTipDistance, dots);
  tip.rect.OffsetRect(distance, place.Height() + distance);
  return tip;
}

}  // namespace lorv
