#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "comm/AdLorvComm.h"
#include "framework/ports/desktop_port.h"
#include "framework/windows/controls.h"

// Windows as the suite has them: dialogs, a frame with control bars, the restore dialog.
namespace lorv_test {

using Notes = std::vector<std::string>;

// A window that notes the messages that panels are asked by, and refuses to close if the test asks for it.
class Panel : public CWnd {
 public:
  explicit Panel(lorv::WindowKind kind = lorv::WindowKind::Dialog) : kind_(kind) {}
  Notes notes;
  bool refuses = false;
  CWnd* takes_along = nullptr;  // ends when this one is asked to close

  Panel& Open(LPCTSTR title, bool visible = true);
  Panel& OpenIn(CWnd& parent, LPCTSTR class_name, LPCTSTR title);

 protected:
  lorv::WindowKind PeerKind() const override { return kind_; }
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override;

 private:
  lorv::WindowKind kind_;
};

class CDlgReback : public Panel {
 public:
  using Panel::Panel;
  DECLARE_DYNAMIC(CDlgReback)
};

// What is for derived classes only.
class OpenedComm : public CAdLorvComm {
 public:
  using CAdLorvComm::CloseWindowProc;
  using CAdLorvComm::EnumWindowsClassProc;
  using CAdLorvComm::EnumWindowsTitleProc;
  using CAdLorvComm::FindWindowExist;
};

// A desktop in force for one test.
class WindowsOfThread : public testing::Test {
 protected:
  explicit WindowsOfThread(std::unique_ptr<lorv::Desktop> desktop)
      : desktop_(std::move(desktop)), scope_(*desktop_) {}

  lorv::Desktop& Desk() { return *desktop_; }
  // Dispatches all that waits.
  void Settle();
  static bool Stands(const CWnd& window) { return window.m_hWnd != nullptr; }

 private:
  std::unique_ptr<lorv::Desktop> desktop_;
  lorv::ScopedDesktop scope_;
};

}  // namespace lorv_test
