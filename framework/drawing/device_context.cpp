#include "framework/drawing/device_context.h"

#include <algorithm>
#include <cstring>

#include "framework/drawing/text_layout.h"
#include "framework/ports/desktop_port.h"
#include "framework/ports/no_window.h"

// State of a device context: what is selected, origins, clip, saved states, and the stock objects. Everything
// that draws stands in device_drawing.cpp. All coordinates that reach the canvas have passed Device(), so a
// canvas knows nothing of origins, and the clip is kept in device pixels: moving an origin later does not
// move it.

namespace {

// What a new context has selected, and what SelectStockObject gives.
// Objects and not values, as SelectObject gives pointers that callers select again later.
CPen& StockPen(COLORREF colour) {
  static CPen black(PS_SOLID, 1, 0);
  static CPen white(PS_SOLID, 1, RGB(255, 255, 255));
  return colour == 0 ? black : white;
}

CPen& NullPen() {
  static CPen none;
  return none;
}

CBrush& StockBrush(COLORREF colour) {
  static CBrush black(0);
  static CBrush white(RGB(255, 255, 255));
  return colour == 0 ? black : white;
}

CBrush& NullBrush() {
  static CBrush none;
  return none;
}

CFont& StockFont() {
  static CFont font(lorv::DesktopInForce().DialogFont());
  return font;
}

CBitmap& StockBitmap() {
  static CBitmap none;
  return none;
}

}  // namespace

lorv::Canvas& CDC::Surface() const {
  static const auto none = lorv::NoCanvas();
  if (surface_ == nullptr) return *none;
  if (face_stale_) UseFace();
  return *surface_;
}

void CDC::SetSurface(std::shared_ptr<lorv::Canvas> surface) {
  surface_ = std::move(surface);
  face_sent_.reset();
}

// A grid selects a font for each cell and gives it back; the canvas hears of it only when it is asked for
// something, and only if the face differs from the one that it has.
void CDC::UseFace() const {
  face_stale_ = false;
  const LOGFONT& wanted = state_.own_face ? state_.face : StockFont().Face();
  if (face_sent_ && std::memcmp(&*face_sent_, &wanted, sizeof(wanted)) == 0) return;
  face_sent_ = wanted;
  surface_->SetFont(wanted);
}

// One pixel to begin with, as the framework's has: it measures texts at once and draws when a bitmap is
// selected.
BOOL CDC::CreateCompatibleDC(CDC* like) {
  SetSurface(lorv::DesktopInForce().MakeCanvas({1, 1}));
  if (like != nullptr && like->state_.own_face) SelectObject(like->GetCurrentFont());
  return TRUE;
}

BOOL CDC::DeleteDC() {
  surface_.reset();
  return TRUE;
}

CPen* CDC::SelectObject(CPen* pen) {
  CPen* const before = state_.pen_object == nullptr ? &StockPen(0) : state_.pen_object;
  if (pen == nullptr) return before;
  // The stroke is copied: a pen that ends while it is selected leaves nothing dangling for drawing.
  state_.pen_object = pen;
  state_.stroke = pen->Stroke();
  return before;
}

CBrush* CDC::SelectObject(CBrush* brush) {
  CBrush* const before =
      state_.brush_object == nullptr ? &StockBrush(RGB(255, 255, 255)) : state_.brush_object;
  if (brush == nullptr) return before;
  state_.brush_object = brush;
  state_.filled = brush->IsSolid();
  state_.brush = brush->Colour();
  return before;
}

CFont* CDC::SelectObject(CFont* font) {
  CFont* const before = GetCurrentFont();
  if (font == nullptr) return before;
  state_.font_object = font;
  state_.face = font->Face();
  state_.own_face = true;
  face_stale_ = true;
  return before;
}

CFont* CDC::GetCurrentFont() const {
  return state_.font_object == nullptr ? &StockFont() : state_.font_object;
}

CBitmap* CDC::SelectObject(CBitmap* bitmap) {
  CBitmap* const before = bitmap_ == nullptr ? &StockBitmap() : bitmap_;
  if (bitmap == nullptr) return before;
  bitmap_ = bitmap;
  SetSurface(bitmap->Surface());
  // Another context may have left its own font and clip there.
  face_stale_ = true;
  UseClip();
  return before;
}

