#include "platform/ports/desktop_services.h"
#include "platform/ports/printing.h"

// Printing off Windows: asked of whichever desktop serves. Without windows nobody can choose a printer, so
// there is no job.

namespace lorv {
namespace {

// Printers are chosen in a window, so only a desktop with windows can ask.
class PosixPrinting : public Printing {
 public:
  std::unique_ptr<PrintJob> Ask(HWND owner, DWORD flags) override {
    DesktopServices* const services = ServicesOfDesktop();
    return services == nullptr ? nullptr : services->AskPrinter(owner, flags);
  }
};

}  // namespace

Printing& NativePrinting() {
  static PosixPrinting printing;
  return printing;
}

}  // namespace lorv
