#include "platform/ports/printing.h"

#include "framework/native/native_types.h"

#include <commdlg.h>

#include "platform/models/carried_fault.h"
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
    // The driver makes the copies: pages are sent once.
    choice.Flags = flags | PD_RETURNDC | PD_USEDEVMODECOPIESANDCOLLATE;
    // Given whatever was chosen, and ours to free.
    struct Given {
      explicit Given(PRINTDLGW& asked) : choice(asked) {}
      Given(const Given&) = delete;
      Given& operator=(const Given&) = delete;
      ~Given() {
        GlobalFree(choice.hDevMode);
        GlobalFree(choice.hDevNames);
      }
      PRINTDLGW& choice;
    };
    const Given given(choice);
    // The dialog runs a loop of the system's: what a handler throws meanwhile comes out behind it.
    const bool taken = CarriedFault::CallOut([&] { return PrintDlgW(&choice) != 0; });
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
