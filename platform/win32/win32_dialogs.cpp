#include "platform/dialogs.h"

namespace lorv {
namespace {

constexpr int kNothingChosen = -1;

class Win32Dialogs : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    return MessageBoxW(GetActiveWindow(), request.text, request.caption, request.style);
  }

  // Choosing needs a window with a list, which comes with the control framework.
  int ChooseItem(const ChoiceRequest& request) override {
    CString text;
    for (const CString& item : request.items) text += item + _T("\n");
    MessageBoxW(GetActiveWindow(), text, request.caption, MB_OK);
    return kNothingChosen;
  }

  void ShowFailure(const FailureNotice& notice) override {
    MessageBoxW(GetActiveWindow(), notice.report, notice.caption, MB_OK | MB_ICONERROR);
  }
};

}  // namespace

Dialogs& NativeDialogs() {
  static Win32Dialogs dialogs;
  return dialogs;
}

}  // namespace lorv
