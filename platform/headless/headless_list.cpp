#include "platform/headless/headless_list.h"

#include <algorithm>

#include "platform/headless/headless_desktop.h"

namespace lorv {

LRESULT HeadlessList::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  if (message >= LB_ADDSTRING && message <= LB_ITEMFROMPOINT) return ItemMessage(message, w, l);
  switch (message) {
    case WM_KEYDOWN:
      return Key(static_cast<int>(w));
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      return Press(message, l);
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      Tell(message == WM_SETFOCUS ? LBN_SETFOCUS : LBN_KILLFOCUS);
      return 0;
    case WM_GETDLGCODE:
      return DLGC_WANTARROWS | DLGC_WANTCHARS;
    default:
      return HeadlessWindow::Default(message, w, l);
  }
}

void HeadlessList::Tell(UINT code) {
  if ((Style() & LBS_NOTIFY) != 0) Notify(code);
}

int HeadlessList::PageSize() const {
  return std::max(1, static_cast<int>(ClientRect().bottom) / kHeadlessHeight);
}

LRESULT HeadlessList::ItemMessage(UINT message, WPARAM w, LPARAM l) {
  const int index = static_cast<int>(static_cast<LONG_PTR>(w));
  const auto text = reinterpret_cast<LPCTSTR>(l);
  switch (message) {
    case LB_ADDSTRING:
      Invalidate(nullptr);
      return items_.Add(text);
    case LB_INSERTSTRING:
      Invalidate(nullptr);
      return items_.Insert(index, text);
    case LB_DELETESTRING:
      Invalidate(nullptr);
      return items_.Delete(index);
    case LB_RESETCONTENT:
      items_.Clear();
      caret_ = top_ = 0;
      Invalidate(nullptr);
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
      return items_.Has(index) ? items_.At(index).data : LB_ERR;
    case LB_SETITEMDATA:
      if (items_.Has(index)) items_.At(index).data = l;
      return items_.Has(index) ? 0 : LB_ERR;
    default:
      return ChoiceMessage(message, w, l);
  }
}

LRESULT HeadlessList::ChoiceMessage(UINT message, WPARAM w, LPARAM l) {
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
      return Several() ? static_cast<int>(items_.At(index).selected)
                       : static_cast<int>(items_.chosen == index);
    case LB_SETSEL:
      return Select(static_cast<int>(l), w != 0);
    case LB_GETSELCOUNT:
      return Several() ? SelectedCount() : LB_ERR;
    case LB_GETSELITEMS:
      return Several() ? SelectedItems(index, reinterpret_cast<int*>(l)) : LB_ERR;
    case LB_GETTOPINDEX:
      return top_;
    case LB_SETTOPINDEX:
      if (!items_.Has(index)) return LB_ERR;
      top_ = std::clamp(index, 0, std::max(0, items_.Count() - PageSize()));
      Invalidate(nullptr);
      return 0;
    case LB_GETCARETINDEX:
      return caret_;
    case LB_GETITEMHEIGHT:
      return kHeadlessHeight;
    default:
      return 0;
  }
}

LRESULT HeadlessList::Select(int index, bool on) {
  if (!Several() || (index != -1 && !items_.Has(index))) return LB_ERR;
  for (int i = 0; i < items_.Count(); ++i)
    if (index == -1 || i == index) items_.At(i).selected = on;
  Invalidate(nullptr);
  return 0;
}

int HeadlessList::SelectedCount() const {
  int count = 0;
  for (int i = 0; i < items_.Count(); ++i) count += static_cast<int>(items_.At(i).selected);
  return count;
}

LRESULT HeadlessList::SelectedItems(int room, int* target) const {
  int count = 0;
  for (int i = 0; i < items_.Count() && count < room && target != nullptr; ++i)
    if (items_.At(i).selected) target[count++] = i;
  return count;
}

void HeadlessList::Choose(int index) {
  items_.chosen = index;
  if (index >= 0) caret_ = index;
  if (index >= 0 && index < top_) top_ = index;
  if (index >= top_ + PageSize()) top_ = index - PageSize() + 1;
  Invalidate(nullptr);
}

void HeadlessList::ChooseByUser(int index, bool toggles) {
  if (!items_.Has(index)) return;
  if (Several() && toggles) {
    items_.At(index).selected = !items_.At(index).selected;
  } else if ((Style() & LBS_EXTENDEDSEL) != 0) {
    Select(-1, false);
    items_.At(index).selected = true;
  }
  Choose(index);
  Tell(LBN_SELCHANGE);
}

LRESULT HeadlessList::Key(int key) {
  int index = caret_;
  switch (key) {
    case VK_UP:
    case VK_LEFT:
      --index;
      break;
    case VK_DOWN:
    case VK_RIGHT:
      index += items_.chosen < 0 && !Several() ? 0 : 1;
      break;
    case VK_HOME:
      index = 0;
      break;
    case VK_END:
      index = items_.Count() - 1;
      break;
    case VK_PRIOR:
      index -= PageSize() - 1;
      break;
    case VK_NEXT:
      index += PageSize() - 1;
      break;
    case VK_SPACE:
      if (Several()) ChooseByUser(caret_, true);
      return 0;
    default:
      return 0;
  }
  if (items_.Count() == 0) return 0;
  index = std::clamp(index, 0, items_.Count() - 1);
  if ((Style() & LBS_MULTIPLESEL) != 0) {
    caret_ = index;
    return 0;
  }
  if (index != items_.chosen) ChooseByUser(index, false);
  return 0;
}

LRESULT HeadlessList::Press(UINT message, LPARAM l) {
  Focus();
  if (!Exists()) return 0;
  const int index = top_ + static_cast<short>(HIWORD(l)) / kHeadlessHeight;
  if (!items_.Has(index)) return 0;
  const bool control = Home().KeyState(VK_CONTROL) != 0;
  if (message == WM_LBUTTONDBLCLK) {
    Tell(LBN_DBLCLK);
    return 0;
  }
  ChooseByUser(index, (Style() & LBS_MULTIPLESEL) != 0 || control);
  return 0;
}

void HeadlessList::PaintSelf(Canvas& canvas) {
  const CRect client(ClientRect());
  canvas.Fill(client, RGB(255, 255, 255));
  for (int i = top_; i < items_.Count() && i < top_ + PageSize() + 1; ++i) {
    const CRect line(0, (i - top_) * kHeadlessHeight, client.right, (i - top_ + 1) * kHeadlessHeight);
    const bool marked = Several() ? items_.At(i).selected : items_.chosen == i;
    if (marked) canvas.Fill(line, Home().Colour(COLOR_HIGHLIGHT));
    canvas.Text(line.TopLeft(), items_.At(i).text.View(), marked ? RGB(255, 255, 255) : 0);
  }
}

}  // namespace lorv
