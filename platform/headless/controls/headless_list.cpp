#include "platform/headless/controls/headless_list.h"

#include <algorithm>

// Rows of a list in memory: which is where, which is at the top, how they look. The rows' texts and choice
// are the shared behaviour's.

namespace lorv {

void HeadlessList::SetSelected(int index, bool on) {
  Kept().Kept().SetSelected(index, on);
  Invalidate(nullptr);
}

CRect HeadlessList::RowPlace(int index) const {
  const int top = (index - top_) * kHeadlessHeight;
  return CRect(0, top, ClientRect().right, top + kHeadlessHeight);
}

int HeadlessList::RowAt(CPoint at) const {
  const int row = top_ + at.y / kHeadlessHeight;
  return at.y >= 0 && Kept().Has(row) ? row : -1;
}

void HeadlessList::SetTop(int index) {
  // The last page is full: what would stand below the last row is not scrolled in.
  top_ = std::clamp(index, 0, std::max(0, Kept().Count() - PageSize()));
  Invalidate(nullptr);
}

// The chosen row is scrolled to where it can be seen.
void HeadlessList::ShowChoice() {
  const int chosen = Kept().chosen;
  if (Kept().Count() == 0) top_ = 0;
  if (chosen >= 0 && chosen < top_) top_ = chosen;
  if (chosen >= top_ + PageSize()) top_ = chosen - PageSize() + 1;
  Invalidate(nullptr);
}

void HeadlessList::PaintSelf(Canvas& canvas) {
  canvas.Fill(ClientRect(), RGB(255, 255, 255));
  // One row more than the page, for the part of it that shows at the lower edge.
  for (int i = top_; i < Kept().Count() && i < top_ + PageSize() + 1; ++i) {
    const CRect row = RowPlace(i);
    const bool marked = Several() ? IsSelected(i) : Kept().chosen == i;
    if (marked) canvas.Fill(row, Home().Colour(COLOR_HIGHLIGHT));
    canvas.Text(row.TopLeft(), Kept().Text(i).View(), marked ? RGB(255, 255, 255) : 0);
  }
}

}  // namespace lorv
