#include "platform/qt/qt_combo.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QStyle>
#include <algorithm>

#include "framework/window_map.h"
#include "platform/qt/qt_desk.h"
#include "platform/qt/qt_text.h"

namespace lorv {

namespace {

constexpr UINT kInnerEdit = 1001;

}  // namespace

// Tells when its list goes, however it goes.
class DropList : public QComboBox {
 public:
  using QComboBox::QComboBox;
  std::function<void()> closed;
  void hidePopup() override {
    QComboBox::hidePopup();
    if (closed) closed();
  }
};

QtCombo::QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtCombo(desk, handle, request, new DropList(around)) {}

QtCombo::QtCombo(QtDesk& desk, HWND handle, const WindowRequest& request, DropList* list)
    : QtControl(desk, handle, request),
      list_(*list),
      items_(*list->model(), (request.style & CBS_SORT) != 0) {
  StartControl(list);
  Watch(list->view());
  list->closed = WhileItLives([this] { ListClosed(); });
  QObject::connect(list, &QComboBox::activated, list,
                   WhileItLives([this](int index) { PickedByMouse(index); }));
}

HWND QtCombo::KeyTarget() const {
  return edit_ == nullptr ? Handle() : edit_;
}

LRESULT QtCombo::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
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
        Home().MoveFocus(edit_);
      } else {
        Notify(CBN_SETFOCUS);
      }
      return 0;
    case WM_KILLFOCUS:
      if (edit_ != nullptr) return 0;
      CloseBy(false);
      if (Exists()) Notify(CBN_KILLFOCUS);
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
      if (const auto edit = Home().Find(edit_)) edit->Place(EditPlace());
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (dropped_ ? DLGC_WANTALLKEYS : 0U);
    default:
      return QtControl::Default(message, w, l);
  }
}

CRect QtCombo::EditPlace() const {
  const CRect client(ClientRect());
  const int arrow = list_.style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2;
  return CRect(1, 1, std::max(client.right - arrow, LONG{1}), std::max(client.bottom - 1, LONG{1}));
}

void QtCombo::MakeEdit() {
  if (!HasEdit()) return;
  WindowRequest request;
  request.kind = WindowKind::Edit;
  request.style = WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL;
  request.place = EditPlace();
  request.parent = Handle();
  request.id = kInnerEdit;
  request.attach = [this](HWND edit) { edit_ = edit; };
  Home().Create(request);
}

// What the edit inside tells, goes on as the drop-down list's own.
void QtCombo::FromEdit(UINT code) {
  switch (code) {
    case EN_UPDATE:
      return Notify(CBN_EDITUPDATE);
    case EN_CHANGE:
      items_.chosen = -1;
      return Notify(CBN_EDITCHANGE);
    case EN_SETFOCUS:
      return Notify(CBN_SETFOCUS);
    case EN_KILLFOCUS:
      CloseBy(false);
      if (Exists()) Notify(CBN_KILLFOCUS);
      return;
    default:
      return;
  }
}

LRESULT QtCombo::ToEdit(UINT message, WPARAM w, LPARAM l) const {
  const auto edit = Home().Find(edit_);
  return edit == nullptr ? CB_ERR : edit->Default(message, w, l);
}

CString QtCombo::Text() const {
  if (!Exists()) return {};
  if (const auto edit = Home().Find(edit_)) return edit->Text();
  return items_.Has(items_.chosen) ? items_.Text(items_.chosen) : CString();
}

LRESULT QtCombo::ItemMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  const auto text = reinterpret_cast<LPCTSTR>(l);
  switch (message) {
    case CB_ADDSTRING:
    case CB_INSERTSTRING:
    case CB_DELETESTRING: {
      LRESULT answer = CB_ERR;
      if (message == CB_ADDSTRING) answer = items_.Add(text);
      if (message == CB_INSERTSTRING) answer = items_.Insert(index, text);
      if (message == CB_DELETESTRING) answer = items_.Delete(index);
      // The widget chooses something of its own as soon as it has an item.
      list_.setCurrentIndex(items_.chosen);
      return answer;
    }
    case CB_RESETCONTENT:
      items_.Clear();
      ShowChosen();
      return 0;
    case CB_GETCOUNT:
      return items_.Count();
    case CB_GETLBTEXT:
      return items_.Copy(index, reinterpret_cast<LPTSTR>(l));
    case CB_GETLBTEXTLEN:
      return items_.Length(index);
    case CB_FINDSTRING:
    case CB_FINDSTRINGEXACT:
      return items_.Find(index, text, message == CB_FINDSTRINGEXACT);
    case CB_GETITEMDATA:
      return items_.Data(index);
    case CB_SETITEMDATA:
      return items_.SetData(index, l);
    default:
      return ChoiceMessage(message, w, l);
  }
}

LRESULT QtCombo::SelectString(int after, LPCTSTR start) {
  const int found = items_.Find(after, start, false);
  if (found >= 0) {
    items_.chosen = found;
    ShowChosen();
  }
  return found;
}

