#include <cstdio>
#include <string>

#include "platform/ports/desktop_services.h"

// Messages to the user where the system has no dialogs of its own: by the desktop in force, else on the
// terminal.

namespace lorv {
namespace {

void Print(const CString& text) {
  const std::string line = text.ToUtf8() + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

// A desktop with windows asks the user. Without one there is nobody to ask: messages go to the terminal, and
// the careful answer is given.
class PosixDialogs : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    if (DesktopServices* const services = ServicesOfDesktop()) return services->ShowMessage(request);
    Print(request.caption.IsEmpty() ? request.text : request.caption + _T(": ") + request.text);
    return request.style % (kLastButtons + 1) == kButtonsYesNo ? kAnswerNo : kAnswerOk;
  }

 private:
  static constexpr UINT kLastButtons = 0xF;
};

}  // namespace

Dialogs& NativeDialogs() {
  static PosixDialogs dialogs;
  return dialogs;
}

}  // namespace lorv
