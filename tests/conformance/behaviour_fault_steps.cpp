#include <stdexcept>

#include "framework/windows/menu.h"
#include "tests/conformance/behaviour_scene.h"

// Handlers that throw, in each of the loops that may run around them. The caller of the loop has the
// exception, and everything goes on as before.

namespace lorv_test {
namespace {

// The sheet throws once at that event.
void ThrowAt(Scene& s, const std::string& wanted) {
  s.sheet.on = [&s, wanted](const std::string& event) {
    if (event != wanted) return;
    s.sheet.on = nullptr;
    throw std::runtime_error(wanted);
  };
}

UINT Popup(Scene& s) {
  CMenu menu;
  menu.CreatePopupMenu();
  menu.AppendMenu(MF_STRING, 57666, _T("one"));
  menu.AppendMenu(MF_STRING, 57667, _T("two"));
  const POINT at = s.On(s.sheet, 5, 5);
  return static_cast<UINT>(menu.TrackPopupMenu(TPM_RETURNCMD, at.x, at.y, &s.frame));
}

}  // namespace

std::vector<Step> FaultSteps() {
  return {
      {"a posted message's handler throws",
       [](Scene& s) {
         ThrowAt(s, "user 31");
         s.sheet.PostMessage(WM_USER, 31);
         s.sheet.PostMessage(WM_USER, 32);
         SayThrown(s, [&s] { s.driver.Settle(); });
         s.driver.Settle();
       }},
      {"a sent message's handler throws",
       [](Scene& s) {
         ThrowAt(s, "user 33");
         SayThrown(s, [&s] { s.sheet.SendMessage(WM_USER, 33); });
         s.sheet.SendMessage(WM_USER, 34);
       }},
      {"a key's handler throws",
       [](Scene& s) {
         s.Focus(s.sheet);
         ThrowAt(s, "key 113");
         SayThrown(s, [&s] { s.driver.Press(VK_F2); });
         s.driver.Settle();
         s.driver.Press(VK_F2);
       }},
      {"a timer's handler throws",
       [](Scene& s) {
         ThrowAt(s, "timer 5");
         s.sheet.SetTimer(5, 50, nullptr);
         SayThrown(s, [&s] { s.driver.Advance(300); });
         s.sheet.KillTimer(5);
         s.driver.Settle();
       }},
      {"the one who loses the focus throws",
       [](Scene& s) {
         s.Focus(s.sheet);
         ThrowAt(s, "leave");
         SayThrown(s, [&s] { s.edit.SetFocus(); });
         s.SayFocus();
       }},
      {"the one who loses the capture throws",
       [](Scene& s) {
         s.sheet.SetCapture();
         ThrowAt(s, "capture lost");
         SayThrown(s, [&s] { s.driver.Desktop().SetCapture(nullptr); });
         s.Say(CWnd::GetCapture() == nullptr ? "free" : "held");
       }},
      {"a handler throws while its window ends",
       [](Scene& s) {
         TracedSheet other(s);
         other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame, kExtra);
         other.on = [](const std::string& event) {
           if (event == "destroy") throw std::runtime_error("destroy");
         };
         SayThrown(s, [&other] { other.DestroyWindow(); });
         s.Say(s.frame.GetDlgItem(kExtra) == nullptr && other.m_hWnd == nullptr ? "gone" : "there");
       }},
  };
}

std::vector<Step> LoopFaultSteps() {
  return {
      {"a handler throws under a modal dialog",
       [](Scene& s) {
         ThrowAt(s, "user 35");
         TracedDialog dialog(s);
         s.driver.WhenModal([&s] { s.sheet.PostMessage(WM_USER, 35); });
         SayThrown(s, [&dialog] { dialog.DoModal(); });
         s.Say(s.frame.IsWindowEnabled() != 0 ? "enabled" : "disabled");
         s.Say(dialog.m_hWnd == nullptr ? "gone" : "there");
       }},
      {"the next modal dialog is as ever",
       [](Scene& s) {
         TracedDialog dialog(s);
         s.driver.WhenModal([&s] { s.driver.Press(VK_ESCAPE); });
         s.Say("result " + std::to_string(dialog.DoModal()));
       }},
      {"a handler throws under a menu",
       [](Scene& s) {
         ThrowAt(s, "user 36");
         s.driver.AnswerMenu(0);
         s.driver.WhenMenu([&s] { s.sheet.PostMessage(WM_USER, 36); });
         SayThrown(s, [&s] { Popup(s); });
         s.Say(s.driver.Desktop().MenuUp() ? "menu up" : "no menu");
       }},
      {"the next menu is as ever",
       [](Scene& s) {
         s.driver.AnswerMenu(57667);
         s.Say(std::to_string(Popup(s)));
       }},
      {"the end of the program leaves a modal dialog, with its code",
       [](Scene& s) {
         TracedDialog dialog(s);
         s.driver.WhenModal([&s] { s.driver.Desktop().Quit(7); });
         dialog.DoModal();
         s.Say(s.frame.IsWindowEnabled() != 0 ? "enabled" : "disabled");
         s.driver.Settle();
         s.Say("code " + std::to_string(s.driver.Desktop().QuitCode().value_or(-1)));
       }},
  };
}

}  // namespace lorv_test
