#pragma once

#include "platform/ports/desktop_services.h"

class QPagedPaintDevice;

namespace lorv {

// Message boxes and printers through the widget set.
class QtServices : public DesktopServices {
 public:
  int ShowMessage(const MessageRequest& request) override;
  std::unique_ptr<PrintJob> AskPrinter(HWND owner, DWORD flags) override;
};

// A job on a printer, or on a file in the portable document format.
COMM_LORV_API std::unique_ptr<PrintJob> MakeQtPrintJob(std::unique_ptr<QPagedPaintDevice> paper);

}  // namespace lorv
