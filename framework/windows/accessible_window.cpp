#include "framework/windows/accessible_window.h"

#include <algorithm>

#include "framework/drawing/geometry.h"
#include "framework/ports/desktop_port.h"
#include "framework/ports/window_map.h"
#include "framework/windows/accessible_table.h"

// Controls are asked by their messages, so that the answer is that of the control which the user sees, on
// each system.

namespace lorv {
namespace {

LRESULT Ask(HWND window, UINT message, WPARAM w = 0, LPARAM l = 0) {
  return DesktopInForce().Send(window, message, w, l);
}

std::shared_ptr<WindowPeer> PeerAt(HWND window) {
  return DesktopInForce().Find(window);
}

// The notification that the user's own choice would have sent to the parent.
void NotifyParent(HWND control, UINT code) {
  const auto peer = PeerAt(control);
  if (peer == nullptr || peer->Parent() == nullptr) return;
  const WPARAM words = MAKEWPARAM(static_cast<LONG_PTR>(peer->Id()), static_cast<LONG_PTR>(code));
  DesktopInForce().Send(peer->Parent(), WM_COMMAND, words, reinterpret_cast<LPARAM>(control));
}

unsigned WindowState(HWND window) {
  const auto peer = PeerAt(window);
  if (peer == nullptr) return kAccessHidden;
  unsigned state = (peer->Style() & WS_VISIBLE) == 0 ? kAccessHidden : 0;
  // A control within a disabled window takes nothing, whatever its own style says.
  for (auto around = peer; around != nullptr; around = PeerAt(around->Parent()))
    if ((around->Style() & WS_DISABLED) != 0) state |= kAccessDisabled;
  if (DesktopInForce().Focus() == window) state |= kAccessFocused;
  return state;
}

// The numbers of lists and of combos differ, their meaning does not.
struct ItemMessages {
  UINT count, current, choose, text, length, chosen;
};
constexpr ItemMessages kOfList = {LB_GETCOUNT, LB_GETCURSEL,  LB_SETCURSEL,
                                  LB_GETTEXT,  LB_GETTEXTLEN, LBN_SELCHANGE};
constexpr ItemMessages kOfCombo = {CB_GETCOUNT,  CB_GETCURSEL,    CB_SETCURSEL,
                                   CB_GETLBTEXT, CB_GETLBTEXTLEN, CBN_SELCHANGE};

// A list box or a combo box, as its messages know it.
class ItemBox {
 public:
  ItemBox(HWND window, bool combo) : window_(window), is_(combo ? kOfCombo : kOfList), combo_(combo) {}

  HWND Window() const { return window_; }
  int Count() const { return std::max(0, static_cast<int>(Ask(window_, is_.count))); }
  int Current() const { return static_cast<int>(Ask(window_, is_.current)); }
  CString TextOf(int index) const {
    const auto length = static_cast<int>(Ask(window_, is_.length, static_cast<WPARAM>(index)));
    if (length < 0) return {};
    CString text;
    Ask(window_, is_.text, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text.GetBuffer(length + 1)));
    text.ReleaseBuffer(length);
    return text;
  }
  int Find(const CString& text) const {
    for (int i = 0; i < Count(); ++i)
      if (TextOf(i) == text) return i;
    return -1;
  }
  bool IsSelected(int index) const {
    return Several() ? Ask(window_, LB_GETSEL, static_cast<WPARAM>(index)) > 0 : Current() == index;
  }
  bool Select(int index, bool on) const {
    if (Several()) {
      // A choice by a reader replaces the selection, as a click without keys does.
      Ask(window_, LB_SETSEL, 0, -1);
      if (Ask(window_, LB_SETSEL, on ? 1 : 0, index) == LB_ERR) return false;
    } else if (Ask(window_, is_.choose, on ? static_cast<WPARAM>(index) : static_cast<WPARAM>(-1)) < 0 &&
               on) {
      return false;
    }
    // Lists notify only a parent that asked for it.
    const auto peer = PeerAt(window_);
    if (combo_ || (peer != nullptr && (peer->Style() & LBS_NOTIFY) != 0)) NotifyParent(window_, is_.chosen);
    return true;
  }
  CRect PlaceOf(int index) const {
    RECT place = {0, 0, 0, 0};
    const auto peer = PeerAt(window_);
    // The list of a combo is a window of the system's own, whose place no message gives.
    if (combo_ || peer == nullptr) return {};
    Ask(window_, LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&place));
    // Of a line that is scrolled half out, the part that can be clicked.
    const CRect seen = CRect(place) & peer->ClientRect();
    return seen.IsRectEmpty() != 0 ? CRect() : seen + peer->ClientOrigin();
  }

