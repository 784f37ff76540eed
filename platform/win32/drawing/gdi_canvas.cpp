#include "platform/win32/drawing/gdi_canvas.h"

#include <algorithm>

#include "framework/drawing/geometry.h"

namespace lorv {
namespace {

// The longest text that the system draws in one call.
constexpr std::size_t kDrawnUnits = 8192;

// A pen of the stroke while it lives. The common one, a thin line, needs no object of the system.
class PenInUse {
 public:
  PenInUse(HDC context, const Stroke& stroke) : context_(context) {
    if (stroke.style == PS_NULL) {
      former_ = SelectObject(context, GetStockObject(NULL_PEN));
      return;
    }
    if (stroke.style == PS_SOLID && stroke.width <= 1) {
      former_ = SelectObject(context, GetStockObject(DC_PEN));
      SetDCPenColor(context, stroke.colour);
      return;
    }
    own_ = Make(stroke);
    former_ = SelectObject(context, own_);
  }
  PenInUse(const PenInUse&) = delete;
  PenInUse& operator=(const PenInUse&) = delete;
  ~PenInUse() {
    SelectObject(context_, former_);
    if (own_ != nullptr) DeleteObject(own_);
  }

 private:
  static HPEN Make(const Stroke& stroke) {
    if (stroke.width <= 1) return CreatePen(stroke.style, 1, stroke.colour);
    const LOGBRUSH brush = {BS_SOLID, stroke.colour, 0};
    const DWORD style = static_cast<DWORD>(stroke.style) | PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER;
    return ExtCreatePen(style, static_cast<DWORD>(stroke.width), &brush, 0, nullptr);
  }

  HDC context_;
  HPEN own_ = nullptr;
  HGDIOBJ former_ = nullptr;
};

TRIVERTEX Corner(int x, int y, COLORREF colour) {
  const auto wide = [](BYTE part) { return static_cast<COLOR16>(part << 8U); };
  return {x, y, wide(GetRValue(colour)), wide(GetGValue(colour)), wide(GetBValue(colour)), 0};
}

DWORD Premultiplied(DWORD pixel) {
  const DWORD alpha = pixel >> 24U;
  const auto part = [&](unsigned shift) { return ((pixel >> shift & 0xFFU) * alpha + 127) / 255 << shift; };
  return alpha == 0xFF ? pixel : (alpha << 24U) | part(16) | part(8) | part(0);
}

}  // namespace

GdiMemory::GdiMemory(SIZE size, POINT corner)
    : size_{std::max<LONG>(size.cx, 0), std::max<LONG>(size.cy, 0)}, context_(CreateCompatibleDC(nullptr)) {
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof(info.bmiHeader);
  info.bmiHeader.biWidth = std::max<LONG>(size_.cx, 1);
  info.bmiHeader.biHeight = -std::max<LONG>(size_.cy, 1);
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  bitmap_ = CreateDIBSection(context_, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bitmap_ == nullptr) {
    size_ = {0, 0};
    return;
  }
  pixels_ = static_cast<DWORD*>(bits);
  former_ = SelectObject(context_, bitmap_);
  SetViewportOrgEx(context_, -corner.x, -corner.y, nullptr);
}

GdiMemory::~GdiMemory() {
  if (former_ != nullptr) SelectObject(context_, former_);
  if (bitmap_ != nullptr) DeleteObject(bitmap_);
  if (context_ != nullptr) DeleteDC(context_);
}

GdiCanvas::GdiCanvas(std::unique_ptr<GdiTarget> target)
    : target_(std::move(target)), measure_(CreateCompatibleDC(nullptr)) {
  SetBkMode(Context(), TRANSPARENT);
  SetFont(SystemDialogFont());
}

GdiCanvas::~GdiCanvas() {
  if (measure_font_ != nullptr) SelectObject(measure_, measure_font_);
  if (former_font_ != nullptr) SelectObject(Context(), former_font_);
  if (measure_ != nullptr) DeleteDC(measure_);
}

void GdiCanvas::Fill(const RECT& rect, COLORREF colour) {
  if (IsRectEmpty(&rect)) return;
  const HDC context = Context();
  SetDCBrushColor(context, colour);
  FillRect(context, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

void GdiCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  if (IsRectEmpty(&rect)) return;
  TRIVERTEX corners[] = {Corner(rect.left, rect.top, first), Corner(rect.right, rect.bottom, last)};
  GRADIENT_RECT whole = {0, 1};
  GdiGradientFill(Context(), corners, 2, &whole, 1, downwards ? GRADIENT_FILL_RECT_V : GRADIENT_FILL_RECT_H);
}

void GdiCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  if (IsRectEmpty(&rect) || width <= 0) return;
  const CRect all(rect);
  if (width >= (all.Width() + 1) / 2 || width >= (all.Height() + 1) / 2) {
    Fill(rect, colour);
    return;
  }
  Fill({all.left, all.top, all.right, all.top + width}, colour);
  Fill({all.left, all.bottom - width, all.right, all.bottom}, colour);
  Fill({all.left, all.top + width, all.left + width, all.bottom - width}, colour);
  Fill({all.right - width, all.top + width, all.right, all.bottom - width}, colour);
}

void GdiCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  const HDC context = Context();
  const PenInUse pen(context, stroke);
  MoveToEx(context, from.x, from.y, nullptr);
  LineTo(context, to.x, to.y);
}

void GdiCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  if (corners.size() < 2) return;
  const HDC context = Context();
  Stroke none;
  none.style = PS_NULL;
  const PenInUse pen(context, edge == nullptr ? none : *edge);
  const HGDIOBJ former = SelectObject(context, GetStockObject(inside == nullptr ? NULL_BRUSH : DC_BRUSH));
  if (inside != nullptr) SetDCBrushColor(context, *inside);
  ::Polygon(context, corners.data(), static_cast<int>(corners.size()));
  SelectObject(context, former);
}

void GdiCanvas::Invert(const RECT& rect) {
  if (!IsRectEmpty(&rect)) InvertRect(Context(), &rect);
}

void GdiCanvas::SetFont(const LOGFONTW& font) {
  // The one in use is held until the new one has taken its place.
  const auto fresh = SharedFont(font);
  const HGDIOBJ before = SelectObject(measure_, fresh->Handle());
  const HGDIOBJ drawn_before = SelectObject(Context(), fresh->Handle());
  if (measure_font_ == nullptr) measure_font_ = before;
  if (former_font_ == nullptr) former_font_ = drawn_before;
  font_ = fresh;
}

TEXTMETRICW GdiCanvas::Metrics() const {
  TEXTMETRICW metrics = {};
  GetTextMetricsW(measure_, &metrics);
  return metrics;
}

SIZE GdiCanvas::Extent(TextView text) const {
  SIZE size = {0, 0};
  if (text.empty()) return {0, Metrics().tmHeight};
  GetTextExtentPoint32W(measure_, text.data(), static_cast<int>(text.size()), &size);
  return size;
}

void GdiCanvas::Text(POINT at, TextView text, COLORREF colour) {
  const HDC context = Context();
  SetTextColor(context, colour);
  const TextView drawn = text.substr(0, kDrawnUnits);
  ExtTextOutW(context, at.x, at.y, 0, nullptr, drawn.data(), static_cast<UINT>(drawn.size()), nullptr);
}

void GdiCanvas::SetClip(const RECT* clip) {
  const HDC context = Context();
  SelectClipRgn(context, nullptr);
  if (clip != nullptr) IntersectClipRect(context, clip->left, clip->top, clip->right, clip->bottom);
}

void GdiCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const auto* const source = dynamic_cast<GdiCanvas*>(&from);
  if (source == nullptr || IsRectEmpty(&to)) return;
  BitBlt(Context(), to.left, to.top, to.right - to.left, to.bottom - to.top, source->Context(), from_at.x,
         from_at.y, SRCCOPY);
}

void GdiCanvas::Image(const PixelImage& image, const RECT& to) {
  if (IsRectEmpty(&to) || image.pixels == nullptr || image.width <= 0 || image.height <= 0) return;
  GdiMemory copy({image.width, image.height});
  if (copy.Pixels() == nullptr) return;
  const std::size_t count = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
  std::transform(image.pixels, image.pixels + count, copy.Pixels(), Premultiplied);
  const BLENDFUNCTION over = {AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
  GdiAlphaBlend(Context(), to.left, to.top, to.right - to.left, to.bottom - to.top, copy.Context(), 0, 0,
                image.width, image.height, over);
}

std::vector<DWORD> GdiCanvas::Pixels(const RECT& rect) const {
  const CRect wanted(rect);
  if (wanted.IsRectEmpty() != 0) return {};
  GdiMemory copy(wanted.Size());
  if (copy.Pixels() == nullptr) return {};
  BitBlt(copy.Context(), 0, 0, wanted.Width(), wanted.Height(), Context(), wanted.left, wanted.top, SRCCOPY);
  GdiFlush();
  const SIZE size = Size();
  const CRect surface(0, 0, size.cx, size.cy);
  std::vector<DWORD> pixels;
  pixels.reserve(static_cast<std::size_t>(wanted.Width()) * static_cast<std::size_t>(wanted.Height()));
  for (int y = wanted.top; y < wanted.bottom; ++y)
    for (int x = wanted.left; x < wanted.right; ++x) {
      const DWORD pixel = copy.Pixels()[pixels.size()];
      pixels.push_back(surface.PtInRect({x, y}) != 0 ? pixel | 0xFF000000 : 0);
    }
  return pixels;
}

}  // namespace lorv
