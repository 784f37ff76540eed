#include "framework/values/com_error.h"

// Texts of failure codes from the system, in its own language. Inserts are left alone, as nobody gives
// arguments for them.

namespace lorv {

CString SystemErrorText(HRESULT code) {
  LPWSTR text = nullptr;
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  // With this flag the system writes the address of its own buffer where the buffer's address is asked for.
  ::FormatMessageW(kFlags, nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<LPWSTR>(&text), 0, nullptr);
  CString result(text);
  ::LocalFree(text);
  // The system ends its sentences with a line end.
  return result.TrimRight();
}

}  // namespace lorv
