#include "platform/qt/controls/qt_edit.h"

#include <QWidget>
#include <utility>

// An edit: one of two panes, of one line or of several, beneath the shared behaviour. Changes that the user
// makes at the widget (composed text, its menu) are reported late, as notes, because the widget's code is
// still running.

namespace lorv {

QtEdit::QtEdit(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : EditBehaviour(desk, handle, request) {
  const auto changed = WhileItLives([this] {
    // The program's own changes come through here too, and the behaviour has reported them.
    if (IsQuiet()) return;
    ChangedOutside();
    Note(EN_UPDATE);
    Note(EN_CHANGE);
  });
  auto pane = Lines() ? MakeTextPane(around, changed) : MakeLinePane(around, changed);
  shown_ = pane.get();
  UsePane(std::move(pane));
  StartControl(shown_->Widget(), shown_->Pane());
  ShowStyle(0);
  // The widget reports this one too, which is no change of the user's.
  const WidgetWork work(*this);
  shown_->Set(request.text);
}

void QtEdit::ShowStyle(DWORD /*before*/) {
  if (shown_ != nullptr) shown_->UseStyle(Look(), Framed());
}

}  // namespace lorv
