#pragma once

#include "platform/headless/desktop/headless_desktop.h"
#include "platform/headless/window/headless_window.h"
#include "platform/models/controls/button_behaviour.h"

namespace lorv {

// A push button, check box, radio button or group box in memory: its looks over the shared behaviour. Thread:
// that of the user interface, as for all controls here.
class HeadlessButton : public ButtonBehaviour<HeadlessWindow> {
 public:
  using ButtonBehaviour::ButtonBehaviour;

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  void ShowState() override { Invalidate(nullptr); }
};

// A label. It is passed over by Tab and draws its text by the layout of DrawText.
class HeadlessStatic : public HeadlessWindow {
 public:
  using HeadlessWindow::HeadlessWindow;
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void PaintSelf(Canvas& canvas) override;
};

}  // namespace lorv
