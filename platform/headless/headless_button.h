#pragma once

#include "platform/headless/headless_window.h"

namespace lorv {

// Push buttons, check boxes and radio buttons; the automatic ones change their own mark. A radio button
// clears the others of its group.
class HeadlessButton : public HeadlessWindow {
 public:
  using HeadlessWindow::HeadlessWindow;
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void PaintSelf(Canvas& canvas) override;

 private:
  UINT Type() const { return static_cast<UINT>(Style() & BS_TYPEMASK); }
  LRESULT Code() const;
  LRESULT Own(UINT message, WPARAM w, LPARAM l);
  LRESULT Mouse(UINT message, LPARAM l);
  void Push(bool on);
  void Click();
  void TakeMark();
  void ClearGroup();

  UINT check_ = BST_UNCHECKED;
  bool pushed_ = false;
};

class HeadlessStatic : public HeadlessWindow {
 public:
  using HeadlessWindow::HeadlessWindow;
  LRESULT Default(UINT message, WPARAM w, LPARAM l) override;

 protected:
  void PaintSelf(Canvas& canvas) override;
};

}  // namespace lorv
