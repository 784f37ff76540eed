#include <algorithm>

#include "framework/ports/window_map.h"
#include "platform/headless/desktop/headless_desktop.h"
#include "platform/models/first_fault.h"

// The user of the headless desktop: keys and mouse, as they are put into the queue and as they come out of
// it. They take the way of real input: offered, translated into characters, hit-tested, with the keys held
// then; nothing reaches a window that a real user could not reach.

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
  // Control and a letter give the characters 1 to 26, as on every keyboard.
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

}  // namespace

void HeadlessDesktop::KeyDown(int key) {
  input_.push_back({WM_KEYDOWN, static_cast<WPARAM>(key), CursorPosition()});
}

void HeadlessDesktop::KeyUp(int key) {
  input_.push_back({WM_KEYUP, static_cast<WPARAM>(key), CursorPosition()});
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
      // A character without a key comes from an input method, which announces itself like this.
      input_.push_back({WM_KEYDOWN, VK_PROCESSKEY, CursorPosition()});
      input_.push_back({WM_CHAR, c, CursorPosition()});
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
  // Where the input that still waits will have left the mouse.
  const POINT at = input_.empty() ? CursorPosition() : input_.back().at;
  const UINT message = button == VK_RBUTTON ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
  input_.push_back({message, 0, at});
}

void HeadlessDesktop::MouseUp(int button) {
  const POINT at = input_.empty() ? CursorPosition() : input_.back().at;
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
  input_.push_back({WM_MOUSEWHEEL, MAKEWPARAM(0, delta), CursorPosition()});
}

void HeadlessDesktop::ScrollBar(HWND window, int bar, int code, int position) {
  input_.push_back({WM_NULL, 0, CursorPosition(), [=, this] {
                      if (const auto at = At(window)) at->ScrollByUser(bar, code, position);
                    }});
}

void HeadlessDesktop::ComposeText(const CString& text, int caret) {
  KeyDown(VK_PROCESSKEY);
  input_.push_back({WM_NULL, 0, CursorPosition(), [=, this] {
                      Compose(FocusedWindow(), {text, caret, {}});
                    }});
}

void HeadlessDesktop::CommitText(const CString& text) {
  KeyDown(VK_PROCESSKEY);
  input_.push_back({WM_NULL, 0, CursorPosition(), [=, this] { Compose(FocusedWindow(), {{}, 0, text}); }});
}

void HeadlessDesktop::DragFromOutside(const TransferData& data, DROPEFFECT allowed) {
  drag_result_ = DROPEFFECT_NONE;
  drag_ = std::make_shared<DragModel>(*this, std::make_shared<KeptContent>(data), allowed);
}

// When no input is left that could move the mouse, the drag is given up.
DROPEFFECT HeadlessDesktop::Drag(const TransferData& content, DROPEFFECT allowed) {
  if (drag_ != nullptr) return DROPEFFECT_NONE;
  SetCapture(nullptr);
  DragFromOutside(content, allowed);
  const auto drag = drag_;
  const LoopWithin loop(*this);
  FirstFault fault;
  fault.Run([&] {
    while (!drag->Over() && Pump(true)) {
    }
  });
  fault.Run([&] { drag->Cancel(); });
  drag_ = nullptr;
  fault.Rethrow();
  return drag_result_ = drag->Effect();
}

// Whether the drag took what the user did.
bool HeadlessDesktop::PlayDrag(const Input& input) {
  if (drag_ == nullptr) return false;
  const auto drag = drag_;
  const bool escape = input.message == WM_KEYDOWN && input.w == VK_ESCAPE;
  const bool mouse = input.message >= WM_MOUSEFIRST && input.message <= WM_MOUSELAST;
  if (!mouse) HoldKey(static_cast<int>(input.w), input.message == WM_KEYDOWN);
  if (mouse) SetCursorPosition(input.at);
  const bool released = input.message == WM_LBUTTONUP;
  if (escape || released) {
    drag_ = nullptr;
    HoldKey(VK_LBUTTON, false);
    if (escape) drag->Cancel();
    if (released) drag->Drop();
    drag_result_ = drag->Effect();
    return true;
  }
  drag->Move(CursorPosition(), static_cast<DWORD>(HeldKeys()) | MK_LBUTTON);
  return true;
}

