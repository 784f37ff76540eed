#pragma once

#include <algorithm>
#include <vector>

#include "framework/ports/desktop_port.h"
#include "platform/models/message_values.h"

namespace lorv {

// How push buttons, check boxes, radio buttons and group boxes answer messages, for peers that model them
// themselves. The automatic ones change their own mark; a radio button clears the others of its group.
//
// `Window` is the peer's window class, which gives Home(), its desktop, and Look() and SetLook(), its style
// without further behaviour. What is left to the peer is to show the state.
template <class Window>
class ButtonBehaviour : public Window {
 public:
  using Window::Window;

  LRESULT Default(UINT message, WPARAM w, LPARAM l) override {
    const auto keep = this->shared_from_this();
    if (!this->Exists()) return 0;
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
        ShowState();
        if ((this->Look() & BS_NOTIFY) != 0) this->Notify(BN_SETFOCUS);
        return 0;
      case WM_KILLFOCUS:
        Push(false);
        ShowState();
        if ((this->Look() & BS_NOTIFY) != 0) this->Notify(BN_KILLFOCUS);
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

 protected:
  UINT Type() const { return static_cast<UINT>(this->Look() & BS_TYPEMASK); }
  UINT Check() const { return check_; }
  bool IsPushed() const { return pushed_; }
  // The check, the push or the type has changed.
  virtual void ShowState() = 0;

 private:
  LRESULT Code() const {
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

  LRESULT Own(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
      case BM_GETCHECK:
        return check_;
      case BM_SETCHECK:
        check_ = std::min(static_cast<UINT>(w), static_cast<UINT>(BST_INDETERMINATE));
        ShowState();
        return 0;
      case BM_GETSTATE:
        return check_ | (pushed_ ? BST_PUSHED : 0U) |
               (this->Home().Focus() == this->Handle() ? BST_FOCUS : 0U);
      case BM_SETSTATE:
        Push(w != 0);
        return 0;
      case BM_SETSTYLE:
        this->SetLook(Without(this->Look(), BS_TYPEMASK) | (static_cast<DWORD>(w) & BS_TYPEMASK));
        ShowState();
        return 0;
      case BM_CLICK:
        Click();
        return 0;
      default:
        return Window::Default(message, w, l);
    }
  }

  LRESULT Mouse(UINT message, LPARAM l) {
    const CPoint at = PointOf(l);
    const bool inside = CRect(this->ClientRect()).PtInRect(at) != 0;
    if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
      if (Type() == BS_GROUPBOX) return 0;
      this->Focus();
      if (!this->Exists()) return 0;
      this->Home().SetCapture(this->Handle());
      Push(true);
    } else if (this->Home().Capture() == this->Handle() && message == WM_MOUSEMOVE) {
      Push(inside);
    } else if (this->Home().Capture() == this->Handle()) {
      const bool clicked = pushed_;
      Push(false);
      this->Home().SetCapture(nullptr);
      if (clicked && this->Exists()) Click();
    }
    return 0;
  }

  void Push(bool on) {
    if (pushed_ == on || !this->Exists()) return;
    pushed_ = on;
    ShowState();
  }

  void Click() {
    if (!this->Exists() || (this->Look() & WS_DISABLED) != 0) return;
    Push(false);
    TakeMark();
    this->Notify(BN_CLICKED);
  }

  void TakeMark() {
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
    ShowState();
  }

  // The group reaches from a window with WS_GROUP to before the next.
  std::vector<HWND> Group() const {
    std::vector<HWND> group;
    bool mine = false;
    const auto parent = this->Home().Find(this->Parent());
    for (const HWND sibling : parent == nullptr ? std::vector<HWND>() : parent->Children()) {
      const auto window = this->Home().Find(sibling);
      if (window != nullptr && (window->Style() & WS_GROUP) != 0) {
        if (mine) break;
        group.clear();
      }
      mine = mine || sibling == this->Handle();
      group.push_back(sibling);
    }
    return group;
  }

  void ClearGroup() {
    for (const HWND sibling : Group()) {
      const auto window = this->Home().Find(sibling);
      const bool radio = window != nullptr && window->Kind() == WindowKind::Button &&
                         (window->Style() & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
      if (radio && sibling != this->Handle()) window->Default(BM_SETCHECK, BST_UNCHECKED, 0);
    }
  }

  UINT check_ = BST_UNCHECKED;
  bool pushed_ = false;
};

}  // namespace lorv
