#include "platform/qt/services/qt_services.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>
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

// A dialog of the widget set for one question. It goes with the window that it belongs to, should that end
// meanwhile: then nothing was chosen.
template <class Dialog>
class Passing {
 public:
  explicit Passing(Dialog* dialog) : dialog_(dialog) {}
  Passing(const Passing&) = delete;
  Passing& operator=(const Passing&) = delete;
  ~Passing() { delete dialog_.data(); }

  Dialog* Get() const { return dialog_.data(); }
  Dialog* operator->() const { return dialog_.data(); }
  int Ask(QtDesk& desk) const {
    return desk.RunInner([this] { return dialog_->exec(); },
                         [this] {
                           if (dialog_ != nullptr) dialog_->reject();
                         });
  }

 private:
  QPointer<Dialog> dialog_;
};

}  // namespace

int QtServices::ShowMessage(const MessageRequest& request) {
  const Passing<QMessageBox> box(new QMessageBox(QtWidgetOf(DesktopInForce().Active())));
  box->setIcon(IconOf(request.style));
  box->setTextFormat(Qt::PlainText);
  box->setText(ToQt(request.text.View()));
  box->setWindowTitle(request.caption.IsEmpty() ? QCoreApplication::applicationName()
                                                : ToQt(request.caption.View()));
  AddButtons(*box.Get(), request.style);
  // This object is the desktop itself.
  return AnswerOf(box.Ask(static_cast<QtDesk&>(*this)), request.style);
}

std::unique_ptr<PrintJob> QtServices::AskPrinter(HWND owner, DWORD flags) {
  auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  const Passing<QPrintDialog> dialog(new QPrintDialog(printer.get(), QtWidgetOf(owner)));
  dialog->setOption(QAbstractPrintDialog::PrintSelection, (flags & kPrintNoSelection) == 0);
  dialog->setOption(QAbstractPrintDialog::PrintPageRange, (flags & kPrintNoPages) == 0);
  if (dialog.Ask(static_cast<QtDesk&>(*this)) != QDialog::Accepted) return nullptr;
  return MakeQtPrintJob(std::move(printer));
}

}  // namespace lorv
