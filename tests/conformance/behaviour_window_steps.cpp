#include <thread>

#include "framework/drawing/device_context.h"
#include "tests/conformance/behaviour_scene.h"

// Plain windows: focus, keys, mouse, capture, timers, the queue, painting.

namespace lorv_test {
namespace {

std::string Held(Scene& s) {
  const auto down = [&s](int key) { return s.driver.Desktop().KeyState(key) < 0; };
  return std::string(down(VK_CONTROL) ? "ctrl " : "") + (down(VK_SHIFT) ? "shift " : "") +
         (down(VK_LBUTTON) ? "button" : "");
}

void SayHeldAt(Scene& s, const std::string& wanted) {
  s.sheet.on = [&s, wanted](const std::string& event) {
    if (event == wanted) s.Say("held: " + Held(s));
  };
}

}  // namespace

std::vector<Step> WindowSteps() {
  return {
      {"the focus goes over", [](Scene& s) { s.Focus(s.edit), s.Focus(s.sheet), s.SayFocus(); }},
      {"a key and its character", [](Scene& s) { s.driver.Type(_T("a")); }},
      {"a key without a character", [](Scene& s) { s.driver.Press(VK_F2); }},
      {"modifiers are down in the handler",
       [](Scene& s) {
         SayHeldAt(s, "key 68");
         s.driver.PressWith(VK_CONTROL, 'D');
         s.sheet.on = nullptr;
       }},
      {"a press comes with its place", [](Scene& s) { s.Click(s.sheet, 30, 40); }},
      {"the button is really down",
       [](Scene& s) {
         SayHeldAt(s, "press 30,40");
         s.Click(s.sheet, 30, 40);
         s.sheet.on = nullptr;
       }},
      {"a captured mouse is followed outside",
       [](Scene& s) {
         s.sheet.SetCapture();
         s.driver.MoveMouse(s.On(s.sheet, 130, 20));
         s.driver.MouseDown();
         s.driver.MouseUp();
         s.driver.Desktop().SetCapture(nullptr);
       }},
      {"another window takes the capture",
       [](Scene& s) {
         s.sheet.SetCapture();
         s.list.SetCapture();
         s.Say(CWnd::GetCapture() == &s.list ? "list has it" : "list has it not");
         s.driver.Desktop().SetCapture(nullptr);
       }},
  };
}

std::vector<Step> QueueSteps() {
  return {
      {"a posted message waits",
       [](Scene& s) {
         s.sheet.PostMessage(WM_USER, 1);
         s.sheet.SendMessage(WM_USER, 2);
         s.driver.Settle();
       }},
      {"posted messages keep their order",
       [](Scene& s) {
         for (WPARAM i = 3; i < 6; ++i) s.sheet.PostMessage(WM_USER, i);
         s.driver.Settle();
       }},
      {"a handler's post comes after the handler",
       [](Scene& s) {
         s.sheet.on = [&s](const std::string& event) {
           if (event == "user 6") s.sheet.PostMessage(WM_USER, 7);
           if (event == "user 6") s.Say("posted");
         };
         s.sheet.SendMessage(WM_USER, 6);
         s.driver.Settle();
         s.sheet.on = nullptr;
       }},
      {"a timer comes due and is stopped",
       [](Scene& s) {
         s.sheet.SetTimer(5, 200, nullptr);
         s.sheet.on = [&s](const std::string& event) {
           if (event == "timer 5") s.sheet.KillTimer(5);
         };
         s.driver.Advance(300);
         s.driver.Advance(300);
         s.sheet.on = nullptr;
       }},
  };
}

std::vector<Step> PlaceSteps() {
  return {
      {"a size is told once",
       [](Scene& s) { s.sheet.MoveWindow(10, 10, 90, 80), s.sheet.MoveWindow(10, 10, 90, 80); }},
      {"bars take room from the client area",
       [](Scene& s) {
         s.sheet.ShowScrollBar(static_cast<UINT>(SB_VERT), TRUE);
         CRect client;
         s.sheet.GetClientRect(client);
         s.Say(client.Width() < 90 ? "narrower" : "as wide");
         const std::size_t before = s.trace.size();
         s.sheet.ShowScrollBar(static_cast<UINT>(SB_VERT), FALSE);
         s.trace.resize(before);
       }},
      {"a bar keeps its position in the range",
       [](Scene& s) {
         SCROLLINFO info = {};
         info.cbSize = sizeof(info);
         info.fMask = SIF_ALL | SIF_DISABLENOSCROLL;
         info.nMax = 99;
         info.nPage = 10;
         info.nPos = 500;
         const std::size_t before = s.trace.size();
         s.sheet.SetScrollInfo(SB_VERT, &info);
         s.trace.resize(before);
         s.Say(std::to_string(s.sheet.GetScrollPos(SB_VERT)));
       }},
      {"disabled and enabled", [](Scene& s) { s.sheet.EnableWindow(FALSE), s.sheet.EnableWindow(TRUE); }},
  };
}

std::vector<Step> PaintSteps() {
  return {
      {"painting outside a paint message",
       [](Scene& s) {
         CClientDC dc(&s.sheet);
         dc.FillSolidRect(CRect(0, 0, 20, 20), RGB(255, 0, 0));
         const auto pixels = dc.Surface().Pixels(CRect(5, 5, 6, 6));
         s.Say(pixels.size() == 1 && (pixels[0] & 0xFFFFFFU) == 0xFF0000U ? "red" : "not red");
       }},
      {"painting from a second thread",
       [](Scene& s) {
         std::thread painter([&s] {
           CClientDC dc(&s.sheet);
           for (int i = 0; i < 20; ++i)
             dc.FillSolidRect(CRect(0, 0, 20, 20), RGB(0, static_cast<BYTE>(12 * i), 0));
         });
         painter.join();
         s.Say("painted");
       }},
      {"text measures add up",
       [](Scene& s) {
         CClientDC dc(&s.sheet);
         // Each is rounded to whole pixels.
         const int more = dc.GetTextExtent(_T("KLKL")).cx - 2 * dc.GetTextExtent(_T("KL")).cx;
         s.Say(more >= -1 && more <= 1 ? "twice" : "not twice");
       }},
      {"another program has the focus",
       [](Scene& s) {
         s.Focus(s.sheet);
         s.driver.LeaveProgram();
         s.Say(s.driver.Desktop().Focus() == nullptr ? "no window" : "a foreign window");
         s.Say(CWnd::GetFocus() == &s.sheet ? "ours" : "not ours");
         s.frame.SetForegroundWindow();
         s.Focus(s.sheet);
       }},
  };
}

}  // namespace lorv_test
