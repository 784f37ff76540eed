#include "image/memory_context.h"

// The buffer's window origin is the rectangle's corner, so that drawing uses the places of the target.

TMemDC::TMemDC(CDC* target, const CRect& rect)
    : target_(target), rect_(rect), off_screen_(target->IsPrinting() == 0) {
  if (!off_screen_) {
    // The target lives longer, so that nothing is owned here.
    SetSurface(std::shared_ptr<lorv::Canvas>(std::shared_ptr<void>(), &target->Surface()));
    SetWindowOrg(target->GetWindowOrg());
    SetViewportOrg(target->GetViewportOrg());
    return;
  }
  CreateCompatibleDC(target);
  bitmap_.CreateCompatibleBitmap(target, rect_.Width(), rect_.Height());
  former_ = SelectObject(&bitmap_);
  SetWindowOrg(rect_.TopLeft());
}

TMemDC::~TMemDC() {
  if (!off_screen_) {
    SetSurface(nullptr);
    return;
  }
  SelectObject(former_);
  bitmap_.DeleteObject();
  DeleteDC();
}

void TMemDC::Flush() {
  if (!off_screen_) return;
  target_->BitBlt(rect_.left, rect_.top, rect_.Width(), rect_.Height(), this, rect_.left, rect_.top, SRCCOPY);
}
