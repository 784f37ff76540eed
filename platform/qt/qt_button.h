#pragma once

#include "platform/qt/qt_control.h"

namespace lorv {

// Push buttons, check boxes, radio buttons and group boxes; the automatic ones change their own mark. A radio
// button clears the others of its group. The widget shows the state, the messages decide it.
class QtButton : public QtControl {
 public:
  QtButton(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void TextChanged() override;

 private:
  UINT Type() const { return static_cast<UINT>(LookStyle() & BS_TYPEMASK); }
  LRESULT Code() const;
  LRESULT Own(UINT message, WPARAM w, LPARAM l);
  LRESULT Mouse(UINT message, LPARAM l);
  void Push(bool on);
  void Click();
  void TakeMark();
  void ClearGroup();
  void ShowState();

  UINT check_ = BST_UNCHECKED;
  bool pushed_ = false;
};

// A line of text, or several.
class QtStatic : public QtControl {
 public:
  QtStatic(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around);
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void TextChanged() override;
};

}  // namespace lorv
