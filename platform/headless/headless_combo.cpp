#include "platform/headless/headless_combo.h"

#include <algorithm>

#include "framework/window_map.h"
#include "platform/headless/headless_desktop.h"

namespace lorv {
namespace {

constexpr UINT kInnerEdit = 1001;
constexpr int kArrowWidth = 16;

}  // namespace

LRESULT HeadlessCombo::Default(UINT message, WPARAM w, LPARAM l) {
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
      if (edit_ != nullptr)
        Home().MoveFocus(edit_);
      else
        Notify(CBN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS:
      if (edit_ == nullptr || reinterpret_cast<HWND>(w) != edit_) {
        CloseBy(false);
        if (edit_ == nullptr && Exists()) Notify(CBN_KILLFOCUS);
      }
      return 0;
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN:
      return Key(static_cast<int>(w));
    case WM_LBUTTONDOWN:
      return Press();
    case WM_SETTEXT:
      return edit_ == nullptr ? CB_ERR : ToEdit(message, w, l);
    case WM_SIZE:
      if (const auto edit = Home().Find(edit_)) edit->Place({0, 0, LOWORD(l) - kArrowWidth, HIWORD(l)});
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS | (dropped_ ? DLGC_WANTALLKEYS : 0U);
    default:
      return HeadlessWindow::Default(message, w, l);
  }
}

void HeadlessCombo::MakeEdit() {
  if (!HasEdit()) return;
  WindowRequest request;
  request.kind = WindowKind::Edit;
  request.style = WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL;
  const CRect client(ClientRect());
  request.place = {0, 0, client.right - kArrowWidth, client.bottom};
  request.parent = Handle();
  request.id = kInnerEdit;
  request.attach = [this](HWND edit) { edit_ = edit; };
  Home().Create(request);
}

// What the edit inside tells, goes on as the drop-down list's own.
void HeadlessCombo::FromEdit(UINT code) {
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

LRESULT HeadlessCombo::ToEdit(UINT message, WPARAM w, LPARAM l) const {
  const auto edit = Home().Find(edit_);
  return edit == nullptr ? CB_ERR : edit->Default(message, w, l);
}

CString HeadlessCombo::Text() const {
  if (const auto edit = Home().Find(edit_)) return edit->Text();
  return items_.Has(items_.chosen) ? items_.At(items_.chosen).text : CString();
}

LRESULT HeadlessCombo::ItemMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  const auto text = reinterpret_cast<LPCTSTR>(l);
  switch (message) {
    case CB_ADDSTRING:
      return items_.Add(text);
    case CB_INSERTSTRING:
      return items_.Insert(index, text);
    case CB_DELETESTRING:
      return items_.Delete(index);
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
      return items_.Has(index) ? items_.At(index).data : CB_ERR;
    case CB_SETITEMDATA:
      if (items_.Has(index)) items_.At(index).data = l;
      return items_.Has(index) ? 0 : CB_ERR;
    default:
      return ChoiceMessage(message, w, l);
  }
}

LRESULT HeadlessCombo::ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  switch (message) {
    case CB_GETCURSEL:
      return items_.chosen;
    case CB_SETCURSEL:
      items_.chosen = items_.Has(index) ? index : -1;
      ShowChosen();
      return items_.chosen;
    case CB_SELECTSTRING: {
      const int found = items_.Find(index, reinterpret_cast<LPCTSTR>(l), false);
      if (found >= 0) items_.chosen = found;
      if (found >= 0) ShowChosen();
      return found;
    }
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
      if (w != 0)
        Drop(true);
      else
        CloseBy(true);
      return TRUE;
    case CB_GETDROPPEDSTATE:
      return static_cast<LRESULT>(dropped_);
    case CB_SETDROPPEDWIDTH:
      dropped_width_ = static_cast<UINT>(w);
      return static_cast<LRESULT>(w);
    case CB_GETDROPPEDWIDTH:
      return std::max<LRESULT>(dropped_width_, CRect(WindowRect()).Width());
    case CB_GETDROPPEDCONTROLRECT:
      if (const auto target = reinterpret_cast<LPRECT>(l)) *target = WindowRect();
      return TRUE;
    case CB_GETITEMHEIGHT:
      return kHeadlessHeight;
    default:
      return 0;
  }
}

// The chosen item's text goes into the edit, without a word to the parent.
void HeadlessCombo::ShowChosen() {
  Invalidate(nullptr);
  if (edit_ == nullptr) return;
  const int chosen = items_.chosen;
  const CString text = items_.Has(chosen) ? items_.At(chosen).text : CString();
  const HWND edit = std::exchange(edit_, nullptr);
  if (const auto peer = Home().Find(edit)) {
    peer->Default(WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.GetString()));
    peer->Default(EM_SETSEL, 0, -1);
  }
  edit_ = edit;
  items_.chosen = chosen;
}

void HeadlessCombo::Drop(bool on) {
  if (dropped_ == on) return;
  dropped_ = on;
  if (on) before_drop_ = items_.chosen;
  Notify(on ? CBN_DROPDOWN : CBN_CLOSEUP);
}

void HeadlessCombo::CloseBy(bool taken) {
  if (!dropped_) return;
  if (!taken) {
    items_.chosen = before_drop_;
    ShowChosen();
  }
  Notify(taken ? CBN_SELENDOK : CBN_SELENDCANCEL);
  if (Exists()) Drop(false);
}

void HeadlessCombo::ChooseByUser(int index) {
  if (!items_.Has(index) || index == items_.chosen) return;
  items_.chosen = index;
  ShowChosen();
  if (!dropped_) Notify(CBN_SELENDOK);
  if (Exists()) Notify(CBN_SELCHANGE);
}

LRESULT HeadlessCombo::Key(int key) {
  const bool alt = Home().KeyState(VK_MENU) != 0;
  if (key == VK_F4 || (alt && (key == VK_DOWN || key == VK_UP))) {
    if (dropped_)
      CloseBy(true);
    else
      Drop(true);
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

LRESULT HeadlessCombo::Press() {
  Focus();
  if (!Exists()) return 0;
  if (dropped_)
    CloseBy(true);
  else
    Drop(true);
  return 0;
}

void HeadlessCombo::PaintSelf(Canvas& canvas) {
  canvas.Fill(ClientRect(), RGB(255, 255, 255));
  if (edit_ == nullptr) canvas.Text({0, 0}, Text().View(), 0);
}

}  // namespace lorv
