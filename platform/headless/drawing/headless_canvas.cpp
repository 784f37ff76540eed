#include "platform/headless/drawing/headless_canvas.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "framework/drawing/line_runs.h"

// Drawing in memory, with pixels that a test can read and a list of what was drawn. Texts are in the list and
// not in the pixels: fixed widths stand for a font, so layouts are the same on every machine.

namespace lorv {
namespace {

constexpr DWORD kOpaque = 0xFF000000;
// Where the blocks of Chinese characters begin, with their radicals; all behind count as wide.
constexpr TCHAR kFirstWide = 0x2E80;

DWORD PixelOf(COLORREF colour) {
  return kOpaque | (static_cast<DWORD>(GetRValue(colour)) << 16U) |
         (static_cast<DWORD>(GetGValue(colour)) << 8U) | GetBValue(colour);
}

// Places may be anywhere in 32 bits, their distances and products are not.
std::int64_t Far(LONG from, LONG to) {
  return static_cast<std::int64_t>(to) - from;
}

int Between(int first, int last, std::int64_t at, std::int64_t length) {
  return length <= 1 ? first : static_cast<int>(first + (last - first) * at / (length - 1));
}

DWORD Share(DWORD part, DWORD of_255) {
  return (part * of_255 + 127) / 255;
}

// Both shares are rounded by themselves, as painters do that keep pictures multiplied by their alpha: so all
// desktops show the same pixels.
DWORD Blend(DWORD below, DWORD above) {
  const DWORD alpha = above >> 24U;
  DWORD mixed = kOpaque;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const DWORD a = (above >> shift) & 0xFFU;
    const DWORD b = (below >> shift) & 0xFFU;
    mixed |= (Share(a, alpha) + Share(b, 255 - alpha)) << shift;
  }
  return mixed;
}

// Whether a pixel's middle lies inside, by the even-odd rule.
bool Inside(const std::vector<POINT>& corners, int x, int y) {
  bool inside = false;
  for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
    const POINT a = corners[i];
    const POINT b = corners[j];
    // Half open, so that a corner between two edges is counted once.
    if ((a.y > y) == (b.y > y)) continue;
    const double cross = a.x + static_cast<double>(Far(a.x, b.x)) * static_cast<double>(Far(a.y, y)) /
                                   static_cast<double>(Far(a.y, b.y));
    if (x < cross) inside = !inside;
  }
  return inside;
}

CRect BoundsOf(const std::vector<POINT>& corners) {
  CRect bounds(corners.front(), CSize(1, 1));
  for (const POINT& corner : corners) bounds |= CRect(corner, CSize(1, 1));
  return bounds;
}

}  // namespace

SIZE HeadlessExtent(TextView text) {
  int width = 0;
  for (const TCHAR unit : text) {
    // Two halves of 7 are the 14 of a wide character.
    const bool half = unit >= 0xD800 && unit <= 0xDFFF;
    width += unit >= kFirstWide && !half ? kHeadlessWide : kHeadlessNarrow;
  }
  return {width, kHeadlessHeight};
}

void HeadlessSurface::Resize(SIZE size) {
  const std::lock_guard<std::mutex> lock(mutex_);
  size_ = CSize(std::max<LONG>(size.cx, 0), std::max<LONG>(size.cy, 0));
  pixels_.assign(static_cast<std::size_t>(size_.cx) * static_cast<std::size_t>(size_.cy), 0xFFFFFFFF);
  list_.Resize(size_);
}

SIZE HeadlessSurface::Size() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return size_;
}

std::vector<Drawn> HeadlessSurface::List() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return list_.List();
}

std::size_t HeadlessSurface::Count() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return list_.Count();
}

std::vector<DWORD> HeadlessSurface::Pixels(const CRect& rect) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::vector<DWORD> taken;
  for (int y = rect.top; y < rect.bottom; ++y)
    for (int x = rect.left; x < rect.right; ++x)
      // Outside the surface there is no pixel: 0, which is not even opaque.
      taken.push_back(x < 0 || y < 0 || x >= size_.cx || y >= size_.cy ? 0 : pixels_[Index(x, y)]);
  return taken;
}

void HeadlessSurface::Add(Drawn drawn, Region seen, bool covers) {
  const std::lock_guard<std::mutex> lock(mutex_);
  list_.Add(std::move(drawn), std::move(seen), covers);
}

void HeadlessSurface::Paint(const CRect& rect, COLORREF colour) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const CRect area = rect & CRect(CPoint(0, 0), static_cast<SIZE>(size_));
  for (int y = area.top; y < area.bottom; ++y)
    std::fill_n(&At(area.left, y), static_cast<std::size_t>(area.Width()), PixelOf(colour));
}

void HeadlessSurface::CopyFrom(const HeadlessSurface& source, const CRect& from, CPoint to) {
  // All of it is read before anything is written: source and target may be one surface.
  const std::vector<DWORD> pixels = source.Pixels(from);
  const CSize by = to - from.TopLeft();
  std::vector<DrawnList::Entry> entries;
  {
    const std::lock_guard<std::mutex> lock(source.mutex_);
    entries = source.list_.Cut(from, by);
  }
  const CRect target = from + by;
  const auto width = static_cast<std::size_t>(std::max(from.Width(), 0));
  Change(target, [&](DWORD& at, int x, int y) {
    at = pixels[static_cast<std::size_t>(y - target.top) * width + static_cast<std::size_t>(x - target.left)];
  });
  const std::lock_guard<std::mutex> lock(mutex_);
  list_.Put(std::move(entries), target);
}

HeadlessCanvas::HeadlessCanvas(std::shared_ptr<HeadlessSurface> surface, Region limit)
    : surface_(std::move(surface)), limit_(std::move(limit)), clip_(limit_) {}

