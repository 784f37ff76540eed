#pragma once

#include "platform/models/controls/button_behaviour.h"
#include "platform/qt/controls/qt_control.h"
#include "platform/qt/desktop/qt_desk.h"

namespace lorv {

// A push button, check box, radio button or group box as a widget. The shared behaviour decides the state by
// messages, the widget shows it; clicks at the widget become messages. Thread: that of the windows, as for
// all controls here.
class QtButton : public ButtonBehaviour<QtControl> {
 public:
  QtButton(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  void ShowText() override;
  void ShowFocus() override;

 private:
  void ShowState() override;
};

// A label, whose text is broken at its width.
class QtStatic : public QtControl {
 public:
  QtStatic(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void ShowText() override;
};

}  // namespace lorv
