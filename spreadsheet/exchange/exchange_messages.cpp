#include "spreadsheet/exchange/exchange_messages.h"

#include <array>

#include "platform/ports/platform.h"

namespace lorv {

void TellUser(const CString& text, const CString& caption, UINT style) {
  PortsInForce().dialogs->ShowMessage({text, caption, style});
}

void TellFailure(const CException& failure) {
  constexpr UINT kRoom = 512;
  std::array<TCHAR, kRoom> text{};
  if (failure.GetErrorMessage(text.data(), kRoom) == 0) text[0] = 0;
  TellUser(CString(LPCTSTR{text.data()}));
}

}  // namespace lorv
