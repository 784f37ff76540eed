#include <limits>

#include "tests/conformance/behaviour_scene.h"

// Bars beyond 16 bits, input methods, halves of characters, the default button, controls of the host's own.

namespace lorv_test {
namespace {

SCROLLINFO BarOf(CWnd& window) {
  SCROLLINFO info = {};
  info.cbSize = sizeof(info);
  window.GetScrollInfo(SB_VERT, &info);
  return info;
}

void SetBar(Scene& s, CWnd& window, int least, int most, UINT page) {
  const std::size_t before = s.trace.size();
  SCROLLINFO info = {sizeof(SCROLLINFO), SIF_ALL, least, most, page, least, 0};
  window.SetScrollInfo(SB_VERT, &info);
  s.driver.Settle();
  s.trace.resize(before);
}

// Notes what a drag of its handle reports.
class DraggedSheet : public CWnd {
 public:
  int largest = 0;
  bool agrees = true;  // the message's 16 bits with all of them
  int ends = 0;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    if (message == WM_VSCROLL) Note(w);
    return CWnd::WindowProc(message, w, l);
  }

 private:
  void Note(WPARAM w) {
    if (LOWORD(w) == SB_ENDSCROLL) ++ends;
    if (LOWORD(w) != SB_THUMBTRACK) return;
    const int at = BarOf(*this).nTrackPos;
    largest = std::max(largest, at);
    agrees = agrees && HIWORD(w) == LOWORD(static_cast<DWORD>(at));
  }
};

class ComposingSheet : public CWnd {
 public:
  explicit ComposingSheet(Scene& scene) : scene_(scene) {}
  std::function<void()> at_start;

 protected:
  LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
    const lorv::Composition now = lorv::PeerOf(m_hWnd)->CompositionNow();
    if (message == WM_IME_STARTCOMPOSITION) {
      scene_.Say("begins");
      if (at_start) at_start();
      return 0;
    }
    if (message == WM_IME_COMPOSITION && (l & GCS_RESULTSTR) != 0)
      scene_.Say("commits " + now.committed.ToUtf8());
    else if (message == WM_IME_COMPOSITION)
      scene_.Say("shows " + now.text.ToUtf8());
    if (message == WM_CHAR) scene_.Say("char " + std::to_string(w));
    return CWnd::WindowProc(message, w, l);
  }

 private:
  Scene& scene_;
};

std::string DefaultOf(const CWnd& dialog) {
  std::string names;
  for (const int id : {IDOK, IDCANCEL}) {
    const CWnd* const button = dialog.GetDlgItem(id);
    if ((button->GetStyle() & BS_TYPEMASK) == BS_DEFPUSHBUTTON) names += Scene::NameOf(id) + " ";
  }
  return names + "is the default";
}

}  // namespace

std::vector<Step> ScrollSteps() {
  return {
      {"a handle dragged far tells all of its place",
       [](Scene& s) {
         DraggedSheet sheet;
         sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(150, 160, 200, 320), &s.frame, kExtra);
         SetBar(s, sheet, 0, 1000000, 100);
         s.driver.DragHandle(sheet.m_hWnd);
         s.Say(sheet.largest > 0xFFFF ? "beyond 16 bits" : "within");
         s.Say(sheet.agrees ? "the message agrees" : "the message does not agree");
         s.Say(sheet.ends > 0 ? "ended" : "not ended");
         s.Say("then at " + std::to_string(BarOf(sheet).nTrackPos));
       }},
      {"a range of all numbers",
       [](Scene& s) {
         SetBar(s, s.sheet, std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), 100);
         s.Say("page " + std::to_string(BarOf(s.sheet).nPage));
         SetBar(s, s.sheet, 0, 0, 0);
       }},
      {"a disabled window loses the capture",
       [](Scene& s) {
         s.sheet.SetCapture();
         s.sheet.EnableWindow(FALSE);
         s.Say(CWnd::GetCapture() == nullptr ? "free" : "held");
         s.sheet.EnableWindow(TRUE);
       }},
      {"a character of two halves one unit below the limit",
       [](Scene& s) {
         s.edit.SetLimitText(3);
         s.Fill(s.edit, _T("ab"));
         s.edit.SetSel(2, 2);
         s.edit.SendMessage(WM_CHAR, 0xD83D, 1);
         s.edit.SendMessage(WM_CHAR, 0xDE00, 1);
         s.driver.Settle();
         s.SayText(s.edit);
         s.edit.SetLimitText(30000);
         s.Fill(s.edit, _T(""));
       }},
  };
}

