#pragma once

#include <functional>
#include <vector>

#include "framework/text/cstring.h"
#include "platform/ports/mail.h"

namespace lorv {

// A mail library that sends nothing: it answers what was set and writes down what it was asked.
class COMM_LORV_API HeadlessMail : public Mail {
 public:
  bool installed = false;
  bool loads = true;
  bool can_send = true;
  ULONG answer = kMailSent;
  std::vector<CString> asked;  // "installed", "load", "can send", "send 9", "free"
  std::vector<MailMessage> sent;
  std::vector<HWND> owners;
  std::function<void()> while_sending;

  bool Installed() override;
  std::unique_ptr<MailLibrary> Load() override;
};

}  // namespace lorv
