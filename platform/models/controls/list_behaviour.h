#pragma once

#include <algorithm>
#include <utility>

#include "framework/ports/desktop_port.h"
#include "platform/models/controls/items.h"
#include "platform/models/message_values.h"

namespace lorv {

// How list boxes answer messages, for peers that model them themselves: one choice, or with LBS_MULTIPLESEL
// and LBS_EXTENDEDSEL several.
//
// `Window` is the peer's window class, which gives Home(), its desktop, and Look(), its style; `Items` is
// made with a store of the peer's. What is left to the peer is to show the rows, to scroll them and to keep
// which are selected.
template <class Window, class Items>
class ListBehaviour : public Window {
 public:
  template <class... Request>
  explicit ListBehaviour(Items items, Request&&... request)
      : Window(std::forward<Request>(request)...), items_(std::move(items)) {}

  LRESULT Default(UINT message, WPARAM w, LPARAM l) override {
    const auto keep = this->shared_from_this();
    if (!this->Exists()) return 0;
    if (message >= LB_ADDSTRING && message <= LB_ITEMFROMPOINT) return ItemMessage(message, w, l);
    switch (message) {
      case WM_KEYDOWN:
        return Key(static_cast<int>(w));
      case WM_CHAR:
        return Character(static_cast<TCHAR>(w));
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        return Press(message, PointOf(l));
      case WM_MOUSEWHEEL:
        ScrollTo(Top() - static_cast<short>(HIWORD(w)) / kWheelOfRow);
        return 0;
      case WM_SETFOCUS:
      case WM_KILLFOCUS:
        Report(message == WM_SETFOCUS ? LBN_SETFOCUS : LBN_KILLFOCUS);
        return 0;
      case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS;
      default:
        return Window::Default(message, w, l);
    }
  }

 protected:
  Items& Kept() { return items_; }
  const Items& Kept() const { return items_; }
  bool Several() const { return (this->Look() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0; }
  int PageSize() const { return std::max(1, static_cast<int>(this->ClientRect().bottom) / RowHeight()); }

  // Of items that are there.
  virtual bool IsSelected(int index) const = 0;
  virtual void SetSelected(int index, bool on) = 0;
  virtual CRect RowPlace(int index) const = 0;
  virtual int RowHeight() const = 0;
  virtual int RowAt(CPoint at) const = 0;  // -1: none
  // The first row that is seen.
  virtual int Top() const = 0;
  virtual void SetTop(int index) = 0;
  // Another item is chosen, or none, or the items are others.
  virtual void ShowChoice() = 0;

 private:
  static constexpr int kWheelOfRow = 40;

  void Report(UINT code) {
    if ((this->Look() & LBS_NOTIFY) != 0) this->Notify(code);
  }

  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l) {
    const auto answer = items_.Answer(kListItems, message, w, l);
    if (!answer) return ChoiceMessage(message, w, l);
    if (message == LB_RESETCONTENT) caret_ = 0;
    if (items_.TakeChanged()) ShowChoice();
    return *answer;
  }

  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
    const int index = static_cast<int>(static_cast<LONG_PTR>(w));
    switch (message) {
      case LB_GETCURSEL:
        return Several() ? caret_ : items_.chosen;
      case LB_SETCURSEL:
        if (Several()) return LB_ERR;
        Choose(items_.Has(index) ? index : -1);
        return items_.chosen;
      case LB_SELECTSTRING: {
        const int found = items_.Find(index, reinterpret_cast<LPCTSTR>(l), false);
        if (found >= 0) Choose(found);
        return found;
      }
      case LB_GETSEL:
        if (!items_.Has(index)) return LB_ERR;
        return static_cast<LRESULT>(Several() ? IsSelected(index) : items_.chosen == index);
      case LB_SETSEL:
        return Select(static_cast<int>(l), w != 0);
      case LB_GETSELCOUNT:
        return Several() ? SelectedCount() : LB_ERR;
      case LB_GETSELITEMS:
        return Several() ? SelectedItems(index, reinterpret_cast<int*>(l)) : LB_ERR;
      default:
        return PlaceMessage(message, index, l);
    }
  }

