#include "tests/conformance/behaviour_scene.h"

// Windows that end inside each of the callbacks that they have.

namespace lorv_test {
namespace {

// Another sheet ends at that event, which the work brings about.
Step EndsAt(const char* name, const char* wanted, const std::function<void(Scene&, TracedSheet&)>& work) {
  return {name, [wanted = std::string(wanted), work](Scene& s) {
            TracedSheet other(s);
            other.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(300, 240, 380, 300), &s.frame,
                         kExtra);
            s.driver.Settle();
            s.trace.resize(s.trace.size() - 2);  // its making
            other.on = [&other, wanted](const std::string& event) {
              if (event == wanted) other.DestroyWindow();
            };
            work(s, other);
            s.driver.Settle();
            s.Say(s.frame.GetDlgItem(kExtra) == nullptr && other.m_hWnd == nullptr ? "gone" : "there");
          }};
}

}  // namespace

std::vector<Step> EndInCallbackSteps() {
  return {
      EndsAt("a window ends as it has the focus", "focus",
             [](Scene& s, TracedSheet& other) { s.Focus(other), s.SayFocus(); }),
      EndsAt("as it loses the focus", "leave",
             [](Scene& s, TracedSheet& other) { s.Focus(other), s.Focus(s.sheet), s.SayFocus(); }),
      EndsAt("as it hears a key", "key 65",
             [](Scene& s, TracedSheet& other) { s.Focus(other), s.driver.Type(_T("a")); }),
      EndsAt("as it hears a character", "char 97",
             [](Scene& s, TracedSheet& other) { s.Focus(other), s.driver.Type(_T("a")); }),
      EndsAt("as the button goes up", "release 30,40",
             [](Scene& s, TracedSheet& other) { s.Click(other, 30, 40); }),
      EndsAt("as it is sized", "size 50,40",
             [](Scene&, TracedSheet& other) { other.MoveWindow(300, 240, 50, 40); }),
      EndsAt("as it is disabled", "disabled", [](Scene&, TracedSheet& other) { other.EnableWindow(FALSE); }),
      EndsAt("as it loses the capture", "capture lost",
             [](Scene& s, TracedSheet& other) {
               other.SetCapture();
               s.driver.Desktop().SetCapture(nullptr);
               s.Say(CWnd::GetCapture() == nullptr ? "free" : "held");
             }),
      EndsAt("as an input method begins", "composition begins",
             [](Scene& s, TracedSheet& other) { s.Focus(other), s.driver.Compose(_T("q")); }),
      EndsAt("as it is told to end", "destroy", [](Scene&, TracedSheet& other) { other.DestroyWindow(); }),
  };
}

}  // namespace lorv_test
