#pragma once

#include "platform/controls/button_conduct.h"
#include "platform/headless/headless_desktop.h"
#include "platform/headless/headless_window.h"

namespace lorv {

class HeadlessButton : public ButtonConduct<HeadlessWindow> {
 public:
  using ButtonConduct::ButtonConduct;

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  void ShowState() override { Invalidate(nullptr); }
};

class HeadlessStatic : public HeadlessWindow {
 public:
  using HeadlessWindow::HeadlessWindow;
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void PaintSelf(Canvas& canvas) override;
};

}  // namespace lorv
