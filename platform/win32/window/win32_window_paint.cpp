#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/models/window/paint_state.h"
#include "platform/win32/drawing/gdi_canvas.h"
#include "platform/win32/drawing/thread_owned.h"
#include "platform/win32/window/win32_window.h"

// What a window is drawn on.

namespace lorv {
namespace {

using WindowRef = std::shared_ptr<const Win32Window>;

// The client area itself. Nothing of it is asked of the system when the window is gone: its handle may be
// another window's by then.
class WindowTarget : public GdiTarget {
 public:
  WindowTarget(WindowRef window, HWND handle)
      : window_(std::move(window)),
        handle_(handle),
        context_(window_->Exists() ? GetDCEx(handle, nullptr, DCX_CACHE | DCX_CLIPCHILDREN | DCX_CLIPSIBLINGS)
                                   : nullptr) {}
  ~WindowTarget() override {
    if (context_ != nullptr) ReleaseDC(handle_, context_);
  }

  HDC Context() override { return window_->Exists() ? context_ : nullptr; }
  SIZE Size() const override { return CRect(window_->ClientRect()).Size(); }
  int Dpi() override { return window_->Dpi(); }

 private:
  WindowRef window_;
  HWND handle_;
  HDC context_;
};

// Memory for painting, which is had again and again: making it takes as long as half a page.
class PaintMemory {
 public:
  // The largest that is kept for the next painting.
  static constexpr LONG kKeptPixels = 1 << 23;

  static std::unique_ptr<GdiMemory> Take(SIZE size, POINT corner) {
    auto& kept = Kept();
    if (kept == nullptr || kept->Size().cx < size.cx || kept->Size().cy < size.cy)
      return std::make_unique<GdiMemory>(size, corner);
    kept->SetCorner(corner);
    return std::move(kept);
  }
  static void Keep(std::unique_ptr<GdiMemory> memory) {
    const SIZE size = memory->Size();
    if (size.cy > 0 && size.cx <= kKeptPixels / size.cy) Kept() = std::move(memory);
  }

 private:
  static std::unique_ptr<GdiMemory>& Kept() {
    static const auto& owned = *new ThreadOwned<std::unique_ptr<GdiMemory>>;
    return owned.Here();
  }
};

// A region of the system's.
class GdiRegion {
 public:
  GdiRegion() : handle_(CreateRectRgn(0, 0, 0, 0)) {}
  GdiRegion(const GdiRegion&) = delete;
  GdiRegion& operator=(const GdiRegion&) = delete;
  ~GdiRegion() { DeleteObject(handle_); }

  HRGN Handle() const { return handle_; }
  std::vector<CRect> Rects() const {
    // The system writes a head and rectangles into one block, which must lie as its words do.
    std::vector<DWORD> room((GetRegionData(handle_, 0, nullptr) + sizeof(DWORD) - 1) / sizeof(DWORD));
    auto* const data = reinterpret_cast<RGNDATA*>(room.data());
    if (room.empty() || GetRegionData(handle_, static_cast<DWORD>(room.size() * sizeof(DWORD)), data) == 0)
      return {};
    const auto* const rects = reinterpret_cast<const RECT*>(data->Buffer);
    // Within braces the two pointers would each become a rectangle.
    return std::vector<CRect>(rects, rects + data->rdh.nCount);
  }

 private:
  HRGN handle_;
};

// What is out of date, in memory until it is finished: the user never sees half a picture. What was there is
// fetched when it is first needed: mostly the ground is filled before.
class PaintTarget : public GdiTarget {
 public:
  PaintTarget(WindowRef window, HWND handle) : window_(std::move(window)), handle_(handle) {
    GetUpdateRgn(handle_, limit_.Handle(), FALSE);
    Begin();
    const CRect dirty(paint_.rcPaint);
    memory_ = PaintMemory::Take(dirty.Size(), dirty.TopLeft());
    // The memory begins at the corner of what is painted, and regions count in its pixels.
    OffsetRgn(limit_.Handle(), -dirty.left, -dirty.top);
    SelectClipRgn(memory_->Context(), limit_.Handle());
  }
  ~PaintTarget() override {
    SelectClipRgn(memory_->Context(), nullptr);
    if (window_->Exists()) {
      GdiFlush();
      if (drawn_) Carry(paint_.hdc, memory_->Context());
      EndPaint(handle_, &paint_);
    }
    PaintMemory::Keep(std::move(memory_));
  }

  HDC Context() override {
    Fetch();
    return memory_->Context();
  }
  HDC ContextToFill(const RECT& rect) override {
    const CRect dirty(paint_.rcPaint);
    if (!((dirty & rect) == dirty)) Fetch();
    drawn_ = true;
    return memory_->Context();
  }
  HDC ContextToAsk() override { return memory_->Context(); }
  HRGN Limit() const override { return limit_.Handle(); }
  SIZE Size() const override { return CRect(window_->ClientRect()).Size(); }
  int Dpi() override { return window_->Dpi(); }
  const RECT& Dirty() const { return paint_.rcPaint; }

 private:
  // Erasing runs the class; what it throws must not leave the window in painting.
  void Begin() {
    try {
      CarriedFault::CallOut([&] { return BeginPaint(handle_, &paint_); });
    } catch (...) {
      EndPaint(handle_, &paint_);
      throw;
    }
  }

