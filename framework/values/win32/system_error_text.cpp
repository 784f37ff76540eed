#include "framework/values/com_error.h"

namespace lorv {

CString SystemErrorText(HRESULT code) {
  LPWSTR text = nullptr;
  constexpr DWORD kFlags =
      FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS;
  // With this flag the system writes the address of its own buffer where the buffer's address is asked for.
  ::FormatMessageW(kFlags, nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<LPWSTR>(&text), 0, nullptr);
  CString result(text);
  ::LocalFree(text);
  return result.TrimRight();
}

}  // namespace lorv
