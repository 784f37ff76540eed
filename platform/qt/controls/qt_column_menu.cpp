#include "platform/qt/controls/qt_column_menu.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <algorithm>
#include <cstdlib>

// A popup menu in several columns, which Qt's own menus have not. Each column is a menu put into one frame;
// the frame owns the keys, so that Left and Right lead from column to column, and the choice.

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
  // A menu is a window of its own unless its flags say otherwise.
  column->setWindowFlags(Qt::Widget);
  column->installEventFilter(this);
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
  // What could not be shown is never hidden, and nothing else ends the loop.
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

// The entry beside the one that was left, or the one nearest to it that can be chosen.
void QtColumnMenu::Enter(std::size_t column) {
  QMenu& left = *columns_[current_];
  const qsizetype beside = std::max<qsizetype>(left.actions().indexOf(left.activeAction()), 0);
  left.setActiveAction(nullptr);
  current_ = column;
  const QList<QAction*> entries = columns_[column]->actions();
  QAction* nearest = nullptr;
  qsizetype distance = entries.size() + beside;
  for (qsizetype i = 0; i < entries.size(); ++i) {
    if (entries[i]->isSeparator() || !entries[i]->isEnabled() || std::abs(i - beside) >= distance) continue;
    distance = std::abs(i - beside);
    nearest = entries[i];
  }
  columns_[column]->setActiveAction(nearest);
}

// Whichever column has the focus: keys are for the one that the user is in.
bool QtColumnMenu::eventFilter(QObject* receiver, QEvent* event) {
  if (event->type() != QEvent::KeyPress || is_asking_) return QFrame::eventFilter(receiver, event);
  keyPressEvent(static_cast<QKeyEvent*>(event));
  return true;
}

// What a column makes nothing of comes back here as to its parent.
void QtColumnMenu::keyPressEvent(QKeyEvent* event) {
  event->accept();
  if (is_asking_) return;
  if (event->key() == Qt::Key_Escape) {
    hide();
  } else if (LeavesColumn(event->key())) {
    Enter(event->key() == Qt::Key_Left ? current_ - 1 : current_ + 1);
  } else {
    // A column sends what it has no use for to its parent, which is here: without the mark it would come back
    // for ever.
    is_asking_ = true;
    QCoreApplication::sendEvent(columns_[current_], event);
    is_asking_ = false;
  }
}

}  // namespace lorv
