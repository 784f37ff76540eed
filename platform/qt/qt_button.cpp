#include "platform/qt/qt_button.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <vector>

#include "platform/qt/qt_desk.h"
#include "platform/qt/qt_text.h"

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
      button->setAutoExclusive(false);
      return button;
    }
    case BS_GROUPBOX:
      return new QGroupBox(around);
    default: {
      auto* const button = new QPushButton(around);
      // Which button Return presses is the dialog's affair.
      button->setAutoDefault(false);
      return button;
    }
  }
}

// Without its marks: "&" before a letter, and "&&" for the sign itself.
QString WithoutMarks(const QString& text) {
  QString plain;
  for (qsizetype i = 0; i < text.size(); ++i) {
    if (text[i] == u'&' && i + 1 < text.size()) ++i;
    plain += text[i];
  }
  return plain;
}

}  // namespace

QtButton::QtButton(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtControl(desk, handle, request) {
  StartControl(MakeWidget(Type(), around));
  ShowState();
  TextChanged();
}

void QtButton::TextChanged() {
  const QString text = ToQt(Text().View());
  if (auto* const button = dynamic_cast<QAbstractButton*>(Widget())) button->setText(text);
  if (auto* const box = dynamic_cast<QGroupBox*>(Widget())) box->setTitle(text);
}

void QtButton::ShowState() {
  auto* const button = dynamic_cast<QAbstractButton*>(Widget());
  if (button == nullptr) return;
  button->setDown(pushed_);
  if (auto* const box = dynamic_cast<QCheckBox*>(button)) {
    constexpr Qt::CheckState kStates[] = {Qt::Unchecked, Qt::Checked, Qt::PartiallyChecked};
    box->setCheckState(kStates[check_]);
  } else if (button->isCheckable()) {
    button->setChecked(check_ != BST_UNCHECKED);
  }
  if (auto* const push = dynamic_cast<QPushButton*>(button)) push->setDefault(Type() == BS_DEFPUSHBUTTON);
}

LRESULT QtButton::Default(UINT message, WPARAM w, LPARAM l) {
  const auto keep = shared_from_this();
  if (!Exists()) return 0;
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_LBUTTONUP:
    case WM_MOUSEMOVE:
      return Mouse(message, l);
    case WM_KEYDOWN:
      if (w == VK_SPACE) Push(true);
      return 0;
    case WM_KEYUP:
      if (w == VK_SPACE && pushed_) Click();
      return 0;
    case WM_SETFOCUS:
      if ((LookStyle() & BS_NOTIFY) != 0) Notify(BN_SETFOCUS);
      return 0;
    case WM_KILLFOCUS:
      Push(false);
      if ((LookStyle() & BS_NOTIFY) != 0) Notify(BN_KILLFOCUS);
      return 0;
    case WM_CAPTURECHANGED:
      Push(false);
      return 0;
    case WM_GETDLGCODE:
      return Code();
    default:
      return Own(message, w, l);
  }
}

LRESULT QtButton::Code() const {
  switch (Type()) {
    case BS_PUSHBUTTON:
      return DLGC_BUTTON | DLGC_UNDEFPUSHBUTTON;
    case BS_DEFPUSHBUTTON:
      return DLGC_BUTTON | DLGC_DEFPUSHBUTTON;
    case BS_RADIOBUTTON:
    case BS_AUTORADIOBUTTON:
      return DLGC_BUTTON | DLGC_RADIOBUTTON;
    case BS_GROUPBOX:
      return DLGC_STATIC;
    default:
      return DLGC_BUTTON;
  }
}

