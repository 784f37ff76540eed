#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/drawing/text_layout.h"
#include "framework/ports/desktop_port.h"

// Shapes and texts of a device context.

std::vector<POINT> CDC::Device(const POINT* points, int count) const {
  std::vector<POINT> moved;
  moved.reserve(static_cast<std::size_t>(std::max(count, 0)));
  for (int i = 0; i < count; ++i) moved.push_back(Device(points[i]));
  return moved;
}

void CDC::FillSolidRect(LPCRECT rect, COLORREF colour) {
  state_.back = colour;
  Surface().Fill(Device(rect), colour);
}

void CDC::FillSolidRect(int x, int y, int width, int height, COLORREF colour) {
  FillSolidRect(CRect(CPoint(x, y), CSize(width, height)), colour);
}

void CDC::FillRect(LPCRECT rect, CBrush* brush) {
  if (brush != nullptr && brush->IsSolid()) Surface().Fill(Device(rect), brush->Colour());
}

void CDC::FrameRect(LPCRECT rect, CBrush* brush) {
  if (brush != nullptr && brush->IsSolid()) Surface().Frame(Device(rect), brush->Colour(), 1);
}

void CDC::Draw3dRect(LPCRECT rect, COLORREF top_left, COLORREF bottom_right) {
  const CRect box = Device(rect);
  Surface().Fill(CRect(box.left, box.top, box.right - 1, box.top + 1), top_left);
  Surface().Fill(CRect(box.left, box.top, box.left + 1, box.bottom - 1), top_left);
  Surface().Fill(CRect(box.right - 1, box.top, box.right, box.bottom), bottom_right);
  Surface().Fill(CRect(box.left, box.bottom - 1, box.right, box.bottom), bottom_right);
}

void CDC::GradientRect(LPCRECT rect, COLORREF first, COLORREF last, BOOL downwards) {
  Surface().Gradient(Device(rect), first, last, downwards != 0);
}

void CDC::InvertRect(LPCRECT rect) {
  Surface().Invert(Device(rect));
}

void CDC::DrawFocusRect(LPCRECT rect) {
  const CRect box = Device(rect);
  Surface().Invert(CRect(box.left, box.top, box.right, box.top + 1));
  Surface().Invert(CRect(box.left, box.bottom - 1, box.right, box.bottom));
  Surface().Invert(CRect(box.left, box.top + 1, box.left + 1, box.bottom - 1));
  Surface().Invert(CRect(box.right - 1, box.top + 1, box.right, box.bottom - 1));
}

CPoint CDC::MoveTo(int x, int y) {
  return std::exchange(state_.pen_at, CPoint(x, y));
}

BOOL CDC::LineTo(int x, int y) {
  const CPoint from = MoveTo(x, y);
  if (state_.stroke.style != PS_NULL) Surface().Line(Device(from), Device(CPoint(x, y)), state_.stroke);
  return TRUE;
}

BOOL CDC::Polyline(const POINT* points, int count) {
  if (points == nullptr || count < 2) return FALSE;
  const auto moved = Device(points, count);
  if (state_.stroke.style == PS_NULL) return TRUE;
  for (std::size_t i = 1; i < moved.size(); ++i) Surface().Line(moved[i - 1], moved[i], state_.stroke);
  return TRUE;
}

BOOL CDC::Polygon(const POINT* points, int count) {
  if (points == nullptr || count < 2) return FALSE;
  Surface().Polygon(Device(points, count), state_.stroke.style == PS_NULL ? nullptr : &state_.stroke,
                    state_.filled ? &state_.brush : nullptr);
  return TRUE;
}

BOOL CDC::Rectangle(LPCRECT rect) {
  const CRect box = Device(rect);
  if (state_.filled) Surface().Fill(box, state_.brush);
  if (state_.stroke.style != PS_NULL) Surface().Frame(box, state_.stroke.colour, state_.stroke.width);
  return TRUE;
}

COLORREF CDC::SetPixel(int x, int y, COLORREF colour) {
  Surface().Fill(Device(CRect(x, y, x + 1, y + 1)), colour);
  return colour;
}

void CDC::Background(LPCRECT device) {
  if (state_.back_mode == OPAQUE) Surface().Fill(*device, state_.back);
}

void CDC::PutLine(CPoint at, lorv::TextView text) {
  const CSize size(Surface().Extent(text));
  Background(CRect(at, static_cast<SIZE>(size)));
  Surface().Text(at, text, state_.text);
}

BOOL CDC::TextOut(int x, int y, const CString& text) {
  return ExtTextOut(x, y, 0, nullptr, text, nullptr);
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, int* /*always_null*/) {
  if (rect != nullptr && (options & ETO_OPAQUE) != 0) Surface().Fill(Device(rect), state_.back);
  const bool clipped = rect != nullptr && (options & ETO_CLIPPED) != 0;
  if (clipped) SaveDC();
  if (clipped) IntersectClipRect(rect);
  CPoint at = Device(CPoint(x, y));
  const CSize size(Surface().Extent(text.View()));
  const TEXTMETRIC metrics = Surface().Metrics();
  if ((state_.align & TA_CENTER) == TA_CENTER)
    at.x -= size.cx / 2;
  else if ((state_.align & TA_RIGHT) != 0)
    at.x -= size.cx;
  if ((state_.align & TA_BASELINE) == TA_BASELINE)
    at.y -= metrics.tmAscent;
  else if ((state_.align & TA_BOTTOM) != 0)
    at.y -= metrics.tmHeight;
  PutLine(at, text.View());
  if (clipped) RestoreDC(-1);
  return TRUE;
}

int CDC::DrawText(const CString& text, const CRect& rect, UINT flags) {
  CRect copy(rect);
  return DrawText(text, static_cast<LPRECT>(copy), flags);
}

int CDC::DrawText(const CString& text, LPRECT rect, UINT flags) {
  const CRect box = Device(rect);
  const lorv::PlacedText placed = lorv::LayOutText(Surface(), text.View(), box, flags);
  const CRect bounds(placed.bounds);
  if ((flags & DT_CALCRECT) != 0) {
    rect->right = rect->left + bounds.Width();
    rect->bottom = rect->top + bounds.Height();
    return bounds.Height();
  }
  const bool clipped = (flags & DT_NOCLIP) == 0;
  if (clipped) SaveDC();
  if (clipped) IntersectClipRect(rect);
  for (const lorv::PlacedLine& line : placed.lines) {
    PutLine(line.at, line.text.View());
    if (line.mark < 0) continue;
    const TEXTMETRIC metrics = Surface().Metrics();
    const auto before = line.text.View().substr(0, static_cast<std::size_t>(line.mark));
    const auto marked = line.text.View().substr(static_cast<std::size_t>(line.mark), 1);
    const int x = line.at.x + Surface().Extent(before).cx;
    const int y = line.at.y + metrics.tmAscent + 1;
    Surface().Fill(CRect(x, y, x + Surface().Extent(marked).cx, y + 1), state_.text);
  }
  if (clipped) RestoreDC(-1);
  return bounds.bottom - box.top;
}

CSize CDC::GetTextExtent(const CString& text) const {
  return CSize(Surface().Extent(text.View()));
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* metrics) const {
  if (metrics == nullptr) return FALSE;
  *metrics = Surface().Metrics();
  return surface_ != nullptr;
}
