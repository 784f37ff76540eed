#include "report/dialogs/failure_mail.h"

#include "platform/ports/platform.h"
#include "report/dialogs/foreign_dialog.h"

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

void Tell(UINT number) {
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
  if (library == nullptr) return Tell(kMailNotLoaded);
  if (!library->CanSend()) return Tell(kMailLibraryInvalid);
  const ULONG answer = Send(owner, *library, description);
  if (answer != kMailSent && answer != kMailCancelled && answer != kMailLogonFailed) Tell(kMailNotSent);
}

}  // namespace lorv
