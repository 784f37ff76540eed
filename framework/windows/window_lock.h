#pragma once

#include "framework/windows/window.h"

// A scope in which a window does not repaint: what is changed meanwhile shows at once when it ends.
//
// Edges: locks of one window may stand inside one another, the outermost one counts. A missing, hidden or
//   destroyed window is passed over, and so is one that is destroyed within the scope: redrawing would show a
//   hidden window.
// The window is the caller's. Thread: that of the user interface.
//
//   { OxWindowLock lock(&grid);  ... }  fills a grid that paints once, behind the brace
class COMM_LORV_API OxWindowLock {
 public:
  explicit OxWindowLock(CWnd* window);
  OxWindowLock(const OxWindowLock&) = delete;
  OxWindowLock& operator=(const OxWindowLock&) = delete;
  ~OxWindowLock();

 private:
  HWND window_ = nullptr;
};
