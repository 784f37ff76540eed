#include "platform/ports/dialogs.h"

// Messages to the user by the system's box, owned by the active window so that it stays in front.

namespace lorv {
namespace {

class Win32Dialogs : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    return MessageBoxW(GetActiveWindow(), request.text, request.caption, request.style);
  }
};

}  // namespace

Dialogs& NativeDialogs() {
  static Win32Dialogs dialogs;
  return dialogs;
}

}  // namespace lorv
