#pragma once

#include <memory>

#include "framework/native/native_types.h"

// The user's hands at a window system below Qt. What they do comes to Qt as the window system would send it.
namespace lorv_test {

class QtUser {
 public:
  QtUser() = default;
  QtUser(const QtUser&) = delete;
  QtUser& operator=(const QtUser&) = delete;
  virtual ~QtUser() = default;

  virtual void Key(int key, bool down) = 0;  // by the framework's number
  virtual void MoveMouse(POINT screen) = 0;
  virtual void Button(bool down) = 0;  // the left one
  virtual void RightButton(bool down) = 0;
  // A window that is not ours comes to the front, and stays to the end of this object.
  virtual void BringOtherProgram() = 0;
  // Waits until all that was done so far, by the user or by the program, has come to Qt; true if it brought
  // anything.
  virtual bool Arrive() = 0;
};

// That of the test program: without a window system Qt is handed the events where window systems hand theirs;
// on X11 the server's keyboard and mouse are moved.
std::unique_ptr<QtUser> MakeQtUser();

}  // namespace lorv_test
