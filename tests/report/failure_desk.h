#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/headless_desk.h"
#include "tests/support/print.h"

namespace lorv::test {

// A machine and a desktop in memory, on which dialogs are opened and used by steps.
class FailureDesk : public lorv_test::Desk {
 protected:
  FailureDesk() {
    machine_.process.versions[_T("C:\\Suite\\suite.exe \\StringFileInfo\\040904B0\\FileVersion")] =
        _T("10.0.1");
    machine_.process.free_memory = 2048 * 1024;
  }

  // Runs the dialog; the steps are taken one by one while it or one above it is up.
  template <class Dialog>
  int Modal(Dialog& dialog, std::vector<std::function<void()>> steps) {
    for (auto& step : steps) desktop.WhenIdle(std::move(step));
    return static_cast<int>(dialog.DoModal());
  }
  static CWnd* Now() { return CWnd::GetActiveWindow(); }
  static std::string TextAt(int id) {
    CString text;
    const CWnd* const item = Now()->GetDlgItem(id);
    if (item == nullptr) return "(no such control)";
    item->GetWindowText(text);
    return Utf8(text);
  }
  // A click in the middle of a control.
  void ClickOn(int id) {
    CRect rect;
    Now()->GetDlgItem(id)->GetWindowRect(rect);
    desktop.Click(rect.CenterPoint());
  }
  std::function<void()> Click(int id) {
    return [this, id] { ClickOn(id); };
  }
  std::function<void()> Type(LPCTSTR text) {
    return [this, text] { desktop.Type(CString(text).View()); };
  }
  std::function<void()> Press(int key) {
    return [this, key] { desktop.Press(key); };
  }
  static std::vector<std::string> InUtf8(const std::vector<CString>& texts) {
    std::vector<std::string> result;
    for (const CString& text : texts) result.push_back(Utf8(text));
    return result;
  }

  HeadlessPlatform machine_;
  ScopedPlatform machine_scope_{machine_.Ports()};
};

using Texts = std::vector<std::string>;

}  // namespace lorv::test
