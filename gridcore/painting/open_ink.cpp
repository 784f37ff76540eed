#include "gridcore/painting/open_ink.h"

#include "framework/ports/desktop_port.h"

// Brightness by the weights that the eye has for red, green and blue.

namespace lorv {
namespace {

constexpr int kMiddle = 128;

int Brightness(COLORREF colour) {
  return (299 * GetRValue(colour) + 587 * GetGValue(colour) + 114 * GetBValue(colour)) / 1000;
}

}  // namespace

COLORREF InkOver(COLORREF ground, int system) {
  const COLORREF ink = DesktopInForce().Colour(system);
  return Brightness(ink) >= kMiddle && Brightness(ground) >= kMiddle ? RGB(0, 0, 0) : ink;
}

}  // namespace lorv
