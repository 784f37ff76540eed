#pragma once

#include "framework/native/export.h"
#include "framework/native/window_types.h"

namespace lorv {

// One scroll bar as data: its range, page and position, and where the user's drag of its handle stands.
//
// Units: those of the window class, 32 bits. The range may be the whole of int: all sums are made in 64 bits.
// Edges: a range the wrong way round is empty at its start; the page is cut to the range, the position to
//   min .. max - page + 1. While the handle is dragged the drag's position is its own, whatever is set.
//
//   ScrollModel bar;  bar.Set({sizeof(SCROLLINFO), SIF_ALL, 0, 1000000, 100, 500, 0});
//   bar.Drag(500000);  bar.Info().nTrackPos  gives 500000, bar.Info().nPos 500
class COMM_LORV_API ScrollModel {
 public:
  // `info.fMask` says which fields are taken; cbSize is not looked at.
  void Set(const SCROLLINFO& info);
  // All fields; nTrackPos is the position outside a drag.
  SCROLLINFO Info() const;
  // Whether the range is larger than the page, so that there is something to scroll.
  bool Scrolls() const { return info_.nMin < LastPosition(); }
  int LastPosition() const;

  void Drag(int position);
  void EndDrag() { dragged_ = false; }
  bool IsDragged() const { return dragged_; }

 private:
  SCROLLINFO info_ = {sizeof(SCROLLINFO), SIF_ALL, 0, 100, 0, 0, 0};
  int track_ = 0;
  bool dragged_ = false;
};

}  // namespace lorv
