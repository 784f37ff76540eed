#pragma once

#include <algorithm>
#include <utility>

#include "framework/ports/desktop_port.h"
#include "platform/models/controls/items.h"
#include "platform/models/message_values.h"

namespace lorv {

// How drop-down lists answer messages, for peers that model them themselves. With CBS_DROPDOWN and CBS_SIMPLE
// an edit stands inside as a child of id 1001, to which the focus is handed on. While the list is dropped,
// keys go through the drop-down list or its edit, as if it were not there.
//
// `Window` is the peer's window class, which gives Home(), its desktop, and Look(), its style; `Items` is
// made with a store of the peer's. What is left to the peer is to show the state.
template <class Window, class Items>
class ComboBehaviour : public Window {
 public:
  template <class... Request>
  explicit ComboBehaviour(Items items, Request&&... request)
      : Window(std::forward<Request>(request)...), items_(std::move(items)) {}

  LRESULT Default(UINT message, WPARAM w, LPARAM l) override {
    const auto keep = this->shared_from_this();
    if (!this->Exists()) return 0;
    if (message >= CB_GETEDITSEL && message <= CB_INITSTORAGE) return ItemMessage(message, w, l);
    switch (message) {
      case WM_CREATE:
        MakeEdit();
        return 0;
      case WM_COMMAND:
        if (reinterpret_cast<HWND>(l) == edit_) FromEdit(HIWORD(w));
        return 0;
      case WM_SETFOCUS:
        if (edit_ != nullptr) {
          this->Home().MoveFocus(edit_);
        } else {
          this->Notify(CBN_SETFOCUS);
        }
        return 0;
      case WM_KILLFOCUS:
        if (edit_ == nullptr) LoseFocus();
        return 0;
      case WM_KEYDOWN:
      case WM_SYSKEYDOWN:
        return Key(static_cast<int>(w));
      case WM_LBUTTONDOWN:
      case WM_LBUTTONDBLCLK:
        return Press();
      case WM_SETTEXT:
        return edit_ == nullptr ? CB_ERR : ToEdit(message, w, l);
      case WM_SIZE:
        if (const auto edit = this->Home().Find(edit_)) edit->Place(EditPlace());
        return 0;
      case WM_GETDLGCODE:
        return DLGC_WANTARROWS | DLGC_WANTCHARS | (dropped_ ? DLGC_WANTALLKEYS : 0U);
      default:
        return Window::Default(message, w, l);
    }
  }

  CString Text() const override {
    if (!this->Exists()) return {};
    if (const auto edit = this->Home().Find(edit_)) return edit->Text();
    return items_.Has(items_.chosen) ? items_.Text(items_.chosen) : CString();
  }

  bool Dropped() const { return dropped_; }

 protected:
  HWND Edit() const { return edit_; }
  int Chosen() const { return items_.chosen; }
  virtual CRect EditPlace() const = 0;
  virtual int RowHeight() const = 0;
  // Another item is chosen, or the items are others.
  virtual void ShowChoice() = 0;
  virtual void ShowDropped(bool /*on*/) {}
  virtual void ShowDroppedWidth(UINT /*width*/) {}

  void CloseBy(bool taken) {
    if (!dropped_) return;
    if (!taken) {
      items_.chosen = before_drop_;
      ShowChosen();
    }
    this->Notify(taken ? CBN_SELENDOK : CBN_SELENDCANCEL);
    if (this->Exists()) Close();
  }

  // `ended`: the end of the choice was reported already.
  void ChooseByUser(int index, bool ended) {
    if (!items_.Has(index) || index == items_.chosen) return;
    items_.chosen = index;
    ShowChosen();
    if (!dropped_ && !ended) this->Notify(CBN_SELENDOK);
    if (this->Exists()) this->Notify(CBN_SELCHANGE);
  }

 private:
  static constexpr UINT kInnerEdit = 1001;

  bool HasEdit() const { return (this->Look() & 3U) != CBS_DROPDOWNLIST; }

  void MakeEdit() {
    if (!HasEdit()) return;
    WindowRequest request;
    request.kind = WindowKind::Edit;
    request.style = WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL;
    request.place = EditPlace();
    request.parent = this->Handle();
    request.id = kInnerEdit;
    request.attach = [this](HWND edit) { edit_ = edit; };
    this->Home().Create(request);
  }

  // What the edit inside reports, goes on as the drop-down list's own.
  void FromEdit(UINT code) {
    switch (code) {
      case EN_UPDATE:
        return this->Notify(CBN_EDITUPDATE);
      case EN_CHANGE:
        items_.chosen = -1;
        return this->Notify(CBN_EDITCHANGE);
      case EN_SETFOCUS:
        return this->Notify(CBN_SETFOCUS);
      case EN_KILLFOCUS:
        return LoseFocus();
      default:
        return;
    }
  }

  void LoseFocus() {
    CloseBy(false);
    if (this->Exists()) this->Notify(CBN_KILLFOCUS);
  }