 private:
  bool Several() const {
    const auto peer = PeerAt(window_);
    return !combo_ && peer != nullptr && (peer->Style() & (LBS_MULTIPLESEL | LBS_EXTENDEDSEL)) != 0;
  }

  HWND window_;
  ItemMessages is_;
  bool combo_;
};

class ItemObject : public AccessibleObject {
 public:
  ItemObject(const ItemBox& box, int index) : box_(box), index_(index) {}
  bool Exists() const override { return PeerAt(box_.Window()) != nullptr && index_ < box_.Count(); }
  std::int64_t Number() const override { return std::int64_t{index_} + 1; }
  HWND Window() const override { return box_.Window(); }
  AccessRole Role() const override { return AccessRole::ListItem; }
  CString Name() const override { return Exists() ? box_.TextOf(index_) : CString(); }
  unsigned State() const override {
    if (!Exists()) return kAccessHidden;
    unsigned state = kAccessSelectable | (box_.IsSelected(index_) ? kAccessSelected : 0);
    if (CRect(Place()).IsRectEmpty() != 0) state |= kAccessOffscreen;
    const bool keys = box_.Current() == index_ && DesktopInForce().Focus() == box_.Window();
    return keys ? state | kAccessFocused : state;
  }
  RECT Place() const override { return Exists() ? box_.PlaceOf(index_) : CRect(); }
  std::shared_ptr<AccessibleObject> Parent() const override { return AccessibleOf(box_.Window()); }
  int IndexInParent() const override { return index_; }
  bool Select(bool on) override { return Exists() && box_.Select(index_, on); }
  std::vector<AccessAction> Actions() const override { return {AccessAction::Press}; }
  bool Do(AccessAction action) override { return action == AccessAction::Press && Select(true); }

 private:
  ItemBox box_;
  int index_;
};

class WindowObject : public AccessibleObject {
 public:
  explicit WindowObject(HWND window) : window_(window) {}
  bool Exists() const override { return PeerAt(window_) != nullptr; }
  HWND Window() const override { return window_; }
  AccessRole Role() const override {
    switch (Kind()) {
      case WindowKind::Top:
        return AccessRole::Window;
      case WindowKind::Dialog:
        return AccessRole::Dialog;
      default:
        return AccessRole::Pane;
    }
  }
  CString Name() const override { return OwnText(); }
  unsigned State() const override { return WindowState(window_) | (Focusable() ? kAccessFocusable : 0); }
  RECT Place() const override {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? CRect() : CRect(peer->WindowRect());
  }
  std::shared_ptr<AccessibleObject> Parent() const override {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? nullptr : AccessibleOf(peer->Parent());
  }
  int ChildCount() const override { return static_cast<int>(Windows().size()); }
  std::shared_ptr<AccessibleObject> Child(int index) const override {
    const std::vector<HWND> windows = Windows();
    const bool there = index >= 0 && static_cast<std::size_t>(index) < windows.size();
    return there ? AccessibleOf(windows[static_cast<std::size_t>(index)]) : nullptr;
  }
  int IndexInParent() const override {
    const auto peer = PeerAt(window_);
    const auto parent = peer == nullptr ? nullptr : PeerAt(peer->Parent());
    if (parent == nullptr) return -1;
    const std::vector<HWND> among = parent->Children();
    const auto found = std::find(among.begin(), among.end(), window_);
    return found == among.end() ? -1 : static_cast<int>(found - among.begin());
  }
  std::shared_ptr<AccessibleObject> At(POINT screen) const override {
    for (int i = ChildCount() - 1; i >= 0; --i) {
      const auto child = Child(i);
      if (child == nullptr || (child->State() & kAccessHidden) != 0) continue;
      if (CRect(child->Place()).PtInRect(screen) == 0) continue;
      const auto inner = child->At(screen);
      return inner == nullptr ? child : inner;
    }
    return nullptr;
  }
  std::shared_ptr<AccessibleObject> FocusedChild() const override {
    // The focus may be deep within a child: readers come down one step at a time.
    for (HWND at = DesktopInForce().Focus(); at != nullptr;) {
      const auto peer = PeerAt(at);
      if (peer == nullptr) return nullptr;
      if (peer->Parent() == window_) return AccessibleOf(at);
      at = peer->Parent();
    }
    return nullptr;
  }
  std::vector<AccessAction> Actions() const override {
    return Focusable() ? std::vector<AccessAction>{AccessAction::Focus} : std::vector<AccessAction>();
  }
  bool Do(AccessAction action) override {
    const auto peer = PeerAt(window_);
    if (peer == nullptr || action != AccessAction::Focus || !Usable()) return false;
    peer->Focus();
    return true;
  }

