#pragma once

#include "platform/ports/desktop_services.h"

class QPagedPaintDevice;

namespace lorv {

// Message boxes and the print dialog through Qt, for the ports of a system without windows of its own;
// results as DesktopServices says. Thread: that of the windows.
class QtServices : public DesktopServices {
 public:
  int ShowMessage(const MessageRequest& request) override;
  std::unique_ptr<PrintJob> AskPrinter(HWND owner, DWORD flags) override;
};

// A print job that draws on a printer or into a PDF file, by whichever device is given; the job owns it.
// Never null.
COMM_LORV_API std::unique_ptr<PrintJob> MakeQtPrintJob(std::unique_ptr<QPagedPaintDevice> paper);

}  // namespace lorv