std::vector<Step> ClipboardSteps() {
  return {
      {"a content on the clipboard in three formats",
       [](Scene& s) {
         lorv::TransferData data;
         data.SetText(_T("1\t2\r\n"));
         data.SetHtml("<table><tr><td>墙</td></tr></table>");
         data.Set(_T("application/x-lorv-cells"), {0, 1, 255});
         lorv::Desktop& desktop = s.driver.Desktop();
         s.Say(desktop.SetClipboard(data) ? "put" : "refused");
         s.driver.Settle();
         s.Say(desktop.ClipboardText() == data.Text() ? "the text" : "another text");
         const auto html = desktop.ClipboardBytes(CString(lorv::TransferData::kHtml));
         s.Say(std::string(html.begin(), html.end()));
         s.Say(std::to_string(desktop.ClipboardBytes(_T("application/x-lorv-cells")).size()) + " bytes");
         s.Say(std::to_string(desktop.ClipboardBytes(_T("application/x-lorv-none")).size()) + " of none");
         desktop.SetClipboardText(_T("C30"));
         s.Say(std::to_string(desktop.ClipboardBytes(CString(lorv::TransferData::kHtml)).size()) +
               " behind a text");
       }},
      {"a mouse that is pressed goes some way before it drags",
       [](Scene& s) { s.Say(s.driver.Desktop().Metric(SM_CXDRAG) > 1 ? "some pixels" : "none"); }},
  };
}

std::vector<Step> CompositionSteps() {
  return {
      {"an input method in a window that draws itself",
       [](Scene& s) {
         ComposingSheet sheet(s);
         sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(280, 240, 380, 300), &s.frame, kExtra);
         s.Focus(sheet);
         lorv::PeerOf(sheet.m_hWnd)->SetCompositionCaret({20, 10, 21, 26});
         s.driver.Compose(_T("qiang"));
         s.driver.Commit(_T("墙"));
         s.driver.Settle();
       }},
      {"what it commits may go to an edit that was opened for it",
       [](Scene& s) {
         ComposingSheet sheet(s);
         CEdit edit;
         sheet.Create(nullptr, nullptr, WS_CHILD | WS_VISIBLE, CRect(280, 240, 380, 300), &s.frame, kExtra);
         s.Focus(sheet);
         sheet.at_start = [&] {
           edit.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, CRect(0, 0, 90, 20), &sheet, kExtra);
           edit.SetFocus();
         };
         s.driver.Compose(_T("qiang"));
         s.driver.Commit(_T("墙"));
         s.driver.Settle();
         s.Say(Scene::Text(edit).ToUtf8());
       }},
      {"a class takes over an edit of the host's, and gives it back",
       [](Scene& s) {
         class Taken : public CEdit {
          public:
           int keys = 0;

          protected:
           LRESULT WindowProc(UINT message, WPARAM w, LPARAM l) override {
             if (message == WM_KEYDOWN) ++keys;
             return CEdit::WindowProc(message, w, l);
           }
         };
         Taken taken;
         const HWND edit = s.driver.MakeHostEdit(s.frame.m_hWnd, {280, 240, 380, 264});
         s.Say(taken.SubclassWindow(edit) != 0 ? "taken over" : "refused");
         s.Focus(taken);
         s.driver.Press('K');
         s.Say("keys " + std::to_string(taken.keys) + ", text " + Scene::Text(taken).ToUtf8());
         taken.UnsubclassWindow();
         s.driver.Press('L');
         const auto peer = s.driver.Desktop().Find(edit);
         s.Say("keys " + std::to_string(taken.keys) + ", text " + peer->Text().ToUtf8());
         peer->Destroy();
       }},
  };
}

std::vector<Step> DefaultButtonSteps() {
  return {
      {"the push button with the focus looks the default, and is it",
       [](Scene& s) {
         TracedDialog dialog(s);
         s.driver.WhenModal([&] {
           s.Say(DefaultOf(dialog));
           dialog.GotoDlgCtrl(dialog.GetDlgItem(IDOK));
           s.driver.Press(VK_TAB);
           s.Say(DefaultOf(dialog));
           s.driver.Press(VK_TAB);
           s.Say(DefaultOf(dialog));
           s.driver.PressWith(VK_SHIFT, VK_TAB);
           s.driver.Press(VK_RETURN);
         });
         s.Say("result " + std::to_string(dialog.DoModal()));
       }},
      {"a button pressed by mouse too",
       [](Scene& s) {
         TracedDialog dialog(s);
         s.driver.WhenModal([&] {
           CWnd* const cancel = dialog.GetDlgItem(IDCANCEL);
           s.driver.MoveMouse(s.On(*cancel, 6, 6));
           s.driver.MouseDown();
           s.Say(DefaultOf(dialog));
           s.driver.MoveMouse(s.On(*cancel, -20, -20));
           s.driver.MouseUp();
           dialog.EndDialog(12);
         });
         s.Say("result " + std::to_string(dialog.DoModal()));
       }},
  };
}

}  // namespace lorv_test
