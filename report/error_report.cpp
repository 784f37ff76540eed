#include "report/error_report.h"

#include "module/product_flags.h"
#include "platform/ports/platform.h"
#include "report/content/failure_message.h"
#include "report/content/report_text.h"
#include "report/content/stack_report.h"
#include "report/dialogs/dialog_forms.h"
#include "report/dialogs/dlg_except.h"

// Reporting a failure: the message, then the dialog or the log, as the product's flags say. It runs inside
// other code's failure, so nothing that it throws leaves it.

namespace {

// What the data store says of a project file that is damaged, and what the user reads instead.
constexpr LPCTSTR kDamagedStore = _T("database disk image is malformed");
constexpr LPCTSTR kDamagedProject = _T("工程jgk已损坏,请关闭软件删除工程jgk重新计算!");

bool SomebodySees() {
  const lorv::Desktop* const desktop = lorv::DesktopIfAny();
  return desktop != nullptr && desktop->HasViewer();
}

// Where no user sees windows the report goes where messages go: nothing that failed is lost.
void Show(CDlgExcept& dialog) {
  if (SomebodySees()) {
    dialog.DoModal();
  } else {
    lorv::PortsInForce().dialogs->ShowMessage(
        {dialog.Report(), lorv::kFailureForm.caption, lorv::kIconError});
  }
}

void Deliver(const CString& message, const lorv::FailurePlace& place) {
  const bool show = (GetGlobelInfo() & lorv::kShowFailures) != 0;
  const CString shown = message.Find(kDamagedStore) >= 0 ? CString(kDamagedProject) : message;
  CDlgExcept dialog;
  dialog.BuildReport(shown, place);
  if (show) {
    Show(dialog);
  } else {
    lorv::AppendToLog(dialog.Report());
  }
}

// Runs a reporting step. It is the last line of defence: what fails in it is not reported.
template <class Step>
void Quietly(Step step) {
  try {
    step();
  } catch (...) {
    return;
  }
}

}  // namespace

void ReportCustErrorEx(CException* caught, LPCTSTR file, LPCTSTR signature, int line,
                       const HINSTANCE& module) {
  Quietly([&] {
    const CString message = lorv::MessageOf(caught);
    if (caught == nullptr) lorv::AskStackReport(signature, file, line);
    Deliver(message, {file, line, module});
  });
}

void ReportCustErrorEx(_com_error* caught, LPCTSTR file, LPCTSTR /*signature*/, int line,
                       const HINSTANCE& module) {
  Quietly([&] { Deliver(lorv::MessageOf(caught), {file, line, module}); });
}

void ReportCustErrorEx(LPCTSTR text, LPCTSTR file, LPCTSTR /*signature*/, int line, const HINSTANCE& module) {
  Quietly([&] { Deliver(lorv::MessageOf(text), {file, line, module}); });
}
