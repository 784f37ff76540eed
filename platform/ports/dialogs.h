#pragma once

#include "framework/native/export.h"
#include "framework/text/cstring.h"

// Questions and messages to the user, each answered before the call returns.
// One thread: that of the user interface.
namespace lorv {

// Buttons, icons and answers are the numbers of Windows.
constexpr UINT kButtonsOk = 0;
constexpr UINT kButtonsYesNo = 4;
constexpr UINT kIconError = 0x10;
constexpr UINT kIconQuestion = 0x20;
constexpr UINT kIconWarning = 0x30;
constexpr int kAnswerOk = 1;
constexpr int kAnswerCancel = 2;
constexpr int kAnswerYes = 6;
constexpr int kAnswerNo = 7;

struct MessageRequest {
  CString text;
  CString caption;  // empty: the program's name
  UINT style = kButtonsOk;
};

class COMM_LORV_API Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  // The answer's number. Where nobody can answer: OK for a message, No for a question.
  virtual int ShowMessage(const MessageRequest& request) = 0;
};

COMM_LORV_API Dialogs& NativeDialogs();

}  // namespace lorv
