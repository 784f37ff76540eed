#include "image/image_tool_tip.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "framework/drawing/context_handles.h"
#include "framework/ports/wait_clock.h"
#include "image/memory_context.h"

// The lock is held by the painting thread from its first line to its last. What both threads touch beside it
// is atomic: the flags that end a loop, and the size of the image that is known without the lock.

IMPLEMENT_DYNAMIC(TImageToolTipCtrl, CBCGPToolTipCtrl)

BEGIN_MESSAGE_MAP(TImageToolTipCtrl, CBCGPToolTipCtrl)
ON_WM_PAINT()
ON_NOTIFY_REFLECT(lorv::kTipShows, OnShow)
END_MESSAGE_MAP()

TImageToolTipCtrl::TImageToolTipCtrl(const CString& path) : image_(path) {}

TImageToolTipCtrl::~TImageToolTipCtrl() {
  EndPainting();
}

void TImageToolTipCtrl::EndPainting() {
  // A loop that waits on a clock which stands still would never end by itself.
  closing_ = true;
  change_event_.SetEvent();
  lock_.Lock();
  lock_.Unlock();
  EndPainters(true);
}

bool TImageToolTipCtrl::SetImageChangeStatus(bool changed) {
  image_changed_ = changed;
  change_event_.SetEvent();
  return changed;
}

int TImageToolTipCtrl::SetImage(const CString& path, const CString& description) {
  return SetImage(path, nullptr, 0, description);
}

int TImageToolTipCtrl::SetImage(HINSTANCE module, unsigned int resource, const CString& description) {
  return SetImage(description, module, resource, description);
}

int TImageToolTipCtrl::SetImage(const CString& path, HINSTANCE module, unsigned int resource,
                                const CString& description) {
  SetImageChangeStatus(true);
  TCriticalSectionEx guard(&lock_);
  // While an animation plays its thread has the lock, and the window's thread must not wait for it.
  if (guard.Lock() == 0) return 1;
  const CSingleLock lock(&lock_, TRUE);
  if (description.Compare(GetDescription()) != 0) {
    // Hidden while its text changes, so that no tip of the old size shows the new text.
    SendMessage(lorv::kActivateTip, 0);
    SetDescription(description);
    SetWindowText(description);
    SendMessage(lorv::kActivateTip, 1);
  }
  return module != nullptr ? image_.SetImage(module, resource) : image_.SetImage(path);
}

CSize TImageToolTipCtrl::GetIconSize() {
  CSize size(default_icon_size_, default_icon_size_);
  TCriticalSectionEx guard(&lock_);
  if (guard.Lock() == 0) {
    const std::uint32_t known = icon_size_;
    return known == 0 ? size : CSize(static_cast<int>(known >> 16), static_cast<int>(known & 0xFFFF));
  }
  image_.GetDim(size);
  constexpr LONG kMost = 0xFFFF;
  icon_size_ = static_cast<std::uint32_t>(std::min(size.cx, kMost)) << 16 |
               static_cast<std::uint32_t>(std::min(size.cy, kMost));
  return size;
}

// What a painting uses is not touched while it runs.
void TImageToolTipCtrl::TakeLooks() {
  TCriticalSectionEx guard(&lock_);
  if (guard.Lock() == 0) return;
  CBCGPToolTipCtrl::TakeLooks();
}

void TImageToolTipCtrl::OnShow(NMHDR* header, LRESULT* result) {
  if (m_hWnd != nullptr && header != nullptr) CBCGPToolTipCtrl::OnShow(header, result);
}

void TImageToolTipCtrl::OnPaint() {
  // So that the window counts as painted.
  { const CPaintDC painted(this); }
  {
    TCriticalSectionEx guard(&lock_);
    if (guard.Lock() == 0 || closing_) return;
    TakeLooks();
    change_event_.SetEvent();
  }
  StartPainter();
}

void TImageToolTipCtrl::StartPainter() {
  EndPainters(false);
  auto done = std::make_shared<std::atomic<bool>>(false);
  try {
    painters_.push_back({std::thread([this, done] {
                           PaintCtrl(static_cast<void*>(this));
                           *done = true;
                         }),
                         done});
  } catch (const std::system_error&) {
    // No thread is to be had: the tip stays unpainted until the next paint message.
  }
}

void TImageToolTipCtrl::EndPainters(bool all) {
  const auto ends = [all](const Painter& painter) { return all || *painter.done; };
  for (Painter& painter : painters_)
    if (ends(painter)) painter.thread.join();
  std::erase_if(painters_, [](const Painter& painter) { return !painter.thread.joinable(); });
}

void TImageToolTipCtrl::PaintCtrl(void* tip) {
  try {
    static_cast<TImageToolTipCtrl*>(tip)->PaintCtrl();
  } catch (...) {
    // A tip that could not be painted is no reason to end the program; nothing is reported.
  }
}

void TImageToolTipCtrl::PaintCtrl() {
  TCriticalSectionEx guard(&lock_);
  if (guard.Lock() == 0) return;
  const CSingleLock lock(&lock_, TRUE);
  if (Peer() == nullptr || closing_) return;
  CDC dc(std::shared_ptr<lorv::Canvas>(Peer()->ClientCanvas()));
  const CRect client(Peer()->ClientRect());
  const CSize icon = GetIconSize();
  DrawAround(&dc, client, icon);
  if (HasIcon(icon)) DrawIcon(&dc, CRect(TextRect(client).TopLeft(), icon));
}

int TImageToolTipCtrl::DrawIcon(CDC* dc, CRect rect) {
  TCriticalSectionEx guard(&lock_);
  if (guard.Lock() == 0) return 0;
  CSingleLock lock(&lock_, TRUE);
  const TImage image(image_);
  change_event_.ResetEvent();
  image_changed_ = false;
  lock.Unlock();
  const int count = image.GetFrameCount();
  for (int frame = 0; frame < count; ++frame) {
    if (guard.Lock() == 0 || image_changed_ || closing_) break;
    if (!DrawFrame(dc, rect, image, frame, count)) break;
  }
  return 0;
}

// Draws one and waits until the next one is due; false where none follows.
bool TImageToolTipCtrl::DrawFrame(CDC* dc, const CRect& rect, const TImage& image, int frame, int count) {
  // Of an image larger than the tip only what is seen is kept.
  const CRect client(Peer()->ClientRect());
  TMemDC buffer(dc, rect & client);
  // What shows through the image is the tip, not the white of a new buffer.
  COLORREF ink = TextColour();
  COLORREF line = LineColour();
  OnFillBackground(&buffer, client, ink, line);
  const CSingleLock lock(&lock_, TRUE);
  image.DrawImage(lorv::ContextHandle(buffer).Get(), rect, frame);
  buffer.Flush();
  if (count == 1) return false;
  const int delay = image.GetFrameDelay(frame);
  if (delay == 0) return false;
  return !lorv::WaitClockInForce().WaitFor(change_event_, static_cast<DWORD>(delay));
}
