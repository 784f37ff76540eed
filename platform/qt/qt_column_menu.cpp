#include "platform/qt/qt_column_menu.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>

namespace lorv {

QtColumnMenu::QtColumnMenu() : QFrame(nullptr, Qt::Popup) {
  setFrameStyle(static_cast<int>(QFrame::StyledPanel) | static_cast<int>(QFrame::Plain));
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): the window owns its layout
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(0);
}

QMenu& QtColumnMenu::AddColumn(bool with_line) {
  auto* const row = static_cast<QHBoxLayout*>(layout());
  if (with_line) {
    // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): as its parent's child
    auto* const line = new QFrame(this);
    line->setFrameStyle(static_cast<int>(QFrame::VLine) | static_cast<int>(QFrame::Sunken));
    row->addWidget(line);
  }
  // NOLINTNEXTLINE(cppcoreguidelines-owning-memory): as its parent's child
  auto* const column = new QMenu(this);
  column->setWindowFlags(Qt::Widget);
  row->addWidget(column, 0, Qt::AlignTop);
  connect(column, &QMenu::triggered, this, [this](const QAction* action) {
    chosen_ = action;
    hide();
  });
  columns_.push_back(column);
  return *column;
}

const QAction* QtColumnMenu::Choose(QPoint corner) {
  for (QMenu* const column : columns_) column->show();
  adjustSize();
  move(corner);
  show();
  if (isVisible()) loop_.exec();
  return chosen_;
}

void QtColumnMenu::hideEvent(QHideEvent* event) {
  QFrame::hideEvent(event);
  loop_.quit();
}

bool QtColumnMenu::LeavesColumn(int key) const {
  if (key == Qt::Key_Left) return current_ > 0;
  const QAction* const at = columns_[current_]->activeAction();
  return key == Qt::Key_Right && current_ + 1 < columns_.size() && (at == nullptr || at->menu() == nullptr);
}

// The entry beside the one that was left, or the last one.
void QtColumnMenu::Enter(std::size_t column) {
  QMenu& left = *columns_[current_];
  const qsizetype at = std::max<qsizetype>(left.actions().indexOf(left.activeAction()), 0);
  left.setActiveAction(nullptr);
  current_ = column;
  const QList<QAction*> entries = columns_[column]->actions();
  if (!entries.isEmpty()) columns_[column]->setActiveAction(entries[std::min(at, entries.size() - 1)]);
}

void QtColumnMenu::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    hide();
  } else if (LeavesColumn(event->key())) {
    Enter(event->key() == Qt::Key_Left ? current_ - 1 : current_ + 1);
  } else {
    QCoreApplication::sendEvent(columns_[current_], event);
  }
}

}  // namespace lorv
