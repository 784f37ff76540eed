#include "module/product_flags.h"

#include "platform/ports/platform.h"

// What the product at hand may do, read once from the suite's settings. A value below 1 means "not read yet":
// a stored 0 is therefore read at every question, which is slower but right.

namespace lorv {

int& CachedProductFlags() {
  static int flags = 0;
  return flags;
}

}  // namespace lorv

DWORD GetGlobelInfo() {
  int& flags = lorv::CachedProductFlags();
  if (flags < 1) {
    const lorv::Platform& ports = lorv::PortsInForce();
    // The root ends in a separator already; a doubled one does no harm.
    const CString file = ports.suite->RootFolder() + _T("\\sys\\product.ini");
    flags = ports.settings->FileValue(file, _T("Product"), _T("CustomFlag"), lorv::kDefaultProductFlags);
  }
  return static_cast<DWORD>(flags);
}
