#include "platform/qt/controls/qt_button.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

#include "framework/windows/accessible_window.h"
#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/window/qt_accessible.h"

// Buttons of all kinds and static texts as widgets. What a click does is decided by the shared behaviour; the
// widget only shows the state that follows.

namespace lorv {
namespace {

QWidget* MakeWidget(UINT type, QWidget* around) {
  switch (type) {
    case BS_CHECKBOX:
    case BS_AUTOCHECKBOX:
    case BS_3STATE:
    case BS_AUTO3STATE: {
      auto* const box = new QCheckBox(around);
      box->setTristate(type == BS_3STATE || type == BS_AUTO3STATE);
      return box;
    }
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON: {
      auto* const button = new QRadioButton(around);
      // Which of a group goes out is for the shared behaviour, which goes by WS_GROUP and not by the parent.
      button->setAutoExclusive(false);
      return button;
    }
    case BS_GROUPBOX:
      return new QGroupBox(around);
    default: {
      auto* const button = new QPushButton(around);
      // Which button Return presses is decided by the dialog.
      button->setAutoDefault(false);
      return button;
    }
  }
}

}  // namespace

QtButton::QtButton(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : ButtonBehaviour(desk, handle, request) {
  StartControl(MakeWidget(Type(), around));
  // A press by a screen reader is a press of the message's, and radio buttons are reported as such.
  MarkAccessible(*Widget(), handle);
  ShowState();
  ShowText();
}

void QtButton::ShowText() {
  const QString text = ToQt(Text().View());
  if (auto* const button = dynamic_cast<QAbstractButton*>(Widget())) button->setText(text);
  if (auto* const box = dynamic_cast<QGroupBox*>(Widget())) box->setTitle(text);
}

// Styles draw the focus of a button only where it came by key.
void QtButton::ShowFocus() {
  const bool by_mouse = Home().KeyState(VK_LBUTTON) != 0;
  Widget()->setFocus(by_mouse ? Qt::MouseFocusReason : Qt::ShortcutFocusReason);
}

void QtButton::ShowState() {
  auto* const button = dynamic_cast<QAbstractButton*>(Widget());
  if (button == nullptr) return;
  // Set by the behaviour, as the mouse's press never reaches the widget itself.
  button->setDown(IsPushed());
  if (auto* const box = dynamic_cast<QCheckBox*>(button)) {
    // In the order of the messages' numbers.
    constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    box->setCheckState(kStates[Check()]);
  } else if (button->isCheckable()) {
    button->setChecked(Check() != BST_UNCHECKED);
  }
  if (auto* const push = dynamic_cast<QPushButton*>(button)) push->setDefault(Type() == BS_DEFPUSHBUTTON);
}

QtStatic::QtStatic(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtControl(desk, handle, request) {
  auto* const label = new QLabel(around);
  label->setTextFormat(Qt::PlainText);
  // Static texts of dialogs are broken at their width, as the system's are.
  label->setWordWrap(true);
  const DWORD side = Look() & 3U;
  const auto across =
      side == SS_CENTER ? Qt::AlignHCenter : (side == SS_RIGHT ? Qt::AlignRight : Qt::AlignLeft);
  label->setAlignment(across | Qt::AlignTop);
  StartControl(label);
  ShowText();
}

void QtStatic::ShowText() {
  // A label has no control of its own to go to, so Qt would show the sign itself.
  const bool marks = (Look() & SS_NOPREFIX) == 0;
  const CString text = marks ? WithoutKeyMarks(Text()) : Text();
  static_cast<QLabel*>(Widget())->setText(ToQt(text.View()));
  Home().NameAfter(Handle());
}

LRESULT QtStatic::Default(UINT message, WPARAM w, LPARAM l) {
  return message == WM_GETDLGCODE ? DLGC_STATIC : QtControl::Default(message, w, l);
}

}  // namespace lorv
