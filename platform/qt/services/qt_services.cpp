#include "platform/qt/services/qt_services.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>

#include "platform/models/carried_fault.h"
#include "platform/qt/desktop/qt_desk.h"
#include "platform/qt/desktop/qt_desktop.h"
#include "platform/qt/desktop/qt_text.h"

// Message boxes and the choice of a printer through Qt. Texts of buttons are the suite's own, in Chinese,
// whatever language Qt's translations have.

namespace lorv {
namespace {

constexpr UINT kButtonsMask = 0xF;
constexpr UINT kIconMask = 0xF0;
constexpr UINT kIconInformation = 0x40;
constexpr UINT kButtonsOkCancel = 1;
constexpr UINT kButtonsYesNoCancel = 3;

QMessageBox::Icon IconOf(UINT style) {
  switch (style & kIconMask) {
    case kIconError:
      return QMessageBox::Critical;
    case kIconQuestion:
      return QMessageBox::Question;
    case kIconWarning:
      return QMessageBox::Warning;
    case kIconInformation:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

// The buttons with the texts of the suite's users, whatever the language of the widget set.
void AddButtons(QMessageBox& box, UINT style) {
  const auto add = [&box](QMessageBox::StandardButton button, const char16_t* text) {
    box.addButton(button)->setText(QString::fromUtf16(text));
  };
  const UINT buttons = style & kButtonsMask;
  const bool questions = buttons == kButtonsYesNo || buttons == kButtonsYesNoCancel;
  if (questions) add(QMessageBox::Yes, u"是(&Y)");
  if (questions) add(QMessageBox::No, u"否(&N)");
  if (!questions) add(QMessageBox::Ok, u"确定");
  if (buttons == kButtonsOkCancel || buttons == kButtonsYesNoCancel) add(QMessageBox::Cancel, u"取消");
}

int AnswerOf(int button, UINT style) {
  switch (button) {
    case QMessageBox::Yes:
      return kAnswerYes;
    case QMessageBox::No:
      return kAnswerNo;
    case QMessageBox::Ok:
      return kAnswerOk;
    default:  // closed: the only button there is, or the refusal
      return (style & kButtonsMask) == kButtonsOk ? kAnswerOk : kAnswerCancel;
  }
}

}  // namespace

int QtServices::ShowMessage(const MessageRequest& request) {
  QMessageBox box(QtWidgetOf(DesktopInForce().Active()));
  box.setIcon(IconOf(request.style));
  box.setTextFormat(Qt::PlainText);
  box.setText(ToQt(request.text.View()));
  box.setWindowTitle(request.caption.IsEmpty() ? QCoreApplication::applicationName()
                                               : ToQt(request.caption.View()));
  AddButtons(box, request.style);
  // This object is the desktop itself.
  const QtDesk::InnerLoop loop(static_cast<QtDesk&>(*this));
  return CarriedFault::CallOut([&] { return AnswerOf(box.exec(), request.style); });
}

std::unique_ptr<PrintJob> QtServices::AskPrinter(HWND owner, DWORD flags) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  QPrintDialog dialog(printer.get(), QtWidgetOf(owner));
  dialog.setOption(QAbstractPrintDialog::PrintSelection, (flags & kPrintNoSelection) == 0);
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, (flags & kPrintNoPages) == 0);
  if (dialog.exec() != QDialog::Accepted) return nullptr;
  return MakeQtPrintJob(std::move(printer));
}

}  // namespace lorv
