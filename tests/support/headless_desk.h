#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/windows/controls.h"
#include "platform/headless/desktop/headless_desktop.h"

// A headless desktop in force for one test, with a top window that notes its messages.
namespace lorv_test {

class NotingWindow : public CWnd {
 public:
  std::vector<std::string> notes;

  void Note(const std::string& what) { notes.push_back(what); }
  std::vector<std::string> Taken() { return std::exchange(notes, {}); }

 protected:
  BOOL OnCommand(WPARAM w, LPARAM l) override {
    notes.push_back("command " + std::to_string(LOWORD(w)) + " " + std::to_string(HIWORD(w)));
    return CWnd::OnCommand(w, l);
  }
};

class Desk : public testing::Test {
 protected:
  Desk() : scope_(desktop) {
    top.Create(nullptr, _T("top"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(100, 100, 508, 432), nullptr, 0);
    desktop.RunUntilIdle();
    top.Taken();
  }

  void Run() { desktop.RunUntilIdle(); }
  // A point of the window's client area, on the screen.
  static CPoint On(const CWnd& window, int x, int y) {
    POINT at = {x, y};
    window.ClientToScreen(&at);
    return CPoint(at);
  }
  static CString TextOf(const CWnd& window) {
    CString text;
    window.GetWindowText(text);
    return text;
  }

  lorv::HeadlessDesktop desktop;
  lorv::ScopedDesktop scope_;
  NotingWindow top;
};

using Notes = std::vector<std::string>;

}  // namespace lorv_test
