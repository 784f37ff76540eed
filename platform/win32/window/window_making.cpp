#include "platform/win32/window/window_making.h"

#include <array>
#include <utility>

#include "platform/models/carried_fault.h"
#include "platform/win32/desktop/window_registry.h"
#include "platform/win32/window/win32_window.h"

// Makes windows of the system with an object behind each from its first message on. Every window is
// subclassed by a hook at its making, since the system's controls handle messages before their maker has the
// handle; the hook is there for the one call only.

namespace lorv {
namespace {

struct KindName {
  WindowKind kind;
  const wchar_t* name;
};

constexpr std::array<KindName, 6> kSystemKinds = {{{WindowKind::Dialog, L"#32770"},
                                                   {WindowKind::Edit, L"Edit"},
                                                   {WindowKind::Combo, L"ComboBox"},
                                                   {WindowKind::List, L"ListBox"},
                                                   {WindowKind::Button, L"Button"},
                                                   {WindowKind::Static, L"Static"}}};
constexpr const wchar_t* kOwnClass = L"LorvWindow";
constexpr DWORD kPopupStyle = WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_NOACTIVATE;

// The window that the system is making for us; null once it has a handle.
thread_local Win32Window* in_making = nullptr;

LRESULT CALLBACK Procedure(HWND handle, UINT message, WPARAM w, LPARAM l) {
  const auto window = RegisteredWindow(handle);
  if (window == nullptr) return DefWindowProcW(handle, message, w, l);
  return CarriedFault::Guarded([&] { return window->Receive(message, w, l); });
}

void Subclass(HWND handle, Win32Window& window) {
  RegisterWindow(handle, window.shared_from_this());
  // The original is known before the first message can ask for it.
  window.Begin(handle, reinterpret_cast<WNDPROC>(GetWindowLongPtrW(handle, GWLP_WNDPROC)));
  SetWindowLongPtrW(handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure));
}

// The system's controls handle their first messages before a maker sees the handle; only this hook comes
// earlier.
LRESULT CALLBACK NoteMaking(int code, WPARAM w, LPARAM l) {
  if (code == HCBT_CREATEWND && in_making != nullptr)
    Subclass(reinterpret_cast<HWND>(w), *std::exchange(in_making, nullptr));
  return CallNextHookEx(nullptr, code, w, l);
}

class MakingHook {
 public:
  explicit MakingHook(Win32Window& window) : before_(std::exchange(in_making, &window)) {}
  MakingHook(const MakingHook&) = delete;
  MakingHook& operator=(const MakingHook&) = delete;
  ~MakingHook() {
    in_making = before_;
    if (hook_ != nullptr) UnhookWindowsHookEx(hook_);
  }

 private:
  Win32Window* before_;
  HHOOK hook_ = SetWindowsHookExW(WH_CBT, &NoteMaking, nullptr, GetCurrentThreadId());
};

HINSTANCE OwnModule() {
  HMODULE module = nullptr;
  constexpr DWORD kByAddress =
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
  GetModuleHandleExW(kByAddress, reinterpret_cast<LPCWSTR>(&MakeNativeWindow), &module);
  return module;
}

// Its procedure is the system's own, so the class may stay when the library goes. Nothing is erased: the
// window's picture is made in memory.
void RegisterOwnClass(const wchar_t* name) {
  WNDCLASSEXW known = {};
  known.cbSize = sizeof(known);
  if (GetClassInfoExW(OwnModule(), name, &known)) return;
  WNDCLASSEXW fresh = {};
  fresh.cbSize = sizeof(fresh);
  // Without it the second press of a double click would come as another single one.
  fresh.style = CS_DBLCLKS;
  fresh.lpfnWndProc = &DefWindowProcW;
  fresh.hInstance = OwnModule();
  fresh.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  fresh.lpszClassName = name;
  RegisterClassExW(&fresh);
}

CString ClassToMake(const WindowRequest& request) {
  for (const KindName& known : kSystemKinds)
    if (known.kind == request.kind) return known.name;
  const CString name = request.class_name.IsEmpty() ? CString(kOwnClass) : request.class_name;
  RegisterOwnClass(name);
  return name;
}

HWND MakeRaw(const WindowRequest& request, const Win32Window& window) {
  const bool popup = request.kind == WindowKind::Popup;
  const bool child = (request.style & WS_CHILD) != 0;
  DWORD style = request.style | AddedStyle(request.kind, request.style);
  // Shown at the making, it would take the activation.
  if (popup) style &= ~static_cast<DWORD>(WS_VISIBLE);
  const RECT& place = request.place;
  const int height = window.HeightToAsk(place.bottom - place.top);
  // One argument is the number of a child and the menu of any other window.
  const auto menu = reinterpret_cast<HMENU>(static_cast<UINT_PTR>(child ? request.id : 0));
  return CreateWindowExW(request.ex_style | (popup ? kPopupStyle : 0), ClassToMake(request), request.text,
                         style, place.left, place.top, place.right - place.left, height, request.parent, menu,
                         OwnModule(), request.parameter);
}

// The part of a combo that is typed into may be taken over by a window class like any edit.
void SubclassInnerEdit(HWND combo) {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof(info);
  if (!GetComboBoxInfo(combo, &info) || info.hwndItem == nullptr || info.hwndItem == combo) return;
  const auto edit = std::make_shared<Win32Window>(WindowKind::Edit);
  Subclass(info.hwndItem, *edit);
}

}  // namespace

bool TakeOverWindow(HWND handle, Win32Window& window) {
  // Messages of another thread's window would run handlers there, which no class expects.
  if (GetWindowThreadProcessId(handle, nullptr) != GetCurrentThreadId()) return false;
  Subclass(handle, window);
  return true;
}

// Only where no other code has subclassed the window since: else its messages go through us to its end.
bool GiveBackWindow(HWND handle, WNDPROC original) {
  if (GetWindowLongPtrW(handle, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&Procedure)) return false;
  SetWindowLongPtrW(handle, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(original));
  return true;
}

WindowKind KindOfClass(const CString& name) {
  for (const KindName& known : kSystemKinds)
    if (name.CompareNoCase(known.name) == 0) return known.kind;
  return WindowKind::Custom;
}

HWND MakeNativeWindow(const WindowRequest& request) {
  const auto window = std::make_shared<Win32Window>(request);
  const HWND handle = CarriedFault::CallOut([&] {
    const MakingHook hook(*window);
    return MakeRaw(request, *window);
  });
  if (handle == nullptr || !window->Exists()) return nullptr;
  if (request.kind == WindowKind::Combo) SubclassInnerEdit(handle);
  window->Finish();
  if (request.kind == WindowKind::Popup && (request.style & WS_VISIBLE) != 0) window->Show(SW_SHOWNA);
  return window->Exists() ? handle : nullptr;
}

}  // namespace lorv
