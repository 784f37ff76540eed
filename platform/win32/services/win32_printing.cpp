#include "platform/ports/printing.h"

#include "framework/native/native_types.h"

#include <commdlg.h>

#include "platform/win32/services/gdi_print_job.h"

// The system's dialog for choosing a printer.

namespace lorv {
namespace {

class Win32Printing : public Printing {
 public:
  std::unique_ptr<PrintJob> Ask(HWND owner, DWORD flags) override {
    PRINTDLGW choice = {};
    choice.lStructSize = sizeof(choice);
    choice.hwndOwner = owner;
    // Copies are the driver's affair: pages are sent once.
    choice.Flags = flags | PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE;
    const bool taken = PrintDlgW(&choice) != 0;
    // Given whatever was chosen, and ours to free.
    GlobalFree(choice.hDevMode);
    GlobalFree(choice.hDevNames);
    if (!taken || choice.hDC == nullptr) return nullptr;
    return std::make_unique<GdiPrintJob>(choice.hDC);
  }
};

}  // namespace

Printing& NativePrinting() {
  static Win32Printing printing;
  return printing;
}

}  // namespace lorv
