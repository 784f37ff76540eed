#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "framework/windows/window.h"
#include "image/image.h"
#include "image/image_tool_tip.h"

namespace lorv::tool {

// The tip of the window, which reports when its animation has come to an end.
class SampleTip : public TImageToolTipCtrl {
 public:
  using TImageToolTipCtrl::TImageToolTipCtrl;
  ~SampleTip() override { EndPainting(); }

  // How many paintings ran to their last frame, or were ended. Any thread.
  int Paintings() const { return paintings_; }
  void PaintCtrl() override;

 private:
  std::atomic<int> paintings_{0};
};

// An image as the library shows it: one frame large, the first ones small below with their numbers and
// delays, and the animation in a tip.
//
// A click on a small frame, or the left and right keys, chooses the large one; a click on the large one, or
// the space bar, shows the tip, which plays once.
class ImageWindow : public CWnd {
 public:
  // Throws BadInput where the file is no image.
  explicit ImageWindow(const std::string& path);
  ~ImageWindow() override;

  // Makes the window, hidden. False: the desktop made none.
  bool Open();
  void ShowUntilClosed();
  int FrameCount() const { return count_; }
  int Frame() const { return frame_; }
  // Numbers beyond the ends are the nearer end.
  void ChooseFrame(int frame);
  // The place of a small frame; empty for one that has no room.
  CRect PlaceOf(int frame) const;
  CRect LargePlace() const;
  void ShowTip();
  SampleTip& Tip() { return *tip_; }

 protected:
  void OnPaint();
  // Painting covers all of it: erased before, it would flicker.
  LRESULT OnErase(WPARAM /*w*/, LPARAM /*l*/) { return TRUE; }
  void OnLButtonDown(UINT flags, CPoint point);
  void OnKeyDown(UINT key, UINT repeat, UINT flags);
  DECLARE_MESSAGE_MAP()

 private:
  int Scaled(int pixels) const { return pixels * GetDpi() / kUsualDpi; }
  // The image's size made to fit into a place, in its middle.
  CRect Fitted(const CRect& place) const;
  void DrawFrames(CDC& dc);

  std::string path_;
  TImage image_;
  CSize size_ = CSize(0, 0);
  int count_ = 0;
  int frame_ = 0;
  std::unique_ptr<SampleTip> tip_;
};

}  // namespace lorv::tool
