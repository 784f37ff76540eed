#pragma once

#include "framework/drawing/region.h"

namespace lorv {

// What of a window is out of date, and when it is asked to paint that: for peers whose system keeps no such
// record.
//
// What is invalidated while WM_PAINT is handled stays, so that another one comes. A handler that takes
// nothing is not asked for the same again. Handlers may throw, invalidate, and ask for painting inside
// painting, that last one kMaxPaintNesting deep; what is left is painted later. Units: pixels of the client
// area. One thread.
class COMM_LORV_API PaintState {
 public:
  static constexpr int kMaxPaintNesting = 8;

  const Region& Pending() const { return pending_; }
  bool WantsPaint() const { return drawn_ && !pending_.IsEmpty(); }

  // Null: all of the client area.
  void Invalidate(const CRect& client, const RECT* part);
  void Validate(const RECT* part);
  // As WM_SETREDRAW: while it is off nothing is asked for.
  void SetRedraw(bool on) { drawn_ = on; }
  // For the canvas of WM_PAINT: all that is pending, which counts as painted from here on.
  Region Take();

  // Has the window asked to paint what is pending, by `ask`.
  template <class Ask>
  void Paint(Ask ask) {
    if (!WantsPaint() || nesting_ >= kMaxPaintNesting) return;
    const Asking asking(*this);
    ask();
  }

  // What is shown in `area` is to move by that much inside `bounds`: the place that receives what stood in
  // the area. What was pending moves along, and what comes in is pending.
  CRect Shift(const CRect& client, SIZE by, const RECT* area, const RECT* clip);

 private:
  class Asking {
   public:
    explicit Asking(PaintState& state);
    Asking(const Asking&) = delete;
    Asking& operator=(const Asking&) = delete;
    ~Asking();

   private:
    PaintState& state_;
    const bool taken_before_;
    Region later_before_;
  };

  Region pending_;
  Region later_;  // what was added since the handler under way was asked
  bool taken_ = false;
  bool drawn_ = true;
  int nesting_ = 0;
};

}  // namespace lorv
