#include <algorithm>

#include "framework/drawing/device_context.h"
#include "framework/drawing/text_layout.h"
#include "framework/ports/desktop_port.h"

// Shapes and texts of a device context, in terms of the few operations of a canvas. Alignment, lines,
// ellipses and the marks of letters are settled here from extents alone, so a text stands at the same place
// on every peer but for the width of its font.

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
  // The corners at the right top and left bottom belong to the second colour, as its strips are drawn last.
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
  // The corners belong to the rows alone: a pixel inverted twice would be missing from the frame.
  Surface().Invert(CRect(box.left, box.top, box.right, box.top + 1));
  Surface().Invert(CRect(box.left, box.bottom - 1, box.right, box.bottom));
  Surface().Invert(CRect(box.left, box.top + 1, box.left + 1, box.bottom - 1));
  Surface().Invert(CRect(box.right - 1, box.top + 1, box.right, box.bottom - 1));
}

CPoint CDC::MoveTo(int x, int y) {
  return std::exchange(state_.pen_at, CPoint(x, y));
}

BOOL CDC::LineTo(int x, int y) {
  // The pen moves with a null pen, too: the next line begins here.
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

void CDC::PutLine(CPoint at, lorv::TextView text, const CRect* within) {
  lorv::Canvas& surface = Surface();
  if (state_.back_mode == OPAQUE) {
    const CRect box(at, surface.Extent(text));
    // The box behind a text is clipped with it, or it would cover what stands beside the cell.
    Background(within == nullptr ? box : box & *within);
  }
  if (within == nullptr) {
    surface.Text(at, text, state_.text);
  } else {
    surface.ClippedText(at, text, state_.text, *within);
  }
}

BOOL CDC::TextOut(int x, int y, const CString& text) {
  return ExtTextOut(x, y, 0, nullptr, text, nullptr);
}

BOOL CDC::ExtTextOut(int x, int y, UINT options, LPCRECT rect, const CString& text, int* /*always_null*/) {
  lorv::Canvas& surface = Surface();
  const CRect box = rect == nullptr ? CRect() : Device(rect);
  if (rect != nullptr && (options & ETO_OPAQUE) != 0) surface.Fill(box, state_.back);
  const bool clipped = rect != nullptr && (options & ETO_CLIPPED) != 0;
  CPoint at = Device(CPoint(x, y));
  // TA_CENTER holds the bits of TA_RIGHT and TA_BASELINE those of TA_BOTTOM, so each pair is masked before it
  // is compared.
  const UINT across = state_.align & TA_CENTER;
  if (across != TA_LEFT) {
    const LONG width = surface.Extent(text.View()).cx;
    at.x -= across == TA_CENTER ? width / 2 : width;
  }
  const UINT down = state_.align & TA_BASELINE;
  if (down != TA_TOP) {
    const TEXTMETRIC metrics = surface.Metrics();
    at.y -= down == TA_BASELINE ? metrics.tmAscent : metrics.tmHeight;
  }
  PutLine(at, text.View(), clipped ? &box : nullptr);
  return TRUE;
}

int CDC::DrawText(const CString& text, const CRect& rect, UINT flags) {
  CRect copy(rect);
  return DrawText(text, static_cast<LPRECT>(copy), flags);
}

bool CDC::IsPlain(lorv::TextView text, UINT flags) {
  // Cells are nearly always one plain line, which needs none of the layout's copies of texts.
  constexpr UINT kNeedLayout = DT_CALCRECT | DT_EXPANDTABS | DT_EXTERNALLEADING;
  if ((flags & DT_SINGLELINE) == 0 || (flags & kNeedLayout) != 0) return false;
  return (flags & DT_NOPREFIX) != 0 || text.find(_T('&')) == lorv::TextView::npos;
}

int CDC::PutPlain(lorv::TextView text, const CRect& box, CSize size, UINT flags) {
  CPoint at = box.TopLeft();
  if ((flags & DT_CENTER) != 0) at.x += (box.Width() - size.cx) / 2;
  if ((flags & DT_RIGHT) != 0) at.x = box.right - size.cx;
  if ((flags & DT_BOTTOM) != 0) at.y = box.bottom - size.cy;
  if ((flags & DT_VCENTER) != 0) at.y = box.top + (box.Height() - size.cy) / 2;
  PutLine(at, text, (flags & DT_NOCLIP) != 0 ? nullptr : &box);
  return at.y + size.cy - box.top;
}

int CDC::DrawText(const CString& text, LPRECT rect, UINT flags) {
  lorv::Canvas& surface = Surface();
  const CRect box = Device(rect);
  if (IsPlain(text.View(), flags)) {
    const CSize size(surface.Extent(text.View()));
    const bool shortens = (flags & (DT_END_ELLIPSIS | DT_WORD_ELLIPSIS | DT_PATH_ELLIPSIS)) != 0;
    // What fits needs no ellipsis, so only texts that are too long pay for the layout.
    if (!shortens || size.cx <= box.Width()) return PutPlain(text.View(), box, size, flags);
  }
  const lorv::PlacedText placed = lorv::LayOutText(surface, text.View(), box, flags);
  const CRect bounds(placed.bounds);
  if ((flags & DT_CALCRECT) != 0) {
    rect->right = rect->left + bounds.Width();
    rect->bottom = rect->top + bounds.Height();
    return bounds.Height();
  }
  const CRect* const within = (flags & DT_NOCLIP) != 0 ? nullptr : &box;
  for (const lorv::PlacedLine& line : placed.lines) {
    PutLine(line.at, line.text.View(), within);
    if (line.mark >= 0) PutMark(line, within);
  }
  return bounds.bottom - box.top;
}

void CDC::PutMark(const lorv::PlacedLine& line, const CRect* within) {
  lorv::Canvas& surface = Surface();
  const auto before = line.text.View().substr(0, static_cast<std::size_t>(line.mark));
  const auto marked = line.text.View().substr(static_cast<std::size_t>(line.mark), 1);
  const int x = line.at.x + surface.Extent(before).cx;
  const int y = line.at.y + surface.Metrics().tmAscent + 1;
  // Extents of the whole beginning, not of single letters: a kerned font sets them closer.
  const CRect mark(x, y, x + surface.Extent(marked).cx, y + 1);
  surface.Fill(within == nullptr ? mark : mark & *within, state_.text);
}

CSize CDC::GetTextExtent(const CString& text) const {
  return CSize(Surface().Extent(text.View()));
}

BOOL CDC::GetTextMetrics(TEXTMETRIC* metrics) const {
  if (metrics == nullptr) return FALSE;
  *metrics = Surface().Metrics();
  return surface_ != nullptr;
}
