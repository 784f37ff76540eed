#include "framework/drawing/geometry.h"
#include "platform/models/carried_fault.h"
#include "platform/win32/drawing/gdi_canvas.h"
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

  HDC Context() const override { return window_->Exists() ? context_ : nullptr; }
  SIZE Size() const override { return CRect(window_->ClientRect()).Size(); }

 private:
  WindowRef window_;
  HWND handle_;
  HDC context_;
};

// What is out of date, in memory until it is finished: the user never sees half a picture.
class PaintTarget : public GdiTarget {
 public:
  PaintTarget(WindowRef window, HWND handle) : window_(std::move(window)), handle_(handle) {
    Begin();
    const CRect dirty(paint_.rcPaint);
    memory_ = std::make_unique<GdiMemory>(dirty.Size(), dirty.TopLeft());
    // What the painter leaves out stays as it was.
    Carry(memory_->Context(), paint_.hdc);
  }
  ~PaintTarget() override {
    if (!window_->Exists()) return;
    GdiFlush();
    SelectClipRgn(memory_->Context(), nullptr);
    Carry(paint_.hdc, memory_->Context());
    EndPaint(handle_, &paint_);
  }

  HDC Context() const override { return memory_->Context(); }
  SIZE Size() const override { return CRect(window_->ClientRect()).Size(); }
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

  void Carry(HDC to, HDC from) const {
    const CRect dirty(paint_.rcPaint);
    if (dirty.IsRectEmpty() != 0) return;
    BitBlt(to, dirty.left, dirty.top, dirty.Width(), dirty.Height(), from, dirty.left, dirty.top, SRCCOPY);
  }

  WindowRef window_;
  HWND handle_;
  PAINTSTRUCT paint_ = {};
  std::unique_ptr<GdiMemory> memory_;
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
  if (Exists()) InvalidateRect(handle_, rect, TRUE);
}

// A top window's own surface holds all that stands in it, seen or covered.
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
  if (Exists()) CarriedFault::CallOut([&] { return UpdateWindow(handle_); });
}

}  // namespace lorv
