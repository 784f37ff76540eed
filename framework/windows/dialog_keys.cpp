#include <algorithm>

#include "framework/windows/dialog.h"

// What keys do in a dialog: Tab, Return, Escape, arrows within a group, letters with Alt. Messages come here
// before the control sees them, and a control keeps a key by its answer to WM_GETDLGCODE. It is the system's
// behaviour written once, so that it is the same on every desktop.

namespace {

using lorv::PeerOf;

bool Usable(HWND window) {
  return (PeerOf(window)->Style() & (WS_VISIBLE | WS_DISABLED)) == WS_VISIBLE;
}

bool IsTabStop(HWND window) {
  return Usable(window) && (PeerOf(window)->Style() & WS_TABSTOP) != 0;
}

UINT CodeOf(HWND window) {
  return static_cast<UINT>(lorv::DesktopInForce().Send(window, WM_GETDLGCODE, 0, 0));
}

bool IsPushButton(HWND window) {
  const auto peer = PeerOf(window);
  return peer->Kind() == lorv::WindowKind::Button && (peer->Style() & BS_TYPEMASK) <= BS_DEFPUSHBUTTON;
}

// An edit of several lines asks for all keys and still lets Return press the default button, but for
// ES_WANTRETURN.
bool KeepsReturn(HWND window) {
  const auto peer = PeerOf(window);
  if (peer->Kind() != lorv::WindowKind::Edit) return (CodeOf(window) & DLGC_WANTALLKEYS) != 0;
  constexpr DWORD kKeeps = ES_MULTILINE | ES_WANTRETURN;
  return (peer->Style() & kKeeps) == kKeeps;
}

// The control of the dialog in which the window stands: an inner window counts as its control.
HWND ControlOf(HWND dialog, HWND window) {
  for (HWND above = PeerOf(window)->Parent(); above != nullptr && above != dialog;
       above = PeerOf(window)->Parent())
    window = above;
  return window;
}

// "&&" is a plain "&" and marks nothing.
TCHAR MarkOf(HWND window) {
  const CString text = PeerOf(window)->Text();
  for (int i = 0; i + 1 < text.GetLength(); ++i)
    if (text.GetAt(i) == _T('&') && text.GetAt(++i) != _T('&')) return text.GetAt(i);
  return 0;
}

// Only letters of keys have two forms here; others are compared as they are.
TCHAR Folded(TCHAR letter) {
  return letter >= _T('a') && letter <= _T('z') ? static_cast<TCHAR>(letter - 32) : letter;
}

}  // namespace

void CDialog::SetDefID(UINT id) {
  default_id_ = id;
  ShowDefault();
}

