#include "platform/headless/headless_button.h"

#include <algorithm>

#include "framework/text_layout.h"
#include "framework/window_map.h"
#include "platform/headless/headless_desktop.h"

namespace lorv {
namespace {

void PaintText(Canvas& canvas, const CString& text, const CRect& client, UINT flags, COLORREF ground) {
  canvas.Fill(client, ground);
  for (const PlacedLine& line : LayOutText(canvas, text.View(), client, flags).lines)
    canvas.Text(line.at, line.text.View(), 0);
}

constexpr COLORREF kFace = RGB(240, 240, 240);

}  // namespace

LRESULT HeadlessButton::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
      return Mouse(message, l);
    case WM_KEYDOWN:
      if (w == VK_SPACE) Push(true);
      return 0;
    case WM_KEYUP:
      if (w == VK_SPACE && pushed_) Click();
      return 0;
    case WM_SETFOCUS:
      if ((Style() & BS_NOTIFY) != 0) Notify(BN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS:
      pushed_ = false;
      if ((Style() & BS_NOTIFY) != 0) Notify(BN_KILLFOCUS);
      return 0;
    case WM_CAPTURECHANGED:
      Push(false);
      return 0;
    case WM_GETDLGCODE:
      return Code();
    default:
      return Own(message, w, l);
  }
}

LRESULT HeadlessButton::Code() const {
  switch (Type()) {
    case BS_PUSHBUTTON:
      return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON:
      return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX:
      return DLGC_STATIC;
    default:
      return DLGC_BUTTON;
  }
}

LRESULT HeadlessButton::Own(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case BM_GETCHECK:
      return check_;
    case BM_SETCHECK:
      check_ = std::min(static_cast<UINT>(w), static_cast<UINT>(BST_INDETERMINATE));
      Invalidate(nullptr);
      return 0;
    case BM_GETSTATE:
      return check_ | (pushed_ ? BST_PUSHED : 0U) | (Home().Focus() == Handle() ? BST_FOCUS : 0U);
    case BM_SETSTATE:
      Push(w != 0);
      return 0;
    case BM_SETSTYLE:
      SetStyle(Without(Style(), BS_TYPEMASK) | (static_cast<DWORD>(w) & BS_TYPEMASK));
      return 0;
    case BM_CLICK:
      Click();
      return 0;
    default:
      return HeadlessWindow::Default(message, w, l);
  }
}

LRESULT HeadlessButton::Mouse(UINT message, LPARAM l) {
  const CPoint at(static_cast<short>(LOWORD(l)), static_cast<short>(HIWORD(l)));
  const bool inside = CRect(ClientRect()).PtInRect(at) != 0;
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
    if (Type() == BS_GROUPBOX) return 0;
    Focus();
    if (!Exists()) return 0;
    Home().SetCapture(Handle());
    Push(true);
  } else if (Home().Capture() == Handle() && message == WM_MOUSEMOVE) {
    Push(inside);
  } else if (Home().Capture() == Handle()) {
    const bool clicked = pushed_;
    Push(false);
    Home().SetCapture(nullptr);
    if (clicked && Exists()) Click();
  }
  return 0;
}

void HeadlessButton::Push(bool on) {
  if (pushed_ == on) return;
  pushed_ = on;
  Invalidate(nullptr);
}

void HeadlessButton::Click() {
  if (!Exists() || (Style() & WS_DISABLED) != 0) return;
  Push(false);
  TakeMark();
  Notify(BN_CLICKED);
}

void HeadlessButton::TakeMark() {
  switch (Type()) {
    case BS_AUTOCHECKBOX:
      check_ = check_ == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
      break;
    case BS_AUTO3STATE:
      check_ = (check_ + 1) % 3;
      break;
    case BS_AUTORADIOBUTTON:
      ClearGroup();
      check_ = BST_CHECKED;
      break;
    default:
      return;
  }
  Invalidate(nullptr);
}

// The group reaches from a window with WS_GROUP to before the next.
void HeadlessButton::ClearGroup() {
  const auto parent = Home().Find(Parent());
  if (parent == nullptr) return;
  std::vector<HWND> group;
  bool mine = false;
  for (const HWND sibling : parent->Children()) {
    const auto window = Home().Find(sibling);
    if (window != nullptr && (window->Style() & WS_GROUP) != 0) {
      if (mine) break;
      group.clear();
    }
    mine = mine || sibling == Handle();
    group.push_back(sibling);
  }
  for (const HWND sibling : group) {
    const auto window = Home().Find(sibling);
    const bool radio = window != nullptr && window->Kind() == WindowKind::Button &&
                       (window->Style() & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    if (radio && sibling != Handle()) window->Default(BM_SETCHECK, BST_UNCHECKED, 0);
  }
}

void HeadlessButton::PaintSelf(Canvas& canvas) {
  const CRect client(ClientRect());
  const bool push = Type() <= BS_DEFPUSHBUTTON;
  const UINT flags = DT_SINGLELINE | DT_VCENTER | (push ? DT_CENTER : DT_LEFT);
  PaintText(canvas, Text(), client, flags, kFace);
  if (push) canvas.Frame(client, 0, 1);
}

LRESULT HeadlessStatic::Default(UINT message, WPARAM w, LPARAM l) {
  return message == WM_GETDLGCODE ? DLGC_STATIC : HeadlessWindow::Default(message, w, l);
}

void HeadlessStatic::PaintSelf(Canvas& canvas) {
  const UINT flags = DT_WORDBREAK | ((Style() & SS_NOPREFIX) != 0 ? DT_NOPREFIX : 0U);
  PaintText(canvas, Text(), CRect(ClientRect()), flags, kFace);
}

}  // namespace lorv
