#include <algorithm>
#include <stdexcept>

#include "tests/conformance/behaviour_scene.h"

// A handler that throws while the handle of a bar is dragged, captures that are taken away, the place of an
// input method's candidates, dialogs of a fixed size.

namespace lorv_test {
namespace {

// Throws once at the first step of its handle.
class FaultyBar : public CWnd {
 public:
  bool throws = true;
  int steps = 0;
  int ends = 0;
  SCROLLINFO Bar() {
    SCROLLINFO info = {};
    info.cbSize = sizeof(info);
    GetScrollInfo(SB_VERT, &info);
    return info;
  }
  void SetBar() {
    SCROLLINFO info = {sizeof(SCROLLINFO), SIF_ALL, 0, 1000000, 100, 0, 0};
    SetScrollInfo(SB_VERT, &info);
  }

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_VSCROLL && LOWORD(w) == SB_ENDSCROLL) ++ends;
    if (message == WM_VSCROLL && LOWORD(w) == SB_THUMBTRACK) {
      ++steps;
      if (std::exchange(throws, false)) throw std::runtime_error("handle");
    }
    return CWnd::WindowProc(message, w, l);
  }
};

void UseOwnCursor(Scene& s) {
  lorv::Desktop& desktop = s.driver.Desktop();
  const std::vector<DWORD> pixels(16 * 16, 0xFF0000FF);
  const int own = desktop.MakeCursor({16, 16, pixels.data()}, {3, 4});
  desktop.SetCursor(own);
  s.Say(own >= lorv::kFirstOwnCursor && desktop.Cursor() == own ? "own" : "another");
  desktop.EndCursor(own);
  s.Say(desktop.Cursor() == lorv::kCursorArrow ? "arrow" : "another");
  desktop.SetCursor(own);
  s.Say(desktop.MakeCursor({16, 16, nullptr}, {3, 4}) == 0 ? "refused" : "made");
  desktop.SetCursor(lorv::kCursorArrow);
}

void ReportOtherDots(Scene& s) {
  CWnd other;
  other.Create(nullptr, _T("other"), WS_OVERLAPPEDWINDOW | WS_VISIBLE, CRect(80, 80, 280, 180), nullptr, 0);
  s.driver.Settle();
  RECT wanted = CRect(90, 100, 490, 300);
  other.SendMessage(WM_DPICHANGED, MAKEWPARAM(192, 192), reinterpret_cast<LPARAM>(&wanted));
  s.driver.Settle();
  CRect now;
  other.GetWindowRect(now);
  s.Say(now.Size() == CRect(wanted).Size() ? "as large" : "of another size");
  other.DestroyWindow();
  s.frame.SetForegroundWindow();
}

// The button may still be down where the exception came out of the middle of the drag.
void LetGo(Scene& s) {
  s.driver.Settle();
  s.driver.MoveMouse(s.On(s.frame, 450, 350));
  s.driver.MouseUp();
}

}  // namespace

std::vector<Step> SystemLoopSteps() {
  return {
      {"a handler throws while a handle is dragged, and the next drag is as ever",
       [](Scene& s) {
         FaultyBar bar;
         bar.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE | WS_VSCROLL, CRect(390, 10, 480, 210), &s.frame,
                    kExtra);
         bar.SetBar();
         s.driver.Settle();
         SayThrown(s, [&] { s.driver.DragHandle(bar.m_hWnd); });
         LetGo(s);
         s.Say(bar.ends > 0 ? "ended" : "not ended");
         s.Say("rests at " + std::to_string(bar.Bar().nPos));
         bar.steps = 0;
         SayThrown(s, [&] { s.driver.DragHandle(bar.m_hWnd); });
         LetGo(s);
         s.Say(bar.steps > 0 ? "dragged" : "not dragged");
       }},
  };
}

std::vector<Step> TakenAwaySteps() {
  return {
      {"another window takes the capture",
       [](Scene& s) {
         s.sheet.SetCapture();
         s.frame.SetCapture();
         s.Say(CWnd::GetCapture() == &s.frame ? "held by the frame" : "held by another");
         s.driver.Desktop().SetCapture(nullptr);
         s.Say(CWnd::GetCapture() == nullptr ? "free" : "held");
       }},
      {"candidates stand at the caret",
       [](Scene& s) {
         const auto peer = lorv::PeerOf(s.sheet.m_hWnd);
         for (const RECT& caret : {CRect(20, 10, 21, 26), CRect(5, 40, 7, 60)}) {
           peer->SetCompositionCaret(caret);
           const CRect at(s.driver.CandidatesAt(s.sheet.m_hWnd));
           s.Say("off " + std::to_string(at.left) + "," + std::to_string(at.top) + " to " +
                 std::to_string(at.right) + "," + std::to_string(at.bottom));
         }
       }},
      {"a cursor of one's own is shown until it ends", UseOwnCursor},
      {"told of other dots a top window takes the place that comes with them", ReportOtherDots},
      {"a fixed dialog is as large as what it holds",
       [](Scene& s) {
         TracedDialog dialog(s);
         s.driver.WhenModal([&] {
           const auto peer = lorv::PeerOf(dialog.m_hWnd);
           const CSize wanted(peer->FrameSize(CRect(peer->ClientRect()).Size()));
           s.Say(CRect(peer->WindowRect()).Size() == wanted ? "as large" : "of another size");
           s.Say((peer->Style() & WS_THICKFRAME) == 0 ? "fixed" : "sizable");
           dialog.EndDialog(10);
         });
         s.Say("result " + std::to_string(dialog.DoModal()));
       }},
  };
}

}  // namespace lorv_test
