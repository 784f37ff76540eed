#include "platform/headless/services/headless_mail.h"

// Mail that is only recorded: what was asked in which order, and what would have been sent.

namespace lorv {
namespace {

class RecordedLibrary : public MailLibrary {
 public:
  explicit RecordedLibrary(HeadlessMail& mail) : mail_(mail) {}
  // Noted, so that a test sees when the library is let go.
  ~RecordedLibrary() override { mail_.asked.push_back(_T("free")); }

  bool CanSend() override {
    mail_.asked.push_back(_T("can send"));
    return mail_.can_send;
  }

  ULONG Send(HWND owner, const MailMessage& message, ULONG flags) override {
    CString note;
    note.Format(_T("send %u"), flags);
    mail_.asked.push_back(note);
    mail_.owners.push_back(owner);
    mail_.sent.push_back(message);
    if (mail_.while_sending) mail_.while_sending();
    return mail_.answer;
  }

 private:
  HeadlessMail& mail_;
};

}  // namespace

bool HeadlessMail::Installed() {
  asked.push_back(_T("installed"));
  return installed;
}

std::unique_ptr<MailLibrary> HeadlessMail::Load() {
  asked.push_back(_T("load"));
  if (!loads) return nullptr;
  return std::make_unique<RecordedLibrary>(*this);
}

}  // namespace lorv
