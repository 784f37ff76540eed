#include <QCoreApplication>
#include <QThread>
#include <algorithm>
#include <cmath>
#include <cstring>

#include "platform/qt/desktop/qt_text.h"
#include "platform/qt/drawing/qt_ground.h"

// The picture behind a window, in memory. Any thread may draw on it under its lock; the thread of the windows
// shows it. The painter stays open between calls of that thread. The picture is made at the first drawing
// only: controls that paint themselves never need one.

namespace lorv {
namespace {

// The painter's font belongs to the thread that set it, so that of a thread that may end is not kept.
bool InWindowsThread() {
  const auto* const application = QCoreApplication::instance();
  return application != nullptr && application->thread() == QThread::currentThread();
}

bool Whole(double value) {
  return value == std::floor(value);
}

}  // namespace

QtSurface::QtSurface(SIZE size, std::function<void()> changed, double ratio)
    : size_(std::max(size.cx, 0), std::max(size.cy, 0)), ratio_(ratio), changed_(std::move(changed)) {}

QtSurface::~QtSurface() {
  EndPainter();
}

void QtSurface::EndPainter() {
  if (painter_.isActive()) painter_.end();
  setting_ = Setting();
}

void QtSurface::Resize(SIZE size, double ratio) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const CSize fresh(std::max(size.cx, 0), std::max(size.cy, 0));
  if (fresh == size_ && ratio == ratio_) return;
  // The picture is about to be replaced beneath the painter.
  EndPainter();
  size_ = fresh;
  ratio_ = ratio;
  if (image_.isNull()) return;
  const QImage before = std::exchange(image_, QImage());
  Provide();
  if (image_.isNull()) return;
  QPainter painter(&image_);
  // What was there stays until the class has painted anew, so that a window that grows does not flash.
  painter.drawImage(QPoint(0, 0), before);
}

void QtSurface::Provide() {
  if (!image_.isNull() || size_.cx == 0 || size_.cy == 0) return;
  const auto device = [this](int length) { return static_cast<int>(std::ceil(length * ratio_)); };
  // Without alpha: what a window shows is opaque.
  image_ = QImage(device(size_.cx), device(size_.cy), QImage::Format_RGB32);
  if (image_.isNull()) return;
  image_.setDevicePixelRatio(ratio_);
  image_.fill(Qt::white);
}

SIZE QtSurface::Size() const {
  const std::lock_guard<std::mutex> lock(mutex_);
  return size_;
}

QPainter* QtSurface::Open(const CRect& part) {
  mutex_.lock();
  const CRect seen = part & CRect(CPoint(0, 0), static_cast<SIZE>(size_));
  if (seen.IsRectEmpty() == 0) Provide();
  if (seen.IsRectEmpty() != 0 || image_.isNull()) {
    mutex_.unlock();
    return nullptr;
  }
  if (!InWindowsThread()) EndPainter();
  if (!painter_.isActive()) painter_.begin(&image_);
  return &painter_;
}

void QtSurface::Close(const CRect& part) {
  if (!InWindowsThread()) EndPainter();
  const bool first = Note(part & CRect(CPoint(0, 0), static_cast<SIZE>(size_)));
  mutex_.unlock();
  // Outside the lock, so that the function called may ask the surface.
  if (first && changed_) changed_();
}

void QtSurface::SetPixels(uchar* bits, const CRect& rect, COLORREF colour) const {
  const auto line = static_cast<std::size_t>(image_.bytesPerLine());
  const auto width = static_cast<std::size_t>(rect.Width());
  uchar* const first =
      bits + static_cast<std::size_t>(rect.top) * line + static_cast<std::size_t>(rect.left) * sizeof(QRgb);
  std::fill_n(reinterpret_cast<QRgb*>(first), width,
              qRgb(GetRValue(colour), GetGValue(colour), GetBValue(colour)));
  uchar* row = first;
  for (int y = rect.top + 1; y < rect.bottom; ++y) std::memcpy(row += line, first, width * sizeof(QRgb));
}

// The painter that is open draws on these very pixels, whoever else holds the picture.
uchar* QtSurface::Bits() {
  return painter_.isActive() ? const_cast<uchar*>(image_.constBits()) : image_.bits();
}

bool QtSurface::SetPixels(std::span<const QtFill> fills, std::span<const CRect> within) {
  bool first = false;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (ratio_ != 1) return false;
    Provide();
    if (image_.isNull()) return true;
    uchar* const bits = Bits();
    const CRect all(CPoint(0, 0), static_cast<SIZE>(size_));
    for (const QtFill& fill : fills)
      for (const CRect& part : within) {
        const CRect seen = fill.rect & part & all;
        if (seen.IsRectEmpty() != 0) continue;
        SetPixels(bits, seen, fill.colour);
        first = Note(seen) || first;
      }
  }
  // Outside the lock, so that whoever is called may ask the surface.
  if (first && changed_) changed_();
  return true;
}

