#include "platform/headless/drawing/headless_canvas.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace lorv {
namespace {

constexpr DWORD kOpaque = 0xFF000000;
constexpr TCHAR kFirstWide = 0x2E80;

DWORD PixelOf(COLORREF colour) {
  return kOpaque | (static_cast<DWORD>(GetRValue(colour)) << 16U) |
         (static_cast<DWORD>(GetGValue(colour)) << 8U) | GetBValue(colour);
}

bool Covers(const CRect& outer, const CRect& inner) {
  return (outer & inner) == inner;
}

// Places may be anywhere in 32 bits, their distances and products are not.
std::int64_t Far(LONG from, LONG to) {
  return static_cast<std::int64_t>(to) - from;
}

int Between(int first, int last, std::int64_t at, std::int64_t length) {
  return length <= 1 ? first : static_cast<int>(first + (last - first) * at / (length - 1));
}

// The pixels of a line, the last one left out; the longer way has one of them a step.
class LineSteps {
 public:
  LineSteps(POINT from, POINT to)
      : from_(from),
        by_x_(Far(from.x, to.x)),
        by_y_(Far(from.y, to.y)),
        count_(std::max(std::abs(by_x_), std::abs(by_y_))) {}

  std::int64_t Count() const { return count_; }
  CPoint At(std::int64_t step) const {
    return {static_cast<int>(from_.x + Part(by_x_, step)), static_cast<int>(from_.y + Part(by_y_, step))};
  }
  // The steps that can touch the area, so that a line far out of it costs no time.
  std::pair<std::int64_t, std::int64_t> Within(const CRect& area, int width) const {
    const bool flat = std::abs(by_x_) == count_;
    const std::int64_t low = Far(flat ? from_.x : from_.y, flat ? area.left : area.top) - width + 1;
    const std::int64_t high = Far(flat ? from_.x : from_.y, flat ? area.right : area.bottom) - 1;
    const bool onwards = (flat ? by_x_ : by_y_) > 0;
    return {std::max<std::int64_t>(onwards ? low : -high, 0), std::min(onwards ? high : -low, count_ - 1)};
  }

 private:
  // The product of the longest line would leave 64 bits.
  std::int64_t Part(std::int64_t by, std::int64_t step) const {
    return static_cast<std::int64_t>(static_cast<double>(by) * static_cast<double>(step) /
                                     static_cast<double>(count_));
  }

  CPoint from_;
  std::int64_t by_x_;
  std::int64_t by_y_;
  std::int64_t count_;
};

DWORD Blend(DWORD below, DWORD above) {
  const DWORD alpha = above >> 24U;
  DWORD mixed = kOpaque;
  for (unsigned shift = 0; shift < 24; shift += 8) {
    const DWORD a = (above >> shift) & 0xFFU;
    const DWORD b = (below >> shift) & 0xFFU;
    mixed |= ((a * alpha + b * (255 - alpha) + 127) / 255) << shift;
  }
  return mixed;
}

// Whether a pixel's middle lies inside, by the even-odd rule.
bool Inside(const std::vector<POINT>& corners, int x, int y) {
  bool inside = false;
  for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
    const POINT a = corners[i];
    const POINT b = corners[j];
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
    const bool half = unit >= 0xD800 && unit <= 0xDFFF;
    width += unit >= kFirstWide && !half ? kHeadlessWide : kHeadlessNarrow;
  }
  return {width, kHeadlessHeight};
}

void HeadlessSurface::Resize(SIZE size) {
  const std::lock_guard<std::mutex> lock(mutex_);
  size_ = CSize(std::max<LONG>(size.cx, 0), std::max<LONG>(size.cy, 0));
  pixels_.assign(static_cast<std::size_t>(size_.cx) * static_cast<std::size_t>(size_.cy), 0xFFFFFFFF);
  list_.clear();
}

SIZE HeadlessSurface::Size() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return size_;
}

std::vector<Drawn> HeadlessSurface::List() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return list_;
}

std::vector<DWORD> HeadlessSurface::Pixels(const CRect& rect) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  std::vector<DWORD> taken;
  for (int y = rect.top; y < rect.bottom; ++y)
    for (int x = rect.left; x < rect.right; ++x)
      taken.push_back(x < 0 || y < 0 || x >= size_.cx || y >= size_.cy ? 0 : pixels_[Index(x, y)]);
  return taken;
}

void HeadlessSurface::Add(Drawn drawn) {
  const std::lock_guard<std::mutex> lock(mutex_);
  using Kind = Drawn::Kind;
  if (drawn.kind == Kind::Invert) {
    const auto twin = std::find_if(list_.begin(), list_.end(), [&](const Drawn& known) {
      return known.kind == Kind::Invert && known.bounds == drawn.bounds;
    });
    if (twin != list_.end()) {
      list_.erase(twin);
      return;
    }
  }
  const bool covers = drawn.kind == Kind::Fill || drawn.kind == Kind::Gradient;
  if (covers) std::erase_if(list_, [&](const Drawn& known) { return Covers(drawn.bounds, known.bounds); });
  list_.push_back(std::move(drawn));
}

void HeadlessSurface::Paint(const CRect& rect, COLORREF colour) {
  const DWORD pixel = PixelOf(colour);
  Change(rect, [pixel](DWORD& at, int, int) { at = pixel; });
}

