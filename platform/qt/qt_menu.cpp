#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QScreen>
#include <memory>

#include "platform/qt/qt_desk.h"
#include "platform/qt/qt_text.h"

// Popup menus. Qt's menu has no columns that a program sets: the breaks become separators, or nothing where
// the menu is so long that Qt makes columns of its own.

namespace lorv {
namespace {

constexpr UINT kBreaks = MF_MENUBREAK | MF_MENUBARBREAK;

QString Label(const CString& text) {
  // What stands behind the tab goes to the right edge, as a key of a command does.
  return ToQt(text.View());
}

void Fill(QMenu& menu, const MenuModel& model) {
  for (const MenuEntry& entry : model.entries) {
    if ((entry.flags & MF_SEPARATOR) != 0) {
      menu.addSeparator();
      continue;
    }
    if ((entry.flags & kBreaks) != 0 && !menu.isEmpty()) menu.addSeparator();
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
    action->setCheckable((entry.flags & MF_CHECKED) != 0);
    action->setChecked((entry.flags & MF_CHECKED) != 0);
  }
}

QPoint CornerOf(const QMenu& menu, POINT screen, UINT flags) {
  const QSize size = menu.sizeHint();
  QPoint at = ToQt(screen);
  if ((flags & TPM_RIGHTALIGN) != 0) at.rx() -= size.width();
  if ((flags & TPM_CENTERALIGN) != 0) at.rx() -= size.width() / 2;
  if ((flags & TPM_BOTTOMALIGN) != 0) at.ry() -= size.height();
  if ((flags & TPM_VCENTERALIGN) != 0) at.ry() -= size.height() / 2;
  return at;
}

}  // namespace

UINT QtDesk::Popup(const MenuModel& model, POINT screen, UINT flags, HWND owner) {
  if (menu_up_) return 0;
  const auto window = At(owner);
  // Without a parent: the owner may go while the menu is up.
  QMenu menu;
  Fill(menu, model);
  if (window != nullptr) menu.setFont(window->Widget()->font());
  SetCapture(nullptr);
  menu_up_ = true;
  const QAction* const chosen = menu.exec(CornerOf(menu, screen, flags));
  menu_up_ = false;
  return chosen == nullptr ? 0 : chosen->data().toUInt();
}

}  // namespace lorv
