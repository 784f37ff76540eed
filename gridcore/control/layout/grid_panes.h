#pragma once

#include <memory>

#include "gridcore/control/grid_control.h"

// The parts of a grid that are drawn one after the other: all at once without frozen columns; else the frozen
// part and the scrolling one, each clipped to itself, with all geometry as if it were the whole grid.
//
//   for (PaneTurn turn(*this, dc); turn.Next();) DrawCells(dc, row);
class CBCGPGridCtrl::PaneTurn {
 public:
  // Nothing is asked of the grid where there is one part: each row of a picture makes such an object.
  PaneTurn(CBCGPGridCtrl& grid, CDC* dc) : grid_(grid), dc_(dc) {
    if (grid.frozen_.columns > 0 && grid.frozen_.drawn == lorv::ColumnPane::kBoth) Split();
  }
  PaneTurn(const PaneTurn&) = delete;
  PaneTurn& operator=(const PaneTurn&) = delete;
  ~PaneTurn() {
    if (split_) End();
  }

  // False: all are drawn, or the grid has ended.
  bool Next() {
    if (!split_) return turn_++ == 0;
    while (End() && turn_ < 2)
      if (Begin(turn_++ == 0 ? lorv::ColumnPane::kFrozen : lorv::ColumnPane::kScrolling)) return true;
    return false;
  }

 private:
  void Split();
  bool Begin(lorv::ColumnPane pane);
  bool End();

  CBCGPGridCtrl& grid_;
  CDC* dc_;
  std::weak_ptr<int> life_;
  int edge_ = 0;
  bool split_ = false;
  bool drawing_ = false;
  int turn_ = 0;
  int saved_ = 0;
};
