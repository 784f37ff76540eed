#include "report/dialogs/failure_page.h"

#include "platform/ports/platform.h"

// The description of a failure on a page of paper. One page: what does not fit below is lost, as a
// description is a few lines.

namespace lorv {
namespace {

constexpr LPCTSTR kDocument = _T("Error message");
constexpr PageWays kWays = {kThousandths, 120, _T("Arial"), 0};

// Thousandths of an inch from the left bottom of the page.
constexpr int kLeft = 300;
constexpr int kTop = 9000;

// The line without the carriage return that an edit puts before each line feed: paper would show it.
CString WithoutReturn(const CString& line) {
  return line.IsEmpty() || line[line.GetLength() - 1] != '\r' ? line : line.Left(line.GetLength() - 1);
}

}  // namespace

std::unique_ptr<PrintJob> AskPage(HWND owner) {
  auto job = PortsInForce().printing->Ask(owner, kPrintNoPages | kPrintNoSelection);
  if (job == nullptr || !job->Begin(kDocument, kWays)) return nullptr;
  return job;
}

void PrintLines(PrintJob& job, const CString& text) {
  const LONG height = job.Extent(_T("00")).cy;
  int y = kTop;
  int start = 0;
  // What follows the last line feed is not printed; callers end their text with one.
  for (int end = text.Find('\n'); end >= 0; end = text.Find('\n', start)) {
    job.Text(kLeft, y, WithoutReturn(text.Mid(start, end - start)));
    y -= static_cast<int>(height);
    start = end + 1;
  }
}

}  // namespace lorv
