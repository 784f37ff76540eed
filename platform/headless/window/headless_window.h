#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "platform/headless/drawing/headless_canvas.h"
#include "platform/models/window/window_model.h"

namespace lorv {

class HeadlessDesktop;

// A window in memory. Its frame: 4 pixels around and 24 for a caption if it has one, 1 pixel with WS_BORDER
// or WS_EX_CLIENTEDGE; bars are 16 wide.
class HeadlessWindow : public WindowModel {
 public:
  HeadlessWindow(HeadlessDesktop& desktop, HWND handle, const WindowRequest& request);

  const std::shared_ptr<HeadlessSurface>& Surface() const { return surface_; }

  void Place(const RECT& place) override;
  void Raise() override;
  RECT WindowRect() const override;
  RECT ClientRect() const override;
  POINT ClientOrigin() const override;
  SIZE FrameSize(SIZE client) const override;
  std::unique_ptr<Canvas> PaintCanvas(RECT& dirty) override;
  std::unique_ptr<Canvas> ClientCanvas() override;
  void SetTimer(UINT_PTR id, UINT milliseconds) override;
  bool KillTimer(UINT_PTR id) override;

 protected:
  // What a control shows of itself; here nothing.
  virtual void PaintSelf(Canvas& /*canvas*/) {}
  HeadlessDesktop& Home() const { return home_; }
  void PlaceChanged() override;
  void PaintDefault() override;
  bool ShiftPicture(const CRect& target, SIZE by) override;
  void DpiChanged() override { surface_->SetDpi(Dpi()); }

 private:
  friend class HeadlessDesktop;
  struct Edges {
    int side;
    int top;
  };
  Edges Frame() const;
  void Measure();
  CPoint ReportedPlace() const;

  HeadlessDesktop& home_;
  CRect place_;
  mutable std::mutex mutex_;  // over client_, which any thread asks for
  CSize client_;
  std::shared_ptr<HeadlessSurface> surface_;
};

}  // namespace lorv
