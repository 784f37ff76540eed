#include "framework/drawing/region.h"

#include <algorithm>
#include <cstdint>
#include <limits>

// Regions as plain lists of rectangles that never overlap: those of a window have a handful, for which a list
// beats sorted bands. That they are disjoint is what Covers and Area rest on, so every change goes through
// Add, Remove, Keep or Move.

namespace lorv {
namespace {

bool Overlap(const RECT& a, const RECT& b) {
  return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

bool Within(const RECT& inner, const RECT& outer) {
  return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top &&
         inner.bottom <= outer.bottom;
}

void Append(std::vector<CRect>& to, const CRect& rect) {
  if (rect.IsRectEmpty() == 0) to.push_back(rect);
}

// What is left of `rect` beside `hole`, which overlaps it: above, left, right, below.
void AppendRest(std::vector<CRect>& to, const CRect& rect, const RECT& hole) {
  const LONG top = std::max(rect.top, hole.top);
  const LONG bottom = std::min(rect.bottom, hole.bottom);
  Append(to, CRect(rect.left, rect.top, rect.right, top));
  Append(to, CRect(rect.left, top, std::max(rect.left, hole.left), bottom));
  Append(to, CRect(std::min(rect.right, hole.right), top, rect.right, bottom));
  Append(to, CRect(rect.left, bottom, rect.right, rect.bottom));
}

std::int64_t Area(const CRect& rect) {
  return (static_cast<std::int64_t>(rect.right) - rect.left) *
         (static_cast<std::int64_t>(rect.bottom) - rect.top);
}

// Grows `rect` by `other` where both together are a rectangle.
bool Joined(CRect& rect, const CRect& other) {
  const bool beside = rect.top == other.top && rect.bottom == other.bottom &&
                      (rect.right == other.left || other.right == rect.left);
  const bool above = rect.left == other.left && rect.right == other.right &&
                     (rect.bottom == other.top || other.bottom == rect.top);
  if (beside || above) rect |= other;
  return beside || above;
}

}  // namespace

CRect Region::Bounds() const {
  CRect bounds;
  for (const CRect& rect : rects_) bounds |= rect;
  return bounds;
}

bool Region::Touches(const RECT& rect) const {
  if (CRect(rect).IsRectEmpty() != 0) return false;
  return std::any_of(rects_.begin(), rects_.end(), [&](const CRect& known) { return Overlap(known, rect); });
}

bool Region::Covers(const RECT& rect) const {
  if (CRect(rect).IsRectEmpty() != 0) return true;
  // The usual case first; the sum of areas is right only because no two rectangles overlap.
  if (std::any_of(rects_.begin(), rects_.end(), [&](const CRect& known) { return Within(rect, known); }))
    return true;
  std::int64_t covered = 0;
  for (const CRect& known : rects_)
    if (Overlap(known, rect)) covered += Area(known & rect);
  return covered == Area(rect);
}

void Region::Add(const RECT& rect) {
  CRect fresh(rect);
  if (fresh.IsRectEmpty() != 0) return;
  for (const CRect& known : rects_)
    if (Within(fresh, known)) return;
  // First cut out of the others, so that the list stays disjoint.
  Remove(fresh);
  for (std::size_t i = 0; i < rects_.size();) {
    if (!Joined(fresh, rects_[i])) {
      ++i;
      continue;
    }
    rects_.erase(rects_.begin() + static_cast<std::ptrdiff_t>(i));
    // The grown rectangle may fit one that was passed over already.
    i = 0;
  }
  rects_.push_back(fresh);
}

void Region::Add(const Region& other) {
  if (rects_.empty()) {
    rects_ = other.rects_;
    return;
  }
  // A copy, as `other` may be this region.
  for (const CRect& rect : std::vector<CRect>(other.rects_)) Add(rect);
}

void Region::Remove(const RECT& rect) {
  if (!Touches(rect)) return;
  std::vector<CRect> rest;
  rest.reserve(rects_.size() + 3);
  for (const CRect& known : rects_) {
    if (Overlap(known, rect)) {
      AppendRest(rest, known, rect);
    } else {
      rest.push_back(known);
    }
  }
  rects_ = std::move(rest);
}

void Region::Remove(const Region& other) {
  if (&other == this) return Clear();
  for (const CRect& rect : other.rects_) Remove(rect);
}

void Region::Keep(const RECT& rect) {
  for (CRect& known : rects_) known &= rect;
  std::erase_if(rects_, [](const CRect& known) { return known.IsRectEmpty() != 0; });
}

void Region::Move(SIZE by) {
  for (CRect& rect : rects_) rect += by;
}

void Region::Simplify(std::size_t most) {
  // Each join lowers the count by at least one, so this ends.
  while (rects_.size() > std::max<std::size_t>(most, 1)) JoinCheapest();
}

void Region::JoinCheapest() {
  std::int64_t least = std::numeric_limits<std::int64_t>::max();
  CRect best;
  for (std::size_t i = 0; i < rects_.size(); ++i)
    for (std::size_t j = i + 1; j < rects_.size(); ++j) {
      const CRect both = rects_[i] | rects_[j];
      const std::int64_t waste = Area(both) - Area(rects_[i]) - Area(rects_[j]);
      if (waste >= least) continue;
      least = waste;
      best = both;
    }
  // All that lies within goes whole, and what crosses the edge is taken in, so that the number falls.
  for (bool grown = true; grown;) {
    grown = false;
    for (const CRect& known : rects_) {
      if (!Overlap(known, best) || Within(known, best)) continue;
      best |= known;
      grown = true;
    }
  }
  Add(best);
}

}  // namespace lorv
