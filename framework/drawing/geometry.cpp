#include "framework/drawing/geometry.h"

#include <algorithm>
#include <cstdint>
#include <utility>

// Points, sizes and rectangles with the framework's operations. Sums and differences wrap around at 32 bits
// as the system's do, by unsigned arithmetic: places come from messages and saved layouts, and a hostile one
// must not be undefined. Where intersection, union or difference leave nothing, the result is {0, 0, 0, 0}.

namespace {

// Through unsigned numbers, whose overflow is defined.
LONG Sum(LONG a, LONG b) {
  return static_cast<LONG>(static_cast<std::uint32_t>(a) + static_cast<std::uint32_t>(b));
}

LONG Difference(LONG a, LONG b) {
  return static_cast<LONG>(static_cast<std::uint32_t>(a) - static_cast<std::uint32_t>(b));
}

// The system's operations leave all zeros where nothing is left; callers compare with that.
BOOL Keep(CRect& target, const CRect& answer) {
  target = answer.IsRectEmpty() ? CRect() : answer;
  return !target.IsRectEmpty();
}

}  // namespace

CSize& CSize::operator+=(SIZE size) {
  cx = Sum(cx, size.cx);
  cy = Sum(cy, size.cy);
  return *this;
}

CSize& CSize::operator-=(SIZE size) {
  cx = Difference(cx, size.cx);
  cy = Difference(cy, size.cy);
  return *this;
}

CPoint& CPoint::operator+=(SIZE by) {
  x = Sum(x, by.cx);
  y = Sum(y, by.cy);
  return *this;
}

CPoint& CPoint::operator-=(SIZE by) {
  // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): the analyzer loses a SIZE copied out of a CSize
  x = Difference(x, by.cx);
  y = Difference(y, by.cy);
  return *this;
}

CRect::CRect(POINT top_left, SIZE size)
    : RECT{top_left.x, top_left.y, Sum(top_left.x, size.cx), Sum(top_left.y, size.cy)} {}

CRect::CRect(POINT top_left, POINT bottom_right)
    : RECT{top_left.x, top_left.y, bottom_right.x, bottom_right.y} {}

int CRect::Width() const {
  return Difference(right, left);
}

int CRect::Height() const {
  return Difference(bottom, top);
}

CPoint CRect::CenterPoint() const {
  // In 64 bits: the sum of two coordinates need not fit, their middle always does.
  const auto middle = [](LONG a, LONG b) {
    return static_cast<LONG>((static_cast<std::int64_t>(a) + b) / 2);
  };
  return {middle(left, right), middle(top, bottom)};
}

BOOL CRect::PtInRect(POINT point) const {
  return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
}

BOOL CRect::EqualRect(LPCRECT other) const {
  return left == other->left && top == other->top && right == other->right && bottom == other->bottom;
}

void CRect::NormalizeRect() {
  if (left > right) std::swap(left, right);
  if (top > bottom) std::swap(top, bottom);
}

void CRect::InflateRect(int l, int t, int r, int b) {
  left = Difference(left, l);
  top = Difference(top, t);
  right = Sum(right, r);
  bottom = Sum(bottom, b);
}

void CRect::DeflateRect(int l, int t, int r, int b) {
  left = Sum(left, l);
  top = Sum(top, t);
  right = Difference(right, r);
  bottom = Difference(bottom, b);
}

void CRect::OffsetRect(int x, int y) {
  left = Sum(left, x);
  top = Sum(top, y);
  right = Sum(right, x);
  bottom = Sum(bottom, y);
}

BOOL CRect::IntersectRect(LPCRECT a, LPCRECT b) {
  if (CRect(a).IsRectEmpty() || CRect(b).IsRectEmpty()) return Keep(*this, CRect());
  return Keep(*this, CRect(std::max(a->left, b->left), std::max(a->top, b->top), std::min(a->right, b->right),
                           std::min(a->bottom, b->bottom)));
}

BOOL CRect::UnionRect(LPCRECT a, LPCRECT b) {
  // An empty rectangle has no place of its own and must not stretch the union to where it lies.
  if (CRect(a).IsRectEmpty()) return Keep(*this, CRect(b));
  if (CRect(b).IsRectEmpty()) return Keep(*this, CRect(a));
  return Keep(*this, CRect(std::min(a->left, b->left), std::min(a->top, b->top), std::max(a->right, b->right),
                           std::max(a->bottom, b->bottom)));
}

BOOL CRect::SubtractRect(LPCRECT a, LPCRECT b) {
  CRect rest(a);
  CRect common;
  if (rest.IsRectEmpty() || !common.IntersectRect(a, b)) return Keep(*this, rest);
  // All of it is taken away.
  if (common.EqualRect(a)) return Keep(*this, CRect());
  // Only a cut through the whole width or height leaves a rectangle; any other leaves `a` as it is, as in the
  // system.
  if (common.top == rest.top && common.bottom == rest.bottom) {
    if (common.left == rest.left) {
      rest.left = common.right;
    } else if (common.right == rest.right) {
      rest.right = common.left;
    }
  } else if (common.left == rest.left && common.right == rest.right) {
    if (common.top == rest.top) {
      rest.top = common.bottom;
    } else if (common.bottom == rest.bottom) {
      rest.bottom = common.top;
    }
  }
  return Keep(*this, rest);
}

CRect& CRect::operator+=(POINT by) {
  OffsetRect(by);
  return *this;
}

CRect& CRect::operator+=(SIZE by) {
  OffsetRect(by);
  return *this;
}

CRect& CRect::operator+=(LPCRECT by) {
  InflateRect(by);
  return *this;
}

CRect& CRect::operator-=(POINT by) {
  return *this += -CPoint(by);
}

CRect& CRect::operator-=(SIZE by) {
  return *this += -CSize(by);
}

CRect& CRect::operator-=(LPCRECT by) {
  DeflateRect(by);
  return *this;
}

CRect& CRect::operator&=(const RECT& other) {
  IntersectRect(this, &other);
  return *this;
}

CRect& CRect::operator|=(const RECT& other) {
  UnionRect(this, &other);
  return *this;
}