 protected:
  DWORD Style() const {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? 0 : peer->Style();
  }
  WindowKind Kind() const {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? WindowKind::Custom : peer->Kind();
  }
  bool Usable() const { return (WindowState(window_) & (kAccessDisabled | kAccessHidden)) == 0; }
  CString OwnText() const {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? CString() : peer->Text();
  }
  virtual bool Focusable() const { return (Style() & WS_TABSTOP) != 0; }

 private:
  std::vector<HWND> Windows() const {
    const auto peer = PeerAt(window_);
    return peer == nullptr ? std::vector<HWND>() : peer->Children();
  }

  HWND window_;
};

class LabelObject : public WindowObject {
 public:
  using WindowObject::WindowObject;
  AccessRole Role() const override { return AccessRole::Label; }
  CString Name() const override {
    return (Style() & SS_NOPREFIX) != 0 ? OwnText() : WithoutKeyMarks(OwnText());
  }
  int ChildCount() const override { return 0; }
};

class ButtonObject : public WindowObject {
 public:
  using WindowObject::WindowObject;
  AccessRole Role() const override {
    if (Type() == BS_GROUPBOX) return AccessRole::Group;
    if (Type() == BS_RADIOBUTTON || Type() == BS_AUTORADIOBUTTON) return AccessRole::RadioButton;
    return IsBox() ? AccessRole::CheckBox : AccessRole::Button;
  }
  CString Name() const override { return WithoutKeyMarks(OwnText()); }
  unsigned State() const override {
    unsigned state = WindowObject::State();
    if (Type() == BS_DEFPUSHBUTTON) state |= kAccessDefault;
    if (!IsBox() && Role() != AccessRole::RadioButton) return state;
    const LRESULT check = Ask(Window(), BM_GETCHECK);
    if (check == BST_CHECKED) state |= kAccessChecked;
    if (check == BST_INDETERMINATE) state |= kAccessMixed;
    return state | kAccessCheckable;
  }
  int ChildCount() const override { return 0; }
  std::vector<AccessAction> Actions() const override {
    if (Type() == BS_GROUPBOX) return {};
    return {IsBox() ? AccessAction::Toggle : AccessAction::Press, AccessAction::Focus};
  }
  bool Do(AccessAction action) override {
    const std::vector<AccessAction> known = Actions();
    if (known.empty() || !Usable()) return false;
    if (action != known.front()) return WindowObject::Do(action);
    // As a click, so that the parent hears of it and the states of a group follow.
    Ask(Window(), BM_CLICK);
    return true;
  }

 protected:
  bool Focusable() const override { return Type() != BS_GROUPBOX; }

 private:
  UINT Type() const { return Style() & 0xFU; }
  bool IsBox() const {
    const UINT type = Type();
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_3STATE || type == BS_AUTO3STATE;
  }
};

class EditObject : public WindowObject {
 public:
  using WindowObject::WindowObject;
  AccessRole Role() const override { return AccessRole::Text; }
  CString Name() const override { return AccessibleLabel(Window()); }
  // A reader speaks aloud what it is given.
  CString Value() const override { return (Style() & ES_PASSWORD) != 0 ? CString() : OwnText(); }
  bool SetValue(const CString& value) override {
    const auto peer = PeerAt(Window());
    if (peer == nullptr || !Usable() || (Style() & ES_READONLY) != 0) return false;
    peer->SetText(value);
    return true;
  }
  unsigned State() const override {
    unsigned state = WindowObject::State();
    if ((Style() & ES_READONLY) != 0) state |= kAccessReadOnly;
    return (Style() & ES_PASSWORD) != 0 ? state | kAccessProtected : state;
  }
  int ChildCount() const override { return 0; }

 protected:
  bool Focusable() const override { return true; }
};

// A list box or a combo box: its items are its children.
class ItemsObject : public WindowObject {
 public:
  explicit ItemsObject(HWND window) : WindowObject(window) {}
  CString Name() const override { return AccessibleLabel(Window()); }
  int ChildCount() const override { return Box().Count(); }
  std::shared_ptr<AccessibleObject> Child(int index) const override {
    const bool there = index >= 0 && index < ChildCount();
    return there ? std::make_shared<ItemObject>(Box(), index) : nullptr;
  }
  std::shared_ptr<AccessibleObject> Numbered(std::int64_t number) const override {
    return number < 1 || number > ChildCount() ? nullptr : Child(static_cast<int>(number - 1));
  }
  std::shared_ptr<AccessibleObject> FocusedChild() const override {
    return DesktopInForce().Focus() == Window() ? Child(Box().Current()) : nullptr;
  }
  std::vector<std::shared_ptr<AccessibleObject>> Selected() const override {
    std::vector<std::shared_ptr<AccessibleObject>> selected;
    const int count = ChildCount();
    for (int i = 0; i < count && selected.size() < kMaxReportedSelection; ++i)
      if (Box().IsSelected(i)) selected.push_back(Child(i));
    return selected;
  }

