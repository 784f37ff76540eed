#include <cstdio>
#include <string>

#include "platform/dialogs.h"

namespace lorv {
namespace {

void Print(const CString& text) {
  const std::string line = text.ToUtf8() + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

// Without windows there is nobody to ask: messages go to the terminal, and the careful answer is given.
class PosixDialogs : public Dialogs {
 public:
  int ShowMessage(const MessageRequest& request) override {
    Print(request.caption.IsEmpty() ? request.text : request.caption + _T(": ") + request.text);
    return request.style % (kLastButtons + 1) == kButtonsYesNo ? kAnswerNo : kAnswerOk;
  }

  int ChooseItem(const ChoiceRequest& request) override {
    Print(request.caption);
    return -1;
  }

  void ShowFailure(const FailureNotice& notice) override {
    Print(notice.caption);
    Print(notice.report);
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
