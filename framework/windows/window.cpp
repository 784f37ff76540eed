#include "framework/windows/window.h"

#include <utility>

// Life of a window and its object, and the way of a message: from the peer to HandleMessage, through the
// message table to a handler, else to the peer's default. A handler may destroy the window or the object;
// what comes after a handler asks the map, never a member.

IMPLEMENT_DYNCREATE(CWnd, CCmdTarget)

BEGIN_MESSAGE_MAP(CWnd, CCmdTarget)
END_MESSAGE_MAP()

namespace {

// The message that a thread is handling; those that wait for it stand below.
struct Handling {
  Handling(HWND at, UINT number, WPARAM first, LPARAM second)
      : window(at), message(number), w(first), l(second), before(std::exchange(now, this)) {}
  Handling(const Handling&) = delete;
  Handling& operator=(const Handling&) = delete;
  ~Handling() { now = before; }

  HWND window;
  UINT message;
  WPARAM w;
  LPARAM l;
  Handling* before;
  static thread_local Handling* now;
};

thread_local Handling* Handling::now = nullptr;

}  // namespace

// Unmapped first: messages of the destruction would come to an object that is half gone.
CWnd::~CWnd() {
  const HWND window = std::exchange(m_hWnd, nullptr);
  if (window == nullptr || FromHandlePermanent(window) != this) return;
  lorv::UnmapWindow(window);
  lorv::PeerOf(window)->Destroy();
}

BOOL CWnd::Create(LPCTSTR class_name, LPCTSTR text, DWORD style, const RECT& rect, CWnd* parent, UINT id) {
  return CreateEx(0, class_name, text, style, rect, parent, id);
}

BOOL CWnd::CreateEx(DWORD ex_style, LPCTSTR class_name, LPCTSTR text, DWORD style, const RECT& rect,
                    CWnd* parent, UINT id, LPVOID parameter) {
  lorv::WindowRequest request;
  request.kind = PeerKind();
  // A window without a caption that is no child is a tip or a list that drops down: it must not take the
  // activation.
  if (request.kind == lorv::WindowKind::Custom && (style & WS_CHILD) == 0)
    request.kind = (style & WS_CAPTION) == WS_CAPTION ? lorv::WindowKind::Top : lorv::WindowKind::Popup;
  request.class_name = class_name;
  request.text = text;
  request.style = style;
  request.ex_style = ex_style;
  request.place = rect;
  request.parent = parent == nullptr ? nullptr : parent->m_hWnd;
  request.id = id;
  request.parameter = parameter;
  return Make(request);
}

BOOL CWnd::Make(lorv::WindowRequest& request) {
  if (m_hWnd != nullptr) return FALSE;
  request.attach = [this](HWND window) {
    // Before the first message, so that a class sees WM_CREATE.
    Attach(window);
    PreSubclassWindow();
  };
  // The object may be gone when Create returns: only the answer is looked at.
  return lorv::DesktopInForce().Create(request) != nullptr;
}

BOOL CWnd::DestroyWindow() {
  if (m_hWnd == nullptr) return FALSE;
  lorv::PeerOf(m_hWnd)->Destroy();
  return TRUE;
}

BOOL CWnd::Attach(HWND window) {
  // One object a window and one window an object: a second would get half of the messages.
  if (window == nullptr || m_hWnd != nullptr || FromHandlePermanent(window) != nullptr) return FALSE;
  m_hWnd = window;
  lorv::MapWindow(window, this);
  return TRUE;
}

HWND CWnd::Detach() {
  const HWND window = std::exchange(m_hWnd, nullptr);
  if (window != nullptr) lorv::UnmapWindow(window);
  return window;
}

BOOL CWnd::SubclassWindow(HWND window) {
  const auto peer = lorv::PeerOf(window);
  if (!peer->Exists() || FromHandlePermanent(window) != nullptr || m_hWnd != nullptr) return FALSE;
  // The peer first: until it passes messages on, there is nothing to attach to.
  if (!peer->TakeOver() || !Attach(window)) return FALSE;
  PreSubclassWindow();
  return TRUE;
}

HWND CWnd::UnsubclassWindow() {
  const HWND window = Detach();
  lorv::PeerOf(window)->GiveBack();
  return window;
}

BOOL CWnd::SubclassDlgItem(UINT id, CWnd* parent) {
  CWnd* const child = parent == nullptr ? nullptr : parent->GetDlgItem(static_cast<int>(id));
  return child != nullptr && SubclassWindow(child->m_hWnd);
}

