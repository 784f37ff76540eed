#include "framework/text/cstring.h"
#include "platform/ports/code_page.h"
#include "platform/ports/mail.h"
#include "platform/posix/services/start_program.h"

// The desktop's own way to write a mail stands for the library: it opens the user's mail program with the
// message, and the user sends it from there.

namespace lorv {
namespace {

constexpr const char* kProgram = "xdg-email";

std::string Utf8(const std::string& narrow) {
  return CString(SuiteCodePage().ToText(narrow)).ToUtf8();
}

class DesktopMailProgram : public MailLibrary {
 public:
  bool CanSend() override { return true; }

  // The program goes on by itself: whether the user gave up in it is not known here.
  ULONG Send(HWND /*owner*/, const MailMessage& message, ULONG /*flags*/) override {
    const std::string address = message.address.substr(message.address.find(':') + 1);
    const bool started = StartProgram(
        {kProgram, "--utf8", "--subject", Utf8(message.subject), "--body", Utf8(message.note), address});
    return started ? kMailSent : kMailFailed;
  }
};

class PosixMail : public Mail {
 public:
  bool Installed() override { return HasProgram(kProgram); }

  std::unique_ptr<MailLibrary> Load() override {
    if (!Installed()) return nullptr;
    return std::make_unique<DesktopMailProgram>();
  }
};

}  // namespace

Mail& NativeMail() {
  static PosixMail mail;
  return mail;
}

}  // namespace lorv
