#include "framework/ports/no_window.h"

#include <gtest/gtest.h>

#include "framework/drawing/geometry.h"

namespace {

bool IsNothing(const RECT& rect) {
  return CRect(rect) == CRect();
}

}  // namespace

TEST(NoWindow, IsOneForAll) {
  EXPECT_NE(lorv::NoWindow(), nullptr);
  EXPECT_EQ(lorv::NoWindow(), lorv::NoWindow());
}

TEST(NoWindow, AnswersWithNothing) {
  const auto none = lorv::NoWindow();
  EXPECT_FALSE(none->Exists());
  EXPECT_EQ(none->Parent(), nullptr);
  EXPECT_EQ(none->Owner(), nullptr);
  EXPECT_TRUE(none->Children().empty());
  EXPECT_EQ(none->Id(), 0U);
  EXPECT_EQ(none->Style(), 0U);
  EXPECT_EQ(none->ExStyle(), 0U);
  EXPECT_TRUE(none->ClassName().IsEmpty());
  EXPECT_TRUE(none->Text().IsEmpty());
  EXPECT_TRUE(IsNothing(none->WindowRect()));
  EXPECT_TRUE(IsNothing(none->ClientRect()));
  EXPECT_TRUE(none->UpdateRects().empty());
  EXPECT_EQ(none->Scroll(SB_VERT).nMax, 0);
  EXPECT_FALSE(none->KillTimer(1));
  EXPECT_EQ(none->Default(WM_GETTEXTLENGTH, 0, 0), 0);
}

TEST(NoWindow, HasNoFrameAndDotsToDivideBy) {
  const auto none = lorv::NoWindow();
  EXPECT_EQ(CSize(none->FrameSize({30, 20})), CSize(30, 20));
  EXPECT_EQ(none->Dpi(), 96);
}

TEST(NoWindow, WhatIsChangedIsNotKept) {
  const auto none = lorv::NoWindow();
  none->SetText(_T("x"));
  none->SetStyle(WS_VISIBLE);
  none->SetId(7);
  none->Place({1, 2, 30, 40});
  none->Show(SW_SHOW);
  none->Invalidate(nullptr);
  none->SetTimer(1, 10);
  EXPECT_TRUE(none->Text().IsEmpty());
  EXPECT_EQ(none->Style(), 0U);
  EXPECT_EQ(none->Id(), 0U);
  EXPECT_TRUE(IsNothing(none->WindowRect()));
  EXPECT_TRUE(none->UpdateRects().empty());
}

TEST(NoWindow, IsPaintedOnACanvasOfNothing) {
  RECT dirty = {1, 2, 3, 4};
  const auto canvas = lorv::NoWindow()->PaintCanvas(dirty);
  ASSERT_NE(canvas, nullptr);
  EXPECT_TRUE(IsNothing(dirty));
  EXPECT_EQ(CSize(canvas->Size()), CSize(0, 0));
}

TEST(NoCanvas, DrawsAndMeasuresNothing) {
  const auto canvas = lorv::NoCanvas();
  canvas->Fill({0, 0, 10, 10}, 0);
  canvas->Text({0, 0}, _T("ab"), 0);
  EXPECT_EQ(CSize(canvas->Extent(_T("ab"))), CSize(0, 0));
  EXPECT_EQ(canvas->Metrics().tmHeight, 0);
  EXPECT_FALSE(canvas->Shows({0, 0, 10, 10}));
  EXPECT_TRUE(canvas->Pixels({0, 0, 10, 10}).empty());
}

TEST(NoCanvas, EachIsItsOwn) {
  EXPECT_NE(lorv::NoCanvas(), lorv::NoCanvas());
}
