#include "framework/windows/menu.h"
#include "tests/conformance/behaviour_scene.h"

// Lists, drop-down lists, buttons and menus.

namespace lorv_test {
namespace {

void SayChosen(Scene& s, const CComboBox& combo) {
  s.Say("chosen " + std::to_string(combo.GetCurSel()));
}

// Two columns and a submenu, as the option lists of cells have them.
void Fill(CMenu& menu, CMenu& more) {
  menu.CreatePopupMenu();
  more.CreatePopupMenu();
  for (UINT i = 0; i < 6; ++i)
    menu.AppendMenu(MF_STRING | (i == 3 ? MF_MENUBARBREAK : 0U), 57665 + i,
                    CString(static_cast<TCHAR>(_T('a') + i)));
  more.AppendMenu(MF_STRING, 57680, _T("z"));
  more.AppendMenu(MF_STRING | MF_GRAYED, 57681, _T("gray"));
  menu.AppendMenu(MF_POPUP, reinterpret_cast<UINT_PTR>(more.m_hMenu), _T("more\t"));
}

void Track(Scene& s, UINT answer) {
  CMenu menu;
  CMenu more;
  Fill(menu, more);
  s.driver.AnswerMenu(answer);
  const POINT at = s.On(s.sheet, 10, 10);
  s.Say("menu " + std::to_string(menu.TrackPopupMenu(TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, &s.sheet)));
}

}  // namespace

std::vector<Step> ListSteps() {
  return {
      {"a choice by program is not told",
       [](Scene& s) {
         s.choice.SetCurSel(1);
         s.list.SetCurSel(2);
         s.SayText(s.choice);
       }},
      {"bad indices",
       [](Scene& s) {
         s.Say(std::to_string(s.choice.GetLBTextLen(9)) + " " + std::to_string(s.list.GetTextLen(9)));
         s.Say(std::to_string(s.list.InsertString(9, _T("x"))) + " " +
               std::to_string(s.list.DeleteString(9)));
       }},
      {"texts are found without regard to case",
       [](Scene& s) {
         s.Say(std::to_string(s.list.FindStringExact(-1, _T("c30"))) + " " +
               std::to_string(s.choice.FindString(1, _T("c"))));
       }},
      {"a closed list follows the arrows",
       [](Scene& s) {
         s.Focus(s.choice);
         s.driver.Press(VK_DOWN);
         SayChosen(s, s.choice);
       }},
      {"F4 drops it, Return takes",
       [](Scene& s) {
         s.driver.Press(VK_F4);
         s.Say(s.choice.GetDroppedState() != 0 ? "down" : "up");
         s.driver.Press(VK_DOWN);
         s.driver.Press(VK_RETURN);
         SayChosen(s, s.choice);
       }},
  };
}

std::vector<Step> TypedListSteps() {
  return {
      {"an edit stands inside",
       [](Scene& s) {
         s.Focus(s.typed);
         const CWnd* const focus = CWnd::GetFocus();
         s.Say(focus != nullptr && focus->GetParent() == &s.typed ? "inner focus" : "no inner focus");
       }},
      {"typing into it", [](Scene& s) { s.driver.Type(_T("q")), s.SayText(s.typed), SayChosen(s, s.typed); }},
      {"keys of the inner edit are offered to the drop-down list",
       [](Scene& s) {
         s.typed.takes = [&s](const MSG& message) {
           if (message.message == WM_KEYDOWN) s.Say("offered " + std::to_string(message.wParam));
           return message.message == WM_KEYDOWN && message.wParam == VK_RETURN;
         };
         s.driver.Press(VK_RETURN);
         s.typed.takes = nullptr;
       }},
      {"a choice by program fills it", [](Scene& s) { s.typed.SetCurSel(3), s.SayText(s.typed); }},
      {"the list follows a press",
       [](Scene& s) { s.Click(s.list, 20, 4), s.Say(std::to_string(s.list.GetCurSel())); }},
      {"and the arrows",
       [](Scene& s) { s.driver.Press(VK_DOWN), s.Say(std::to_string(s.list.GetCurSel())); }},
      {"End goes to the last",
       [](Scene& s) { s.driver.Press(VK_END), s.Say(std::to_string(s.list.GetCurSel())); }},
      {"a double press", [](Scene& s) { s.driver.DoubleClick(s.On(s.list, 20, 4)); }},
  };
}

std::vector<Step> ButtonSteps() {
  return {
      {"a button is pressed", [](Scene& s) { s.Click(s.push), s.SayFocus(); }},
      {"by the space bar", [](Scene& s) { s.driver.Press(VK_SPACE); }},
      {"by program", [](Scene& s) { s.push.SendMessage(BM_CLICK); }},
      {"released outside it is no click",
       [](Scene& s) {
         s.driver.MoveMouse(s.On(s.push, 5, 5));
         s.driver.MouseDown();
         s.driver.MoveMouse(s.On(s.push, 5, 200));
         s.driver.MouseUp();
       }},
      {"a check box changes", [](Scene& s) { s.Click(s.check), s.Say(std::to_string(s.check.GetCheck())); }},
      {"radio buttons clear each other",
       [](Scene& s) {
         s.Click(s.first);
         s.Click(s.second);
         s.Say(std::to_string(s.first.GetCheck()) + std::to_string(s.second.GetCheck()));
       }},
  };
}

std::vector<Step> MenuSteps() {
  return {
      {"a menu gives its command", [](Scene& s) { Track(s, 57666); }},
      {"from its second column", [](Scene& s) { Track(s, 57669); }},
      {"from its submenu", [](Scene& s) { Track(s, 57680); }},
      {"nothing when left", [](Scene& s) { Track(s, 0); }},
      {"while a menu is up no window is offered a key",
       [](Scene& s) {
         s.Focus(s.sheet);
         s.sheet.takes = [&s](const MSG& message) {
           if (message.message == WM_KEYDOWN) s.Say("offered in a menu");
           return false;
         };
         Track(s, 57667);
         s.sheet.takes = nullptr;
       }},
  };
}

}  // namespace lorv_test
