#include "report/dialogs/foreign_dialog.h"

#include "module/modeless.h"

// The time in which windows of a foreign library are up: our frame disabled, capture and focus taken away,
// and all of it given back in turn however the scope ends.

namespace lorv {

ForeignDialogScope::ForeignDialogScope(CWnd& owner)
    : owner_(owner.m_hWnd), frame_(owner_), frame_was_enabled_(false) {
  if (const CWnd* const top = owner.GetTopLevelParent()) frame_ = top->m_hWnd;
  EnableModeless(false);
  // A window that is disabled loses the capture: it is taken afterwards.
  frame_was_enabled_ = (PeerOf(frame_)->Style() & WS_DISABLED) == 0;
  if (frame_was_enabled_) PeerOf(frame_)->Enable(false);
  DesktopInForce().SetCapture(owner_);
  DesktopInForce().ClearFocus();
}

ForeignDialogScope::~ForeignDialogScope() {
  if (frame_was_enabled_) PeerOf(frame_)->Enable(true);
  DesktopInForce().SetCapture(nullptr);
  PeerOf(owner_)->Activate();
  PeerOf(owner_)->Focus();
  EnableModeless(true);
}

}  // namespace lorv
