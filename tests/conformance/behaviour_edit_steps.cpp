#include "tests/conformance/behaviour_scene.h"

// What edits do with keys, texts and selections.

namespace lorv_test {
namespace {

void Select(Scene& s, int start, int end) {
  s.edit.SetSel(start, end);
  s.SaySelection(s.edit);
}

void PressAndSay(Scene& s, TracedEdit& edit, std::initializer_list<int> keys) {
  for (const int key : keys) s.driver.Press(key);
  s.SaySelection(edit);
}

}  // namespace

std::vector<Step> EditSteps() {
  return {
      {"an edit takes the focus", [](Scene& s) { s.Focus(s.edit); }},
      {"a letter tells update, then change", [](Scene& s) { s.driver.Type(_T("a")); }},
      {"more letters with Shift", [](Scene& s) { s.driver.Type(_T("Bc")), s.SayText(s.edit); }},
      {"a text set by program is told", [](Scene& s) { s.edit.SetWindowText(_T("KL12")); }},
      {"so is the same text again", [](Scene& s) { s.edit.SetWindowText(_T("KL12")); }},
      {"the empty text into an empty edit is told",
       [](Scene& s) {
         s.Fill(s.edit, _T(""));
         s.edit.SetWindowText(_T(""));
       }},
      {"no selection is a place", [](Scene& s) { s.Fill(s.edit, _T("abcdef")), Select(s, 3, 3); }},
      {"-1 is the end", [](Scene& s) { Select(s, 2, -1); }},
      {"all", [](Scene& s) { Select(s, 0, -1); }},
      {"a reversed pair", [](Scene& s) { Select(s, 5, 2); }},
      {"none", [](Scene& s) { Select(s, -1, 0); }},
      {"behind the end", [](Scene& s) { Select(s, 4, 99); }},
      {"a letter replaces the selection", [](Scene& s) { s.driver.Type(_T("x")), s.SayText(s.edit); }},
  };
}

std::vector<Step> EditKeySteps() {
  return {
      {"Home and End", [](Scene& s) { PressAndSay(s, s.edit, {VK_HOME}), PressAndSay(s, s.edit, {VK_END}); }},
      {"Left and Right",
       [](Scene& s) {
         PressAndSay(s, s.edit, {VK_LEFT, VK_LEFT, VK_RIGHT});
       }},
      {"Shift and Left select",
       [](Scene& s) { s.driver.PressWith(VK_SHIFT, VK_LEFT), s.SaySelection(s.edit); }},
      {"Shift and Home", [](Scene& s) { s.driver.PressWith(VK_SHIFT, VK_HOME), s.SaySelection(s.edit); }},
      {"Delete takes the selection", [](Scene& s) { s.driver.Press(VK_DELETE), s.SayText(s.edit); }},
      {"Back takes one",
       [](Scene& s) { s.driver.Press(VK_END), s.driver.Press(VK_BACK), s.SayText(s.edit); }},
      {"replacing by program",
       [](Scene& s) { s.edit.SetSel(0, 0), s.edit.ReplaceSel(_T("W")), s.SayText(s.edit); }},
      {"the limit stops letters",
       [](Scene& s) {
         s.Fill(s.edit, _T("abc"));
         s.edit.SetLimitText(3);
         s.driver.Press(VK_END);
         s.driver.Type(_T("d"));
         s.SayText(s.edit);
       }},
      {"but no program",
       [](Scene& s) { s.edit.SetWindowText(_T("abcdef")), s.edit.SetLimitText(0), s.SayText(s.edit); }},
      {"read-only keeps its text",
       [](Scene& s) {
         s.edit.SetReadOnly(TRUE);
         s.driver.Type(_T("z"));
         s.driver.Press(VK_DELETE);
         s.edit.SetReadOnly(FALSE);
         s.SayText(s.edit);
       }},
  };
}

std::vector<Step> EditStateSteps() {
  return {
      {"copy and paste",
       [](Scene& s) {
         s.Fill(s.edit, _T("梁C30"));
         s.edit.SetSel(0, 2);
         s.edit.Copy();
         s.edit.SetSel(4, 4);
         s.edit.Paste();
         s.SayText(s.edit);
       }},
      {"undo", [](Scene& s) { s.edit.Undo(), s.SayText(s.edit); }},
      {"modified or not",
       [](Scene& s) {
         s.Say(s.edit.GetModify() != 0 ? "modified" : "clean");
         s.edit.SetModify(FALSE);
         s.Say(s.edit.GetModify() != 0 ? "modified" : "clean");
       }},
      {"a character beyond 16 bits counts two",
       [](Scene& s) {
         s.Fill(s.edit, _T("a\U0001F600b"));
         s.Say("length " + std::to_string(s.edit.GetWindowTextLength()));
       }},
      {"the window class may keep a key from the edit",
       [](Scene& s) {
         s.Fill(s.edit, _T("k"));
         s.edit.takes = [&s](const MSG& message) {
           if (message.message != WM_KEYDOWN) return false;
           s.Say("offered " + std::to_string(message.wParam));
           return message.wParam == VK_DELETE;
         };
         s.edit.SetSel(0, 0);
         s.driver.Press(VK_DELETE);
         s.edit.takes = nullptr;
         s.SayText(s.edit);
       }},
      {"a disabled edit cannot be reached by a press",
       [](Scene& s) {
         s.Focus(s.sheet);
         s.edit.EnableWindow(FALSE);
         s.Click(s.edit);
         s.SayFocus();
         s.edit.EnableWindow(TRUE);
       }},
      {"a press gives it the focus", [](Scene& s) { s.Click(s.edit), s.SayFocus(); }},
  };
}

std::vector<Step> LineSteps() {
  return {
      {"an edit of lines takes the focus", [](Scene& s) { s.Focus(s.lines); }},
      {"a text set by program is not told there",
       [](Scene& s) {
         s.lines.SetWindowText(_T("ab\r\ncde\r\n"));
         s.SayText(s.lines);
       }},
      {"lines are counted with the last empty one",
       [](Scene& s) {
         s.Say("lines " + std::to_string(s.lines.GetLineCount()));
         s.Say("second at " + std::to_string(s.lines.LineIndex(1)));
         s.Say("second has " + std::to_string(s.lines.LineLength(5)));
         s.Say("line of 5 is " + std::to_string(s.lines.LineFromChar(5)));
         s.Say("second is " + s.lines.GetLineText(1).ToUtf8());
       }},
      {"Return breaks a line",
       [](Scene& s) {
         s.lines.SetSel(1, 1);
         s.driver.Press(VK_RETURN);
         s.SayText(s.lines);
         s.SaySelection(s.lines);
       }},
      {"Back joins them", [](Scene& s) { s.driver.Press(VK_BACK), s.SayText(s.lines); }},
      {"Down and Up keep the column",
       [](Scene& s) { PressAndSay(s, s.lines, {VK_DOWN}), PressAndSay(s, s.lines, {VK_UP}); }},
      {"End stops at the line's end", [](Scene& s) { PressAndSay(s, s.lines, {VK_END}); }},
      {"Right passes a line end at once", [](Scene& s) { PressAndSay(s, s.lines, {VK_RIGHT}); }},
      {"a long line is broken by the width",
       [](Scene& s) {
         CString wide(_T('x'), 200);
         s.Fill(s.lines, wide);
         s.Say(s.lines.GetLineCount() > 1 ? "broken" : "one line");
       }},
  };
}

}  // namespace lorv_test
