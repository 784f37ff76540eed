#include "platform/ports/dialogs.h"

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