LRESULT CWnd::HandleMessage(HWND window, UINT message, WPARAM w, LPARAM l) {
  const Handling handling(window, message, w, l);
  // The last message that a window gets; behind it handle and object part.
  if (message != WM_NCDESTROY) return WindowProc(message, w, l);
  // The window goes whatever the handler does. From then on the object may be gone; the map knows.
  const auto finish = [this, window] {
    if (lorv::MappedWindow(window) == this) Finish(window);
  };
  LRESULT result = 0;
  try {
    result = WindowProc(message, w, l);
  } catch (...) {
    finish();
    throw;
  }
  finish();
  return result;
}

void CWnd::Finish(HWND window) {
  lorv::UnmapWindow(window);
  m_hWnd = nullptr;
  // Last of all, as an object may delete itself in it.
  PostNcDestroy();
}

LRESULT CWnd::WindowProc(UINT message, WPARAM w, LPARAM l) {
  LRESULT result = 0;
  return OnWndMsg(message, w, l, &result) ? result : DefWindowProc(message, w, l);
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM w, LPARAM l) {
  return lorv::PeerOf(m_hWnd)->Default(message, w, l);
}

LRESULT CWnd::Default() {
  // The arguments as they came: a handler that changed its own copies does not change the default.
  const Handling* const now = Handling::now;
  return now == nullptr ? 0 : DefWindowProc(now->message, now->w, now->l);
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM w, LPARAM l, LRESULT* result) {
  if (message == WM_COMMAND) return OnCommand(w, l);
  if (message == WM_NOTIFY) return OnNotify(w, l, result);
  const AFX_MSGMAP_ENTRY* const entry = lorv::FindEntry(GetMessageMap(), message, 0, 0);
  if (entry == nullptr) return FALSE;
  // The answer goes by the call's record: the object may be gone when the handler returns.
  lorv::HandlerCall call{w, l, 0, nullptr, 0};
  entry->handler(*this, call);
  *result = call.result;
  return TRUE;
}

BOOL CWnd::OnCommand(WPARAM w, LPARAM l) {
  const HWND control = reinterpret_cast<HWND>(l);
  LRESULT unused = 0;
  if (control != nullptr && Reflect(control, WM_COMMAND, w, l, &unused)) return TRUE;
  return OnCmdMsg(LOWORD(w), HIWORD(w), nullptr, nullptr);
}

BOOL CWnd::OnNotify(WPARAM w, LPARAM l, LRESULT* result) {
  NMHDR* const header = reinterpret_cast<NMHDR*>(l);
  // A message without its header comes from a program that made it up.
  if (header == nullptr) return FALSE;
  if (Reflect(header->hwndFrom, WM_NOTIFY, w, l, result)) return TRUE;
  const UINT id = static_cast<UINT>(header->idFrom);
  const AFX_MSGMAP_ENTRY* const entry = lorv::FindEntry(GetMessageMap(), WM_NOTIFY, header->code, id);
  if (entry == nullptr)
    return OnCmdMsg(id, static_cast<int>(static_cast<DWORD>(MAKELONG(LOWORD(header->code), WM_NOTIFY))),
                    header, nullptr);
  lorv::HandlerCall call{w, l, id, header, 0};
  entry->handler(*this, call);
  *result = call.result;
  return TRUE;
}

// Asks the control itself, before its parent's tables.
BOOL CWnd::Reflect(HWND control, UINT message, WPARAM w, LPARAM l, LRESULT* result) {
  CWnd* const child = FromHandlePermanent(control);
  // Only objects of the program have tables, and a window is not its own parent.
  if (child == nullptr || child == this) return FALSE;
  NMHDR* const header = message == WM_NOTIFY ? reinterpret_cast<NMHDR*>(l) : nullptr;
  const UINT code = header == nullptr ? HIWORD(w) : header->code;
  const AFX_MSGMAP_ENTRY* const entry =
      lorv::FindEntry(child->GetMessageMap(), message | lorv::kReflected, code, LOWORD(w));
  if (entry == nullptr) return FALSE;
  lorv::HandlerCall call{w, l, LOWORD(w), header, 0};
  entry->handler(*child, call);
  *result = call.result;
  return TRUE;
}

BOOL CWnd::PreTranslateMessage(MSG* /*message*/) {
  return FALSE;
}

LRESULT CWnd::SendMessage(UINT message, WPARAM w, LPARAM l) const {
  return m_hWnd == nullptr ? 0 : lorv::DesktopInForce().Send(m_hWnd, message, w, l);
}

BOOL CWnd::PostMessage(UINT message, WPARAM w, LPARAM l) const {
  return m_hWnd != nullptr && lorv::DesktopInForce().Post(m_hWnd, message, w, l);
}
