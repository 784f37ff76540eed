#include "platform/qt/controls/qt_combo.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QStyle>
#include <algorithm>

#include "platform/qt/desktop/qt_text.h"

// A combo box: the list and its arrow are the widget's, the field is an edit of ours over it. The shared
// behaviour owns the choice; the widget reports what the mouse picked and when its list went.

namespace lorv {

// Reports when its list goes, however it goes.
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
    : ComboBehaviour(QtItems((request.style & CBS_SORT) != 0, QtItemStore(*list->model())), desk, handle,
                     request),
      list_(*list) {
  StartControl(list);
  Watch(list->view());
  list->closed = WhileItLives([this] { ListClosed(); });
  QObject::connect(list, &QComboBox::activated, list,
                   WhileItLives([this](int index) { PickedByMouse(index); }));
}

HWND QtCombo::KeyTarget() const {
  // The widget gets the keys, but they are meant for the edit.
  return Edit() == nullptr ? Handle() : Edit();
}

CRect QtCombo::EditPlace() const {
  const CRect client(ClientRect());
  // The arrow is as wide as a scroll bar, with the widget's line beside it.
  const int arrow = list_.style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2;
  return CRect(1, 1, std::max(client.right - arrow, LONG{1}), std::max(client.bottom - 1, LONG{1}));
}

int QtCombo::RowHeight() const {
  return list_.fontMetrics().height();
}

void QtCombo::ShowChoice() {
  list_.setCurrentIndex(Chosen());
}

void QtCombo::ShowDropped(bool on) {
  picked_ = -1;
  if (!on) return list_.hidePopup();
  // The list of a hidden combo box would pop up alone.
  if (Seen()) list_.showPopup();
}

void QtCombo::ShowDroppedWidth(UINT width) {
  // Bounded, as the number comes from a message and may be any.
  list_.view()->setMinimumWidth(static_cast<int>(std::min(width, UINT{0x7FFF})));
}

// The list went by a click in it or beside it. Which of the two is known when the click has been handled.
void QtCombo::ListClosed() {
  if (!Dropped()) return;
  Home().Mailbox()->Leave([&desk = Home(), handle = Handle()] {
    const auto window = std::dynamic_pointer_cast<QtCombo>(desk.Window(handle));
    // The class may have closed the list meanwhile, or ended the window.
    if (window == nullptr || !window->Dropped()) return;
    const int picked = window->picked_;
    window->CloseBy(picked >= 0);
    if (picked >= 0 && window->Exists()) window->ChooseByUser(picked, true);
  });
}

void QtCombo::PickedByMouse(int index) {
  picked_ = index;
}

}  // namespace lorv