  // What the painter leaves out stays as it was.
  void Fetch() {
    if (std::exchange(drawn_, true)) return;
    Carry(memory_->Context(), paint_.hdc);
  }

  void Carry(HDC to, HDC from) const {
    const CRect dirty(paint_.rcPaint);
    if (dirty.IsRectEmpty() != 0) return;
    BitBlt(to, dirty.left, dirty.top, dirty.Width(), dirty.Height(), from, dirty.left, dirty.top, SRCCOPY);
  }

  WindowRef window_;
  HWND handle_;
  GdiRegion limit_;
  PAINTSTRUCT paint_ = {};
  std::unique_ptr<GdiMemory> memory_;
  bool drawn_ = false;
};

}  // namespace

std::unique_ptr<Canvas> Win32Window::PaintCanvas(RECT& dirty) {
  dirty = {0, 0, 0, 0};
  if (!Exists()) return ClientCanvas();
  auto target = std::make_unique<PaintTarget>(shared_from_this(), handle_);
  dirty = target->Dirty();
  return std::make_unique<GdiCanvas>(std::move(target));
}

std::unique_ptr<Canvas> Win32Window::ClientCanvas() {
  return std::make_unique<GdiCanvas>(std::make_unique<WindowTarget>(shared_from_this(), handle_));
}

void Win32Window::Invalidate(const RECT* rect) {
  if (!Exists()) return;
  if (!redraw_) return held_.Add(rect == nullptr ? CRect(ClientRect()) : CRect(rect));
  InvalidateRect(handle_, rect, TRUE);
}

void Win32Window::Validate(const RECT* rect) {
  if (!Exists()) return;
  ValidateRect(handle_, rect);
  rect == nullptr ? held_.Clear() : held_.Remove(*rect);
}

std::vector<RECT> Win32Window::UpdateRects() const {
  if (!Exists()) return {};
  const Region region = Outdated();
  return {region.Rects().begin(), region.Rects().end()};
}

// What the system knows of, and what waits until redrawing is on again.
Region Win32Window::Outdated() const {
  Region region;
  const GdiRegion now;
  GetUpdateRgn(handle_, now.Handle(), FALSE);
  for (const CRect& rect : now.Rects()) region.Add(rect);
  region.Add(held_);
  return region;
}

// What was out of date moves with the pixels: some systems leave it where it was as well, and it would be
// painted twice.
void Win32Window::Shift(SIZE by, const RECT* area, const RECT* clip, bool children) {
  if (!Exists()) return;
  const auto keep = shared_from_this();
  const CRect client(ClientRect());
  const CRect moved = area == nullptr ? client : client & *area;
  CRect goal = moved + CPoint(by.cx, by.cy);
  goal &= clip == nullptr ? moved : CRect(moved & *clip);
  Region along = Outdated();
  Region covered = along;
  along.Keep(moved), along.Move(by), along.Keep(goal);
  covered.Keep(goal);
  for (const CRect& rect : covered.Rects()) ValidateRect(handle_, &rect);
  const UINT flags = children ? SW_INVALIDATE | SW_ERASE | SW_SCROLLCHILDREN : SW_INVALIDATE | SW_ERASE;
  CarriedFault::CallOut([&] {
    const int scrolled = ScrollWindowEx(handle_, by.cx, by.cy, area, clip, nullptr, nullptr, flags);
    for (const CRect& rect : along.Rects()) Invalidate(&rect);
    return scrolled;
  });
}

// The system forgets what is invalidated meanwhile.
void Win32Window::SetRedraw(bool on) {
  redraw_ = on;
  if (!on || !Exists()) return;
  const Region held = std::exchange(held_, Region());
  for (const CRect& rect : held.Rects()) InvalidateRect(handle_, &rect, TRUE);
}

// A top-level window's own surface holds all that stands in it, seen or covered.
std::vector<DWORD> Win32Window::Picture(SIZE& size) {
  size = {0, 0};
  if (!Exists() || IsWindowVisible(handle_) == 0) return {};
  CarriedFault::CallOut(
      [&] { return RedrawWindow(handle_, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN); });
  if (!Exists()) return {};
  const CSize whole(CRect(WindowRect()).Size());
  GdiMemory memory(whole);
  const HDC window = GetWindowDC(handle_);
  const bool copied = memory.Pixels() != nullptr &&
                      BitBlt(memory.Context(), 0, 0, whole.cx, whole.cy, window, 0, 0, SRCCOPY) != 0;
  ReleaseDC(handle_, window);
  if (!copied) return {};
  GdiFlush();
  size = whole;
  std::vector<DWORD> pixels(memory.Pixels(), memory.Pixels() + static_cast<std::size_t>(whole.cx) *
                                                                   static_cast<std::size_t>(whole.cy));
  for (DWORD& pixel : pixels) pixel |= 0xFF000000;
  return pixels;
}

void Win32Window::Update() {
  // Deeper than that the thread's stack would end: what is left is painted later.
  if (!Exists() || painting_ >= PaintState::kMaxPaintNesting) return;
  CarriedFault::CallOut([&] { return UpdateWindow(handle_); });
}

}  // namespace lorv
