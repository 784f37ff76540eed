#include <cstdio>
#include <memory>
#include <string>

#include "framework/windows/window.h"
#include "platform/choice/desktop_choice.h"
#include "platform/headless/desktop/headless_desktop.h"

// Chooses and uses desktops as its words say, and prints what came of each. A process of its own, as the
// choice is made once in a process.

namespace {

using lorv::DesktopKind;

std::string Chosen() {
  const auto kind = lorv::ChosenKind();
  if (!kind.has_value()) return "nothing";
  return *kind == DesktopKind::Headless ? "headless" : *kind == DesktopKind::Qt ? "qt" : "windows";
}

// A window that is made, notified of its size and ended shows that the two libraries are of one piece.
std::string Use() {
  lorv::Desktop& desktop = lorv::DesktopInForce();
  CWnd window;
  window.Create(nullptr, nullptr, WS_OVERLAPPEDWINDOW, CRect(10, 10, 210, 110), nullptr, 0);
  const bool made = desktop.Find(window.m_hWnd) != nullptr && CWnd::FromHandle(window.m_hWnd) == &window;
  const bool in_memory = dynamic_cast<lorv::HeadlessDesktop*>(&desktop) != nullptr;
  return std::string(in_memory ? "in memory" : "on a screen") + (made ? "" : ", no window");
}

void Scope() {
  lorv::HeadlessDesktop desktop;
  const lorv::ScopedDesktop scope(desktop);
  std::printf("%s\n", &lorv::DesktopInForce() == &desktop ? "the scope's" : "another");
}

void Do(const std::string& word) {
  if (word == "headless") lorv::ChooseDesktop(DesktopKind::Headless);
  if (word == "qt") lorv::ChooseDesktop(DesktopKind::Qt);
  if (word == "windows") lorv::ChooseDesktop(DesktopKind::Windows);
  if (word == "scope") return Scope();
  const std::string used = word == "use" ? ", " + Use() : "";
  std::printf("%s%s\n", Chosen().c_str(), used.c_str());
}

}  // namespace

int main(int count, char** words) {
  for (int i = 1; i < count; ++i) {
    try {
      Do(words[i]);
    } catch (CResourceException* failure) {
      TCHAR reason[1000] = {};
      failure->GetErrorMessage(reason, 1000);
      failure->Delete();
      std::printf("refused: %s\n", CString(reason).ToUtf8().c_str());
    }
  }
  return 0;
}
