#include <memory>

#include "tests/conformance/behaviour_scene.h"

// Modal dialogs, and windows that end in the middle of what is done with them.

namespace lorv_test {
namespace {

using Press = std::function<void(TracedDialog&)>;

void Modal(Scene& s, const Press& press) {
  TracedDialog dialog(s);
  s.driver.WhenModal([&] { press(dialog); });
  s.Say("result " + std::to_string(dialog.DoModal()));
}

int FocusId() {
  const CWnd* const focus = CWnd::GetFocus();
  return focus == nullptr ? 0 : focus->GetDlgCtrlID();
}

// An editor over the sheet, as a grid opens it.
struct Editor {
  Editor(Scene& s, LPCTSTR text) : edit(std::make_unique<TracedEdit>()) {
    const std::size_t before = s.trace.size();
    edit->Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, CRect(0, 0, 90, 20), &s.frame, kExtra);
    edit->SetWindowText(text);
    edit->SetFocus();
    s.driver.Settle();
    s.trace.resize(before);
  }
  std::unique_ptr<TracedEdit> edit;
};

}  // namespace

std::vector<Step> DialogSteps() {
  return {
      {"Return is OK", [](Scene& s) { Modal(s, [&s](TracedDialog&) { s.driver.Press(VK_RETURN); }); }},
      {"Esc is Cancel", [](Scene& s) { Modal(s, [&s](TracedDialog&) { s.driver.Press(VK_ESCAPE); }); }},
      {"the owner is disabled meanwhile",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& dialog) {
           s.Say(s.frame.IsWindowEnabled() != 0 ? "enabled" : "disabled");
           dialog.EndDialog(5);
         });
         s.Say(s.frame.IsWindowEnabled() != 0 ? "enabled" : "disabled");
       }},
      {"Tab walks around",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& dialog) {
           for (int i = 0; i < 5; ++i) {
             s.Say("at " + Scene::NameOf(FocusId()));
             s.driver.Press(VK_TAB);
           }
           s.driver.PressWith(VK_SHIFT, VK_TAB);
           s.Say("at " + Scene::NameOf(FocusId()));
           dialog.EndDialog(6);
         });
       }},
  };
}

std::vector<Step> DialogInputSteps() {
  return {
      {"Return stays in an edit that wants it",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& dialog) {
           dialog.GetDlgItem(kLines)->SetFocus();
           s.driver.Press(VK_RETURN);
           s.SayText(*dialog.GetDlgItem(kLines));
           dialog.EndDialog(7);
         });
       }},
      {"a window class is offered Return, Tab and Esc before the dialog",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& dialog) {
           dialog.takes = [&s](const MSG& message) {
             if (message.message == WM_KEYDOWN) s.Say("offered " + std::to_string(message.wParam));
             return message.message == WM_KEYDOWN;
           };
           for (const int key : {VK_RETURN, VK_TAB, VK_ESCAPE}) s.driver.Press(key);
           dialog.takes = nullptr;
           dialog.EndDialog(8);
         });
       }},
      {"a press on Cancel",
       [](Scene& s) { Modal(s, [&s](TracedDialog& dialog) { s.Click(*dialog.GetDlgItem(IDCANCEL)); }); }},
      {"typing in a dialog",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& dialog) {
           s.driver.Type(_T("ab"));
           s.SayText(*dialog.GetDlgItem(kEdit));
           s.driver.Press(VK_RETURN);
         });
       }},
      {"a dialog in a dialog",
       [](Scene& s) {
         Modal(s, [&s](TracedDialog& outer) {
           Modal(s, [&s](TracedDialog&) { s.driver.Press(VK_ESCAPE); });
           outer.EndDialog(9);
         });
       }},
  };
}

std::vector<Step> EndingSteps() {
  return {
      {"an editor ends inside its own key",
       [](Scene& s) {
         Editor editor(s, _T("x"));
         editor.edit->takes = [&](const MSG& message) {
           if (message.message != WM_KEYDOWN || message.wParam != VK_RETURN) return false;
           s.Say("end");
           editor.edit.reset();
           return true;
         };
         s.driver.Press(VK_RETURN);
         s.Say(s.frame.GetDlgItem(kExtra) == nullptr ? "gone" : "there");
       }},
      {"an editor ends inside its own update",
       [](Scene& s) {
         Editor editor(s, _T("x"));
         s.frame.on = [&](int id, int code) {
           if (id == kExtra && code == static_cast<int>(EN_UPDATE)) editor.edit->DestroyWindow();
         };
         s.driver.Type(_T("y"));
         s.frame.on = nullptr;
         s.Say(s.frame.GetDlgItem(kExtra) == nullptr ? "gone" : "there");
       }},
      {"a window ends inside a press",
       [](Scene& s) {
         TracedSheet other(s);
         other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame, kExtra);
         s.driver.Settle();
         other.on = [&other](const std::string& event) {
           if (event.rfind("press", 0) == 0) other.DestroyWindow();
         };
         s.Click(other);
       }},
      {"a window ends inside a posted message, the next is lost",
       [](Scene& s) {
         TracedSheet other(s);
         other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame, kExtra);
         other.on = [&other](const std::string& event) {
           if (event == "user 1") other.DestroyWindow();
         };
         other.PostMessage(WM_USER, 1);
         other.PostMessage(WM_USER, 2);
         s.driver.Settle();
       }},
  };
}

std::vector<Step> LateEndingSteps() {
  return {
      {"a timer's window ends in its timer",
       [](Scene& s) {
         TracedSheet other(s);
         other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame, kExtra);
         other.on = [&other](const std::string& event) {
           if (event == "timer 1") other.DestroyWindow();
         };
         other.SetTimer(1, 100, nullptr);
         s.driver.Advance(250);
       }},
      {"a window that has the capture ends",
       [](Scene& s) {
         TracedSheet other(s);
         other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame, kExtra);
         other.SetCapture();
         const std::size_t before = s.trace.size();
         other.DestroyWindow();
         s.trace.resize(before);
         s.Say(CWnd::GetCapture() == nullptr ? "free" : "held");
       }},
      {"a modal dialog's window ends under it",
       [](Scene& s) { Modal(s, [](TracedDialog& dialog) { dialog.DestroyWindow(); }); }},
      {"children end with the frame, from the inside out",
       [](Scene& s) {
         s.Focus(s.edit);
         const std::size_t before = s.trace.size();
         s.frame.DestroyWindow();
         std::vector<std::string> ends;
         for (std::size_t i = before; i < s.trace.size(); ++i)
           if (s.trace[i].find("sheet") != std::string::npos) ends.push_back(s.trace[i]);
         s.trace.resize(before);
         s.trace.insert(s.trace.end(), ends.begin(), ends.end());
         s.Say(s.edit.m_hWnd == nullptr && s.sheet.m_hWnd == nullptr ? "all gone" : "some left");
       }},
  };
}

}  // namespace lorv_test
