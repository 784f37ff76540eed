#include "module/progress.h"

#include "platform/ports/platform.h"

// The progress window of long calculations over the shell's dialog. Before it is started, and where the
// system has no such dialog, every call does nothing, so callers need not ask whether there is a window.

namespace {

constexpr LPCTSTR kAnimationModule = _T("shell32.dll");
constexpr UINT kAnimationResource = 161;
constexpr LPCTSTR kCancelMessage = _T("Please wait while the current operation is cleaned up");

}  // namespace

// The interface takes its texts by value.
// NOLINTBEGIN(performance-unnecessary-value-param)

CProgressCom::CProgressCom(int total) : total_(total) {}

CProgressCom::~CProgressCom() = default;

bool CProgressCom::StartProgress(CString title) {
  dialog_ = lorv::PortsInForce().shell->MakeProgress();
  if (!dialog_) return false;
  dialog_->SetTitle(title);
  // The dialog stays: later calls go to it, though it was never opened. Callers see FALSE.
  if (!dialog_->SetAnimation(kAnimationModule, kAnimationResource)) return false;
  dialog_->Open(lorv::kProgressAutoTime);
  dialog_->SetCancelMessage(kCancelMessage);
  dialog_->Timer(lorv::kProgressTimerReset);
  return true;
}

void CProgressCom::StepProgress(int position, CString line) {
  if (!dialog_) return;
  dialog_->SetProgress(static_cast<DWORD>(position), static_cast<DWORD>(total_));
  if (line.IsEmpty()) return;
  dialog_->SetLine(1, line.Left(lorv::kProgressLineRoom - 1), false);
}

void CProgressCom::EndProgress() {
  if (!dialog_) return;
  dialog_->SetProgress(static_cast<DWORD>(total_), static_cast<DWORD>(total_));
  dialog_->Close();
}

bool CProgressCom::QueryCancel(CString question) {
  if (!dialog_ || !dialog_->HasUserCancelled()) return false;
  const lorv::MessageRequest request = {question, CString(), lorv::kButtonsYesNo};
  if (lorv::PortsInForce().dialogs->ShowMessage(request) == lorv::kAnswerYes) return true;
  dialog_->Timer(lorv::kProgressTimerReset);
  return false;
}

// NOLINTEND(performance-unnecessary-value-param)