Region HeadlessCanvas::Open(const CRect& rect) const {
  Region open = clip_;
  open.Keep(rect & CRect(CPoint(0, 0), surface_->Size()));
  return open;
}

void HeadlessCanvas::Note(Drawn::Kind kind, const CRect& rect, COLORREF colour, TextView text, bool covers) {
  Region seen = Open(rect);
  const CRect bounds = seen.Bounds();
  if (!seen.IsEmpty()) surface_->Add({kind, bounds, colour, CString(text), bold_}, std::move(seen), covers);
}

void HeadlessCanvas::Fill(const RECT& rect, COLORREF colour) {
  Note(Drawn::Kind::Fill, rect, colour, {}, true);
  for (const CRect& part : Parts(rect)) surface_->Paint(part, colour);
}

void HeadlessCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  Note(Drawn::Kind::Gradient, rect, first, {}, true);
  const CRect box(rect);
  Change(box, [&](DWORD& pixel, int x, int y) {
    const std::int64_t at = downwards ? Far(box.top, y) : Far(box.left, x);
    const std::int64_t length = downwards ? Far(box.top, box.bottom) : Far(box.left, box.right);
    pixel = PixelOf(RGB(static_cast<BYTE>(Between(GetRValue(first), GetRValue(last), at, length)),
                        static_cast<BYTE>(Between(GetGValue(first), GetGValue(last), at, length)),
                        static_cast<BYTE>(Between(GetBValue(first), GetBValue(last), at, length))));
  });
}

void HeadlessCanvas::Frame(const RECT& rect, COLORREF colour, int width) {
  if (width <= 0) return;
  Note(Drawn::Kind::Frame, rect, colour);
  const CRect box(rect);
  CRect inner(box);
  inner.DeflateRect(width, width);
  const DWORD pixel = PixelOf(colour);
  Change(box, [&](DWORD& at, int x, int y) {
    if (inner.PtInRect(CPoint(x, y)) == 0) at = pixel;
  });
}

void HeadlessCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  const auto runs = LineRuns(from, to, stroke, clip_.Bounds() & CRect(CPoint(0, 0), surface_->Size()));
  CRect bounds;
  for (const CRect& run : runs) bounds |= run;
  // A straight one is one rectangle, which hides what is below.
  if (!runs.empty()) Note(Drawn::Kind::Line, bounds, stroke.colour, {}, runs.size() == 1);
  for (const CRect& run : runs)
    for (const CRect& part : Parts(run)) surface_->Paint(part, stroke.colour);
}

void HeadlessCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  if (corners.size() < 2) return;
  const CRect bounds = BoundsOf(corners);
  if (inside != nullptr) {
    Note(Drawn::Kind::Polygon, bounds, *inside);
    const DWORD pixel = PixelOf(*inside);
    Change(bounds, [&](DWORD& at, int x, int y) {
      if (Inside(corners, x, y)) at = pixel;
    });
  }
  if (edge == nullptr) return;
  for (std::size_t i = 0; i < corners.size(); ++i) Line(corners[i], corners[(i + 1) % corners.size()], *edge);
}

void HeadlessCanvas::Invert(const RECT& rect) {
  Note(Drawn::Kind::Invert, rect, 0);
  Change(rect, [](DWORD& at, int, int) { at ^= 0x00FFFFFFU; });
}

TEXTMETRIC HeadlessCanvas::Metrics() const {
  TEXTMETRIC metrics = {};
  metrics.tmHeight = kHeadlessHeight;
  metrics.tmAscent = 13;
  metrics.tmDescent = kHeadlessHeight - 13;
  metrics.tmAveCharWidth = kHeadlessNarrow;
  metrics.tmMaxCharWidth = kHeadlessWide;
  metrics.tmWeight = bold_ ? FW_BOLD : FW_NORMAL;
  return metrics;
}

void HeadlessCanvas::Text(POINT at, TextView text, COLORREF colour) {
  Note(Drawn::Kind::Text, CRect(at, HeadlessExtent(text)), colour, text);
}

void HeadlessCanvas::ClippedText(POINT at, TextView text, COLORREF colour, const RECT& within) {
  Note(Drawn::Kind::Text, CRect(at, HeadlessExtent(text)) & within, colour, text);
}

void HeadlessCanvas::SetClip(const RECT* clip) {
  clip_ = limit_;
  if (clip != nullptr) clip_.Keep(*clip);
}

bool HeadlessCanvas::Shows(const RECT& rect) const {
  return !Open(rect).IsEmpty();
}

void HeadlessCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const auto* const source = dynamic_cast<HeadlessCanvas*>(&from);
  if (source == nullptr) return;
  const CSize by = CRect(to).TopLeft() - CPoint(from_at);
  // What lies outside the source is left as it is in the target.
  const CRect there = CRect(CPoint(0, 0), source->Size()) + by;
  for (const CRect& part : Parts(CRect(to) & there))
    surface_->CopyFrom(*source->surface_, part - by, part.TopLeft());
}

void HeadlessCanvas::Image(const PixelImage& image, const RECT& to) {
  const CRect box(to);
  if (image.pixels == nullptr || image.width <= 0 || image.height <= 0 || box.IsRectEmpty() != 0) return;
  Note(Drawn::Kind::Image, box, 0);
  Change(box, [&](DWORD& at, int x, int y) {
    const std::int64_t from_x = Far(box.left, x) * image.width / Far(box.left, box.right);
    const std::int64_t from_y = Far(box.top, y) * image.height / Far(box.top, box.bottom);
    at = Blend(at, image.pixels[from_y * image.width + from_x]);
  });
}

}  // namespace lorv
