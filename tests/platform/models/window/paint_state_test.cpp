#include "platform/models/window/paint_state.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <random>
#include <stdexcept>

#include "tests/support/print.h"

namespace {

using lorv::PaintState;
using lorv::Region;

const CRect kClient(0, 0, 100, 80);

CRect Bounds(const Region& region) {
  return region.Bounds();
}

}  // namespace

TEST(PaintState, InvalidatesWithinTheClientArea) {
  PaintState state;
  EXPECT_FALSE(state.WantsPaint());
  const CRect part(90, 70, 200, 200);
  state.Invalidate(kClient, part);
  EXPECT_EQ(Bounds(state.Pending()), CRect(90, 70, 100, 80));
  state.Invalidate(kClient, nullptr);
  EXPECT_EQ(Bounds(state.Take()), kClient);
  EXPECT_FALSE(state.WantsPaint());
}

TEST(PaintState, ManyPartsAreJoinedBeyondTheirLimit) {
  PaintState state;
  for (int i = 0; i < 40; ++i) {
    const CRect cell(i * 2 % 100, i * 7 % 80, i * 2 % 100 + 1, i * 7 % 80 + 1);
    state.Invalidate(kClient, cell);
    EXPECT_TRUE(state.Pending().Covers(cell));
    EXPECT_LE(state.Pending().Rects().size(), lorv::kMaxDirtyRects);
  }
}

TEST(PaintState, AHandlerThatTakesNothingIsAskedOnce) {
  PaintState state;
  state.Invalidate(kClient, nullptr);
  int asked = 0;
  while (state.WantsPaint()) state.Paint([&] { ++asked; });
  EXPECT_EQ(asked, 1);
}

TEST(PaintState, WhatIsInvalidatedByTheHandlerStays) {
  PaintState state;
  const CRect part(1, 2, 3, 4);
  for (const bool takes : {true, false}) {
    state.Invalidate(kClient, nullptr);
    state.Paint([&] {
      if (takes) state.Take();
      state.Invalidate(kClient, part);
    });
    EXPECT_EQ(Bounds(state.Take()), part);
  }
}

TEST(PaintState, AHandlerThatThrowsIsNotAskedForTheSame) {
  PaintState state;
  state.Invalidate(kClient, nullptr);
  EXPECT_THROW(state.Paint([] { throw std::runtime_error("paint"); }), std::runtime_error);
  EXPECT_FALSE(state.WantsPaint());
  state.Invalidate(kClient, nullptr);
  int asked = 0;
  state.Paint([&] { ++asked; });
  EXPECT_EQ(asked, 1);
}

TEST(PaintState, PaintingInsidePaintingHasABottom) {
  PaintState state;
  int deepest = 0;
  int depth = 0;
  const std::function<void()> handler = [&] {
    deepest = std::max(deepest, ++depth);
    state.Take();
    state.Invalidate(kClient, nullptr);
    state.Paint(handler);
    --depth;
  };
  state.Invalidate(kClient, nullptr);
  state.Paint(handler);
  EXPECT_EQ(deepest, PaintState::kMaxPaintNesting);
  EXPECT_TRUE(state.WantsPaint());
}

TEST(PaintState, NothingIsAskedForWhileRedrawingIsOff) {
  PaintState state;
  state.SetRedraw(false);
  state.Invalidate(kClient, nullptr);
  EXPECT_FALSE(state.WantsPaint());
  state.Paint([] { ADD_FAILURE() << "asked"; });
  state.SetRedraw(true);
  EXPECT_TRUE(state.WantsPaint());
}

TEST(PaintState, ValidatedPartsAreNotPending) {
  PaintState state;
  state.Invalidate(kClient, nullptr);
  state.Validate(CRect(0, 0, 100, 40));
  EXPECT_EQ(Bounds(state.Pending()), CRect(0, 40, 100, 80));
  state.Validate(nullptr);
  EXPECT_FALSE(state.WantsPaint());
}