bool QtSurface::PutOnEven(const CRect& area, const PutOver& put) {
  bool first = false;
  {
    const std::lock_guard<std::mutex> lock(mutex_);
    const CRect all(CPoint(0, 0), static_cast<SIZE>(size_));
    if (ratio_ != 1 || area.IsRectEmpty() != 0 || (area & all) != area) return false;
    Provide();
    if (image_.isNull()) return false;
    const auto line = static_cast<std::ptrdiff_t>(image_.bytesPerLine()) / std::ptrdiff_t{sizeof(QRgb)};
    QRgb* const corner = reinterpret_cast<QRgb*>(Bits()) + area.top * line + area.left;
    const auto width = static_cast<std::size_t>(area.Width());
    QRgb other = 0;
    for (std::size_t x = 0; x < width; ++x) other |= corner[x] ^ *corner;
    for (int y = 1; y < area.Height() && other == 0; ++y)
      if (std::memcmp(corner + y * line, corner, width * sizeof(QRgb)) != 0) other = 1;
    if (other != 0) return false;
    put(*corner, corner, line);
    first = Note(area);
  }
  if (first && changed_) changed_();
  return true;
}

// Whether it is the first of a series to be reported.
bool QtSurface::Note(const CRect& part) {
  if (!changed_) return false;
  const bool first = changed_part_.IsEmpty();
  if (!first && changed_part_.Covers(part)) return false;
  changed_part_.Add(part);
  // Many small parts cost more to keep apart than to show at once.
  if (changed_part_.Rects().size() > kMaxDirtyRects) changed_part_ = Region(changed_part_.Bounds());
  return first;
}

void QtSurface::Leave(std::uint64_t canvas) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (setting_.canvas == canvas) EndPainter();
}

QRect QtSurface::Device(const CRect& rect) const {
  const auto device = [this](int at) { return static_cast<int>(std::lround(at * ratio_)); };
  return QRect(QPoint(device(rect.left), device(rect.top)),
               QPoint(device(rect.right) - 1, device(rect.bottom) - 1));
}

void QtSurface::Show(QPainter& screen, QPoint at, const QRect& part) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const QRect seen = part & QRect(at, QSize(size_.cx, size_.cy));
  if (image_.isNull() || seen.isEmpty()) {
    screen.fillRect(seen, Qt::white);
    return;
  }
  EndPainter();
  screen.drawImage(seen, image_, Device(FromQt(seen.translated(-at))));
}

QImage QtSurface::Part(const CRect& rect) const {
  const std::lock_guard<std::mutex> lock(mutex_);
  const QRect part = Device(rect);
  QImage copy;
  if (image_.isNull()) {
    copy = QImage(part.size(), QImage::Format_RGB32);
    copy.fill(Qt::white);
  } else {
    copy = image_.copy(part);
  }
  copy.setDevicePixelRatio(ratio_);
  return copy;
}

bool QtSurface::Shift(const CRect& to_where, SIZE by) {
  const std::lock_guard<std::mutex> lock(mutex_);
  const CRect all(CPoint(0, 0), static_cast<SIZE>(size_));
  const CRect target = to_where & all & (all + by);
  // Between pixels nothing can be moved: the caller has all of it painted again.
  if (!Whole(by.cx * ratio_) || !Whole(by.cy * ratio_)) return false;
  if (image_.isNull() || target.IsRectEmpty() != 0) return true;
  EndPainter();
  const QRect to = Device(target);
  const QRect from = to.translated(-static_cast<int>(by.cx * ratio_), -static_cast<int>(by.cy * ratio_));
  const auto bytes = static_cast<std::size_t>(to.width()) * sizeof(DWORD);
  uchar* const bits = image_.bits();
  const auto at = [&](const QRect& rect, int row) {
    return bits + (rect.top() + row) * image_.bytesPerLine() +
           rect.left() * static_cast<qsizetype>(sizeof(DWORD));
  };
  for (int i = 0; i < to.height(); ++i) {
    // Downwards from the bottom, so that no row is overwritten before it was moved.
    const int row = by.cy > 0 ? to.height() - 1 - i : i;
    std::memmove(at(to, row), at(from, row), bytes);
  }
  Note(target);
  return true;
}

void QtSurface::Mark(const Region& parts) {
  const std::lock_guard<std::mutex> lock(mutex_);
  changed_part_.Add(parts);
}

Region QtSurface::TakeChanged() {
  const std::lock_guard<std::mutex> lock(mutex_);
  return std::exchange(changed_part_, Region());
}

}  // namespace lorv
