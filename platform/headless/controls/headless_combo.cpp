#include "platform/headless/controls/headless_combo.h"

// Where a combo's inner edit stands and how the closed combo looks, in memory.

namespace lorv {

CRect HeadlessCombo::EditPlace() const {
  constexpr int kArrowWidth = 16;
  const CRect client(ClientRect());
  return CRect(0, 0, client.right - kArrowWidth, client.bottom);
}

void HeadlessCombo::PaintSelf(Canvas& canvas) {
  canvas.Fill(ClientRect(), RGB(255, 255, 255));
  // With an edit inside, that one shows the text.
  if (Edit() == nullptr) canvas.Text({0, 0}, Text().View(), 0);
}

}  // namespace lorv
