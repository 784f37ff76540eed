#include "platform/win32/window/win32_window.h"

#include <algorithm>

#include "framework/drawing/geometry.h"
#include "framework/ports/drop_port.h"
#include "framework/ports/window_map.h"
#include "platform/models/carried_fault.h"
#include "platform/win32/desktop/modal_loop.h"
#include "platform/win32/desktop/win32_drag.h"
#include "platform/win32/desktop/window_registry.h"
#include "platform/win32/window/accessible_provider.h"
#include "platform/win32/window/window_making.h"

// Life of a window and the way of its messages. The handle belongs to the system and the object to the
// registry; a message holds the object for its time, so a handler may destroy the window. Exceptions end at
// the procedure and go on from the call of ours.

namespace lorv {

Win32Window::Win32Window(const WindowRequest& request)
    : kind_(request.kind), added_style_(AddedStyle(request.kind, request.style)), request_(&request) {}

Win32Window::Win32Window(HWND window)
    : handle_(window), phase_(Phase::kLiving), ours_(false), kind_(WindowKind::Custom) {
  kind_ = KindOfClass(ClassName());
}

DWORD AddedStyle(WindowKind kind, DWORD style) {
  const bool own = kind == WindowKind::Custom || kind == WindowKind::Top || kind == WindowKind::Popup;
  DWORD added = own ? WS_CLIPCHILDREN : 0;  // what is drawn never covers a child
  if (kind == WindowKind::Popup && (style & WS_CHILD) == 0) added |= WS_POPUP;
  return added & ~style;
}

bool Win32Window::DrawsItself() const {
  if (taken_over_) return false;
  return kind_ == WindowKind::Custom || kind_ == WindowKind::Top || kind_ == WindowKind::Popup;
}

void Win32Window::Begin(HWND window, WNDPROC original) {
  handle_ = window;
  original_ = original;
}

bool Win32Window::Exists() const {
  return phase_ != Phase::kGone && handle_ != nullptr && (ours_ || IsWindow(handle_));
}

LRESULT Win32Window::Receive(UINT message, WPARAM w, LPARAM l) {
  // A handler that looks up the handle must find the window, and this object must outlive its call.
  const auto keep = shared_from_this();
  if (message == WM_NCDESTROY) return Ended(w, l);
  // Before the object has the handle no class can get messages, but for the first that it waits for.
  if (phase_ == Phase::kMaking) return message == WM_CREATE ? Created(w, l) : Default(message, w, l);
  NoteComposition(message);
  if (message == WM_DESTROY) {
    EndDrops();
    CancelComposition();
    destroying_ = true;
  }
  if (message == WM_GETOBJECT)
    if (const LRESULT tree = AnswerGetObject(handle_, w, l)) return tree;
  if (message == WM_PAINT) return Painted(w, l);
  return Deliver(message, w, l);
}

LRESULT Win32Window::Painted(WPARAM w, LPARAM l) {
  struct Within {
    explicit Within(int& count) : count_(count) { ++count_; }
    Within(const Within&) = delete;
    Within& operator=(const Within&) = delete;
    ~Within() { --count_; }
    int& count_;
  };
  const Within within(painting_);
  return Deliver(WM_PAINT, w, l);
}

// The system holds its own end of a drop target for as long as the window lives.
bool Win32Window::AcceptDrops(bool on) {
  if (!Exists() || !RegisterDrops(handle_, on)) return false;
  drops_ = on;
  return true;
}

void Win32Window::EndDrops() {
  if (std::exchange(drops_, false)) RegisterDrops(handle_, false);
}

LRESULT Win32Window::Deliver(UINT message, WPARAM w, LPARAM l) {
  // Windows without an object need no desktop in force: the system may send until the process ends.
  return MappedWindow(handle_) == nullptr ? Default(message, w, l) : DeliverMessage(handle_, message, w, l);
}

LRESULT Win32Window::Created(WPARAM w, LPARAM l) {
  LRESULT result = -1;
  CarriedFault::Guarded([&] {
    request_->attach(handle_);
    phase_ = Phase::kLiving;
    result = Deliver(WM_CREATE, w, l);
    return true;
  });
  phase_ = Phase::kLiving;
  // The request is the maker's, on its stack: it is not touched after this.
  request_ = nullptr;
  return result;
}

LRESULT Win32Window::Ended(WPARAM w, LPARAM l) {
  const HWND window = handle_;
  if (phase_ == Phase::kLiving) CarriedFault::Guarded([&] { return Deliver(WM_NCDESTROY, w, l); });
  // The control's memory is freed here even if the class kept the message to itself.
  if (!saw_the_end_) Default(WM_NCDESTROY, w, l);
  phase_ = Phase::kGone;
  UnmapWindow(window);
  UnmapDropReceiver(window);
  ForgetWindow(window);
  WakeModalLoop();
  return 0;
}

void Win32Window::Finish() {
  if (DrawsItself() || kind_ == WindowKind::Dialog || font_ != nullptr) return;
  // The system's controls begin with its old font of dots; dialogs set their own later.
  font_ = SharedFont(SystemDialogFont(Dpi()));
  Default(WM_SETFONT, reinterpret_cast<WPARAM>(font_->Handle()), FALSE);
}

void Win32Window::Destroy() {
  // A handler of the destruction may ask for it once more.
  if (!Exists() || std::exchange(destroying_, true)) return;
  const bool gone = CarriedFault::CallOut([&] {
    FreeModalOwner(handle_);
    return DestroyWindow(handle_) != 0;
  });
  if (!gone) destroying_ = false;
}

LRESULT Win32Window::Default(UINT message, WPARAM w, LPARAM l) {
  if (!Exists()) return 0;
  // Of a window that is not ours nothing is known behind its procedure: the message is sent as it is.
  if (!ours_) return CarriedFault::CallOut([&] { return SendMessageW(handle_, message, w, l); });
  // The control's own procedure frees its memory at it and must see it once only.
  if (message == WM_NCDESTROY && std::exchange(saw_the_end_, true)) return 0;
  // A tip or a drop-down must not take the focus from what it belongs to.
  if (message == WM_MOUSEACTIVATE && kind_ == WindowKind::Popup) return MA_NOACTIVATE;
  if (DrawsItself() && message == WM_GETFONT) return reinterpret_cast<LRESULT>(font_handle_);
  if (DrawsItself() && message == WM_SETFONT) {
    font_handle_ = reinterpret_cast<HFONT>(w);
    return 0;
  }
  if (DrawsItself() && message == WM_DPICHANGED) return Place(*reinterpret_cast<const RECT*>(l)), 0;
  if (kind_ == WindowKind::Edit && message == WM_CHAR && RefusesHalf(w)) return 0;
  const auto keep = shared_from_this();
  const LRESULT answer =
      CarriedFault::CallOut([&] { return CallWindowProcW(original_, handle_, message, w, l); });
  if (message == WM_SETREDRAW) SetRedraw(w != 0);
  return answer;
}

bool Win32Window::TakeOver() {
  if (!Exists()) return false;
  if (ours_) return true;
  // From now on the handle is answered for by this object.
  taken_over_ = TakeOverWindow(handle_, *this);
  ours_ = taken_over_;
  return taken_over_;
}

void Win32Window::GiveBack() {
  if (!Exists() || !taken_over_) return;
  const HWND window = handle_;
  if (!GiveBackWindow(window, original_)) return;
  phase_ = Phase::kGone;
  ForgetWindow(window);
}

// The system's edit takes the halves of a character one by one, and the first alone where both do not fit.
bool Win32Window::RefusesHalf(WPARAM unit) {
  const auto ask = [this](UINT message) { return CallWindowProcW(original_, handle_, message, 0, 0); };
  const LRESULT selected = ask(EM_GETSEL);
  const int room =
      static_cast<int>(ask(EM_GETLIMITTEXT) - ask(WM_GETTEXTLENGTH)) + HIWORD(selected) - LOWORD(selected);
  if (!halves_.Refuses(static_cast<TCHAR>(unit), room)) return false;
  const HWND parent = GetParent(handle_);
  if (IsHighHalf(static_cast<TCHAR>(unit)) && parent != nullptr)
    CarriedFault::CallOut([&] {
      const WPARAM code = MAKEWPARAM(GetDlgCtrlID(handle_), EN_MAXTEXT);
      return SendMessageW(parent, WM_COMMAND, code, reinterpret_cast<LPARAM>(handle_.load()));
    });
  return true;
}

CString Win32Window::ClassName() const {
  wchar_t name[256] = {};
  return Exists() ? CString(name, GetClassNameW(handle_, name, 256)) : CString();
}

HWND Win32Window::Parent() const {
  const bool child = Exists() && (GetWindowLongPtrW(handle_, GWL_STYLE) & WS_CHILD) != 0;
  return child ? GetAncestor(handle_, GA_PARENT) : nullptr;
}

HWND Win32Window::Owner() const {
  return Exists() ? GetWindow(handle_, GW_OWNER) : nullptr;
}

std::vector<HWND> Win32Window::Children() const {
  std::vector<HWND> children;
  if (!Exists()) return children;
  for (HWND at = GetWindow(handle_, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT))
    children.push_back(at);
  return children;
}

UINT Win32Window::Id() const {
  return Parent() == nullptr ? 0 : static_cast<UINT>(GetWindowLongPtrW(handle_, GWLP_ID));
}

void Win32Window::SetId(UINT id) {
  if (Parent() != nullptr) SetWindowLongPtrW(handle_, GWLP_ID, static_cast<LONG_PTR>(id));
}

}  // namespace lorv