 protected:
  bool Focusable() const override { return true; }
  ItemBox Box() const { return {Window(), Kind() == WindowKind::Combo}; }
};

class ListObject : public ItemsObject {
 public:
  using ItemsObject::ItemsObject;
  AccessRole Role() const override { return AccessRole::List; }
  CString Value() const override {
    const int current = Box().Current();
    return current < 0 ? CString() : Box().TextOf(current);
  }
};

class ComboObject : public ItemsObject {
 public:
  using ItemsObject::ItemsObject;
  AccessRole Role() const override { return AccessRole::DropDown; }
  CString Value() const override { return OwnText(); }
  // Of its items where it lets nothing else be typed.
  bool SetValue(const CString& value) override {
    const auto peer = PeerAt(Window());
    if (peer == nullptr || !Usable()) return false;
    const int known = Box().Find(value);
    // By choosing, where the text is one of the items: so the parent hears of it.
    if (known >= 0) return Box().Select(known, true);
    if ((Style() & 3U) == CBS_DROPDOWNLIST) return false;
    peer->SetText(value);
    return true;
  }
  unsigned State() const override {
    const bool open = Ask(Window(), CB_GETDROPPEDSTATE) != 0;
    return WindowObject::State() | kAccessExpandable | (open ? kAccessExpanded : 0);
  }
  std::vector<AccessAction> Actions() const override { return {AccessAction::ShowList, AccessAction::Focus}; }
  bool Do(AccessAction action) override {
    if (action != AccessAction::ShowList) return ItemsObject::Do(action);
    if (!Usable()) return false;
    Ask(Window(), CB_SHOWDROPDOWN, Ask(Window(), CB_GETDROPPEDSTATE) == 0 ? TRUE : FALSE);
    return true;
  }
};

// The cell of a table that the control stands in and edits.
std::shared_ptr<AccessibleObject> EditedCell(HWND table, HWND control) {
  MessageTarget* const target = MappedWindow(table);
  const AccessibleCells* const cells = target == nullptr ? nullptr : target->GetAccessibleCells();
  const CellAddress at = cells == nullptr ? CellAddress() : cells->CellOf(control);
  return at == CellAddress() ? nullptr : AccessibleTableOf(table)->CellAt(at.row, at.column);
}

std::shared_ptr<AccessibleObject> ByKind(HWND window, WindowKind kind) {
  switch (kind) {
    case WindowKind::Static:
      return std::make_shared<LabelObject>(window);
    case WindowKind::Button:
      return std::make_shared<ButtonObject>(window);
    case WindowKind::Edit:
      return std::make_shared<EditObject>(window);
    case WindowKind::List:
      return std::make_shared<ListObject>(window);
    case WindowKind::Combo:
      return std::make_shared<ComboObject>(window);
    default:
      return std::make_shared<WindowObject>(window);
  }
}

}  // namespace

std::shared_ptr<AccessibleObject> AccessibleOf(HWND window) {
  const auto peer = PeerAt(window);
  if (peer == nullptr) return nullptr;
  if (MessageTarget* const target = MappedWindow(window)) {
    // What a class says of itself goes before what can be seen of its window.
    if (auto own = target->GetAccessible()) return own;
    if (target->GetAccessibleCells() != nullptr) return AccessibleTableOf(window);
  }
  return ByKind(window, peer->Kind());
}

bool HasOwnAccessible(HWND window) {
  MessageTarget* const target = MappedWindow(window);
  return target != nullptr && (target->GetAccessibleCells() != nullptr || target->GetAccessible() != nullptr);
}

CString AccessibleLabel(HWND control) {
  const auto peer = PeerAt(control);
  const auto parent = peer == nullptr ? nullptr : PeerAt(peer->Parent());
  if (parent == nullptr) return {};
  if (const auto cell = EditedCell(peer->Parent(), control)) return cell->Name();
  const std::vector<HWND> among = parent->Children();
  const auto self = std::find(among.begin(), among.end(), control);
  // The label of a control is the static text in front of it, as dialogs are laid out.
  const auto before = self == among.begin() || self == among.end() ? nullptr : PeerAt(*(self - 1));
  if (before == nullptr || before->Kind() != WindowKind::Static) return {};
  return (before->Style() & SS_NOPREFIX) != 0 ? before->Text() : WithoutKeyMarks(before->Text());
}

CString WithoutKeyMarks(const CString& text) {
  CString plain;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (text[i] == _T('&') && i + 1 < text.GetLength()) ++i;
    plain += text[i];
  }
  return plain;
}

}  // namespace lorv
