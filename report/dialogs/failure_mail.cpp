#include "report/dialogs/failure_mail.h"

#include "platform/ports/platform.h"
#include "report/dialogs/foreign_dialog.h"

// Sends the description of a failure by the user's mail program. The order is fixed: a library that cannot be
// loaded is reported before any window is disabled.

namespace lorv {
namespace {

constexpr const char* kRecipient = "Clever Porgrammer";  // the name by which users' address books know it
constexpr const char* kSubject = "An Exception has occurred";

MailMessage MessageWith(const CString& description) {
  const Platform& ports = PortsInForce();
  MailMessage message;
  message.recipient_class = kMailTo;
  message.recipient = kRecipient;
  message.address = ports.code_page->ToNarrow(ports.suite->SupportAddress().View());
  message.subject = kSubject;
  message.note = ports.code_page->ToNarrow(description.View());
  return message;
}

ULONG Send(CWnd& owner, MailLibrary& library, const CString& description) {
  const MailMessage message = MessageWith(description);
  const ForeignDialogScope scope(owner);
  return library.Send(owner.m_hWnd, message, kMailLogonWindow | kMailMessageWindow);
}

void Warn(UINT number) {
  PortsInForce().dialogs->ShowMessage({MailProblemText(number), CString(), kIconWarning});
}

}  // namespace

CString MailProblemText(UINT number) {
  switch (number) {
    case kMailNotLoaded:
      return _T("邮件组件无法加载。");
    case kMailLibraryInvalid:
      return _T("邮件组件无效。");
    case kMailNotSent:
      return _T("邮件发送失败。");
    default:
      return {};
  }
}

void MailDescription(CWnd& owner, const CString& description) {
  const auto library = PortsInForce().mail->Load();
  if (library == nullptr) return Warn(kMailNotLoaded);
  if (!library->CanSend()) return Warn(kMailLibraryInvalid);
  const ULONG answer = Send(owner, *library, description);
  // A user who cancels, or who does not log on, knows it already.
  if (answer != kMailSent && answer != kMailCancelled && answer != kMailLogonFailed) Warn(kMailNotSent);
}

}  // namespace lorv
