#pragma once

#include "framework/drawing/dots.h"
#include "framework/windows/controls.h"

// What all windows of the grid's library descend from: they count their own sizes at 96 dots an inch and show
// them in pixels of the screen that they stand on.
//
// Units: pixels. One-pixel lines are no sizes: they stay one pixel on every screen.
// Edges: without a window the dots are 96, or those of the window that there was.
// One thread: that of the user interface.
//
//   At 144 dots an inch Scaled(17)  gives 26
class COMM_LORV_API CBCGPWnd : public CWnd {
  DECLARE_DYNCREATE(CBCGPWnd)
 public:
  // A size at 96 dots an inch as it is shown since the last layout.
  int Scaled(int size) const { return lorv::ForDots(size, dots_); }
  int Dots() const { return dots_; }

 protected:
  // The window has come to a screen of other dots an inch.
  bool HasOtherDots() const { return DotsOfScreen() != dots_; }
  int DotsOfScreen() const;
  // Takes the dots of the screen; OnDotsChanged follows where they are others.
  void FollowDots();
  // All sizes that are kept in pixels are scaled here. No handler runs.
  virtual void OnDotsChanged(int /*dots*/, int /*before*/) {}

 private:
  int dots_ = lorv::kUsualDpi;
};
