#include "spreadsheet/exchange/exchange_messages.h"

#include <array>

#include "platform/ports/platform.h"

// What the exchange says to its user, by the dialogs of the platform that is in force, so that tests and
// programs without a screen answer in the user's place.

namespace lorv {

void ShowUserMessage(const CString& text, const CString& caption, UINT style) {
  PortsInForce().dialogs->ShowMessage({text, caption, style});
}

void ReportFailure(const CException& failure) {
  // A program's description may be of any length; a message box shows its beginning.
  constexpr UINT kRoom = 512;
  std::array<TCHAR, kRoom> text{};
  // A failure without words still brings a box: the user learns that the exchange has ended.
  if (failure.GetErrorMessage(text.data(), kRoom) == 0) text[0] = 0;
  ShowUserMessage(CString(LPCTSTR{text.data()}));
}

}  // namespace lorv
