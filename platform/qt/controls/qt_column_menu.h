#pragma once

#include <QEventLoop>
#include <QFrame>
#include <QMenu>
#include <QPointer>
#include <vector>

namespace lorv {

// A popup of several menus side by side, for a menu that breaks into columns: Qt's own breaks by the height
// of the screen only. The menus are Qt's, so entries look and act as everywhere; Left and Right lead from one
// column to the next where no submenu takes them.
class QtColumnMenu : public QFrame {
 public:
  QtColumnMenu();
  QtColumnMenu(const QtColumnMenu&) = delete;
  QtColumnMenu& operator=(const QtColumnMenu&) = delete;
  ~QtColumnMenu() override = default;

  // A column right of those that there are, for its entries to be added; with a line before it if wanted.
  QMenu& AddColumn(bool with_line);

  // Shows the columns until an entry is chosen or the popup is left: the entry, or null.
  const QAction* Choose(QPoint corner);

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  bool LeavesColumn(int key) const;
  void Enter(std::size_t column);

  std::vector<QMenu*> columns_;
  std::size_t current_ = 0;
  bool is_asking_ = false;  // the current column, about a key
  const QAction* chosen_ = nullptr;
  QEventLoop loop_;
};

}  // namespace lorv
