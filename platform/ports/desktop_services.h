#pragma once

#include <memory>

#include "platform/ports/dialogs.h"
#include "platform/ports/printing.h"
#include "platform/ports/progress_dialog.h"

// Services that a desktop offers beside its windows: the ports of a system without windows of its own ask it
// before they fall back on the terminal. A desktop offers them by deriving from this class as well.
// One thread: that of the user interface.
namespace lorv {

class COMM_LORV_API DesktopServices {
 public:
  DesktopServices() = default;
  DesktopServices(const DesktopServices&) = delete;
  DesktopServices& operator=(const DesktopServices&) = delete;
  virtual ~DesktopServices() = default;

  virtual int ShowMessage(const MessageRequest& request) = 0;
  virtual std::unique_ptr<PrintJob> AskPrinter(HWND owner, DWORD flags) = 0;
  virtual std::unique_ptr<ProgressDialog> MakeProgress() = 0;
};

// Those of the desktop in force; null if it has none. Makes no desktop fail: where none can be had, null.
COMM_LORV_API DesktopServices* ServicesOfDesktop();

}  // namespace lorv
