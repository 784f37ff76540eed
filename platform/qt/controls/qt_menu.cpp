#include <QAction>
#include <QApplication>
#include <QMenu>
#include <algorithm>
#include <memory>

#include "platform/models/carried_fault.h"
#include "platform/qt/controls/qt_column_menu.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_text.h"

// Popup menus. A submenu that breaks into columns stays one column with lines at its breaks.

namespace lorv {
namespace {

constexpr UINT kBreaks = MF_MENUBREAK | MF_MENUBARBREAK;

QString Label(const CString& text) {
  // What stands behind the tab goes to the right edge, as a key of a command does.
  return ToQt(text.View());
}

bool Breaks(const MenuEntry& entry) {
  return (entry.flags & kBreaks) != 0;
}

void Fill(QMenu& menu, const MenuModel& model);

void AddEntry(QMenu& menu, const MenuEntry& entry) {
  if ((entry.flags & MF_SEPARATOR) != 0) {
    menu.addSeparator();
    return;
  }
  QAction* action = nullptr;
  if (entry.submenu != nullptr) {
    auto* const below = new QMenu(Label(entry.text), &menu);
    Fill(*below, *entry.submenu);
    action = menu.addMenu(below);
  } else {
    action = menu.addAction(Label(entry.text));
    action->setData(entry.id);
  }
  action->setEnabled((entry.flags & (MF_GRAYED | MF_DISABLED)) == 0);
  // Only entries with a tick: others would show an empty box for one.
  action->setCheckable((entry.flags & MF_CHECKED) != 0);
  action->setChecked((entry.flags & MF_CHECKED) != 0);
}

void Fill(QMenu& menu, const MenuModel& model) {
  for (const MenuEntry& entry : model.entries) {
    if (Breaks(entry) && !menu.isEmpty()) menu.addSeparator();
    AddEntry(menu, entry);
  }
}

void Fill(QtColumnMenu& menu, const MenuModel& model) {
  QMenu* column = nullptr;
  for (const MenuEntry& entry : model.entries) {
    if (column == nullptr || (Breaks(entry) && !column->isEmpty()))
      column = &menu.AddColumn(column != nullptr && (entry.flags & MF_MENUBARBREAK) != 0);
    AddEntry(*column, entry);
  }
}

QPoint CornerOf(QSize size, POINT screen, UINT flags) {
  // The flags say which side of the menu stands at the point.
  QPoint at = ToQt(screen);
  if ((flags & TPM_RIGHTALIGN) != 0) at.rx() -= size.width();
  if ((flags & TPM_CENTERALIGN) != 0) at.rx() -= size.width() / 2;
  if ((flags & TPM_BOTTOMALIGN) != 0) at.ry() -= size.height();
  if ((flags & TPM_VCENTERALIGN) != 0) at.ry() -= size.height() / 2;
  return at;
}

UINT CommandOf(const QAction* chosen) {
  return chosen == nullptr ? 0 : chosen->data().toUInt();
}

UINT ShowMenu(QtDesk& desk, const MenuModel& model, POINT screen, UINT flags, const QFont& font) {
  const auto show = [&](auto& menu, auto choose) {
    menu.setFont(font);
    Fill(menu, model);
    return desk.RunInner([&] { return CommandOf(choose(CornerOf(menu.sizeHint(), screen, flags))); },
                         [&menu] { menu.close(); });
  };
  if (std::any_of(model.entries.begin(), model.entries.end(), Breaks)) {
    QtColumnMenu menu;
    return show(menu, [&menu](QPoint corner) { return menu.Choose(corner); });
  }
  QMenu menu;
  return show(menu, [&menu](QPoint corner) { return menu.exec(corner); });
}

}  // namespace

// Menus have no parent: the owner may go while one is up.
UINT QtDesk::Popup(const MenuModel& model, POINT screen, UINT flags, HWND owner) {
  // A second menu would close the first one, whose caller still waits: as on Windows it is refused.
  if (menu_up_) return 0;
  const auto window = Window(owner);
  const QFont font = window != nullptr ? window->Widget()->font() : QApplication::font("QMenu");
  // A menu takes the mouse; the window that had captured it is notified before.
  SetCapture(nullptr);
  struct Up {
    explicit Up(bool& up) : up_(up) { up_ = true; }
    ~Up() { up_ = false; }
    bool& up_;
  };
  const Up up(menu_up_);
  return ShowMenu(*this, model, screen, flags, font);
}

}  // namespace lorv