void HeadlessSurface::CopyFrom(const HeadlessSurface& source, const CRect& from, CPoint to) {
  const std::vector<DWORD> pixels = source.Pixels(from);
  const std::vector<Drawn> list = source.List();
  const CSize by = to - from.TopLeft();
  const CRect target = from + by;
  const auto width = static_cast<std::size_t>(std::max(from.Width(), 0));
  Change(target, [&](DWORD& at, int x, int y) {
    at = pixels[static_cast<std::size_t>(y - target.top) * width + static_cast<std::size_t>(x - target.left)];
  });
  const std::lock_guard<std::mutex> lock(mutex_);
  std::erase_if(list_, [&](const Drawn& known) { return Covers(target, known.bounds); });
  for (Drawn drawn : list) {
    drawn.bounds = (drawn.bounds & from) + by;
    if (drawn.bounds.IsRectEmpty() == 0) list_.push_back(std::move(drawn));
  }
}

HeadlessCanvas::HeadlessCanvas(std::shared_ptr<HeadlessSurface> surface, const CRect& limit)
    : surface_(std::move(surface)), limit_(limit), clip_(limit) {}

void HeadlessCanvas::Note(Drawn::Kind kind, const CRect& rect, COLORREF colour, TextView text) {
  const CRect bounds = rect & clip_ & CRect(CPoint(0, 0), surface_->Size());
  if (bounds.IsRectEmpty() == 0) surface_->Add({kind, bounds, colour, CString(text), bold_});
}

void HeadlessCanvas::Fill(const RECT& rect, COLORREF colour) {
  Note(Drawn::Kind::Fill, rect, colour);
  surface_->Paint(CRect(rect) & clip_, colour);
}

void HeadlessCanvas::Gradient(const RECT& rect, COLORREF first, COLORREF last, bool downwards) {
  Note(Drawn::Kind::Gradient, rect, first);
  const CRect box(rect);
  surface_->Change(box & clip_, [&](DWORD& pixel, int x, int y) {
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
  surface_->Change(box & clip_, [&](DWORD& at, int x, int y) {
    if (inner.PtInRect(CPoint(x, y)) == 0) at = pixel;
  });
}

void HeadlessCanvas::Line(POINT from, POINT to, const Stroke& stroke) {
  if (stroke.style == PS_NULL) return;
  const LineSteps steps(from, to);
  if (steps.Count() == 0) return;
  const CSize square(stroke.width, stroke.width);
  Note(Drawn::Kind::Line, CRect(from, square) | CRect(steps.At(steps.Count() - 1), square), stroke.colour);
  const CRect area = clip_ & CRect(CPoint(0, 0), surface_->Size());
  const auto [first, last] = steps.Within(area, stroke.width);
  for (std::int64_t i = first; i <= last; ++i) {
    if (stroke.style == PS_DOT && i % 2 != 0) continue;
    surface_->Paint(CRect(steps.At(i), square) & area, stroke.colour);
  }
}

void HeadlessCanvas::Polygon(const std::vector<POINT>& corners, const Stroke* edge, const COLORREF* inside) {
  if (corners.size() < 2) return;
  const CRect bounds = BoundsOf(corners);
  if (inside != nullptr) {
    Note(Drawn::Kind::Polygon, bounds, *inside);
    const DWORD pixel = PixelOf(*inside);
    surface_->Change(bounds & clip_, [&](DWORD& at, int x, int y) {
      if (Inside(corners, x, y)) at = pixel;
    });
  }
  if (edge == nullptr) return;
  for (std::size_t i = 0; i < corners.size(); ++i) Line(corners[i], corners[(i + 1) % corners.size()], *edge);
}

void HeadlessCanvas::Invert(const RECT& rect) {
  Note(Drawn::Kind::Invert, rect, 0);
  surface_->Change(CRect(rect) & clip_, [](DWORD& at, int, int) { at ^= 0x00FFFFFFU; });
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

void HeadlessCanvas::SetClip(const RECT* clip) {
  clip_ = clip == nullptr ? limit_ : limit_ & *clip;
}

void HeadlessCanvas::Copy(const RECT& to, Canvas& from, POINT from_at) {
  const auto* const source = dynamic_cast<HeadlessCanvas*>(&from);
  if (source == nullptr) return;
  const CSize by = CRect(to).TopLeft() - CPoint(from_at);
  // What lies outside the source is left as it is in the target.
  const CRect there = CRect(CPoint(0, 0), source->Size()) + by;
  const CRect target = CRect(to) & clip_ & CRect(CPoint(0, 0), surface_->Size()) & there;
  if (target.IsRectEmpty() != 0) return;
  surface_->CopyFrom(*source->surface_, target - by, target.TopLeft());
}

void HeadlessCanvas::Image(const PixelImage& image, const RECT& to) {
  const CRect box(to);
  if (image.pixels == nullptr || image.width <= 0 || image.height <= 0 || box.IsRectEmpty() != 0) return;
  Note(Drawn::Kind::Image, box, 0);
  surface_->Change(box & clip_, [&](DWORD& at, int x, int y) {
    const std::int64_t from_x = Far(box.left, x) * image.width / Far(box.left, box.right);
    const std::int64_t from_y = Far(box.top, y) * image.height / Far(box.top, box.bottom);
    at = Blend(at, image.pixels[from_y * image.width + from_x]);
  });
}

}  // namespace lorv
