#pragma once

#include <functional>

#include "framework/ports/desktop_port.h"

namespace lorv_test {

// Plays the user on one kind of desktop, with input as real as that desktop knows it. Every call returns when
// all that follows from it has been worked off.
class ConductDriver {
 public:
  ConductDriver() = default;
  ConductDriver(const ConductDriver&) = delete;
  ConductDriver& operator=(const ConductDriver&) = delete;
  virtual ~ConductDriver() = default;

  virtual lorv::Desktop& Desktop() = 0;
  virtual void Press(int key) = 0;
  virtual void PressWith(int modifier, int key) = 0;
  virtual void Type(lorv::TextView text) = 0;
  virtual void MoveMouse(POINT screen) = 0;
  virtual void MouseDown() = 0;
  virtual void MouseUp() = 0;
  virtual void DoubleClick(POINT screen) = 0;
  // The next menus are answered with these commands, by keys or clicks where the desktop knows such; 0: left.
  virtual void AnswerMenu(UINT command) = 0;
  // Done while the next modal dialog waits for the user.
  virtual void WhenModal(std::function<void()> step) = 0;
  virtual void Advance(DWORD milliseconds) = 0;
  // Another program comes to the front, until a window of ours takes the focus.
  virtual void LeaveProgram() = 0;
  virtual void Settle() = 0;

  void Click(POINT screen) {
    MoveMouse(screen);
    MouseDown();
    MouseUp();
  }
};

}  // namespace lorv_test
