#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "framework/ports/window_map.h"
#include "framework/text/cstring.h"

// Real windows used by real keys and clicks.

// Keeps what came to one window, and answers as the test says.
class Probe : public lorv::MessageTarget {
 public:
  struct Message {
    UINT number;
    WPARAM w;
    LPARAM l;
  };
  HWND window = nullptr;
  std::vector<Message> seen;
  std::vector<MSG> offered;
  // True: it has answered by `result`. The window may be gone afterwards.
  std::function<bool(const Message&, LRESULT& result)> on;
  std::function<bool(MSG&)> take;

  Probe() = default;
  ~Probe() override;
  std::shared_ptr<lorv::WindowPeer> Peer() const { return lorv::DesktopInForce().Find(window); }
  lorv::WindowRequest Request(lorv::WindowKind kind, DWORD style, const RECT& place, HWND parent,
                              UINT id = 0);
  HWND Make(const lorv::WindowRequest& request) { return lorv::DesktopInForce().Create(request); }
  int Count(UINT message) const;
  // The codes of the WM_COMMAND messages of one control, in order.
  std::vector<UINT> Codes(UINT id) const;
  // Where a message stands among the seen; -1: not there.
  int At(UINT message) const;

  LRESULT HandleMessage(HWND at, UINT message, WPARAM w, LPARAM l) override;
  bool TakeMessage(MSG& message) override;
};

// A window of another thread, which comes to the front and stays until the end of the object.
class OtherProgram {
 public:
  OtherProgram() : thread_([this] { Run(); }) {}
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  ~OtherProgram();
  bool IsInFront() const { return window_ != nullptr && GetForegroundWindow() == window_; }
  HWND Window() const { return window_; }

 private:
  void Run();

  std::atomic<HWND> window_{nullptr};
  std::atomic<bool> done_{false};
  std::thread thread_;
};

// A desktop of real windows in force, with one top window in front.
class RealWindows : public testing::Test {
 protected:
  RealWindows();
  ~RealWindows() override;

  lorv::Desktop& Desk() { return *desktop_; }
  HWND MakeChild(Probe& probe, lorv::WindowKind kind, DWORD style, const RECT& place, UINT id);
  // Dispatches messages until nothing has come for a while.
  void Settle(DWORD quiet = 30);
  // Dispatches messages until it is so, or a good while is over.
  bool Until(const std::function<bool()>& is_so, DWORD patience = 5000);

  void KeyDown(int key) { SendKey(key, 0); }
  void KeyUp(int key) { SendKey(key, KEYEVENTF_KEYUP); }
  void Press(int key);
  void Type(LPCTSTR letters);  // A to Z, 0 to 9 and blanks, as keys
  void MoveMouse(POINT screen);
  void Button(bool down);
  void Click(POINT screen);
  static void SendKey(int key, DWORD flags);

 private:
  std::unique_ptr<lorv::Desktop> desktop_ = MakeDesktop();
  lorv::ScopedDesktop scope_{*desktop_};
  static std::unique_ptr<lorv::Desktop> MakeDesktop();

 protected:
  Probe top;  // 400 x 300 at 100, 100
};
