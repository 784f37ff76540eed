#pragma once

#include "platform/models/controls/button_behaviour.h"
#include "platform/qt/controls/qt_control.h"
#include "platform/qt/desktop/qt_desk.h"

namespace lorv {

// The widget shows the state, the messages decide it.
class QtButton : public ButtonBehaviour<QtControl> {
 public:
  QtButton(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);

 protected:
  void ShowText() override;
  void ShowFocus() override;

 private:
  void ShowState() override;
};

// A line of text, or several.
class QtStatic : public QtControl {
 public:
  QtStatic(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void ShowText() override;
};

}  // namespace lorv
