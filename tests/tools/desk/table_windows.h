#pragma once

#include <algorithm>

#include "platform/headless/services/headless_platform.h"
#include "tests/support/data.h"
#include "tests/support/headless_desk.h"
#include "tests/support/print.h"
#include "tools/lorv-desk/table/table_window.h"
#include "tools/lorv/language/spoken_language.h"

namespace lorv::tool {

using test::Utf8;

// A table's window on the desktop in memory; what it asks the user is answered by `dialogs`.
class TableWindows : public lorv_test::Desk {
 protected:
  TableWindows() : ports_scope_(Ports()) { SpeakLanguage(Language::kEnglish); }

  void Open(const std::string& bytes) {
    test::WriteBytes(folder_.Path() / "t.csv", bytes);
    window = std::make_unique<TableWindow>((folder_.Path() / "t.csv").string());
    ASSERT_TRUE(window->Read());
    window->ShowWindow(SW_SHOW);
    window->Grid().SetFocus();
    Run();
  }
  std::string Bytes() const { return test::ReadBytes(folder_.Path() / "t.csv"); }
  void Type(TextView text) {
    desktop.Type(text);
    Run();
  }
  void Press(int key) {
    desktop.Press(key);
    Run();
  }
  void PressControl(int key) {
    desktop.PressWith(VK_CONTROL, key);
    Run();
  }
  bool Give(LPCTSTR name) {
    const bool done = window->Commands().Run(name);
    Run();
    return done;
  }
  // The next menu is answered with the entry of that name.
  void Choose(LPCTSTR name) {
    const auto names = TableCommands::MenuNames();
    const auto place = std::find(names.begin(), names.end(), CString(name)) - names.begin();
    desktop.AnswerMenu(static_cast<UINT>(place) + 1);
  }
  CString At(int row, int column) { return window->Table().GetItem(row, column)->FormatItem(); }
  void Close() {
    window->PostMessage(WM_CLOSE);
    Run();
  }
  void Protect(bool on) {
    std::filesystem::permissions(folder_.Path() / "t.csv",
                                 on ? std::filesystem::perms::owner_read : std::filesystem::perms::owner_all);
  }

  HeadlessDialogs dialogs;
  HeadlessShell shell;
  std::unique_ptr<TableWindow> window;

 private:
  Platform Ports() {
    Platform ports = PortsInForce();
    ports.dialogs = &dialogs;
    ports.shell = &shell;
    return ports;
  }

  test::ScratchFolder folder_;
  ScopedPlatform ports_scope_;
};

}  // namespace lorv::tool
