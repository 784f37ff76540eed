#include "platform/models/carried_fault.h"
#include "platform/ports/dialogs.h"

// Messages to the user by the system's box, owned by the active window so that it stays in front.

namespace lorv {
namespace {

class Win32Dialogs : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    // The box runs a loop of the system's: what a handler throws meanwhile reaches the caller when it is
    // closed.
    return CarriedFault::CallOut(
        [&] { return MessageBoxW(GetActiveWindow(), request.text, request.caption, request.style); });
  }
};

}  // namespace

Dialogs& NativeDialogs() {
  static Win32Dialogs dialogs;
  return dialogs;
}

}  // namespace lorv
