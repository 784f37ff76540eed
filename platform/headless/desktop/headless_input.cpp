#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"

// The user of the headless desktop: keys and mouse, as they are put into the queue and as they come out of
// it.

namespace lorv {
namespace {

constexpr int kKeyLimit = 0x100;

struct KeyOf {
  int key = 0;
  bool shifted = false;
};

// The key of a character on a US keyboard; 0 if there is none.
KeyOf KeyOfCharacter(TCHAR c) {
  if (c >= _T('0') && c <= _T('9')) return {c, false};
  if (c >= _T('A') && c <= _T('Z')) return {c, true};
  if (c >= _T('a') && c <= _T('z')) return {c - 32, false};
  static constexpr TextView plain = _T(" ;=,-./\t\r\b");
  static constexpr TextView shifted = _T(" :+<_>?");
  static constexpr int keys[] = {VK_SPACE,      VK_OEM_1, VK_OEM_PLUS, VK_OEM_COMMA, VK_OEM_MINUS,
                                 VK_OEM_PERIOD, VK_OEM_2, VK_TAB,      VK_RETURN,    VK_BACK};
  const std::size_t at = plain.find(c);
  if (at != TextView::npos) return {keys[at], false};
  const std::size_t above = shifted.find(c);
  return above == TextView::npos ? KeyOf{} : KeyOf{keys[above], true};
}

TCHAR CharacterOfKey(int key, bool shift, bool control) {
  if (control) return key >= 'A' && key <= 'Z' ? static_cast<TCHAR>(key - 'A' + 1) : TCHAR{0};
  if (key == VK_ESCAPE) return 0x1B;
  if (key >= 'A' && key <= 'Z') return static_cast<TCHAR>(shift ? key : key + 32);
  if (key >= '0' && key <= '9' && shift) return _T(")!@#$%^&*(")[key - '0'];
  if (key >= VK_NUMPAD0 && key <= VK_NUMPAD9) return static_cast<TCHAR>(key - VK_NUMPAD0 + _T('0'));
  for (TCHAR c = 1; c < 0x80; ++c) {
    const KeyOf known = KeyOfCharacter(c);
    if (known.key == key && known.shifted == shift) return c;
  }
  return 0;
}

bool IsDown(UINT message) {
  return message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN || message == WM_MBUTTONDOWN ||
         message == WM_LBUTTONDBLCLK;
}

}  // namespace

void HeadlessDesktop::KeyDown(int key) {
  input_.push_back({WM_KEYDOWN, static_cast<WPARAM>(key), mouse_});
}

void HeadlessDesktop::KeyUp(int key) {
  input_.push_back({WM_KEYUP, static_cast<WPARAM>(key), mouse_});
}

void HeadlessDesktop::Press(int key) {
  KeyDown(key);
  KeyUp(key);
}

void HeadlessDesktop::PressWith(int modifier, int key) {
  KeyDown(modifier);
  Press(key);
  KeyUp(modifier);
}

void HeadlessDesktop::Type(TextView text) {
  for (const TCHAR c : text) {
    const KeyOf known = KeyOfCharacter(c);
    if (known.key == 0) {
      input_.push_back({WM_KEYDOWN, VK_PROCESSKEY, mouse_});
      input_.push_back({WM_CHAR, c, mouse_});
    } else if (known.shifted) {
      PressWith(VK_SHIFT, known.key);
    } else {
      Press(known.key);
    }
  }
}

void HeadlessDesktop::MoveMouse(POINT screen) {
  input_.push_back({WM_MOUSEMOVE, 0, screen});
}

void HeadlessDesktop::MouseDown(int button) {
  const POINT at = input_.empty() ? mouse_ : input_.back().at;
  const UINT message = button == VK_RBUTTON ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
  input_.push_back({message, 0, at});
}

void HeadlessDesktop::MouseUp(int button) {
  const POINT at = input_.empty() ? mouse_ : input_.back().at;
  const UINT message = button == VK_RBUTTON ? WM_RBUTTONUP : WM_LBUTTONUP;
  input_.push_back({message, 0, at});
}

void HeadlessDesktop::Click(POINT screen, int button) {
  MoveMouse(screen);
  MouseDown(button);
  MouseUp(button);
}

void HeadlessDesktop::DoubleClick(POINT screen) {
  Click(screen);
  input_.push_back({WM_LBUTTONDBLCLK, 0, screen});
  MouseUp();
}

void HeadlessDesktop::Wheel(int delta) {
  input_.push_back({WM_MOUSEWHEEL, MAKEWPARAM(0, delta), mouse_});
}

void HeadlessDesktop::ScrollBar(HWND window, int bar, int code, int position) {
  Post(window, bar == SB_VERT ? WM_VSCROLL : WM_HSCROLL, MAKEWPARAM(code, position), 0);
}

SHORT HeadlessDesktop::KeyState(int key) const {
  const auto found = keys_.find(key);
  return found != keys_.end() && found->second ? static_cast<SHORT>(-0x8000) : SHORT{0};
}

WPARAM HeadlessDesktop::HeldKeys() const {
  WPARAM held = 0;
  if (KeyState(VK_LBUTTON) != 0) held |= MK_LBUTTON;
  if (KeyState(VK_RBUTTON) != 0) held |= MK_RBUTTON;
  if (KeyState(VK_SHIFT) != 0) held |= MK_SHIFT;
  if (KeyState(VK_CONTROL) != 0) held |= MK_CONTROL;
  return held;
}

void HeadlessDesktop::PlayKey(const Input& input) {
  const int key = static_cast<int>(input.w);
  const bool down = input.message == WM_KEYDOWN;
  if (input.message != WM_CHAR && key > 0 && key < kKeyLimit) keys_[key] = down;
  const HWND target = StillThere(focus_) ? focus_ : active_;
  if (!StillThere(target)) return;
  UINT message = input.message;
  const bool system = KeyState(VK_MENU) != 0 && KeyState(VK_CONTROL) == 0;
  if (system && message != WM_CHAR) message = down ? WM_SYSKEYDOWN : WM_SYSKEYUP;
  constexpr LPARAM kReleased = static_cast<LPARAM>(0xC0000001);
  Deliver({target, message, input.w, down || message == WM_CHAR ? 1 : kReleased, Ticks(), mouse_});
}

void HeadlessDesktop::Translate(const MSG& message) {
  const int key = static_cast<int>(message.wParam);
  if (key == VK_PROCESSKEY) return;
  const TCHAR c = CharacterOfKey(key, KeyState(VK_SHIFT) != 0, KeyState(VK_CONTROL) != 0);
  if (c != 0) Post(message.hwnd, message.message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR, c, 1);
}

void HeadlessDesktop::LeaveFormer(HWND now) {
  const HWND former = std::exchange(hovered_, now);
  if (former == now) return;
  const auto window = At(former);
  if (window != nullptr && window->TakeLeave()) DeliverMessage(former, WM_MOUSELEAVE, 0, 0);
}

// Whether a press reaches the window: it makes its top window the active one, unless that is disabled.
bool HeadlessDesktop::ComesToPress(HWND target, UINT message) {
  const auto top = At(TopOf(target));
  if (top == nullptr || (top->Style() & WS_DISABLED) != 0) return false;
  if (IsDown(message) && top->Kind() != WindowKind::Popup && (top->ExStyle() & WS_EX_NOACTIVATE) == 0)
    ActivateTop(top->Handle());
  return StillThere(target);
}

void HeadlessDesktop::PlayMouse(Input input) {
  SetCursorPosition(input.at);
  if (input.message == WM_LBUTTONDOWN || input.message == WM_LBUTTONDBLCLK) keys_[VK_LBUTTON] = true;
  if (input.message == WM_LBUTTONUP) keys_[VK_LBUTTON] = false;
  if (input.message == WM_RBUTTONDOWN) keys_[VK_RBUTTON] = true;
  if (input.message == WM_RBUTTONUP) keys_[VK_RBUTTON] = false;
  if (input.message == WM_MOUSEWHEEL) {
    const HWND target = focus_;
    if (StillThere(target))
      Deliver({target, input.message, input.w | HeldKeys(), MAKELPARAM(mouse_.x, mouse_.y), Ticks(), mouse_});
    return;
  }
  const HWND captured = capture_;
  const HWND target = captured != nullptr ? captured : WindowAt(mouse_);
  LeaveFormer(target);
  if (!StillThere(target) || !ComesToPress(target, input.message)) return;
  const CPoint at = CPoint(mouse_) - CSize(CPoint(At(target)->ClientOrigin()));
  const bool inside = CRect(At(target)->ClientRect()).PtInRect(at) != 0;
  if (captured == nullptr && !inside) return;
  if (captured == nullptr)
    DeliverMessage(target, WM_SETCURSOR, reinterpret_cast<WPARAM>(target),
                   MAKELPARAM(HTCLIENT, static_cast<LONG_PTR>(input.message)));
  if (StillThere(target))
    Deliver({target, input.message, HeldKeys(), MAKELPARAM(at.x, at.y), Ticks(), mouse_});
}

}  // namespace lorv
