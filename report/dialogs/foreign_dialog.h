#pragma once

#include "framework/windows/window.h"

namespace lorv {

// While a foreign library shows dialogs before a window of ours: the program is not modeless, the owner has
// the mouse, no window of ours has the focus, and the owner's top-level window is disabled, so that no
// handler of ours runs meanwhile. The end undoes it in reverse and gives the owner the activation and the
// focus. An owner that has gone meanwhile is passed over.
class ForeignDialogScope {
 public:
  explicit ForeignDialogScope(CWnd& owner);
  ForeignDialogScope(const ForeignDialogScope&) = delete;
  ForeignDialogScope& operator=(const ForeignDialogScope&) = delete;
  ~ForeignDialogScope();

 private:
  HWND owner_;
  HWND frame_;
  bool frame_was_enabled_;
};

}  // namespace lorv
