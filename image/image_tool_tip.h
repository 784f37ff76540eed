#pragma once

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "framework/objects/event.h"
#include "image/image.h"
#include "image/tool_tip.h"
#include "module/critical_section.h"

// A tool tip with an image at its left, which plays an animated one once whenever it is painted.
//
// A paint message starts a thread that paints all of the tip, the image last, so that the text stands at
//   once. It holds the lock until the last frame stands, delays included: a paint message meanwhile does
//   nothing, and SetImage ends the loop, but changes nothing where the thread has not let go of the lock by
//   then.
// Delays are counted by the clock in force (lorv::WaitClockInForce). A frame with a delay of 0 is the last
// that is shown. What is made, shown, changed and ended belongs to the thread of the windows; PaintCtrl and
//   DrawIcon run on the painting thread. The destructor ends a running loop and waits for its thread; one of
//   a derived class calls EndPainting first, since the thread may be in what that class overrides.
//
//   TImageToolTipCtrl tip(_T("beam.gif"));  tip.Create(&parent);  tip.ShowAt(CPoint(90, 20));
class COMM_LORV_API TImageToolTipCtrl : public CBCGPToolTipCtrl {
 public:
  explicit TImageToolTipCtrl(const CString& path);
  ~TImageToolTipCtrl() override;

  // The image and, where it differs, the text: label and description both become `description`. The result is
  // that of the image, or 1, with nothing changed, where a painting goes on.
  int SetImage(const CString& path, const CString& description);
  int SetImage(HINSTANCE module, unsigned int resource, const CString& description);
  // Asks a running loop to stop; gives the value.
  bool SetImageChangeStatus(bool changed);

  // That of the image; 32 by 32 where there is none. While a painting goes on, what it was when that began.
  CSize GetIconSize() override;
  virtual void PaintCtrl();
  // Plays the image in the rectangle; 0.
  virtual int DrawIcon(CDC* dc, CRect rect);

  DECLARE_DYNAMIC(TImageToolTipCtrl)

 protected:
  int SetImage(const CString& path, HINSTANCE module, unsigned int resource, const CString& description);
  static void PaintCtrl(void* tip);
  // Ends a running loop and waits for its thread; nothing is painted from then on.
  void EndPainting();
  void TakeLooks() override;
  void OnShow(NMHDR* header, LRESULT* result);
  void OnPaint();

  DECLARE_MESSAGE_MAP()

 private:
  struct Painter {
    std::thread thread;
    std::shared_ptr<std::atomic<bool>> done;
  };
  bool DrawFrame(CDC* dc, const CRect& rect, const TImage& image, int frame, int count);
  void StartPainter();
  void EndPainters(bool all);

  int default_icon_size_ = 32;
  TImage image_;
  std::atomic<bool> image_changed_{false};
  CEvent change_event_{FALSE, TRUE};
  CCriticalSection lock_;
  std::atomic<bool> closing_{false};
  std::atomic<std::uint32_t> icon_size_{0};  // the last one known, width in the upper half; 0: not asked yet
  std::vector<Painter> painters_;            // touched by the windows' thread only
};
