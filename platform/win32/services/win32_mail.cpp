#include "platform/ports/mail.h"

#include <mapi.h>

// The system's mail library, loaded for one message and freed after it, as it brings the mail program's own
// code into the process.

namespace lorv {
namespace {

constexpr LPCWSTR kLibrary = L"MAPI32.DLL";

class LoadedMail : public MailLibrary {
 public:
  explicit LoadedMail(HMODULE module)
      : module_(module),
        // The system gives every entry as one kind of function.
        send_(reinterpret_cast<LPMAPISENDMAIL>(
            reinterpret_cast<void*>(GetProcAddress(module, "MAPISendMail")))) {}
  ~LoadedMail() override { FreeLibrary(module_); }

  bool CanSend() override { return send_ != nullptr; }

  ULONG Send(HWND owner, const MailMessage& message, ULONG flags) override {
    // The library only reads them; its records are older than const.
    MapiRecipDesc to = {};
    to.ulRecipClass = message.recipient_class;
    to.lpszName = const_cast<char*>(message.recipient.c_str());
    to.lpszAddress = const_cast<char*>(message.address.c_str());
    MapiMessage mail = {};
    mail.lpszSubject = const_cast<char*>(message.subject.c_str());
    mail.lpszNoteText = const_cast<char*>(message.note.c_str());
    mail.nRecipCount = 1;
    mail.lpRecips = &to;
    return send_(0, reinterpret_cast<ULONG_PTR>(owner), &mail, flags, 0);
  }

 private:
  HMODULE module_;
  LPMAPISENDMAIL send_;
};

class Win32Mail : public Mail {
 public:
  bool Installed() override {
    wchar_t path[MAX_PATH] = {};
    return SearchPathW(nullptr, kLibrary, nullptr, MAX_PATH, path, nullptr) != 0;
  }

  std::unique_ptr<MailLibrary> Load() override {
    const HMODULE module = LoadLibraryA("MAPI32.DLL");
    if (module == nullptr) return nullptr;
    return std::make_unique<LoadedMail>(module);
  }
};

}  // namespace

Mail& NativeMail() {
  static Win32Mail mail;
  return mail;
}

}  // namespace lorv
