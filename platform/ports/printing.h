#pragma once

#include <memory>

#include "framework/native/export.h"
#include "framework/native/window_types.h"
#include "framework/ports/canvas_port.h"
#include "framework/text/cstring.h"

// Pages on paper.
// One thread: that of the user interface.
namespace lorv {

// How a page is measured and written on.
struct PageWays {
  int mapping = 0;           // the system's number; all that is asked for is kThousandths
  int tenths_of_points = 0;  // of the font
  LPCTSTR face = nullptr;
  UINT align = 0;  // 0: a text's place is its left top corner
};
constexpr int kThousandths = 5;  // of an inch, y upwards

// What the print dialog leaves out.
constexpr DWORD kPrintNoSelection = 4;
constexpr DWORD kPrintNoPages = 8;

// One document: either of one page of plain texts (Begin), whose places count from the left end of the page's
// bottom, upwards; or of pages drawn on as windows are (BeginPages), in the paper's own dots from the left
// top. What lies outside a page is lost. A job that ends without End is given up.
//
//   job->BeginPages(_T("list"));  CPrintDC page(job->NextPage());  page.DrawText(...);  job->End();
class COMM_LORV_API PrintJob {
 public:
  PrintJob() = default;
  PrintJob(const PrintJob&) = delete;
  PrintJob& operator=(const PrintJob&) = delete;
  virtual ~PrintJob() = default;

  // False if the printer refuses; then nothing else is to be called.
  virtual bool Begin(LPCTSTR document, const PageWays& ways) = 0;
  virtual SIZE Extent(LPCTSTR text) = 0;
  virtual void Text(int x, int y, LPCTSTR text) = 0;
  virtual bool BeginPages(LPCTSTR document) = 0;
  // The canvas of the next page; the former one draws nothing any more. Null where there is no other page.
  virtual std::shared_ptr<Canvas> NextPage() = 0;
  virtual void End() = 0;
};

class COMM_LORV_API Printing {
 public:
  Printing() = default;
  Printing(const Printing&) = delete;
  Printing& operator=(const Printing&) = delete;
  virtual ~Printing() = default;

  // Asks the user for a printer; null if there is nobody to ask, no printer, or the user gave up.
  virtual std::unique_ptr<PrintJob> Ask(HWND owner, DWORD flags) = 0;
};

COMM_LORV_API Printing& NativePrinting();

}  // namespace lorv