CObject* CDC::SelectStockObject(int index) {
  switch (index) {
    case WHITE_BRUSH:
    case BLACK_BRUSH:
      return SelectObject(&StockBrush(index == BLACK_BRUSH ? 0 : RGB(255, 255, 255)));
    case NULL_BRUSH:
      return SelectObject(&NullBrush());
    case WHITE_PEN:
    case BLACK_PEN:
      return SelectObject(&StockPen(index == BLACK_PEN ? 0 : RGB(255, 255, 255)));
    case NULL_PEN:
      return SelectObject(&NullPen());
    case SYSTEM_FONT:
    case DEFAULT_GUI_FONT:
      return SelectObject(&StockFont());
    default:
      return nullptr;
  }
}

int CDC::SaveDC() {
  saved_.push_back(state_);
  return static_cast<int>(saved_.size());
}

BOOL CDC::RestoreDC(int saved) {
  const int count = static_cast<int>(saved_.size());
  // Numbers from SaveDC count from 1; negative ones count back from the newest, so -1 is that.
  const int index = saved < 0 ? count + saved : saved - 1;
  if (index < 0 || index >= count) return FALSE;
  const State& former = saved_[static_cast<std::size_t>(index)];
  const bool clip_changed = former.clipped != state_.clipped || !(former.clip == state_.clip);
  state_ = former;
  // States that were saved later are lost with it, as in the system.
  saved_.resize(static_cast<std::size_t>(index));
  face_stale_ = true;
  // Setting a clip is a call into the peer, which a change of tools alone does not need.
  if (clip_changed) UseClip();
  return TRUE;
}

void CDC::UseClip() {
  Surface().SetClip(state_.clipped ? static_cast<LPCRECT>(state_.clip) : nullptr);
}

int CDC::GetDeviceCaps(int index) const {
  switch (index) {
    case LOGPIXELSX:
    case LOGPIXELSY:
      return Surface().Dpi();
    case HORZRES:
      return Surface().Size().cx;
    case VERTRES:
      return Surface().Size().cy;
    default:
      return 0;
  }
}

CPoint CDC::SetWindowOrg(int x, int y) {
  return std::exchange(state_.window, CPoint(x, y));
}

CPoint CDC::SetViewportOrg(int x, int y) {
  return std::exchange(state_.viewport, CPoint(x, y));
}

CPoint CDC::OffsetViewportOrg(int x, int y) {
  return std::exchange(state_.viewport, state_.viewport + CSize(x, y));
}

int CDC::IntersectClipRect(LPCRECT rect) {
  CRect box = Device(rect);
  if (state_.clipped) box &= state_.clip;
  state_.clip = box;
  state_.clipped = true;
  UseClip();
  return box.IsRectEmpty() != 0 ? NULLREGION : SIMPLEREGION;
}

int CDC::IntersectClipRect(int left, int top, int right, int bottom) {
  return IntersectClipRect(CRect(left, top, right, bottom));
}

int CDC::SelectClipRgn(void* /*always_null*/) {
  state_.clipped = false;
  UseClip();
  return SIMPLEREGION;
}

int CDC::GetClipBox(LPRECT rect) const {
  CRect box(CPoint(0, 0), Surface().Size());
  if (limit_.has_value()) box &= *limit_;
  if (state_.clipped) box &= state_.clip;
  // Back into logical pixels, as the caller's other rectangles are.
  *rect = box + (state_.window - state_.viewport);
  return box.IsRectEmpty() != 0 ? NULLREGION : SIMPLEREGION;
}

BOOL CDC::RectVisible(LPCRECT rect) const {
  return static_cast<BOOL>(Surface().Shows(Device(rect)));
}

BOOL CDC::BitBlt(int x, int y, int width, int height, CDC* from, int from_x, int from_y, DWORD way) {
  const CRect to(CPoint(x, y), CSize(width, height));
  if (way == DSTINVERT) {
    InvertRect(to);
    return TRUE;
  }
  // The other ways mix bits of source and target, which no canvas offers; a clear refusal beats a wrong
  // picture.
  if (from == nullptr || way != SRCCOPY) return FALSE;
  Surface().Copy(Device(to), from->Surface(), from->Device({from_x, from_y}));
  return TRUE;
}

void CDC::DrawImage(const lorv::PixelImage& image, LPCRECT rect) {
  Surface().Image(image, Device(rect));
}