// The push button that has the focus, or that is about to, else the dialog's own default: it alone looks like
// the one that Return presses.
void CDialog::ShowDefault(HWND coming) {
  if (m_hWnd == nullptr) return;
  const HWND focus = coming != nullptr ? coming : ControlOf(m_hWnd, lorv::DesktopInForce().Focus());
  const bool own = PeerOf(focus)->Parent() != m_hWnd || !IsPushButton(focus);
  for (const HWND child : PeerOf(m_hWnd)->Children()) {
    if (!IsPushButton(child)) continue;
    const auto peer = PeerOf(child);
    const UINT wanted = own ? peer->Id() == default_id_ : child == focus;
    // Sent only where something changes, as each message repaints a button.
    if ((peer->Style() & BS_TYPEMASK) != wanted)
      lorv::DesktopInForce().Send(child, BM_SETSTYLE, wanted != 0 ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
  }
}

BOOL CDialog::PreTranslateMessage(MSG* message) {
  if (m_hWnd == nullptr) return FALSE;
  // The frame of the default button moves before the button gets the focus by this press.
  if (message->message == WM_LBUTTONDOWN && IsPushButton(message->hwnd)) ShowDefault(message->hwnd);
  if (message->message == WM_KEYDOWN) ShowDefault();
  if (message->message == WM_SYSCHAR) return TakeMark(static_cast<TCHAR>(message->wParam));
  return message->message == WM_KEYDOWN && TakeKey(*message);
}

BOOL CDialog::TakeKey(const MSG& message) {
  const HWND focus = ControlOf(m_hWnd, message.hwnd);
  switch (const int key = static_cast<int>(message.wParam)) {
    case VK_TAB:
      if (PeerOf(focus)->Kind() != lorv::WindowKind::Edit &&
          (CodeOf(focus) & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) != 0)
        return FALSE;
      // An edit never keeps Tab, whatever it answers: Tab always leaves it.
      Step(!lorv::IsKeyDown(VK_SHIFT));
      return TRUE;
    case VK_RETURN:
      return TakeReturn(focus);
    case VK_ESCAPE:
      return TakeEscape();
    case VK_LEFT:
    case VK_UP:
    case VK_RIGHT:
    case VK_DOWN:
      return TakeArrow(focus, key);
    default:
      return FALSE;
  }
}

void CDialog::Step(bool forward) {
  const auto row = PeerOf(m_hWnd)->Children();
  const HWND focus = ControlOf(m_hWnd, lorv::DesktopInForce().Focus());
  const auto count = static_cast<int>(row.size());
  int at = static_cast<int>(std::find(row.begin(), row.end(), focus) - row.begin());
  // The focus is in no control: forward begins at the first one, backward at the last.
  if (at == count) at = forward ? -1 : 0;
  for (int i = 0; i < count; ++i) {
    // Once around at most, as there may be no place at all for the focus.
    at = (at + (forward ? 1 : count - 1)) % count;
    const HWND candidate = row[static_cast<std::size_t>(at)];
    if (!IsTabStop(candidate)) continue;
    GotoDlgCtrl(FromHandle(candidate));
    return;
  }
}

void CDialog::GotoDlgCtrl(CWnd* control) {
  if (control == nullptr) return;
  const HWND window = control->m_hWnd;
  control->SetFocus();
  ShowDefault();
  // Reached by key an edit has all its text selected, so that typing replaces it.
  if ((CodeOf(window) & DLGC_HASSETSEL) != 0) lorv::DesktopInForce().Send(window, EM_SETSEL, 0, -1);
}

void CDialog::Press(UINT id) {
  const CWnd* const button = GetDlgItem(static_cast<int>(id));
  // Without such a button the command is sent all the same: Escape closes a dialog that has no Cancel.
  if (button != nullptr && !Usable(button->m_hWnd)) return;
  SendMessage(WM_COMMAND, MAKEWPARAM(static_cast<LONG_PTR>(id), BN_CLICKED),
              button == nullptr ? 0 : reinterpret_cast<LPARAM>(button->m_hWnd));
}

BOOL CDialog::TakeReturn(HWND focus) {
  if (focus != m_hWnd && KeepsReturn(focus)) return FALSE;
  // A button that has the focus is pressed itself, whatever the default is.
  Press(focus != m_hWnd && IsPushButton(focus) ? PeerOf(focus)->Id() : default_id_);
  return TRUE;
}

BOOL CDialog::TakeEscape() {
  Press(IDCANCEL);
  return TRUE;
}

// From one control to the next of its group: from WS_GROUP to before the next WS_GROUP.
BOOL CDialog::TakeArrow(HWND focus, int key) {
  if (focus == m_hWnd || (CodeOf(focus) & (DLGC_WANTARROWS | DLGC_WANTALLKEYS)) != 0) return FALSE;
  const auto row = PeerOf(m_hWnd)->Children();
  const auto begins = [](HWND window) { return (PeerOf(window)->Style() & WS_GROUP) != 0; };
  const auto here = std::find(row.begin(), row.end(), focus);
  if (here == row.end()) return FALSE;
  auto first = here;
  while (first != row.begin() && !begins(*first)) --first;
  const auto last = std::find_if(here + 1, row.end(), begins);
  const auto count = static_cast<int>(last - first);
  int at = static_cast<int>(here - first);
  const int step = key == VK_RIGHT || key == VK_DOWN ? 1 : count - 1;
  for (int i = 0; i < count; ++i) {
    at = (at + step) % count;
    const HWND next = *(first + at);
    if (!Usable(next) || PeerOf(next)->Kind() == lorv::WindowKind::Static) continue;
    // By focus alone, without the selection of an edit's text that Tab makes.
    if (next != focus) PeerOf(next)->Focus();
    ShowDefault();
    return TRUE;
  }
  return TRUE;
}

BOOL CDialog::TakeMark(TCHAR letter) {
  const auto row = PeerOf(m_hWnd)->Children();
  for (auto at = row.begin(); at != row.end(); ++at) {
    const TCHAR mark = MarkOf(*at);
    // The text of an edit is the user's, and an ampersand in it marks nothing.
    if (mark == 0 || Folded(mark) != Folded(letter) || PeerOf(*at)->Kind() == lorv::WindowKind::Edit)
      continue;
    if (IsPushButton(*at)) {
      Press(PeerOf(*at)->Id());
      return TRUE;
    }
    // A label's mark stands for the control behind it.
    while (at != row.end() && PeerOf(*at)->Kind() == lorv::WindowKind::Static) ++at;
    if (at != row.end() && Usable(*at)) GotoDlgCtrl(FromHandle(*at));
    return TRUE;
  }
  return FALSE;
}
