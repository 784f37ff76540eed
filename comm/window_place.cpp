#include <array>

#include "comm/AdLorvComm.h"
#include "framework/text/number_text.h"
#include "platform/ports/platform.h"

// Places of windows in stored settings, "left,top,right,bottom,state". A stored place is used only if the
// user can still see and grasp the window there: screens change between two runs.

namespace {

// How far the top may lie above the desktop, and how much of it must show at the bottom: so much of a title
// bar a mouse can still take hold of.
constexpr int kTitleAbove = 18;
constexpr int kTitleBelow = 10;

bool TitleShows(const CRect& rect, const RECT& desktop) {
  const __int64 top = rect.top;
  return top + kTitleAbove >= desktop.top && top + kTitleBelow <= desktop.bottom;
}

}  // namespace

bool CAdLorvComm::WndPosFromStringToRect(const CString& text, CRect& rect, int& show_state,
                                         const RECT& desktop) {
  show_state = -1;
  CStringArray parts;
  const int count = DivideString(text, _T(","), parts);
  // The state may be missing.
  if (count != 4 && count != 5) return false;
  std::array<int, 5> numbers{};
  for (int i = 0; i < count; ++i) {
    numbers[static_cast<std::size_t>(i)] = lorv::ReadInteger(parts.GetAt(i).View());
  }
  if (count == 5) show_state = numbers[4];
  const CRect place(numbers[0], numbers[1], numbers[2], numbers[3]);
  if (place.left >= place.right || place.top >= place.bottom) return false;
  CRect shown;
  if (!shown.IntersectRect(&place, &desktop) || !TitleShows(place, desktop)) return false;
  rect = place;
  return true;
}

bool CAdLorvComm::WndPosFromStringToRect(const CString& text, CRect& rect, int& show_state) {
  return WndPosFromStringToRect(text, rect, show_state, lorv::PortsInForce().shell->DesktopRect());
}

void CAdLorvComm::WndPosFromRectToString(CString& text, const CRect& rect, int show_state) {
  text.Format(_T("%d,%d,%d,%d,%d"), rect.left, rect.top, rect.right, rect.bottom, show_state);
}
