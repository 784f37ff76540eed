#pragma once

#include <memory>
#include <string>

#include "framework/native/export.h"
#include "framework/native/window_types.h"

// The mail library of the machine, loaded only to send one message that the user sees first.
// One thread: that of the user interface.
namespace lorv {

// One message to one recipient. All texts are in the narrow code page.
struct MailMessage {
  ULONG recipient_class = 0;
  std::string recipient;  // as it is shown
  std::string address;    // with its kind before it: "SMTP:name@place"
  std::string subject;
  std::string note;
};
constexpr ULONG kMailTo = 1;

// Flags of a sending, and its answers.
constexpr ULONG kMailLogonWindow = 1;
constexpr ULONG kMailMessageWindow = 8;
constexpr ULONG kMailSent = 0;
constexpr ULONG kMailCancelled = 1;
constexpr ULONG kMailFailed = 2;
constexpr ULONG kMailLogonFailed = 3;

// The library while it is loaded; the destructor frees it.
class COMM_LORV_API MailLibrary {
 public:
  MailLibrary() = default;
  MailLibrary(const MailLibrary&) = delete;
  MailLibrary& operator=(const MailLibrary&) = delete;
  virtual ~MailLibrary() = default;

  // Whether it has what sends; without it Send must not be called.
  virtual bool CanSend() = 0;
  // Returns when the user has sent or given up. Uses no session; `owner` is the window before which the
  // library's own windows stand.
  virtual ULONG Send(HWND owner, const MailMessage& message, ULONG flags) = 0;
};

class COMM_LORV_API Mail {
 public:
  Mail() = default;
  Mail(const Mail&) = delete;
  Mail& operator=(const Mail&) = delete;
  virtual ~Mail() = default;

  // Whether the library is found; it is not loaded for this.
  virtual bool Installed() = 0;
  // Null if it cannot be loaded.
  virtual std::unique_ptr<MailLibrary> Load() = 0;
};

COMM_LORV_API Mail& NativeMail();

}  // namespace lorv
