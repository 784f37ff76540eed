#include "framework/drawing/drawing_tools.h"

#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/ports/desktop_port.h"

// Pens, brushes, fonts and bitmaps as values. A tool holds no handle of a system, so it may be made before
// any desktop is, copied and kept in statics; only a bitmap holds a surface, which the desktop in force
// makes. A deleted tool is the null tool of its kind and may still be selected.

BOOL CPen::CreatePen(int style, int width, COLORREF colour) {
  stroke_ = {colour, std::max(width, 1), style};
  return TRUE;
}

BOOL CPen::DeleteObject() {
  stroke_ = {0, 1, PS_NULL};
  return TRUE;
}

BOOL CBrush::CreateSolidBrush(COLORREF colour) {
  solid_ = true;
  colour_ = colour;
  return TRUE;
}

BOOL CBrush::DeleteObject() {
  solid_ = false;
  return TRUE;
}

BOOL CFont::CreateFontIndirect(const LOGFONT* face) {
  if (face == nullptr) return FALSE;
  face_ = *face;
  return TRUE;
}

BOOL CFont::CreatePointFont(int tenths, LPCTSTR face, CDC* dc) {
  // A negative height means the letters' own height without the leading, which is what points measure.
  constexpr int kTenthsAnInch = 720;
  // Without a context a font is made for the screen at its usual scale.
  const int dots = dc == nullptr ? 96 : dc->GetDeviceCaps(LOGPIXELSY);
  face_ = {};
  face_.lfHeight = -(tenths * dots + kTenthsAnInch / 2) / kTenthsAnInch;
  face_.lfCharSet = static_cast<BYTE>(DEFAULT_CHARSET);
  const lorv::TextView name = face == nullptr ? lorv::TextView() : lorv::TextView(face);
  std::copy_n(name.data(), std::min<std::size_t>(name.size(), LF_FACESIZE - 1), face_.lfFaceName);
  return TRUE;
}

int CFont::GetLogFont(LOGFONT* face) const {
  if (face == nullptr) return 0;
  *face = face_;
  return static_cast<int>(sizeof(LOGFONT));
}

BOOL CFont::DeleteObject() {
  face_ = {};
  return TRUE;
}

BOOL CBitmap::CreateCompatibleBitmap(CDC* /*dc*/, int width, int height) {
  if (width < 0 || height < 0) return FALSE;
  surface_ = lorv::DesktopInForce().MakeCanvas({width, height});
  return surface_ != nullptr;
}

BOOL CBitmap::DeleteObject() {
  surface_.reset();
  return TRUE;
}

CSize CBitmap::GetSize() const {
  return surface_ == nullptr ? CSize() : CSize(surface_->Size());
}