TEST(PaintState, ShiftGivesThePlaceThatReceives) {
  PaintState state;
  EXPECT_EQ(state.Shift(kClient, SIZE{0, -20}, nullptr, nullptr), CRect(0, 0, 100, 60));
  EXPECT_EQ(state.Pending().Rects(), (std::vector<CRect>{{0, 60, 100, 80}}));
}

TEST(PaintState, ShiftTakesWhatIsPendingAlong) {
  PaintState state;
  const CRect cell(10, 30, 20, 40);
  state.Invalidate(kClient, cell);
  state.Shift(kClient, SIZE{0, -20}, nullptr, nullptr);
  EXPECT_TRUE(state.Pending().Covers(CRect(10, 10, 20, 20)));
  EXPECT_FALSE(state.Pending().Touches(CRect(10, 30, 20, 40)));
}

TEST(PaintState, ShiftStaysInItsClip) {
  PaintState state;
  const CRect clip(0, 10, 100, 60);
  EXPECT_EQ(state.Shift(kClient, SIZE{0, 20}, clip, clip), CRect(0, 30, 100, 60));
  EXPECT_EQ(state.Pending().Rects(), (std::vector<CRect>{{0, 10, 100, 30}}));
}

TEST(PaintState, ShiftBeyondTheAreaLeavesAllOfItPending) {
  PaintState state;
  EXPECT_NE(state.Shift(kClient, SIZE{0, 500}, nullptr, nullptr).IsRectEmpty(), 0);
  EXPECT_EQ(Bounds(state.Pending()), kClient);
}

// Pixel by pixel: what is out of date moves with what is shown, what comes in is out of date, and nothing
// that was out of date is forgotten.
TEST(PaintState, ScrollingIsRightForEveryPixel) {
  std::mt19937 random(33);
  const CRect client(0, 0, 24, 20);
  const auto any_rect = [&random] {
    const int x = static_cast<int>(random() % 30) - 3;
    const int y = static_cast<int>(random() % 26) - 3;
    return CRect(CPoint(x, y), CSize(static_cast<int>(random() % 20), static_cast<int>(random() % 16)));
  };
  for (int round = 0; round < 400; ++round) {
    PaintState state;
    for (int i = 0; i < 3; ++i) state.Invalidate(client, any_rect());
    if (round % 4 == 0) state.Validate(any_rect());
    const Region before = state.Pending();
    const CSize by(static_cast<int>(random() % 60) - 30, static_cast<int>(random() % 50) - 25);
    const CRect area = any_rect();
    const CRect clip = any_rect();
    const CRect box = round % 2 == 0 ? client : client & area;
    const CRect bounds = round % 3 == 0 ? client : client & clip;
    const RECT* const given_area = round % 2 == 0 ? nullptr : &area;
    const RECT* const given_clip = round % 3 == 0 ? nullptr : &clip;
    const CRect target = state.Shift(client, by, given_area, given_clip);
    for (int x = 0; x < client.right; ++x) {
      for (int y = 0; y < client.bottom; ++y) {
        const CRect pixel(x, y, x + 1, y + 1);
        const CRect from = pixel - by;
        const bool inside = bounds.PtInRect({x, y}) != 0;
        // A pixel has what stood in the area, if that was to be seen before.
        const bool copied = inside && box.PtInRect(from.TopLeft()) != 0;
        const bool came_in = inside && !copied && box.PtInRect({x, y}) != 0;
        ASSERT_EQ(target.PtInRect({x, y}) != 0, copied) << round << ": " << x << ", " << y;
        const bool dirty = copied ? before.Touches(from) : came_in || before.Touches(pixel);
        // More may be out of date where many parts were joined.
        const bool joined = state.Pending().Rects().size() >= 8;
        const bool pending = state.Pending().Touches(pixel);
        ASSERT_TRUE(pending == dirty || (pending && joined)) << round << ": " << x << ", " << y;
      }
    }
  }
}
