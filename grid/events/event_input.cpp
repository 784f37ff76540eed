#include "grid/events/event_input.h"

// Mouse flags, keys and typed numbers in the form in which events carry them. The dialogs that read them
// were written for another order of bits than the system's.

namespace lorv {
namespace {

constexpr unsigned kLeftButton = 1;
constexpr unsigned kRightButton = 2;
constexpr unsigned kShift = 4;
constexpr unsigned kCtrl = 8;
constexpr unsigned kAlt = 32;

bool IsPlainNumber(const CString& text) {
  for (int i = 0; i < text.GetLength(); ++i) {
    const TCHAR unit = text[i];
    if ((unit < _T('0') || unit > _T('9')) && unit != _T('.') && unit != _T('-') && unit != _T('+'))
      return false;
  }
  return true;
}

}  // namespace

short EventButton(unsigned mouse_flags) {
  return static_cast<short>(((mouse_flags & kLeftButton) != 0 ? 1 : 0) +
                            ((mouse_flags & kRightButton) != 0 ? 2 : 0));
}

short EventShift(unsigned mouse_flags) {
  return EventShift((mouse_flags & kShift) != 0, (mouse_flags & kCtrl) != 0, (mouse_flags & kAlt) != 0);
}

short EventShift(bool shift, bool ctrl, bool alt) {
  return static_cast<short>((shift ? 1 : 0) + (ctrl ? 2 : 0) + (alt ? 4 : 0));
}

CString CutDecimalZeros(const CString& text) {
  // Without a point the zeros count: 100 is not 1.
  if (!IsPlainNumber(text) || text.ReverseFind(_T('.')) < 1) return text;
  int length = text.GetLength();
  while (length > 0 && text[length - 1] == _T('0')) --length;
  // No number ends with its point.
  if (length > 0 && text[length - 1] == _T('.')) --length;
  return text.Left(length);
}

}  // namespace lorv