  LRESULT ToEdit(UINT message, WPARAM w, LPARAM l) const {
    const auto edit = this->Home().Find(edit_);
    return edit == nullptr ? CB_ERR : edit->Default(message, w, l);
  }

  LRESULT ItemMessage(UINT message, WPARAM w, LPARAM l) {
    const auto answer = items_.Answer(kComboItems, message, w, l);
    if (!answer) return ChoiceMessage(message, w, l);
    const bool changed = items_.TakeChanged();
    if (message == CB_RESETCONTENT) {
      ShowChosen();
    } else if (changed) {
      // A widget may choose something of its own as soon as it has an item.
      ShowChoice();
    }
    return *answer;
  }

  LRESULT ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
    const int index = static_cast<int>(static_cast<LONG_PTR>(w));
    switch (message) {
      case CB_GETCURSEL:
        return items_.chosen;
      case CB_SETCURSEL:
        items_.chosen = items_.Has(index) ? index : -1;
        ShowChosen();
        return items_.chosen;
      case CB_SELECTSTRING:
        return SelectString(index, reinterpret_cast<LPCTSTR>(l));
      case CB_GETEDITSEL:
        return ToEdit(EM_GETSEL, w, l);
      case CB_SETEDITSEL:
        if (edit_ == nullptr) return CB_ERR;
        ToEdit(EM_SETSEL, static_cast<WPARAM>(PointOf(l).x), PointOf(l).y);
        return TRUE;
      case CB_LIMITTEXT:
        if (edit_ != nullptr) ToEdit(EM_SETLIMITTEXT, w, 0);
        return TRUE;
      default:
        return DropMessage(message, w, l);
    }
  }

  LRESULT DropMessage(UINT message, WPARAM w, LPARAM l) {
    switch (message) {
      case CB_SHOWDROPDOWN:
        if (w != 0) {
          Drop();
        } else {
          CloseBy(true);
        }
        return TRUE;
      case CB_GETDROPPEDSTATE:
        return static_cast<LRESULT>(dropped_);
      case CB_SETDROPPEDWIDTH:
        dropped_width_ = static_cast<UINT>(w);
        ShowDroppedWidth(dropped_width_);
        return static_cast<LRESULT>(w);
      case CB_GETDROPPEDWIDTH:
        return std::max<LRESULT>(dropped_width_, CRect(this->WindowRect()).Width());
      case CB_GETDROPPEDCONTROLRECT:
        if (const auto target = reinterpret_cast<LPRECT>(l)) *target = this->WindowRect();
        return TRUE;
      case CB_GETITEMHEIGHT:
        return RowHeight();
      default:
        return 0;
    }
  }

  LRESULT SelectString(int after, LPCTSTR start) {
    const int found = items_.Find(after, start, false);
    if (found >= 0) {
      items_.chosen = found;
      ShowChosen();
    }
    return found;
  }

  // The chosen item's text goes into the edit, without a word to the parent.
  void ShowChosen() {
    const int chosen = items_.chosen;
    ShowChoice();
    if (edit_ == nullptr) return;
    const CString text = items_.Has(chosen) ? items_.Text(chosen) : CString();
    const HWND edit = std::exchange(edit_, nullptr);
    if (const auto peer = this->Home().Find(edit)) {
      peer->Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
      peer->Default(EM_SETSEL, 0, -1);
    }
    edit_ = edit;
    items_.chosen = chosen;
  }

  // The parent may fill the list on CBN_DROPDOWN, or destroy the window.
  void Drop() {
    if (dropped_ || dropping_) return;
    before_drop_ = items_.chosen;
    dropping_ = true;
    this->Notify(CBN_DROPDOWN);
    dropping_ = false;
    if (!this->Exists()) return;
    dropped_ = true;
    ShowDropped(true);
  }

  void Close() {
    if (!dropped_) return;
    dropped_ = false;
    ShowDropped(false);
    this->Notify(CBN_CLOSEUP);
  }

  void DropOrTake() {
    if (dropped_) {
      CloseBy(true);
    } else {
      Drop();
    }
  }

  LRESULT Key(int key) {
    const bool alt = this->Home().KeyState(VK_MENU) != 0;
    const int last = items_.Count() - 1;
    if (key == VK_F4 || (alt && (key == VK_DOWN || key == VK_UP))) {
      DropOrTake();
    } else if (key == VK_RETURN || key == VK_ESCAPE) {
      CloseBy(key == VK_RETURN);
    } else if (key == VK_UP) {
      ChooseByUser(std::max(items_.chosen - 1, 0), false);
    } else if (key == VK_DOWN) {
      ChooseByUser(std::min(items_.chosen + 1, last), false);
    } else if (key == VK_HOME || key == VK_END) {
      ChooseByUser(key == VK_HOME ? 0 : last, false);
    }
    return 0;
  }

  LRESULT Press() {
    this->Focus();
    if (this->Exists()) DropOrTake();
    return 0;
  }

  Items items_;
  HWND edit_ = nullptr;
  bool dropping_ = false;  // the parent is being notified
  bool dropped_ = false;
  int before_drop_ = -1;
  UINT dropped_width_ = 0;
};

}  // namespace lorv
