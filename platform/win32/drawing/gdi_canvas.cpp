#include "platform/win32/drawing/gdi_canvas.h"

#include <algorithm>
#include <cstring>

#include "framework/drawing/geometry.h"
#include "framework/drawing/line_runs.h"
#include "platform/win32/drawing/gdi_measure.h"

// A canvas over a device context of the system. Fonts and clips are selected when something is drawn and not
// when they are set, and fills use the system's one brush of any colour, so that painting a page of cells
// makes no objects.

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
    // Flat ends and sharp corners: the same pixels as on the other desktops.
    const DWORD style = static_cast<DWORD>(stroke.style) | PS_GEOMETRIC | PS_ENDCAP_FLAT | PS_JOIN_MITER;
    return ExtCreatePen(style, static_cast<DWORD>(stroke.width), &brush, 0, nullptr);
  }

  HDC context_;
  HPEN own_ = nullptr;
  HGDIOBJ former_ = nullptr;
};

TRIVERTEX Corner(int x, int y, COLORREF colour) {
  // The system counts a colour's part in 16 bits here.
  const auto wide = [](BYTE part) { return static_cast<COLOR16>(part << 8U); };
  return {x, y, wide(GetRValue(colour)), wide(GetGValue(colour)), wide(GetBValue(colour)), 0};
}

// The system's own dialog font, asked once: it is in force in every new canvas.
const LOGFONTW& DialogFace() {
  static const LOGFONTW face = SystemDialogFont();
  return face;
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
  // The system makes no bitmap without pixels; the size that is given stays 0.
  info.bmiHeader.biWidth = std::max<LONG>(size_.cx, 1);
  // Negative: the first row of memory is the top one.
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

void GdiMemory::SetCorner(POINT corner) {
  SetViewportOrgEx(context_, -corner.x, -corner.y, nullptr);
}

GdiMemory::~GdiMemory() {
  if (former_ != nullptr) SelectObject(context_, former_);
  if (bitmap_ != nullptr) DeleteObject(bitmap_);
  if (context_ != nullptr) DeleteDC(context_);
}

GdiCanvas::GdiCanvas(std::unique_ptr<GdiTarget> target) : target_(std::move(target)), face_(DialogFace()) {}

GdiCanvas::~GdiCanvas() {
  if (former_font_ != nullptr) SelectObject(Context(), former_font_);
}

int GdiCanvas::Dpi() const {
  // 0 where the window has gone and there is no context any more.
  const int dots = target_->Dpi();
  return dots > 0 ? dots : kUsualDpi;
}

void GdiCanvas::Fill(const RECT& rect, COLORREF colour) {
  if (IsRectEmpty(&rect)) return;
  const HDC context = target_->ContextToFill(rect);
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
  // Filling a rectangle takes the system a small part of what a pen takes; a wide pen has ends of its own.
  if (stroke.style == PS_SOLID && stroke.width == 1 && (from.x == to.x || from.y == to.y)) {
    constexpr LONG kFar = 1 << 26;
    for (const CRect& run : LineRuns(from, to, stroke, CRect(-kFar, -kFar, kFar, kFar)))
      Fill(run, stroke.colour);
    return;
  }
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
  // Cells of one look follow one another: equal fonts are not asked for again.
  if (std::memcmp(&font, &face_, sizeof(font)) == 0) return;
  face_ = font;
  font_.reset();
}

const std::shared_ptr<const GdiFont>& GdiCanvas::Font() const {
  if (font_ == nullptr) font_ = SharedFont(face_);
  return font_;
}

TEXTMETRICW GdiCanvas::Metrics() const {
  return GdiMeasure::Here().Metrics(Font());
}

SIZE GdiCanvas::Extent(TextView text) const {
  GdiMeasure& measure = GdiMeasure::Here();
  return {measure.Width(Font(), text), measure.Metrics(Font()).tmHeight};
}

void GdiCanvas::Text(POINT at, TextView text, COLORREF colour) {
  PutText(at, text, colour, nullptr);
}

void GdiCanvas::ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) {
  PutText(at, text, colour, &within);
}

void GdiCanvas::PutText(POINT at, TextView text, COLORREF colour, const RECT* within) {
  const HDC context = Context();
  if (drawn_font_ != Font()) {
    SetBkMode(context, TRANSPARENT);
    const HGDIOBJ before = SelectObject(context, font_->Handle());
    if (former_font_ == nullptr) former_font_ = before;
    drawn_font_ = font_;
  }
  SetTextColor(context, colour);
  // Longer ones are not drawn at all by the system; so much fills any screen.
  const TextView drawn = text.substr(0, kDrawnUnits);
  ExtTextOutW(context, at.x, at.y, within == nullptr ? 0 : ETO_CLIPPED, within, drawn.data(),
              static_cast<UINT>(drawn.size()), nullptr);
}

void GdiCanvas::SetClip(const RECT* clip) {
  const HDC context = Context();
  // From the limit anew each time, as the system only ever narrows.
  SelectClipRgn(context, target_->Limit());
  if (clip != nullptr) IntersectClipRect(context, clip->left, clip->top, clip->right, clip->bottom);
}

bool GdiCanvas::Shows(const RECT& rect) const {
  return ::RectVisible(target_->ContextToAsk(), &rect) != 0;
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
  // The system blends pixels whose colours are multiplied by their alpha already.
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
  // The system may still be drawing into the memory that is read next.
  const SIZE size = Size();
  const CRect surface(0, 0, size.cx, size.cy);
  std::vector<DWORD> pixels;
  pixels.reserve(static_cast<std::size_t>(wanted.Width()) * static_cast<std::size_t>(wanted.Height()));
  for (int y = wanted.top; y < wanted.bottom; ++y)
    for (int x = wanted.left; x < wanted.right; ++x) {
      const DWORD pixel = copy.Pixels()[pixels.size()];
      // The system leaves alpha out; beside the surface there is nothing, which is 0.
      pixels.push_back(surface.PtInRect({x, y}) != 0 ? pixel | 0xFF000000 : 0);
    }
  return pixels;
}

}  // namespace lorv
