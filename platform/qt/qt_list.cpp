#include "platform/qt/qt_list.h"

#include <QListWidget>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/qt_desk.h"
#include "platform/qt/qt_text.h"

namespace lorv {

QtList::QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtList(desk, handle, request, new QListWidget(around)) {}

QtList::QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QListWidget* list)
    : QtControl(desk, handle, request),
      list_(*list),
      items_(*list->model(), (request.style & LBS_SORT) != 0) {
  list->setFrameShape(Framed() ? QFrame::Box : QFrame::NoFrame);
  list->setLineWidth(1);
  list->setUniformItemSizes(true);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setSelectionMode(Several() ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  StartControl(list, list->viewport());
}

LRESULT QtList::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  if (message >= LB_ADDSTRING && message <= LB_ITEMFROMPOINT) return ItemMessage(message, w, l);
  switch (message) {
    case WM_KEYDOWN:
      return Key(static_cast<int>(w));
    case WM_CHAR:
      return Character(static_cast<TCHAR>(w));
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return Press(message, l);
    case WM_MOUSEWHEEL:
      list_.verticalScrollBar()->setValue(Top() - static_cast<short>(HIWORD(w)) / 40);
      return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Tell(message == WM_SETFOCUS ? LBN_SETFOCUS : LBN_KILLFOCUS);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
      return QtControl::Default(message, w, l);
  }
}

void QtList::Tell(UINT code) {
  if ((Look() & LBS_NOTIFY) != 0) Notify(code);
}

int QtList::RowHeight() const {
  const int hint = list_.sizeHintForRow(0);
  return hint > 0 ? hint : std::max(list_.fontMetrics().height(), 1);
}

int QtList::PageSize() const {
  return std::max(1, static_cast<int>(ClientRect().bottom) / RowHeight());
}

int QtList::Top() const {
  return list_.verticalScrollBar()->value();
}

LRESULT QtList::ItemMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  const auto text = reinterpret_cast<LPCTSTR>(l);
  switch (message) {
    case LB_ADDSTRING:
      return items_.Add(text);
    case LB_INSERTSTRING:
      return items_.Insert(index, text);
    case LB_DELETESTRING: {
      const LRESULT left = items_.Delete(index);
      if (!Several()) Choose(items_.chosen);
      return left;
    }
    case LB_RESETCONTENT:
      items_.Clear();
      caret_ = 0;
      return 0;
    case LB_GETCOUNT:
      return items_.Count();
    case LB_GETTEXT:
      return items_.Copy(index, reinterpret_cast<LPTSTR>(l));
    case LB_GETTEXTLEN:
      return items_.Length(index);
    case LB_FINDSTRING:
    case LB_FINDSTRINGEXACT:
      return items_.Find(index, text, message == LB_FINDSTRINGEXACT);
    case LB_GETITEMDATA:
      return items_.Data(index);
    case LB_SETITEMDATA:
      return items_.SetData(index, l);
    default:
      return ChoiceMessage(message, w, l);
  }
}

LRESULT QtList::ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
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
      return static_cast<LRESULT>(Several() ? Selected(index) : items_.chosen == index);
    case LB_SETSEL:
      return Select(static_cast<int>(l), w != 0);
    case LB_GETSELCOUNT:
      return Several() ? static_cast<LRESULT>(list_.selectedItems().size()) : LB_ERR;
    case LB_GETSELITEMS:
      return Several() ? SelectedItems(index, reinterpret_cast<int*>(l)) : LB_ERR;
    default:
      return PlaceMessage(message, w, l);
  }
}

LRESULT QtList::PlaceMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  switch (message) {
    case LB_GETTOPINDEX:
      return Top();
    case LB_SETTOPINDEX:
      if (!items_.Has(index)) return LB_ERR;
      list_.scrollToItem(list_.item(index), QAbstractItemView::PositionAtTop);
      return 0;
    case LB_GETCARETINDEX:
      return caret_;
    case LB_GETITEMHEIGHT:
      return RowHeight();
    case LB_GETITEMRECT: {
      const auto target = reinterpret_cast<LPRECT>(l);
      if (!items_.Has(index) || target == nullptr) return LB_ERR;
      *target = FromQt(list_.visualItemRect(list_.item(index)));
      return 1;
    }
    case LB_ITEMFROMPOINT: {
      const int item = ItemAt(PointOf(l));
      return MAKELONG(item >= 0 ? item : std::max(items_.Count() - 1, 0), item >= 0 ? 0 : 1);
    }
    default:
      return 0;
  }
}

bool QtList::Selected(int index) const {
  return list_.item(index)->isSelected();
}

LRESULT QtList::Select(int index, bool on) {
  if (!Several() || (index != -1 && !items_.Has(index))) return LB_ERR;
  for (int i = 0; i < items_.Count(); ++i)
    if (index == -1 || i == index) list_.item(i)->setSelected(on);
  return 0;
}

LRESULT QtList::SelectedItems(int room, int* target) const {
  int count = 0;
  for (int i = 0; i < items_.Count() && count < room && target != nullptr; ++i)
    if (Selected(i)) target[count++] = i;
  return count;
}

void QtList::Choose(int index) {
  items_.chosen = index;
  if (index >= 0) caret_ = index;
  if (Several()) {
    if (index >= 0) list_.setCurrentRow(index, QItemSelectionModel::NoUpdate);
    return;
  }
  list_.setCurrentRow(index);
  if (index < 0) list_.clearSelection();
}

void QtList::ChooseByUser(int index, bool toggles) {
  if (!items_.Has(index)) return;
  if (Several() && toggles) {
    list_.item(index)->setSelected(!Selected(index));
  } else if ((Look() & LBS_EXTENDEDSEL) != 0) {
    Select(-1, false);
    list_.item(index)->setSelected(true);
  }
  Choose(index);
  Tell(LBN_SELCHANGE);
}

// Where the key leads; -1 for a key that leads nowhere.
int QtList::Target(int key) const {
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

LRESULT QtList::Key(int key) {
  if (key == VK_SPACE && Several()) {
    ChooseByUser(caret_, true);
    return 0;
  }
  int index = Target(key);
  if (index < 0 || items_.Count() == 0) return 0;
  index = std::min(index, items_.Count() - 1);
  if ((Look() & LBS_MULTIPLESEL) != 0) {
    Choose(index);
    return 0;
  }
  if (index != items_.chosen) ChooseByUser(index, false);
  return 0;
}

// The next item that begins with the character.
LRESULT QtList::Character(TCHAR unit) {
  if (unit <= _T(' ') || (Look() & LBS_MULTIPLESEL) != 0) return 0;
  const int found = items_.Find(caret_, CString(unit), false);
  if (found >= 0 && found != items_.chosen) ChooseByUser(found, false);
  return 0;
}

int QtList::ItemAt(CPoint at) const {
  const QModelIndex hit = list_.indexAt(ToQt(at));
  return hit.isValid() ? hit.row() : -1;
}

LRESULT QtList::Press(UINT message, LPARAM l) {
  Focus();
  if (!Exists()) return 0;
  const int index = ItemAt(PointOf(l));
  if (!items_.Has(index)) return 0;
  if (message == WM_LBUTTONDBLCLK) {
    Tell(LBN_DBLCLK);
    return 0;
  }
  const bool control = Home().KeyState(VK_CONTROL) != 0;
  ChooseByUser(index, (Look() & LBS_MULTIPLESEL) != 0 || control);
  return 0;
}

}  // namespace lorv
