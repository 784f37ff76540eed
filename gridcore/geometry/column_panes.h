#pragma once

#include "framework/native/export.h"

namespace lorv {

// Which part of a grid is meant: all that is seen, or, while one part is drawn, that one as if it were the
// whole grid.
enum class ColumnPane { kBoth, kFrozen, kScrolling };

// A stretch of pixels from left to right, its end without.
struct PixelStretch {
  int from = 0;
  int to = 0;

  bool IsEmpty() const { return to <= from; }
  friend bool operator==(const PixelStretch&, const PixelStretch&) = default;
};

// Where places of a table stand on a screen whose left part may be frozen: it stays where it is, while what
// is behind it scrolls sideways under its edge.
//
// Units: pixels. Places count from the left edge of the table, with the room before its columns; `left` is
//   where the table stands on the screen when nothing is scrolled.
// Edges: without a frozen part every place moves by `scrolled`, also out of the screen. With one, what has
//   scrolled below the frozen part is cut off at its edge; a stretch that begins in the frozen part and ends
//   behind it is what is seen of both. Drawn alone, a part is not cut: its clip region does that.
// Pure functions; any thread.
//
//   ColumnPanes{30, 100, 40}.OnScreen(100, 180)  gives {130, 170}: the 40 pixels in front are below the edge
struct COMM_LORV_API ColumnPanes {
  int left = 0;
  int frozen = 0;  // the width of the frozen part; 0: there is none
  int scrolled = 0;
  ColumnPane only = ColumnPane::kBoth;

  bool AreSplit() const { return frozen > 0; }
  // The place is one of the frozen part, or that alone is drawn.
  bool Stays(int place) const;
  // Where the frozen part ends on the screen.
  int Edge() const { return left + frozen; }
  // What begins at that place begins there on the screen, be it below the frozen part.
  int ScreenAt(int place) const;
  PixelStretch OnScreen(int from, int to) const;
  // The place that is seen at that pixel.
  int PlaceAt(int screen) const;
};

}  // namespace lorv
