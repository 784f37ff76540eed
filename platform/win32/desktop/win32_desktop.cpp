#include "platform/win32/desktop/win32_desktop.h"

#include <algorithm>
#include <array>
#include <map>

#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/win32/controls/native_menu.h"
#include "platform/win32/desktop/message_pump.h"
#include "platform/win32/desktop/modal_loop.h"
#include "platform/win32/desktop/win32_clipboard.h"
#include "platform/win32/desktop/win32_drag.h"
#include "platform/win32/desktop/window_registry.h"
#include "platform/win32/drawing/gdi_canvas.h"
#include "platform/win32/window/accessible_provider.h"
#include "platform/win32/window/win32_window.h"
#include "platform/win32/window/window_making.h"

// The desktop of Windows behind the port: each operation is the system's own call. Calls in which the system
// may run handlers go through CarriedFault, as no exception may pass through the system.

namespace lorv {
namespace {

constexpr std::array kShapes = {kCursorArrow,    kCursorText,         kCursorWait,
                                kCursorCross,    kCursorSizeDiagonal, kCursorSizeAcross,
                                kCursorSizeDown, kCursorSizeAll,      kCursorHand};

HCURSOR SystemCursor(int shape) {
  return LoadCursorW(nullptr, MAKEINTRESOURCEW(shape));
}

// A cursor is an icon with a point.
HCURSOR CursorOf(const PixelImage& picture, POINT point) {
  const HBITMAP colours = CreateBitmap(picture.width, picture.height, 1, 32, picture.pixels);
  // All of it counts: what is seen through stands in the picture's own alpha.
  const HBITMAP mask = CreateBitmap(picture.width, picture.height, 1, 1, nullptr);
  ICONINFO info = {FALSE, static_cast<DWORD>(point.x), static_cast<DWORD>(point.y), mask, colours};
  const HCURSOR made = CreateIconIndirect(&info);
  DeleteObject(colours);
  DeleteObject(mask);
  return made;
}

// Input methods keep windows of their own among those of the thread.
bool IsInputMethods(HWND window) {
  wchar_t name[32] = {};
  GetClassNameW(window, name, 32);
  return CString(name) == _T("IME") || CString(name) == _T("MSCTFIME UI");
}

BOOL CALLBACK NoteWindow(HWND window, LPARAM list) {
  if (!IsInputMethods(window)) reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

// The innermost visible child there, disabled ones and labels included, which the system's own search passes
// over.
HWND InnermostAt(HWND window, POINT screen) {
  for (;;) {
    POINT inside = screen;
    ScreenToClient(window, &inside);
    const HWND child = ChildWindowFromPointEx(window, inside, CWP_SKIPINVISIBLE);
    if (child == nullptr || child == window) return window;
    window = child;
  }
}

class Win32Desktop : public Desktop {
 public:
  HWND Create(const WindowRequest& request) override { return MakeNativeWindow(request); }

  // Windows of others have a peer for the moment: it can be asked, and has no messages of its own.
  std::shared_ptr<WindowPeer> Find(HWND window) const override {
    if (window == nullptr) return nullptr;
    if (const auto own = RegisteredWindow(window)) return own;
    return IsWindow(window) ? std::make_shared<Win32Window>(window) : nullptr;
  }

  std::vector<HWND> Windows() const override {
    std::vector<HWND> windows;
    EnumThreadWindows(thread_, &NoteWindow, reinterpret_cast<LPARAM>(&windows));
    return windows;
  }

  bool Post(HWND window, UINT message, WPARAM w, LPARAM l) override {
    if (window == nullptr) return PostThreadMessageW(thread_, message, w, l) != 0;
    return IsWindow(window) && PostMessageW(window, message, w, l);
  }

  LRESULT Send(HWND window, UINT message, WPARAM w, LPARAM l) override {
    if (window == nullptr || !IsWindow(window)) return 0;
    return CarriedFault::CallOut([&] { return SendMessageW(window, message, w, l); });
  }

  bool Pump(bool wait) override { return PumpOne(wait) == PumpStep::kDispatched; }
  std::optional<int> QuitCode() const override { return LastQuitCode(); }
  void RunModal(HWND dialog) override { RunModalLoop(dialog); }
  void EndModal(HWND dialog) override { EndModalLoop(dialog); }

  HWND Focus() const override {
    const HWND focus = GetFocus();
    if (focus != nullptr) return focus;
    // Another program's, or none while nothing is in front.
    const HWND front = GetForegroundWindow();
    return front != nullptr && GetWindowThreadProcessId(front, nullptr) != thread_ ? front : nullptr;
  }

  void ClearFocus() override {
    CarriedFault::CallOut([] { return ::SetFocus(nullptr); });
  }

  HWND Active() const override { return GetActiveWindow(); }
  HWND Capture() const override { return GetCapture(); }

  void SetCapture(HWND window) override {
    CarriedFault::CallOut(
        [&] { return window == nullptr ? ReleaseCapture() : ::SetCapture(window) != nullptr; });
  }

  SHORT KeyState(int key) const override {
    // The system counts the keys of the mouse by their place on it, the framework by what they do.
    if (GetSystemMetrics(SM_SWAPBUTTON) != 0 && (key == VK_LBUTTON || key == VK_RBUTTON))
      key = VK_LBUTTON + VK_RBUTTON - key;
    return GetAsyncKeyState(key);
  }

  POINT CursorPosition() const override {
    POINT at = {0, 0};
    GetCursorPos(&at);
    return at;
  }

  void SetCursorPosition(POINT at) override { SetCursorPos(at.x, at.y); }
  void SetCursor(int shape) override {
    const auto own = own_cursors_.find(shape);
    ::SetCursor(own == own_cursors_.end() ? SystemCursor(shape) : own->second);
  }

  int MakeCursor(const PixelImage& picture, POINT point) override {
    if (!IsCursorPicture(picture) || own_cursors_.size() >= kMaxOwnCursors) return 0;
    const HCURSOR made = CursorOf(picture, point);
    if (made == nullptr) return 0;
    own_cursors_[++last_own_cursor_] = made;
    return last_own_cursor_;
  }

  void EndCursor(int cursor) override {
    const auto own = own_cursors_.find(cursor);
    if (own == own_cursors_.end()) return;
    // The system must not be left with a picture that is gone.
    if (GetCursor() == own->second) SetCursor(kCursorArrow);
    DestroyIcon(own->second);
    own_cursors_.erase(own);
  }

  int Cursor() const override {
    const HCURSOR now = GetCursor();
    for (const auto& [number, own] : own_cursors_)
      if (own == now) return number;
    const auto known =
        std::find_if(kShapes.begin(), kShapes.end(), [now](int shape) { return SystemCursor(shape) == now; });
    return known == kShapes.end() ? 0 : *known;
  }

  HWND WindowAt(POINT screen) const override {
    const HWND top = WindowFromPoint(screen);
    return top == nullptr ? nullptr : InnermostAt(top, screen);
  }

  RECT WorkArea(POINT near_by) const override {
    MONITORINFO info = {};
    info.cbSize = sizeof(info);
    GetMonitorInfoW(MonitorFromPoint(near_by, MONITOR_DEFAULTTONEAREST), &info);
    return info.rcWork;
  }

  RECT Screen() const override {
    const CPoint corner(GetSystemMetrics(SM_XVIRTUALSCREEN), GetSystemMetrics(SM_YVIRTUALSCREEN));
    return CRect(corner, CSize(GetSystemMetrics(SM_CXVIRTUALSCREEN), GetSystemMetrics(SM_CYVIRTUALSCREEN)));
  }

  COLORREF Colour(int index) const override { return GetSysColor(index); }
  int Metric(int index) const override { return GetSystemMetrics(index); }
  LOGFONTW DialogFont() const override { return SystemDialogFont(); }
  DWORD Ticks() const override { return GetTickCount(); }

  UINT Popup(const MenuModel& menu, POINT screen, UINT flags, HWND owner) override {
    return TrackNativeMenu(menu, screen, flags, owner);
  }
  bool MenuUp() const override { return IsMenuUp(); }

  HKL Layout() const override { return GetKeyboardLayout(thread_); }
  HKL ActivateLayout(HKL layout, UINT flags) override { return ActivateKeyboardLayout(layout, flags); }

  std::vector<HKL> Layouts() const override {
    std::vector<HKL> layouts(static_cast<std::size_t>(std::max(GetKeyboardLayoutList(0, nullptr), 0)));
    const int count = GetKeyboardLayoutList(static_cast<int>(layouts.size()), layouts.data());
    // A layout may have gone between both calls.
    layouts.resize(static_cast<std::size_t>(std::max(count, 0)));
    return layouts;
  }

  bool HasClipboardText() const override { return HasSystemText(); }
  CString ClipboardText() const override { return SystemText(); }
  bool SetClipboardText(const CString& text) override { return SetSystemText(text); }
  bool SetClipboard(const TransferData& data) override { return SetSystemClipboard(data); }
  std::vector<BYTE> ClipboardBytes(const CString& format) const override { return SystemBytes(format); }

  DROPEFFECT Drag(const TransferData& content, DROPEFFECT allowed) override {
    return RunNativeDrag(content, allowed);
  }
  void ReportAccessible(HWND window, AccessEvent event, std::int64_t number) override {
    ReportNativeReaders(window, event, number);
  }

  std::unique_ptr<Canvas> MakeCanvas(SIZE size) const override {
    auto canvas = std::make_unique<GdiCanvas>(std::make_unique<GdiMemory>(size));
    // White, as a new canvas is on every desktop; memory of the system's begins as black.
    canvas->Fill({0, 0, size.cx, size.cy}, RGB(255, 255, 255));
    return canvas;
  }

  UINT RegisterMessage(LPCTSTR name) override { return RegisterWindowMessageW(name); }

 private:
  DWORD thread_ = GetCurrentThreadId();
  MessageHook hook_;
  std::map<int, HCURSOR> own_cursors_;
  int last_own_cursor_ = kFirstOwnCursor - 1;
};

}  // namespace

std::unique_ptr<Desktop> MakeWin32Desktop() {
  return std::make_unique<Win32Desktop>();
}

}  // namespace lorv
