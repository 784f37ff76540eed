#include "framework/drawing/geometry.h"

#include <gtest/gtest.h>

#include <ostream>

#include "tests/support/whole_number_limits.h"

// Found by the checks through the class's own namespace.
void PrintTo(const CRect& rect, std::ostream* out) {
  *out << "(" << rect.left << ", " << rect.top << ", " << rect.right << ", " << rect.bottom << ")";
}

namespace {

TEST(CPoint, MovesAndMeasures) {
  CPoint p(3, 4);
  EXPECT_EQ(p + CSize(1, 2), CPoint(4, 6));
  EXPECT_EQ(p - CPoint(1, 1), CSize(2, 3));
  EXPECT_EQ(-p, CPoint(-3, -4));
  p.Offset(1, 1);
  p.Offset(CSize(1, 0));
  p.Offset(CPoint(0, 1));
  EXPECT_EQ(p, CPoint(5, 6));
  p -= CSize(5, 6);
  EXPECT_EQ(p, CPoint());
  EXPECT_FALSE(CPoint(1, 2) == CPoint(2, 1));
}

TEST(CPoint, SumsWrapAround) {
  EXPECT_EQ(CPoint(kMost, 0) + CSize(1, 0), CPoint(-kMost - 1, 0));
}

TEST(CSize, AddsAndTurns) {
  CSize s(3, 4);
  s += CSize(1, 1);
  s -= CSize(0, 2);
  EXPECT_EQ(s, CSize(4, 3));
  EXPECT_EQ(-s, CSize(-4, -3));
  EXPECT_EQ(CSize(CPoint(5, 6)), CSize(5, 6));
  s.SetSize(1, 2);
  EXPECT_EQ(s + CSize(1, 1) - CSize(2, 3), CSize());
}

TEST(CRect, HeaderExample) {
  EXPECT_TRUE(CRect(0, 0, 10, 5).PtInRect(CPoint(9, 4)));
  EXPECT_FALSE(CRect(0, 0, 10, 5).PtInRect(CPoint(10, 4)));
}

TEST(CRect, EdgesBelongOnTheLeftAndTopOnly) {
  const CRect r(1, 2, 3, 4);
  EXPECT_TRUE(r.PtInRect(CPoint(1, 2)));
  EXPECT_FALSE(r.PtInRect(CPoint(0, 2)));
  EXPECT_FALSE(r.PtInRect(CPoint(1, 4)));
  EXPECT_FALSE(r.PtInRect(CPoint(3, 3)));
}

TEST(CRect, MadeAndMeasuredInEveryWay) {
  const CRect r(CPoint(1, 2), CSize(10, 20));
  EXPECT_EQ(r, CRect(1, 2, 11, 22));
  EXPECT_EQ(CRect(CPoint(1, 2), CPoint(11, 22)), r);
  EXPECT_EQ(CRect(static_cast<LPCRECT>(&r)), r);
  EXPECT_EQ(r.Width(), 10);
  EXPECT_EQ(r.Height(), 20);
  EXPECT_EQ(r.Size(), CSize(10, 20));
  EXPECT_EQ(r.TopLeft(), CPoint(1, 2));
  EXPECT_EQ(r.BottomRight(), CPoint(11, 22));
  EXPECT_EQ(r.CenterPoint(), CPoint(6, 12));
  EXPECT_EQ(CRect(kMost, kMost, kMost, kMost).CenterPoint(), CPoint(kMost, kMost));
}

TEST(CRect, EmptyAndNullDiffer) {
  EXPECT_TRUE(CRect().IsRectEmpty());
  EXPECT_TRUE(CRect().IsRectNull());
  EXPECT_TRUE(CRect(5, 0, 5, 9).IsRectEmpty());
  EXPECT_FALSE(CRect(5, 0, 5, 9).IsRectNull());
  EXPECT_TRUE(CRect(9, 9, 1, 1).IsRectEmpty());
  EXPECT_FALSE(CRect(0, 0, 1, 1).IsRectEmpty());
}

TEST(CRect, GrowsShrinksAndMoves) {
  CRect r(10, 10, 20, 20);
  r.InflateRect(1, 2);
  EXPECT_EQ(r, CRect(9, 8, 21, 22));
  r.DeflateRect(1, 2, 3, 4);
  EXPECT_EQ(r, CRect(10, 10, 18, 18));
  r.InflateRect(CSize(1, 1));
  r.DeflateRect(CSize(1, 1));
  r.MoveToXY(0, 5);
  EXPECT_EQ(r, CRect(0, 5, 8, 13));
  r.MoveToX(3);
  r.MoveToY(4);
  EXPECT_EQ(r, CRect(3, 4, 11, 12));
  EXPECT_EQ(r + CPoint(1, 1), CRect(4, 5, 12, 13));
  EXPECT_EQ(r - CSize(3, 4), CRect(0, 0, 8, 8));
  const CRect by(1, 2, 3, 4);
  EXPECT_EQ(r + static_cast<LPCRECT>(by), CRect(2, 2, 14, 16));
  EXPECT_EQ(r + static_cast<LPCRECT>(by) - static_cast<LPCRECT>(by), r);
}

TEST(CRect, NormalizeExchangesWrongEdges) {
  CRect r(5, 9, 1, 2);
  r.NormalizeRect();
  EXPECT_EQ(r, CRect(1, 2, 5, 9));
}

TEST(CRect, IntersectionIsZeroWhereNothingIsShared) {
  CRect r(1, 1, 1, 1);
  const CRect a(0, 0, 10, 10);
  const CRect b(5, 6, 20, 20);
  EXPECT_TRUE(r.IntersectRect(&a, &b));
  EXPECT_EQ(r, CRect(5, 6, 10, 10));
  const CRect beside(10, 0, 20, 10);
  EXPECT_FALSE(r.IntersectRect(&a, &beside));
  EXPECT_TRUE(r.IsRectNull());
  EXPECT_EQ(a & b, CRect(5, 6, 10, 10));
}

TEST(CRect, UnionPassesOverEmptyOnes) {
  const CRect a(0, 0, 10, 10);
  const CRect empty(50, 50, 50, 60);
  EXPECT_EQ(a | CRect(20, 20, 30, 30), CRect(0, 0, 30, 30));
  EXPECT_EQ(a | empty, a);
  EXPECT_EQ(empty | a, a);
  CRect r(1, 2, 3, 4);
  EXPECT_FALSE(r.UnionRect(&empty, &empty));
  EXPECT_TRUE(r.IsRectNull());
}

TEST(CRect, SubtractsOnlyWhatCoversAWholeSide) {
  const CRect a(0, 0, 10, 10);
  const auto rest = [&](const CRect& b) {
    CRect r;
    r.SubtractRect(&a, &b);
    return r;
  };
  EXPECT_EQ(rest(CRect(-5, -5, 4, 20)), CRect(4, 0, 10, 10));
  EXPECT_EQ(rest(CRect(6, -5, 40, 20)), CRect(0, 0, 6, 10));
  EXPECT_EQ(rest(CRect(-5, -5, 40, 3)), CRect(0, 3, 10, 10));
  EXPECT_EQ(rest(CRect(-5, 8, 40, 30)), CRect(0, 0, 10, 8));
  EXPECT_EQ(rest(CRect(2, 2, 4, 4)), a);
  EXPECT_EQ(rest(CRect(3, -5, 6, 20)), a);
  EXPECT_EQ(rest(CRect(50, 50, 60, 60)), a);
  EXPECT_TRUE(rest(CRect(-1, -1, 11, 11)).IsRectNull());
}

}  // namespace