LRESULT QtCombo::ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
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
      ToEdit(EM_SETSEL, static_cast<WPARAM>(static_cast<short>(LOWORD(l))), static_cast<short>(HIWORD(l)));
      return TRUE;
    case CB_LIMITTEXT:
      if (edit_ != nullptr) ToEdit(EM_SETLIMITTEXT, w, 0);
      return TRUE;
    case CB_SHOWDROPDOWN:
      if (w != 0) {
        Drop(true);
      } else {
        CloseBy(true);
      }
      return TRUE;
    case CB_GETDROPPEDSTATE:
      return static_cast<LRESULT>(dropped_);
    default:
      return LooksMessage(message, w, l);
  }
}

LRESULT QtCombo::LooksMessage(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case CB_SETDROPPEDWIDTH:
      dropped_width_ = static_cast<UINT>(w);
      list_.view()->setMinimumWidth(static_cast<int>(std::min<WPARAM>(w, 0x7FFF)));
      return static_cast<LRESULT>(w);
    case CB_GETDROPPEDWIDTH:
      return std::max<LRESULT>(dropped_width_, CRect(WindowRect()).Width());
    case CB_GETDROPPEDCONTROLRECT:
      if (const auto target = reinterpret_cast<LPRECT>(l)) *target = WindowRect();
      return TRUE;
    case CB_GETITEMHEIGHT:
      return list_.fontMetrics().height();
    default:
      return 0;
  }
}

// The chosen item's text goes into the edit, without a word to the parent.
void QtCombo::ShowChosen() {
  const int chosen = items_.chosen;
  list_.setCurrentIndex(chosen);
  if (edit_ == nullptr) return;
  const CString text = items_.Has(chosen) ? items_.Text(chosen) : CString();
  const HWND edit = std::exchange(edit_, nullptr);
  if (const auto peer = Home().Find(edit)) {
    peer->Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
    peer->Default(EM_SETSEL, 0, -1);
  }
  edit_ = edit;
  items_.chosen = chosen;
}

void QtCombo::Drop(bool on) {
  if (dropped_ == on) return;
  if (on) before_drop_ = items_.chosen;
  if (on) Notify(CBN_DROPDOWN);
  if (!Exists()) return;
  // The parent fills the list on CBN_DROPDOWN, or thinks better of it.
  dropped_ = on;
  picked_ = -1;
  if (on) {
    if (Seen()) list_.showPopup();
    return;
  }
  list_.hidePopup();
  Notify(CBN_CLOSEUP);
}

void QtCombo::CloseBy(bool taken) {
  if (!dropped_) return;
  if (!taken) {
    items_.chosen = before_drop_;
    ShowChosen();
  }
  Notify(taken ? CBN_SELENDOK : CBN_SELENDCANCEL);
  if (Exists()) Drop(false);
}

// The list went by a click in it or beside it. Which of the two is known when the click is worked through.
void QtCombo::ListClosed() {
  if (!dropped_) return;
  Home().Mailbox()->Leave([&desk = Home(), handle = Handle()] {
    const auto window = std::dynamic_pointer_cast<QtCombo>(desk.At(handle));
    if (window == nullptr || !window->dropped_) return;
    const int picked = window->picked_;
    window->CloseBy(picked >= 0);
    if (picked >= 0 && window->Exists()) window->ChooseByUser(picked, true);
  });
}

void QtCombo::PickedByMouse(int index) {
  picked_ = index;
}

void QtCombo::ChooseByUser(int index, bool ended) {
  if (!items_.Has(index) || index == items_.chosen) return;
  items_.chosen = index;
  ShowChosen();
  if (!dropped_ && !ended) Notify(CBN_SELENDOK);
  if (Exists()) Notify(CBN_SELCHANGE);
}

LRESULT QtCombo::Key(int key) {
  const bool alt = Home().KeyState(VK_MENU) != 0;
  if (key == VK_F4 || (alt && (key == VK_DOWN || key == VK_UP))) {
    if (dropped_) {
      CloseBy(true);
    } else {
      Drop(true);
    }
    return 0;
  }
  const int last = items_.Count() - 1;
  switch (key) {
    case VK_RETURN:
    case VK_ESCAPE:
      CloseBy(key == VK_RETURN);
      break;
    case VK_UP:
      ChooseByUser(std::max(items_.chosen - 1, 0));
      break;
    case VK_DOWN:
      ChooseByUser(std::min(items_.chosen + 1, last));
      break;
    case VK_HOME:
      ChooseByUser(0);
      break;
    case VK_END:
      ChooseByUser(last);
      break;
    default:
      break;
  }
  return 0;
}

LRESULT QtCombo::Press() {
  Focus();
  if (!Exists()) return 0;
  if (dropped_) {
    CloseBy(true);
  } else {
    Drop(true);
  }
  return 0;
}

}  // namespace lorv
