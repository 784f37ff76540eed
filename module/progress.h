#pragma once

#include <memory>

#include "framework/native/export.h"
#include "framework/text/cstring.h"
#include "platform/ports/progress_dialog.h"

namespace lorv {

// Units of the progress dialog's first line, the terminator included: a longer text is cut at one less.
constexpr int kProgressLineRoom = 260;

}  // namespace lorv

// The progress dialog of a long operation.
//
// Edges: every call before StartProgress, or where the system has no such dialog, gives false and does
//   nothing. A negative position or total goes to the dialog as a large unsigned number, as the system takes
//   it.
// Lives on the stack of one operation, on the user-interface thread; on Windows that thread has started COM.
// Off Windows the dialog is the desktop's (a window through Qt); on one without windows the progress is a
// line on the terminal, which cannot be cancelled.
//
//   CProgressCom progress(100);
//   if (progress.StartProgress(_T("计算"))) progress.StepProgress(1, _T("首层"));
//   progress.EndProgress();
class COMM_LORV_API CProgressCom {
 public:
  explicit CProgressCom(int total);
  virtual ~CProgressCom();
  CProgressCom(const CProgressCom&) = delete;
  CProgressCom& operator=(const CProgressCom&) = delete;

  // Opens the dialog. False where the system has none.
  bool StartProgress(CString title);
  // Shows a position, and a text in the first line unless it is empty.
  void StepProgress(int position, CString line);
  // Shows the whole as done and closes the dialog.
  void EndProgress();
  // Once the user has cancelled, asks the question: Yes gives true. No lets the operation go on, and as the
  // dialog stays cancelled the question comes again at the next call.
  bool QueryCancel(CString question);

 private:
  std::unique_ptr<lorv::ProgressDialog> dialog_;
  int total_;
};
