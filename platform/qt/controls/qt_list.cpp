#include "platform/qt/controls/qt_list.h"

#include <QListWidget>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/desktop/qt_text.h"

// A list box over QListWidget. The shared behaviour chooses and scrolls; rows are scrolled whole, so the
// scroll bar's value is the index of the top row.

namespace lorv {

QtList::QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtList(desk, handle, request, new QListWidget(around)) {}

QtList::QtList(QtDesk& desk, HWND handle, const WindowRequest& request, QListWidget* list)
    : ListBehaviour(QtItems((request.style & LBS_SORT) != 0, QtItemStore(*list->model())), desk, handle,
                    request),
      list_(*list) {
  list->setFrameShape(Framed() ? QFrame::Box : QFrame::NoFrame);
  list->setLineWidth(1);
  // All rows are equally high: so the height of one is known without a look at the others.
  list->setUniformItemSizes(true);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list->setSelectionMode(Several() ? QAbstractItemView::MultiSelection : QAbstractItemView::SingleSelection);
  list->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  StartControl(list, list->viewport());
}

bool QtList::IsSelected(int index) const {
  return list_.item(index)->isSelected();
}

void QtList::SetSelected(int index, bool on) {
  list_.item(index)->setSelected(on);
}

CRect QtList::RowPlace(int index) const {
  return FromQt(list_.visualItemRect(list_.item(index)));
}

int QtList::RowHeight() const {
  const int hint = list_.sizeHintForRow(0);
  // An empty list has no row to measure.
  return hint > 0 ? hint : std::max(list_.fontMetrics().height(), 1);
}

int QtList::RowAt(CPoint at) const {
  const QModelIndex hit = list_.indexAt(ToQt(at));
  return hit.isValid() ? hit.row() : -1;
}

int QtList::Top() const {
  return list_.verticalScrollBar()->value();
}

void QtList::SetTop(int index) {
  list_.scrollToItem(list_.item(index), QAbstractItemView::PositionAtTop);
}

void QtList::ShowChoice() {
  const int chosen = Kept().chosen;
  if (Several()) {
    // Where several may be selected the choice is only the focus rectangle.
    if (chosen >= 0) list_.setCurrentRow(chosen, QItemSelectionModel::NoUpdate);
    return;
  }
  list_.setCurrentRow(chosen);
  if (chosen < 0) list_.clearSelection();
}

}  // namespace lorv
