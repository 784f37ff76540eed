#include "tools/lorv-desk/images/image_window.h"

#include <algorithm>

#include "framework/drawing/context_handles.h"
#include "image/memory_context.h"
#include "tools/lorv/command/verb.h"
#include "tools/lorv/language/spoken_language.h"

// What the library does with images, in one window: drawing a frame by its number at any size, and playing an
// animation in a tip by a thread of the tip's own.

namespace lorv::tool {
namespace {

// Pixels at 96 dots per inch.
constexpr int kMargin = 12;
constexpr int kLine = 20;
constexpr int kLargeWidth = 420;
constexpr int kLargeHeight = 280;
constexpr int kSmallWidth = 96;
constexpr int kSmallHeight = 64;
constexpr int kSmallRows = 2;
constexpr int kSmallColumns = 4;
constexpr int kDown = kSmallHeight + kLine + kMargin / 2;  // from a row of small frames to the next
constexpr int kWindowWidth = 2 * kMargin + kLargeWidth;
constexpr int kWindowHeight = 3 * kMargin + kLine + kLargeHeight + kSmallRows * kDown;

constexpr COLORREF kPaper = RGB(255, 255, 255);
constexpr COLORREF kInk = RGB(40, 40, 40);
constexpr COLORREF kFrameLine = RGB(200, 200, 200);
constexpr COLORREF kChosenLine = RGB(0, 120, 215);

}  // namespace

void SampleTip::PaintCtrl() {
  TImageToolTipCtrl::PaintCtrl();
  ++paintings_;
}

BEGIN_MESSAGE_MAP(ImageWindow, CWnd)
ON_WM_PAINT()
ON_MESSAGE(WM_ERASEBKGND, OnErase)
ON_WM_LBUTTONDOWN()
ON_WM_KEYDOWN()
END_MESSAGE_MAP()

ImageWindow::ImageWindow(const std::string& path) : path_(path), image_(CString::FromUtf8(path)) {
  // Asked once: the question clears the status of the loading.
  if (!image_.IsValidImage())
    throw BadInput(Say("{} is no image that can be read, or it is damaged", {path}));
  image_.GetDim(size_);
  count_ = image_.GetFrameCount();
  tip_ = std::make_unique<SampleTip>(CString::FromUtf8(path));
}

ImageWindow::~ImageWindow() {
  tip_.reset();
  if (m_hWnd != nullptr) CWnd::DestroyWindow();
}

bool ImageWindow::Open() {
  constexpr int kPlace = 80;
  const CRect frame(CPoint(kPlace, kPlace), CSize(kWindowWidth, kWindowHeight));
  const CString name = CString::FromUtf8(path_.substr(path_.find_last_of("/\\") + 1));
  if (Create(nullptr, name, WS_OVERLAPPEDWINDOW, frame, nullptr, 0) == FALSE) return false;
  // Known once the window is there: what its frame takes of the size, and the screen's dots.
  CRect client;
  CRect outer;
  GetClientRect(&client);
  GetWindowRect(&outer);
  const CSize whole = CSize(Scaled(kWindowWidth), Scaled(kWindowHeight)) + outer.Size() - client.Size();
  SetWindowPos(nullptr, 0, 0, static_cast<int>(whole.cx), static_cast<int>(whole.cy),
               SWP_NOMOVE | SWP_NOZORDER);
  if (tip_->Create(this) == FALSE) return false;
  tip_->SetWindowText(name);
  return true;
}

void ImageWindow::ShowUntilClosed() {
  ShowWindow(SW_SHOW);
  SetFocus();
  Desktop& desktop = DesktopInForce();
  while (m_hWnd != nullptr && desktop.Pump(true)) {
  }
}

void ImageWindow::ChooseFrame(int frame) {
  frame_ = std::clamp(frame, 0, std::max(count_ - 1, 0));
  if (m_hWnd != nullptr) Invalidate(FALSE);
}

CRect ImageWindow::LargePlace() const {
  return {CPoint(Scaled(kMargin), Scaled(kMargin + kLine)), CSize(Scaled(kLargeWidth), Scaled(kLargeHeight))};
}

CRect ImageWindow::PlaceOf(int frame) const {
  if (frame < 0 || frame >= std::min(count_, kSmallRows * kSmallColumns)) return {};
  constexpr int kAcross = (kLargeWidth - kSmallWidth) / (kSmallColumns - 1);
  const int left = kMargin + frame % kSmallColumns * kAcross;
  const int top = 2 * kMargin + kLine + kLargeHeight + frame / kSmallColumns * kDown;
  return {CPoint(Scaled(left), Scaled(top)), CSize(Scaled(kSmallWidth), Scaled(kSmallHeight))};
}

CRect ImageWindow::Fitted(const CRect& place) const {
  // Larger than it is only on screens of more dots: its own pixels are what is to be seen.
  const double most = static_cast<double>(GetDpi()) / kUsualDpi;
  const double across =
      static_cast<double>(place.Width()) / std::max<double>(1, static_cast<double>(size_.cx));
  const double down =
      static_cast<double>(place.Height()) / std::max<double>(1, static_cast<double>(size_.cy));
  const double scale = std::min({across, down, most});
  const auto scaled = [&](LONG side) {
    return std::max(1, static_cast<int>(static_cast<double>(side) * scale));
  };
  const CSize size(scaled(size_.cx), scaled(size_.cy));
  return {place.CenterPoint() - CSize(size.cx / 2, size.cy / 2), size};
}

void ImageWindow::ShowTip() {
  CPoint corner = LargePlace().CenterPoint();
  ClientToScreen(&corner);
  // Hidden first: one that is shown already would not be painted again, and so not play.
  tip_->Hide();
  tip_->ShowAt(corner);
}

void ImageWindow::OnPaint() {
  CPaintDC screen(this);
  CRect client;
  GetClientRect(&client);
  TMemDC dc(&screen, client);
  dc.FillSolidRect(client, kPaper);
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(kInk);
  dc.SelectObject(GetFont());
  const std::string size = std::to_string(size_.cx) + " x " + std::to_string(size_.cy);
  CRect line(CPoint(Scaled(kMargin), Scaled(kMargin / 2)), CSize(Scaled(kLargeWidth), Scaled(kLine)));
  dc.DrawText(CString::FromUtf8(Say("{} pixels, {} frames", {size, std::to_string(count_)})), &line,
              DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX);
  DrawFrames(dc);
  dc.Flush();
}

void ImageWindow::DrawFrames(CDC& dc) {
  const ContextHandle handle(dc);
  image_.DrawImage(handle.Get(), Fitted(LargePlace()), frame_);
  for (int frame = 0; PlaceOf(frame).IsRectEmpty() == FALSE; ++frame) {
    const CRect place = PlaceOf(frame);
    image_.DrawImage(handle.Get(), Fitted(place), frame);
    const COLORREF line = frame == frame_ ? kChosenLine : kFrameLine;
    dc.Draw3dRect(place, line, line);
    CString text;
    text.Format(_T("%d: %d ms"), frame, image_.GetFrameDelay(frame));
    CRect below(CPoint(place.left, place.bottom), CSize(place.Width(), Scaled(kLine)));
    dc.DrawText(text, &below, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
  }
}

void ImageWindow::OnLButtonDown(UINT flags, CPoint point) {
  SetFocus();
  for (int frame = 0; PlaceOf(frame).IsRectEmpty() == FALSE; ++frame) {
    if (PlaceOf(frame).PtInRect(point) != FALSE) return ChooseFrame(frame);
  }
  if (LargePlace().PtInRect(point) != FALSE) return ShowTip();
  CWnd::OnLButtonDown(flags, point);
}

void ImageWindow::OnKeyDown(UINT key, UINT repeat, UINT flags) {
  switch (key) {
    case VK_LEFT:
      return ChooseFrame(frame_ - 1);
    case VK_RIGHT:
      return ChooseFrame(frame_ + 1);
    case VK_SPACE:
      return ShowTip();
    default:
      CWnd::OnKeyDown(key, repeat, flags);
  }
}

}  // namespace lorv::tool
