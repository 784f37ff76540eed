#pragma once

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/button_behaviour.h"

namespace lorv {

class HeadlessButton : public ButtonBehaviour<HeadlessWindow> {
 public:
  using ButtonBehaviour::ButtonBehaviour;

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