  LRESULT PlaceMessage(UINT message, int index, LPARAM l) {
    switch (message) {
      case LB_GETTOPINDEX:
        return Top();
      case LB_SETTOPINDEX:
        if (!items_.Has(index)) return LB_ERR;
        SetTop(index);
        return 0;
      case LB_GETCARETINDEX:
        return caret_;
      case LB_GETITEMHEIGHT:
        return RowHeight();
      case LB_GETITEMRECT: {
        const auto target = reinterpret_cast<LPRECT>(l);
        if (!items_.Has(index) || target == nullptr) return LB_ERR;
        *target = RowPlace(index);
        return 1;
      }
      case LB_ITEMFROMPOINT: {
        const int row = RowAt(PointOf(l));
        return MAKELONG(row >= 0 ? row : std::max(items_.Count() - 1, 0), row >= 0 ? 0 : 1);
      }
      default:
        return 0;
    }
  }

  LRESULT Select(int index, bool on) {
    if (!Several() || (index != -1 && !items_.Has(index))) return LB_ERR;
    for (int i = 0; i < items_.Count(); ++i)
      if (index == -1 || i == index) SetSelected(i, on);
    return 0;
  }

  LRESULT SelectedCount() const {
    LRESULT count = 0;
    for (int i = 0; i < items_.Count(); ++i) count += static_cast<LRESULT>(IsSelected(i));
    return count;
  }

  LRESULT SelectedItems(int room, int* target) const {
    int count = 0;
    for (int i = 0; i < items_.Count() && count < room && target != nullptr; ++i)
      if (IsSelected(i)) target[count++] = i;
    return count;
  }

  void ScrollTo(int index) {
    if (items_.Count() != 0) SetTop(std::clamp(index, 0, items_.Count() - 1));
  }

  void Choose(int index) {
    items_.chosen = index;
    if (index >= 0) caret_ = index;
    ShowChoice();
  }

  void ChooseByUser(int index, bool toggles) {
    if (!items_.Has(index)) return;
    if (Several() && toggles) {
      SetSelected(index, !IsSelected(index));
    } else if ((this->Look() & LBS_EXTENDEDSEL) != 0) {
      Select(-1, false);
      SetSelected(index, true);
    }
    Choose(index);
    Report(LBN_SELCHANGE);
  }

  // Where the key leads; -1 for a key that leads nowhere.
  int Target(int key) const {
    switch (key) {
      case VK_UP:
      case VK_LEFT:
        return std::max(caret_ - 1, 0);
      case VK_DOWN:
      case VK_RIGHT:
        return items_.chosen < 0 && !Several() ? caret_ : caret_ + 1;
      case VK_HOME:
        return 0;
      case VK_END:
        return items_.Count() - 1;
      case VK_PRIOR:
        return std::max(caret_ - (PageSize() - 1), 0);
      case VK_NEXT:
        return caret_ + PageSize() - 1;
      default:
        return -1;
    }
  }

  LRESULT Key(int key) {
    if (key == VK_SPACE && Several()) {
      ChooseByUser(caret_, true);
      return 0;
    }
    const int target = Target(key);
    if (target < 0 || items_.Count() == 0) return 0;
    const int index = std::min(target, items_.Count() - 1);
    if ((this->Look() & LBS_MULTIPLESEL) != 0) {
      Choose(index);
    } else if (index != items_.chosen) {
      ChooseByUser(index, false);
    }
    return 0;
  }

  // The next item that begins with the character.
  LRESULT Character(TCHAR unit) {
    if (unit <= _T(' ') || (this->Look() & LBS_MULTIPLESEL) != 0) return 0;
    const int found = items_.Find(caret_, CString(unit), false);
    if (found >= 0 && found != items_.chosen) ChooseByUser(found, false);
    return 0;
  }

  LRESULT Press(UINT message, CPoint at) {
    this->Focus();
    if (!this->Exists()) return 0;
    const int index = RowAt(at);
    if (!items_.Has(index)) return 0;
    if (message == WM_LBUTTONDBLCLK) {
      Report(LBN_DBLCLK);
      return 0;
    }
    const bool control = this->Home().KeyState(VK_CONTROL) != 0;
    ChooseByUser(index, (this->Look() & LBS_MULTIPLESEL) != 0 || control);
    return 0;
  }

  Items items_;
  int caret_ = 0;
};

}  // namespace lorv