void HeadlessDesktop::PlayKey(const Input& input) {
  const int key = static_cast<int>(input.w);
  const bool down = input.message == WM_KEYDOWN;
  if (input.message != WM_CHAR && key > 0 && key < kKeyLimit) HoldKey(key, down);
  const HWND target = StillThere(Focus()) ? Focus() : Active();
  if (!StillThere(target)) return;
  UINT message = input.message;
  // With Control held as well the system sends plain key messages.
  const bool system = KeyState(VK_MENU) != 0 && KeyState(VK_CONTROL) == 0;
  if (system && message != WM_CHAR) message = down ? WM_SYSKEYDOWN : WM_SYSKEYUP;
  constexpr LPARAM kReleased = static_cast<LPARAM>(0xC0000001);
  Deliver(MessageNow(target, message, input.w, down || message == WM_CHAR ? 1 : kReleased));
}

void HeadlessDesktop::Translate(const MSG& message) {
  if (message.message != WM_KEYDOWN && message.message != WM_SYSKEYDOWN) return;
  const int key = static_cast<int>(message.wParam);
  // The input method has it; its character comes by itself.
  if (key == VK_PROCESSKEY) return;
  const TCHAR c = CharacterOfKey(key, KeyState(VK_SHIFT) != 0, KeyState(VK_CONTROL) != 0);
  if (c != 0) Post(message.hwnd, message.message == WM_SYSKEYDOWN ? WM_SYSCHAR : WM_CHAR, c, 1);
}

// Whether a press reaches the window: it makes its top-level window the active one, unless that is disabled.
bool HeadlessDesktop::ComesToPress(HWND target, UINT message) {
  const auto top = At(TopOf(target));
  if (top == nullptr || (top->Style() & WS_DISABLED) != 0) return false;
  if (IsButtonDown(message) && top->Kind() != WindowKind::Popup && (top->ExStyle() & WS_EX_NOACTIVATE) == 0)
    ActivateTop(top->Handle());
  return StillThere(target);
}

// The wheel is for the window that has the focus.
void HeadlessDesktop::PlayWheel(const Input& input) {
  const POINT at = CursorPosition();
  if (StillThere(Focus()))
    Deliver(MessageNow(Focus(), input.message, input.w | HeldKeys(), MAKELPARAM(at.x, at.y)));
}

void HeadlessDesktop::PlayMouse(const Input& input) {
  // Where the mouse was when it happened, not where later input has taken it.
  SetCursorPosition(input.at);
  const bool left = input.message >= WM_LBUTTONDOWN && input.message <= WM_LBUTTONDBLCLK;
  const bool right = input.message == WM_RBUTTONDOWN || input.message == WM_RBUTTONUP;
  if (left || right) HoldKey(left ? VK_LBUTTON : VK_RBUTTON, IsButtonDown(input.message));
  if (input.message == WM_MOUSEWHEEL) return PlayWheel(input);
  const HWND captured = Capture();
  const HWND target = captured != nullptr ? captured : WindowAt(input.at);
  // Before the press: entering and leaving are reported first, as on the screen.
  Hover(target);
  if (!StillThere(target) || !ComesToPress(target, input.message)) return;
  const CPoint at = CPoint(input.at) - CSize(CPoint(At(target)->ClientOrigin()));
  const bool inside = CRect(At(target)->ClientRect()).PtInRect(at) != 0;
  // On the frame; only the owner of the capture gets the mouse outside its client area.
  if (captured == nullptr && !inside) return;
  if (captured == nullptr)
    DeliverMessage(target, WM_SETCURSOR, reinterpret_cast<WPARAM>(target),
                   MAKELPARAM(HTCLIENT, static_cast<LONG_PTR>(input.message)));
  if (StillThere(target)) Deliver(MessageNow(target, input.message, HeldKeys(), MAKELPARAM(at.x, at.y)));
}

}  // namespace lorv
