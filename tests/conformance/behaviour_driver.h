#pragma once

#include <functional>

#include "framework/ports/desktop_port.h"

namespace lorv_test {

// Plays the user on one kind of desktop, with input as real as that desktop knows it. Every call returns when
// all that follows from it has been handled.
class BehaviourDriver {
 public:
  BehaviourDriver() = default;
  BehaviourDriver(const BehaviourDriver&) = delete;
  BehaviourDriver& operator=(const BehaviourDriver&) = delete;
  virtual ~BehaviourDriver() = default;

  virtual lorv::Desktop& Desktop() = 0;
  virtual void Press(int key) = 0;
  virtual void PressWith(int modifier, int key) = 0;
  virtual void Hold(int key, bool down) = 0;
  virtual void Type(lorv::TextView text) = 0;
  virtual void MoveMouse(POINT screen) = 0;
  virtual void MouseDown() = 0;
  virtual void MouseUp() = 0;
  virtual void DoubleClick(POINT screen) = 0;
  virtual void RightClick(POINT screen) = 0;
  // The next menus are answered with these commands, by keys or clicks where the desktop knows such; 0: left.
  virtual void AnswerMenu(UINT command) = 0;
  // Done while the next modal dialog waits for the user.
  virtual void WhenModal(std::function<void()> step) = 0;
  // Done while the next menu is up, before it is answered.
  virtual void WhenMenu(std::function<void()> step) = 0;
  virtual void Advance(DWORD milliseconds) = 0;
  // The handle of the window's bar down its right edge is dragged to about the middle, and let go.
  virtual void DragHandle(HWND window) = 0;
  // An input method in the window that has the focus: what it shows, then what it commits.
  virtual void Compose(const CString& shown) = 0;
  virtual void Commit(const CString& text) = 0;
  // An edit that the host made by its own means, where the system has such.
  virtual HWND MakeHostEdit(HWND parent, const RECT& place) = 0;
  // Another program comes to the front, until a window of ours takes the focus.
  virtual void LeaveProgram() = 0;
  // The rectangle of the window's client area that an input method keeps its list off.
  virtual RECT CandidatesAt(HWND window) = 0;
  virtual void Settle() = 0;

  void Click(POINT screen) {
    MoveMouse(screen);
    MouseDown();
    MouseUp();
  }
  void ClickWith(int modifier, POINT screen) {
    Hold(modifier, true);
    Click(screen);
    Hold(modifier, false);
  }
  void Drag(POINT from, POINT to) {
    MoveMouse(from);
    MouseDown();
    MoveMouse({(from.x + to.x) / 2, (from.y + to.y) / 2});
    MoveMouse(to);
    MouseUp();
  }
};

}  // namespace lorv_test
