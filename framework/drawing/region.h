#pragma once

#include <vector>

#include "framework/drawing/geometry.h"
#include "framework/native/export.h"

// A set of pixels as rectangles that do not overlap: what of a window is out of date, what of a picture
// shows.
//
// Units: those of the rectangles. Empty rectangles are no part of anything.
// Edges: the set is exact whatever is added and taken away; the number of rectangles is bounded only where
//   Simplify is called.
// A plain value: no shared state, any thread. Throws nothing but std::bad_alloc.
//
//   Region region(CRect(0, 0, 9, 9));  region.Remove(CRect(0, 0, 9, 3));
//   region.Bounds()  gives (0, 3, 9, 9)
namespace lorv {

class COMM_LORV_API Region {
 public:
  Region() = default;
  Region(const RECT& rect) { Add(rect); }  // NOLINT(google-explicit-constructor)

  bool IsEmpty() const { return rects_.empty(); }
  const std::vector<CRect>& Rects() const { return rects_; }
  CRect Bounds() const;
  bool Touches(const RECT& rect) const;
  bool Covers(const RECT& rect) const;  // every pixel of it; an empty one is covered

  void Clear() { rects_.clear(); }
  void Add(const RECT& rect);
  void Add(const Region& other);
  void Remove(const RECT& rect);
  void Remove(const Region& other);
  void Keep(const RECT& rect);  // what lies outside goes
  void Move(SIZE by);
  // Joins rectangles until there are no more than `most`: those that enclose the least of what was no part.
  // Afterwards the set holds all it held, and perhaps more.
  void Simplify(std::size_t most);

 private:
  void JoinCheapest();

  std::vector<CRect> rects_;
};

// How many rectangles of a window are painted one by one; beyond them neighbours are painted together.
constexpr std::size_t kMaxDirtyRects = 16;

}  // namespace lorv