LRESULT QtButton::Own(UINT message, WPARAM w, LPARAM l) {
  switch (message) {
    case BM_GETCHECK:
      return check_;
    case BM_SETCHECK:
      check_ = static_cast<UINT>(std::min<WPARAM>(w, BST_INDETERMINATE));
      ShowState();
      return 0;
    case BM_GETSTATE:
      return check_ | (pushed_ ? BST_PUSHED : 0U) | (Desk().Focus() == Handle() ? BST_FOCUS : 0U);
    case BM_SETSTATE:
      Push(w != 0);
      return 0;
    case BM_SETSTYLE:
      KeepStyle((LookStyle() & ~BS_TYPEMASK) | (static_cast<DWORD>(w) & BS_TYPEMASK));
      ShowState();
      return 0;
    case BM_CLICK:
      Click();
      return 0;
    default:
      return QtControl::Default(message, w, l);
  }
}

LRESULT QtButton::Mouse(UINT message, LPARAM l) {
  const bool inside = CRect(ClientRect()).PtInRect(PointOf(l)) != 0;
  if (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK) {
    if (Type() == BS_GROUPBOX) return 0;
    Focus();
    if (!Exists()) return 0;
    Desk().SetCapture(Handle());
    Push(true);
  } else if (Desk().Capture() == Handle() && message == WM_MOUSEMOVE) {
    Push(inside);
  } else if (Desk().Capture() == Handle()) {
    const bool clicked = pushed_;
    Push(false);
    Desk().SetCapture(nullptr);
    if (clicked && Exists()) Click();
  }
  return 0;
}

void QtButton::Push(bool on) {
  if (pushed_ == on || !Exists()) return;
  pushed_ = on;
  ShowState();
}

void QtButton::Click() {
  if (!Exists() || (LookStyle() & WS_DISABLED) != 0) return;
  Push(false);
  TakeMark();
  Notify(BN_CLICKED);
}

void QtButton::TakeMark() {
  switch (Type()) {
    case BS_AUTOCHECKBOX:
      check_ = check_ == BST_UNCHECKED ? BST_CHECKED : BST_UNCHECKED;
      break;
    case BS_AUTO3STATE:
      check_ = (check_ + 1) % 3;
      break;
    case BS_AUTORADIOBUTTON:
      ClearGroup();
      check_ = BST_CHECKED;
      break;
    default:
      return;
  }
  ShowState();
}

// The group reaches from a window with WS_GROUP to before the next.
void QtButton::ClearGroup() {
  const auto parent = Desk().Find(Parent());
  if (parent == nullptr) return;
  std::vector<HWND> group;
  bool mine = false;
  for (const HWND sibling : parent->Children()) {
    const auto window = Desk().Find(sibling);
    if (window != nullptr && (window->Style() & WS_GROUP) != 0) {
      if (mine) break;
      group.clear();
    }
    mine = mine || sibling == Handle();
    group.push_back(sibling);
  }
  for (const HWND sibling : group) {
    const auto window = Desk().Find(sibling);
    const bool radio = window != nullptr && window->Kind() == WindowKind::Button &&
                       (window->Style() & BS_TYPEMASK) == BS_AUTORADIOBUTTON;
    if (radio && sibling != Handle()) window->Default(BM_SETCHECK, BST_UNCHECKED, 0);
  }
}

QtStatic::QtStatic(QtDesk& desk, HWND handle, const WindowRequest& request, QWidget* around)
    : QtControl(desk, handle, request) {
  auto* const label = new QLabel(around);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  const DWORD side = LookStyle() & 3U;
  const auto across =
      side == SS_CENTER ? Qt::AlignHCenter : (side == SS_RIGHT ? Qt::AlignRight : Qt::AlignLeft);
  label->setAlignment(across | Qt::AlignTop);
  StartControl(label);
  TextChanged();
}

void QtStatic::TextChanged() {
  const QString text = ToQt(Text().View());
  const bool marks = (LookStyle() & SS_NOPREFIX) == 0;
  static_cast<QLabel*>(Widget())->setText(marks ? WithoutMarks(text) : text);
}

LRESULT QtStatic::Default(UINT message, WPARAM w, LPARAM l) {
  return message == WM_GETDLGCODE ? DLGC_STATIC : QtControl::Default(message, w, l);
}

}  // namespace lorv
