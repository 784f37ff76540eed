#pragma once

#include "framework/drawing/device_context.h"

// A buffer for a part of another context: what is drawn on it, at the places of the target, comes to the
// target at once by Flush. On paper there is no buffer: drawing goes to the target itself.
//
// Units: the target's. A new buffer is white.
// What was not flushed is lost with the buffer. The target must outlive it; both belong to one thread.
//
//   TMemDC buffer(&dc, CRect(10, 10, 42, 42));  buffer.FillSolidRect(CRect(10, 10, 20, 20), 0);
//   buffer.Flush();
class COMM_LORV_API TMemDC : public CDC {
 public:
  TMemDC(CDC* target, const CRect& rect);
  TMemDC(const TMemDC&) = delete;
  TMemDC& operator=(const TMemDC&) = delete;
  ~TMemDC() override;

  // Copies the whole rectangle; nothing where drawing is direct.
  void Flush();
  bool IsOffScreen() const { return off_screen_; }
  BOOL IsPrinting() const override { return off_screen_ ? FALSE : TRUE; }

 private:
  CBitmap bitmap_;
  CBitmap* former_ = nullptr;
  CDC* target_;
  CRect rect_;
  bool off_screen_;
};
