#include "gridcore/painting/open_ink.h"

#include "framework/ports/desktop_port.h"

// A text is exchanged only where it and its ground are both light: there it cannot be read. Both dark is what
// the host chose for one of them, and its own affair.

namespace lorv {
namespace {

constexpr int kMiddle = 128;

// Of 255, by the weights that the eye has for red, green and blue.
int Brightness(COLORREF colour) {
  return (299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000;
}

}  // namespace

COLORREF InkOver(COLORREF ground, int system) {
  const COLORREF ink = DesktopInForce().Colour(system);
  return Brightness(ink) >= kMiddle && Brightness(ground) >= kMiddle ? RGB(0, 0, 0) : ink;
}

}  // namespace lorv
