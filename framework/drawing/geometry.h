#pragma once

#include "framework/native/export.h"
#include "framework/native/native_types.h"

// Points, sizes and rectangles, with the framework's operations and names.
//
// Units: whatever the owner counts in, usually pixels; x to the right, y downwards.
// Edges: a rectangle holds its left and top edge and not its right and bottom one. It is empty if its width
//   or height is 0 or less, and null if all four numbers are 0. Sums beyond 32 bits wrap around, as the
//   system's do.
// Plain values: no shared state, any thread.
//
//   CRect(0, 0, 10, 5).PtInRect(CPoint(9, 4))  gives TRUE, PtInRect(CPoint(10, 4)) FALSE

class COMM_LORV_API CSize : public SIZE {
 public:
  // Numbers are set one by one: the analyzer does not follow a base set as a whole.
  CSize() : CSize(0, 0) {}
  CSize(int width, int height) {
    cx = width;
    cy = height;
  }
  CSize(SIZE size) : CSize(size.cx, size.cy) {}  // NOLINT(google-explicit-constructor)
  explicit CSize(POINT point) : CSize(point.x, point.y) {}

  void SetSize(int width, int height) { *this = CSize(width, height); }
  friend bool operator==(const CSize& a, const CSize& b) { return a.cx == b.cx && a.cy == b.cy; }
  CSize& operator+=(SIZE size);
  CSize& operator-=(SIZE size);
  CSize operator+(SIZE size) const { return CSize(*this) += size; }
  CSize operator-(SIZE size) const { return CSize(*this) -= size; }
  CSize operator-() const { return CSize() - *this; }
};

class COMM_LORV_API CPoint : public POINT {
 public:
  CPoint() : CPoint(0, 0) {}
  CPoint(int across, int down) {
    x = across;
    y = down;
  }
  CPoint(POINT point) : CPoint(point.x, point.y) {}  // NOLINT(google-explicit-constructor)
  explicit CPoint(SIZE size) : CPoint(size.cx, size.cy) {}

  void SetPoint(int across, int down) { *this = CPoint(across, down); }
  void Offset(int across, int down) { *this += CSize(across, down); }
  void Offset(POINT by) { *this += CSize(by); }
  void Offset(SIZE by) { *this += by; }
  friend bool operator==(const CPoint& a, const CPoint& b) { return a.x == b.x && a.y == b.y; }
  CPoint& operator+=(SIZE by);
  CPoint& operator-=(SIZE by);
  CPoint& operator+=(POINT by) { return *this += CSize(by); }
  CPoint& operator-=(POINT by) { return *this -= CSize(by); }
  CPoint operator+(SIZE by) const { return CPoint(*this) += by; }
  CPoint operator+(POINT by) const { return CPoint(*this) += by; }
  CPoint operator-(SIZE by) const { return CPoint(*this) -= by; }
  // The way from one point to another.
  CSize operator-(POINT from) const { return CSize(*this) - CSize(from); }
  CPoint operator-() const { return CPoint() - CSize(*this); }
};

class COMM_LORV_API CRect : public RECT {
 public:
  CRect() : RECT{0, 0, 0, 0} {}
  CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
  CRect(const RECT& rect) : RECT(rect) {}  // NOLINT(google-explicit-constructor)
  CRect(LPCRECT rect) : RECT(*rect) {}     // NOLINT(google-explicit-constructor)
  CRect(POINT top_left, SIZE size);
  CRect(POINT top_left, POINT bottom_right);

  int Width() const;
  int Height() const;
  CSize Size() const { return {Width(), Height()}; }
  CPoint TopLeft() const { return {left, top}; }
  CPoint BottomRight() const { return {right, bottom}; }
  // Half-way, rounded to zero.
  CPoint CenterPoint() const;
  operator LPRECT() { return this; }         // NOLINT(google-explicit-constructor)
  operator LPCRECT() const { return this; }  // NOLINT(google-explicit-constructor)

  // The analyzer does not follow the base that CRect() has zeroed.
  // NOLINTNEXTLINE(clang-analyzer-core.UndefinedBinaryOperatorResult)
  BOOL IsRectEmpty() const { return left >= right || top >= bottom; }
  BOOL IsRectNull() const { return left == 0 && right == 0 && top == 0 && bottom == 0; }
  BOOL PtInRect(POINT point) const;
  BOOL EqualRect(LPCRECT other) const;

  void SetRect(int l, int t, int r, int b) { *this = CRect(l, t, r, b); }
  void SetRect(POINT top_left, POINT bottom_right) { *this = CRect(top_left, bottom_right); }
  void SetRectEmpty() { *this = CRect(); }
  void CopyRect(LPCRECT other) { *this = CRect(other); }
  // Exchanges the edges that stand the wrong way round.
  void NormalizeRect();

  void InflateRect(int x, int y) { InflateRect(x, y, x, y); }
  void InflateRect(SIZE by) { InflateRect(by.cx, by.cy); }
  void InflateRect(LPCRECT by) { InflateRect(by->left, by->top, by->right, by->bottom); }
  void InflateRect(int l, int t, int r, int b);
  void DeflateRect(int x, int y) { DeflateRect(x, y, x, y); }
  void DeflateRect(SIZE by) { DeflateRect(by.cx, by.cy); }
  void DeflateRect(LPCRECT by) { DeflateRect(by->left, by->top, by->right, by->bottom); }
  void DeflateRect(int l, int t, int r, int b);
  void OffsetRect(int x, int y);
  void OffsetRect(POINT by) { OffsetRect(by.x, by.y); }
  void OffsetRect(SIZE by) { OffsetRect(by.cx, by.cy); }
  void MoveToX(int x) { MoveToXY(x, top); }
  void MoveToY(int y) { MoveToXY(left, y); }
  void MoveToXY(int x, int y) { *this += CPoint(x, y) - TopLeft(); }
  void MoveToXY(POINT to) { MoveToXY(to.x, to.y); }

  // Each puts its answer here; true if that is not empty, else all four numbers are 0. The arguments may be
  // this rectangle. Empty rectangles do not count in a union. What is left of `a` after `b` is taken away
  // is `a` itself unless `b` covers one whole side of it.
  BOOL IntersectRect(LPCRECT a, LPCRECT b);
  BOOL UnionRect(LPCRECT a, LPCRECT b);
  BOOL SubtractRect(LPCRECT a, LPCRECT b);

  friend bool operator==(const CRect& a, const CRect& b) { return a.EqualRect(&b) != 0; }
  CRect& operator+=(POINT by);
  CRect& operator+=(SIZE by);
  CRect& operator+=(LPCRECT by);
  CRect& operator-=(POINT by);
  CRect& operator-=(SIZE by);
  CRect& operator-=(LPCRECT by);
  CRect& operator&=(const RECT& other);
  CRect& operator|=(const RECT& other);
  CRect operator+(POINT by) const { return CRect(*this) += by; }
  CRect operator+(SIZE by) const { return CRect(*this) += by; }
  CRect operator+(LPCRECT by) const { return CRect(*this) += by; }
  CRect operator-(POINT by) const { return CRect(*this) -= by; }
  CRect operator-(SIZE by) const { return CRect(*this) -= by; }
  CRect operator-(LPCRECT by) const { return CRect(*this) -= by; }
  CRect operator&(const RECT& other) const { return CRect(*this) &= other; }
  CRect operator|(const RECT& other) const { return CRect(*this) |= other; }
};
