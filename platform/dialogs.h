#pragma once

#include <vector>

#include "framework/cstring.h"
#include "framework/export.h"

// Questions and messages to the user, each answered before the call returns.
// One thread: that of the user interface.
namespace lorv {

// Buttons, icons and answers are the numbers of Windows.
constexpr UINT kButtonsOk = 0;
constexpr UINT kButtonsYesNo = 4;
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

struct ChoiceRequest {
  CString caption;
  std::vector<CString> items;
};

// A failure report for the user to read, print or send.
struct FailureNotice {
  CString caption;
  CString report;  // lines end in a line feed
  CString source_file;
  LONG source_line = 0;
};

class COMM_LORV_API Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  // The answer's number. Where nobody can answer: OK for a message, No for a question.
  virtual int ShowMessage(const MessageRequest& request) = 0;
  // The index of the item chosen, -1 for none.
  virtual int ChooseItem(const ChoiceRequest& request) = 0;
  virtual void ShowFailure(const FailureNotice& notice) = 0;
};

COMM_LORV_API Dialogs& NativeDialogs();

}  // namespace lorv
